// The result rows as a whole.
#pragma once

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// Deletes a period's rows, all rows where it is 0, refreshes the grid and says so straight behind the status text.
void deleteRizhi(const RunContext& run, Qihao period);

}  // namespace elevenfive
