// How long the window went without a turn of its event loop.
#pragma once

#include <QTimer>
#include <algorithm>
#include <ctime>

namespace elevenfive {

/// Processor time of this process in milliseconds. Other programs on the machine do not lengthen it, which is why bounds on
/// the window's answers are put on it and not on the clock.
inline double processorMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Counts the turns of the event loop from its making on, and keeps the longest time between two of them. A click that comes
/// at the worst moment waits that long.
class EventGaps final {
 public:
  EventGaps() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { turn(); });
    timer_.start(0);
  }

  [[nodiscard]] double longestMilliseconds() const { return longest_; }
  [[nodiscard]] int turns() const { return turns_; }

 private:
  void turn() {
    const double now = processorMilliseconds();
    longest_ = std::max(longest_, now - last_);
    last_ = now;
    ++turns_;
  }

  QTimer timer_;
  double last_ = processorMilliseconds();
  double longest_ = 0;
  int turns_ = 0;
};

}  // namespace elevenfive
