// One walk over the rows of a period that marks each by a test, shared by all filter stages that judge rows one by one.
#pragma once

#include <functional>
#include <vector>

#include "engine/candidates.h"
#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// What a pass makes of 过滤标记.
enum class Marking {
  counted,  ///< a row that passes gets one more; one that fails goes only where the run has no tolerance
  settled   ///< a row that passes gets 1, whatever it held; one that fails goes, whatever the tolerance
};

/// Whether a row passes. Its numbers are 1..11, in the order of the row.
using RowTest = std::function<bool(const Candidate& row)>;

/// Marks the rows until the end or a stop, ranks in 序号 those that passed, and deletes the failed ones of those reached; returns
/// how many passed. Throws Error, with the rows as they were before.
int markRows(const RunContext& run, Qihao period, const std::vector<Candidate>& rows, LoopScope& loop, Marking marking,
             const RowTest& passes);

}  // namespace elevenfive
