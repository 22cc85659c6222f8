// The stages that look at how the five numbers of a row spread over a division of all numbers: by units digit, by tens digit, by
// residue of number minus 1. The spread becomes a form, the sizes of the occupied classes, and the form a code.
//
// Each returns how many rows passed, 0 where it did not run. The four 间距 stages have their conditions and are no part of a run.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

int filter_WeiXingshi(const RunContext& run, Qihao period);  ///< 尾数形式: form code 0 to 6
int filter_TouXingshi(const RunContext& run, Qihao period);  ///< 头数形式: head form code 0 to 2
int filter_Jianju9(const RunContext& run, Qihao period);     ///< 间距九
int filter_Jianju7(const RunContext& run, Qihao period);     ///< 间距七
int filter_Jianju11(const RunContext& run, Qihao period);    ///< 间距十一
int filter_Jianju12(const RunContext& run, Qihao period);    ///< 间距十二

}  // namespace elevenfive
