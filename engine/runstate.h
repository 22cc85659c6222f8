// What the run engine keeps between its steps.
#pragma once

#include <array>

namespace elevenfive {

/// The stages that judge a row against the draws before the period; each warns of it once while the program runs.
enum class HistoryStage { chongdie, xiewei, wendu5, wendu10 };

struct RunState {
  /// The buffer of one stretch of condition values. It is never cleared: a load overwrites only the slots it reaches, and a
  /// value beyond its stretch reads what an earlier load left there.
  std::array<int, 200> tiaojianValue{};

  int rongcuoValue = 0;   ///< how many counted conditions a row may fail in this run
  bool userStop = false;  ///< set by the stop button, cleared at the end of a run and of an expansion
  int zuheTotal = 0;      ///< combinations that the present picks give

  /// Whether the one-time warning of a history-relative stage was shown, by HistoryStage.
  std::array<bool, 4> historyWarned{};

  /// How many steps in progress keep the panel Pic_subTouZhu disabled; the last one to end enables it.
  int panelHolds = 0;
};

}  // namespace elevenfive
