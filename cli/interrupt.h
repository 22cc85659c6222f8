// Ctrl-C as a wish to stop what runs, for work that can end in good order.
#pragma once

#include <QTimer>
#include <functional>

namespace elevenfive {

/// While one lives, SIGINT does not end the program: the wish is handed on once, from the event loop. Afterwards the signal does
/// again what it did before. One at a time.
class Interrupt final {
 public:
  explicit Interrupt(std::function<void()> stop);
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  [[nodiscard]] bool wasAsked() const noexcept;

 private:
  using Handler = void (*)(int);

  Handler before_;
  QTimer look_;
};

}  // namespace elevenfive
