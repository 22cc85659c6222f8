#include "acquire/statuspulse.h"

namespace elevenfive {

StatusPulse::StatusPulse(StatusPanels& panels, int intervalMs) : panels_(panels) {
  timer_.setInterval(intervalMs);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
    panels_.setPanel(StatusPanels::runningPass, texts_[next_].toString());
    next_ = 1 - next_;
  });
}

void StatusPulse::start(const std::array<QStringView, 2>& texts) {
  texts_ = texts;
  next_ = 0;
  if (timer_.interval() > 0)
    timer_.start();
}

}  // namespace elevenfive
