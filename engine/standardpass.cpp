#include "engine/standardpass.h"

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "engine/rowpass.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

void warnOnce(const RunContext& run, const HistoryWarning& warning) {
  bool& warned = run.state.historyWarned.at(static_cast<std::size_t>(warning.stage));
  if (warned)
    return;
  run.ports.boxes.plain(
      u"注意，本次过滤使用了[%1]这个过滤条件,[%1]的设置与历史开奖记录相关！\r\n\r\n"
      "在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。\r\n\r\n[下次不再提示！]"_s.arg(
          warning.name));
  warned = true;
}

/// Whether the row's figure is among the allowed values.
bool isAllowed(const RunContext& run, const Candidate& row, const Attribute& attribute) {
  const int figure = attribute(row.numbers);
  if (figure < 0 || static_cast<std::size_t>(figure) >= run.state.tiaojianValue.size())
    refuseRow(row);
  return run.state.tiaojianValue[static_cast<std::size_t>(figure)] >= 1;
}

}  // namespace

int runStandardPass(const RunContext& run, Qihao period, const StandardStage& stage) {
  StageText text(run);
  if (!conditionInUse(run.gConn, stage.code))
    return 0;
  if (stage.warning && stage.warning->evenWithoutRows)
    warnOnce(run, *stage.warning);
  loadTiaojianValues(run.gConn, run.state, stage.firstId, stage.lastId);
  const std::vector<Candidate> rows = readCandidates(run.gConn, period);
  if (rows.empty())
    return 0;
  LoopScope loop(run, static_cast<int>(rows.size()), StopButton::later);
  if (stage.warning)
    warnOnce(run, *stage.warning);
  loop.allowStop();
  const Attribute attribute = stage.attribute(run, period);
  text.tell(stage.label + u"过滤正在进行中．．．"_s);
  const int passes = markRows(run, period, rows, loop, Marking::counted,
                              [&](const Candidate& row) { return isAllowed(run, row, attribute); });
  if (!run.state.userStop)
    text.tell(stage.label + u"过滤后余："_s + toQuanjiaoDigits(passes) + u" 注"_s);
  return passes;
}

MakeAttribute rowOnly(int (*figure)(const Draw& numbers)) {
  return [figure](const RunContext&, Qihao) -> Attribute { return figure; };
}

}  // namespace elevenfive
