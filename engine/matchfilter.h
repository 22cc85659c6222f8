// 历史数据过滤: a row that shares too many numbers with any of the last draws before the period goes. Its settings stand in the one
// row of 历史数据过滤, not among the conditions, and the run's tolerance does not touch it.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// Returns how many rows passed the last draw compared; 0 where it did not run or the window held no draw. Rows that stay have
/// 过滤标记 1 and are numbered anew.
int filter_Lishi(const RunContext& run, Qihao period);

}  // namespace elevenfive
