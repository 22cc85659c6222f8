// 遗漏: for how many draws a number has been absent.
//
// Draws count by their running index 总期号, from 0 in the order of the periods, so gaps in the period numbers do not matter.
// For a number that came in draws i1 < i2 < ... up to the period in question the gaps are i1, i2 - i1 - 1, ...: the first one
// reaches back to the start of the history.
#pragma once

#include <array>

#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// The figures of one number. Of a number that came less than twice all but hits are those of the number before it, and 0 for
/// number 1.
struct MissFigures {
  int longest = 0;  ///< the longest gap
  int average = 0;  ///< all gaps by the count of hits less one, rounded half to even
  int current = 0;  ///< draws since the last hit; 0 where the number came in the period itself
  int hits = 0;
  int lastGap = 0;

  friend bool operator==(const MissFigures&, const MissFigures&) = default;
};

/// What the miss view shows: figures by number (slot 0 unused), and the largest of all longest gaps for scaling.
struct MissLabels {
  std::array<MissFigures, numberCount + 1> numbers{};
  int longestAll = 0;
};

/// Current miss by number; slot 0 the largest of them. The workspace keeps it.
using YilouNow = std::array<int, numberCount + 1>;

/// Numbers the draws up to period q from 0 in 总期号 and sets their 遗漏数据 to 0. Later draws keep theirs.
void resetZongQihao(Store& store, Qihao q, Events& events);

/// The miss figures of the eleven numbers at period q. Numbers the draws up to q as resetZongQihao does and leaves in their
/// 遗漏数据 the largest of their numbers; later draws keep both. Of a period that the history does not hold the current
/// misses come out against index 0, that is 0 or negative.
/// With showLabels the figures are for the labels and yilouNow[1..11] stays; without, the current misses go there. Slot 0
/// becomes the largest either way. progress (ProgressBar_YL) is shown only with showLabels and may be null.
MissLabels calcYilou(Store& store, Qihao q, bool showLabels, YilouNow& yilouNow, Progress* progress, Events& events);

/// Writes 遗漏值总和 of the periods from..to: the misses of a draw's five numbers as they stood one draw before it. The first
/// row read, the period before from, is passed over; a range of one row writes nothing. Else it leaves 总期号, 遗漏数据 and
/// yilouNow as calcYilou for the last row of the range would. progress and panels may be null.
/// Throws NumberFault where a row to be written has a number above 11.
void calcYilouSum(Store& store, Qihao from, Qihao to, YilouNow& yilouNow, Progress* progress, Events& events,
                  StatusPanels* panels = nullptr);

}  // namespace elevenfive
