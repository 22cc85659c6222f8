// A text in the status bar that pulses while something is waited for: two texts turn about.
#pragma once

#include <QTimer>
#include <array>

#include "history/statuspanels.h"

namespace elevenfive {

class StatusPulse final {
 public:
  /// intervalMs: between two texts; 0: the texts never show.
  StatusPulse(StatusPanels& panels, int intervalMs);

  void start(const std::array<QStringView, 2>& texts);
  void stop() { timer_.stop(); }
  [[nodiscard]] bool isRunning() const { return timer_.isActive(); }

 private:
  StatusPanels& panels_;
  QTimer timer_;
  std::array<QStringView, 2> texts_;
  std::size_t next_ = 0;
};

}  // namespace elevenfive
