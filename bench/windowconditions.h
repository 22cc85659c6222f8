// The condition screens, measured from the click to the painted answer.
#pragma once

#include "bench/windowbench.h"

namespace elevenfive {

/// Changing the tab: the median over all, and the slowest of them.
void measureConditionTabs(Bench& bench);

/// Clicks that write a value: on the slowest list of the tabs but the custom groups, on the custom groups, on a zone's number,
/// on a parity choice, and the submitting of the quick setup.
void measureConditionClicks(Bench& bench);

/// The condition set as a whole: export to a file, import of that file, back to the factory values.
void measureConditionSets(Bench& bench);

}  // namespace elevenfive
