// The road of a run: the marks set back, the counted stages in their fixed order, the tolerance, then what ignores it.
#pragma once

#include <QStringView>
#include <span>

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// A stage of the counted part. A stage with members runs once for each, and a stop lets none of the rest run.
struct PipelineStage {
  QStringView name;
  int (*run)(const RunContext& run, Qihao period, int member);
  int firstMember = 0;
  int lastMember = 0;
};

/// The 24 stages in the order in which they run.
std::span<const PipelineStage> pipelineStages();

/// Start of a run: sets all marks of a period's rows to 0, so a run repeats over what the last one left. True where the period
/// has rows and the person did not stop.
bool resetRizhiBiaoji(const RunContext& run, Qihao period);

/// The pipeline over a period's rows with the tolerance of the state. Throws Error where a stage faults: its rows and the
/// status text are as they were before it, the controls are usable again and no stop is pending. A row that holds no numbers
/// of a draw, or a reduction that was never chosen, ends the run before its first stage.
void runGuolvSuoshui(const RunContext& run, Qihao period);

}  // namespace elevenfive
