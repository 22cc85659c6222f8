// All conditions of the present set as one text, as the last tab of the condition panel shows it.
#pragma once

#include <QString>

namespace elevenfive {

class Store;
struct RunState;

/// Stands between the groups of the summary.
inline constexpr QStringView summaryRule = u" ----------------------------------------------------------- ";

/// One line for each condition, CR LF behind each, all figures in full-width digits: the picks, the positions, the ranges, the
/// forms, the custom groups, the history match, the parity patterns in use, the reduction. A group without a line has no rule.
/// The counts of the custom groups are read through the buffer of run, where there is one.
QString buildConditionSummary(Store& store, RunState* run = nullptr);

}  // namespace elevenfive
