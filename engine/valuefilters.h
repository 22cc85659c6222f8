// The eleven stages that judge a row by a figure of its five numbers alone.
//
// Each takes the period and returns how many rows passed, 0 where it did not run.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

int filter_Hezhi(const RunContext& run, Qihao period);       ///< 和值: sum of the numbers
int filter_QishuHezhi(const RunContext& run, Qihao period);  ///< 奇数和值: sum of the odd ones
int filter_OushuHezhi(const RunContext& run, Qihao period);  ///< 偶数和值: sum of the even ones
int filter_TouHezhi(const RunContext& run, Qihao period);    ///< 头数和值: sum of the tens digits
int filter_WeiHezhi(const RunContext& run, Qihao period);    ///< 尾数和值: sum of the units digits
int filter_QishuGeshu(const RunContext& run, Qihao period);  ///< 奇数个数: how many are odd
int filter_OushuGeshu(const RunContext& run, Qihao period);  ///< 偶数个数: how many are even
int filter_Kuadu(const RunContext& run, Qihao period);       ///< 跨度: largest minus smallest
int filter_JianjuMax(const RunContext& run,
                     Qihao period);  ///< 最大间距: largest gap between neighbours in rising order
int filter_Lianhao(const RunContext& run, Qihao period);  ///< 连号: run code 0 to 6
int filter_AC(const RunContext& run, Qihao period);       ///< AC值: different differences less 4

}  // namespace elevenfive
