// 单双组合: odd/even patterns by place, in ascending number order. A row that shows a pattern exactly is refused: here a match is
// the failure, against all other stages. A pattern's slots are 0 双 (even), 1 单 (odd), 2 * (any).
#pragma once

#include <QString>

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// How many patterns there are beside that of the previous draw, which is pattern 0.
inline constexpr int parityPatterns = 5;

/// The exclusion of pattern j (0 to 5); returns how many rows passed. Pattern 0 is written anew from the draw before the period,
/// also where it is not in use. Nothing happens after a stop. Throws MissingData where no draw lies before the period.
int filter_Danshuang(const RunContext& run, Qihao period, int j);

/// The pattern in the rows first..last of 过滤条件 as text, a symbol a value: 双, 单, *. Other values give no symbol.
QString getDanshuangText(Store& store, int first, int last);

/// Writes the parity of a draw into pattern 0 and returns its text. Throws MissingData where the history does not hold it.
QString setShangqiDanshuang(Store& store, Qihao drawn);

}  // namespace elevenfive
