// The entry row of the history panel: a period and five numbers as they were typed.
#pragma once

#include <QString>
#include <array>

#include "model/numbers.h"

namespace elevenfive {

/// The texts of TextHistory_0 and TextHistory_1..5.
struct HistoryEntry {
  QString qihao;
  std::array<QString, drawSize> numbers;
};

struct HistoryEntryCheck {
  bool valid = false;
  Qihao qihao = 0;  ///< of a valid entry
  Draw numbers{};   ///< of a valid entry, ascending
  /// What TextHistory_1..5 show afterwards, whatever the verdict: the numbers within 1..11, each once, ascending and two
  /// digits wide, in the first fields; the fields behind them keep what was typed.
  std::array<QString, drawSize> writeBack;
};

/// Valid is an entry of five different numbers within 1..11 and a period, a whole number from 1 to 2147483647.
HistoryEntryCheck checkHistoryInput(const HistoryEntry& entry);

/// The refusal of an entry that is not valid.
QString historyEntryRefusal();

}  // namespace elevenfive
