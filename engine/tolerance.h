// The tolerance: a row may fail some of the conditions in use, whichever they are.
//
// Above 0 no counted stage deletes; each raises 过滤标记 of the rows that pass. This stage then keeps the rows that failed no
// more conditions than the tolerance forgives. 序号 stays as it is and may have gaps and repeats.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// Deletes the rows of a period that passed fewer than (conditions in use - tolerance) stages and returns how many stay. After a
/// stop it says nothing.
int applyRongcuo(const RunContext& run, Qihao period, int tolerance);

}  // namespace elevenfive
