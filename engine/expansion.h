// From the picks to the rows of 日志表: every combination of five allowed numbers that holds all bankers.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

int countTuoma(Store& store);  ///< numbers picked as 拖码
int countDanma(Store& store);  ///< numbers picked as 胆码

/// Recounts the picks into zuheTotal and writes the three counting lines.
void showXuanhaoTip(const RunContext& run);

/// Whether the picks give at least one combination; with showMessage it says so where not and shows the picking page.
bool checkHaomaXuanqu(const RunContext& run, bool showMessage);

/// Stores the combinations of the picks under a period, in rising order, as fresh rows numbered from 1; rows of other periods
/// go. Returns how many rows the period has then, 0 where nothing was done. A stop keeps the rows so far, without the closing
/// message; a fault leaves the table as it was.
int initXuanhao(const RunContext& run, Qihao period);

}  // namespace elevenfive
