// 开奖核对: compares the rows kept for a period with its draw.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// Writes the hits of each row to 买中个数 and says in the status text how many rows hit five and four numbers. False, with a
/// box and the rows as they were, where the period has no draw or no rows. A number above 11 in a row from a file is no hit. The
/// marks of the filters stay, and the check can be repeated.
bool checkKaijiang(const RunContext& run, Qihao period);

}  // namespace elevenfive
