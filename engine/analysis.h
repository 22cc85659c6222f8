// Scoring of result rows against the ten draws before their period, into 临时数据.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// 精选号码: leaves the given number of rows of a period, those with the lowest scores, and deletes the others; equal scores go
/// by 序号. What stays holds 999 in 临时数据 until the next run. A stop asked for ends with it.
///
/// After a stop the rows not reached are judged by what they held. After a run that is 0, so they are taken ahead of all scored
/// rows. Straight after an expansion or an import it is nothing: they are taken first too, and those beyond the number asked for
/// stay as well, so that more rows may be left than were asked for. After an earlier choice it is 999, and they stay.
void analyseHaoma(const RunContext& run, Qihao period, int wanted);

/// 智能优化: scores the rows of a period and sets the better 60 percent back to 0, so that a reduction of this type meets them
/// first. It works only where the switch 45 is on and the type is below 5. Returns how many rows it scored. No button and no run
/// calls it.
int zhinengYouhua(const RunContext& run, Qihao period, int type);

}  // namespace elevenfive
