// How long the window went without a turn of its event loop.
#pragma once

#include <QTimer>
#include <algorithm>

#include "bench/measure.h"

namespace elevenfive {

/// Counts the turns of the event loop from its making on, and keeps the longest time between two of them. A click that comes
/// at the worst moment waits that long.
class EventGaps final {
 public:
  EventGaps() {
    wall_.start();
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { turn(); });
    timer_.start(0);
  }

  /// By the processor's time, which other programs on the machine do not lengthen; tests put their bounds on it.
  [[nodiscard]] double longestMilliseconds() const { return longest_; }
  [[nodiscard]] double longestByTheWall() const { return longestByTheWall_; }
  [[nodiscard]] int turns() const { return turns_; }

 private:
  void turn() {
    const double now = processorMilliseconds();
    longest_ = std::max(longest_, now - last_);
    last_ = now;
    longestByTheWall_ = std::max(longestByTheWall_, static_cast<double>(wall_.nsecsElapsed()) / 1e6);
    wall_.start();
    ++turns_;
  }

  QTimer timer_;
  QElapsedTimer wall_;
  double last_ = processorMilliseconds();
  double longest_ = 0;
  double longestByTheWall_ = 0;
  int turns_ = 0;
};

}  // namespace elevenfive
