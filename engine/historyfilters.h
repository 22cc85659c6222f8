// The four stages that judge a row against the draws just before the target period, not before the newest one: a run on a past
// period sees what was known then. Each warns once while the program runs that its outcome changes with the period.
//
// Each returns how many rows passed, 0 where it did not run. 重叠号 and 斜位码 throw MissingData where no draw lies before the
// period; the temperatures then count nothing.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

int filter_Chongdie(const RunContext& run, Qihao period);  ///< 重叠号: numbers of the draw before
int filter_Xiewei(const RunContext& run, Qihao period);    ///< 斜位码: neighbours of numbers of the draw before
int filter_Wendu5(const RunContext& run, Qihao period);    ///< 温度值5: hits of the five numbers in the last 5 draws
int filter_Wendu10(const RunContext& run, Qihao period);   ///< 温度值10: hits in the last 10 draws

/// The draw just before a period. Throws MissingData, saying for what it is needed and what to do.
Draw requireDrawBefore(Store& store, Qihao period, const QString& needed);

}  // namespace elevenfive
