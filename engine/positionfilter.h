// 号码定位: each of the five places of a row has a list of numbers of its own, and a tolerance that is not the run's says how many
// places may hold another number. It runs after the tolerance stage and sets 过滤标记 of what stays to 1.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// The column of 号码特性 that holds the numbers of a place, 1 to 7: the tag of List_DingweiNumber(place).
QString positionColumn(int place);

/// Returns how many rows passed; 0 without a line where no place is in use, and with a line where the tolerance is too large
/// to refuse anything.
int filter_Dingwei(const RunContext& run, Qihao period);

}  // namespace elevenfive
