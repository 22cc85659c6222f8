#include "cli/interrupt.h"

#include <csignal>
#include <utility>

namespace elevenfive {

namespace {

constexpr int lookMs = 20;

/// All that a handler may touch; set by the signal alone, cleared where a new watch begins.
volatile std::sig_atomic_t asked = 0;

void note(int) {
  asked = 1;
}

}  // namespace

Interrupt::Interrupt(std::function<void()> stop) : stop_(std::move(stop)) {
  asked = 0;
  before_ = std::signal(SIGINT, note);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
  timer_.start(lookMs);
}

Interrupt::~Interrupt() {
  const Handler before = before_ == SIG_ERR ? SIG_DFL : before_;
  std::signal(SIGINT, wasAsked() ? SIG_IGN : before);
}

bool Interrupt::wasAsked() const noexcept {
  return asked != 0;
}

void Interrupt::look() {
  if (!wasAsked() || !timer_.isActive())
    return;
  timer_.stop();
  stop_();
}

}  // namespace elevenfive
