// What the run engine keeps between its steps.
#pragma once

#include <array>

namespace elevenfive {

struct RunState {
  /// The buffer of one stretch of condition values. It is never cleared: a load overwrites only the slots it reaches, and a
  /// value beyond its stretch reads what an earlier load left there.
  std::array<int, 200> tiaojianValue{};

  int rongcuoValue = 0;   ///< how many counted conditions a row may fail in this run
  bool userStop = false;  ///< set by the stop button, cleared at the end of a run and of an expansion
  int zuheTotal = 0;      ///< combinations that the present picks give

  /// Whether the one-time warning of a history-relative stage was shown: 重叠号, 斜位码, 温度值5, 温度值10.
  std::array<bool, 4> historyWarned{};
};

}  // namespace elevenfive
