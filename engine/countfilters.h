// The stages that count how many of a row's numbers belong to a set: big and small numbers, high and low tails, the four zones,
// the twenty custom groups. 小数 and 低尾码 are what the other column does not hold; their own columns are not read.
//
// Each returns how many rows passed, 0 where it did not run.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

inline constexpr int zoneCount = 4;
inline constexpr int groupCount = 20;

int filter_Daxiao(const RunContext& run, Qihao period);   ///< 大数个数
int filter_Xiaoshu(const RunContext& run, Qihao period);  ///< 小数个数
int filter_GaoWei(const RunContext& run, Qihao period);   ///< 高尾码个数
int filter_DiWei(const RunContext& run, Qihao period);    ///< 低尾码个数

/// Zone k, 1 to 4. Nothing happens after a stop.
int filter_Qujian(const RunContext& run, Qihao period, int k);

/// Custom group k, 1 to 20, shown under its alias. Nothing happens after a stop.
int filter_Zidingyi(const RunContext& run, Qihao period, int k);

}  // namespace elevenfive
