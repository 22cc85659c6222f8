// The one shape of all counted filter stages but the parity exclusions: compute one small figure of each row and look it up in
// the user's allowed values.
//
// A stage tells only its label, its switch, its stretch of values and its attribute. The status text grows by one line:
// while the pass runs it tells so, afterwards how many rows passed. A switch other than 1, or no rows: nothing happens.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "engine/runcontext.h"
#include "model/numbers.h"

namespace elevenfive {

/// The figure of a row. Its numbers are 1..11, in the order of the row.
using Attribute = std::function<int(const Draw& numbers)>;

/// What a stage asks from the history or from 号码特性, done once a pass after its rows were read.
using MakeAttribute = std::function<Attribute(const RunContext& run, Qihao period)>;

/// Shown once while the program runs, by stages whose outcome depends on the history.
struct HistoryWarning {
  HistoryStage stage;
  QStringView name;
  bool evenWithoutRows = false;  ///< as soon as the stage is in use; else only when it has rows
};

struct StandardStage {
  QString label;  ///< with its brackets
  int code;       ///< switch in 过滤条件使用情况
  int firstId;    ///< stretch in 过滤条件
  int lastId;
  MakeAttribute attribute;
  std::optional<HistoryWarning> warning = std::nullopt;
};

/// Runs a stage over the rows of a period and returns how many passed; 0 where it did not run. Throws Error, with the rows as
/// they were before.
int runStandardPass(const RunContext& run, Qihao period, const StandardStage& stage);

/// An attribute that needs nothing but the row.
MakeAttribute rowOnly(int (*figure)(const Draw& numbers));

}  // namespace elevenfive
