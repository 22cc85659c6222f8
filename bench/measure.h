// How the benchmarks measure: the clock on the wall and the time of the processor, medians over rounds, and one line a figure.
#pragma once

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace elevenfive {

/// Processor time of this process, which other programs on the machine disturb least.
inline double processorMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Milliseconds of each round: by the wall, and by the processor, which on a busy machine is what the work costs.
struct Times {
  std::vector<double> wall;
  std::vector<double> processor;
};

/// Adds the time of a scope.
class Stopwatch final {
 public:
  explicit Stopwatch(Times& times) : times_(times), processor_(processorMilliseconds()) { wall_.start(); }
  ~Stopwatch() {
    times_.wall.push_back(static_cast<double>(wall_.nsecsElapsed()) / 1e6);
    times_.processor.push_back(processorMilliseconds() - processor_);
  }
  Stopwatch(const Stopwatch&) = delete;
  Stopwatch& operator=(const Stopwatch&) = delete;

 private:
  Times& times_;
  QElapsedTimer wall_;
  double processor_;
};

inline double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// One figure beside its goal in milliseconds and the floor that was measured in the same run; the ratio is by the wall, and
/// behind it by the processor.
inline void report(const char* name, const Times& ours, double goal, const char* floorName, const Times& floor) {
  std::printf("%-34s %7.2f ms (processor %7.2f, worst %7.2f)  goal %3.0f   %-30s %7.2f ms   ratio %5.2f (%.2f)\n", name,
              median(ours.wall), median(ours.processor), *std::max_element(ours.wall.begin(), ours.wall.end()), goal,
              floorName, median(floor.wall), median(ours.wall) / median(floor.wall),
              median(ours.processor) / median(floor.processor));
  std::fflush(stdout);
}

}  // namespace elevenfive
