// 缩水: the survivors thinned by a greedy covering rule. The first row is kept, every later row that shares at least K numbers with
// it goes, the first row still unhandled is kept next, and so on. So if the drawn combination was among the rows, a kept row
// holds at least K of its numbers.
#pragma once

#include <QStringView>

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// The reduction types are the indexes of Option_ShuoSuiLeiXing: 保三型 to 保七型. From this one on nothing is reduced.
inline constexpr int firstReductionType = 3;
inline constexpr int lastReductionType = 7;
inline constexpr int noReductionType = 5;

/// The caption of a type from 3 to 7.
QStringView reductionCaption(int type);

/// Throws MissingData where a type is below 3, which no screen can choose: only a condition file from elsewhere, or a value
/// written by the companion, holds it.
void requireReductionType(int type);

/// Reduces a period's rows with type K and returns how many rows are kept. After a stop the rows not reached stay as they are.
/// Throws as requireReductionType does.
int runSuoshui(const RunContext& run, int K, Qihao period);

}  // namespace elevenfive
