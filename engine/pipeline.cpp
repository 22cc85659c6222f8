#include "engine/pipeline.h"

#include <array>
#include <vector>

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "engine/countfilters.h"
#include "engine/historyfilters.h"
#include "engine/matchfilter.h"
#include "engine/parity.h"
#include "engine/patternfilters.h"
#include "engine/positionfilter.h"
#include "engine/reduction.h"
#include "engine/tolerance.h"
#include "engine/valuefilters.h"
#include "model/errors.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A stage without members as a row of the table.
template <int (*filter)(const RunContext& run, Qihao period)>
int alone(const RunContext& run, Qihao period, int) {
  return filter(run, period);
}

constexpr std::array<PipelineStage, 24> stages = {{
    {u"和值", alone<filter_Hezhi>},
    {u"头数和值", alone<filter_TouHezhi>},
    {u"尾数和值", alone<filter_WeiHezhi>},
    {u"奇数和值", alone<filter_QishuHezhi>},
    {u"偶数和值", alone<filter_OushuHezhi>},
    {u"奇数个数", alone<filter_QishuGeshu>},
    {u"偶数个数", alone<filter_OushuGeshu>},
    {u"大数个数", alone<filter_Daxiao>},
    {u"小数个数", alone<filter_Xiaoshu>},
    {u"高尾码个数", alone<filter_GaoWei>},
    {u"低尾码个数", alone<filter_DiWei>},
    {u"温度值5", alone<filter_Wendu5>},
    {u"温度值10", alone<filter_Wendu10>},
    {u"区间", filter_Qujian, 1, zoneCount},
    {u"自定义组", filter_Zidingyi, 1, groupCount},
    {u"跨度", alone<filter_Kuadu>},
    {u"最大间距", alone<filter_JianjuMax>},
    {u"连号", alone<filter_Lianhao>},
    {u"AC值", alone<filter_AC>},
    {u"重叠号", alone<filter_Chongdie>},
    {u"斜位码", alone<filter_Xiewei>},
    {u"尾数形式", alone<filter_WeiXingshi>},
    {u"头数形式", alone<filter_TouXingshi>},
    {u"单双组合", filter_Danshuang, 0, parityPatterns},
}};

/// Reading line of a run's start: a status text of more than 30 characters gives way to it.
constexpr qsizetype shortStatus = 30;

std::vector<int> rowIds(Store& store, Qihao period) {
  Statement rows = store.query("读取候选号码", "SELECT ID FROM 日志表 WHERE 期号 = ? ORDER BY ID", period);
  std::vector<int> ids;
  while (rows.next())
    ids.push_back(rows.integer(0));
  return ids;
}

/// Sets the marks of the rows to 0, until the end or a stop.
void clearMarks(const RunContext& run, const std::vector<int>& ids, LoopScope& loop) {
  StoreTransaction transaction(run.gConn, OnFault::undo);
  Statement clear = run.gConn.query(
      "清除标记", "UPDATE 日志表 SET 过滤标记 = 0, 缩水标记 = 0, 精选标记 = 0, 临时数据 = 0 WHERE ID = ?");
  for (const int id : ids) {
    clear.run(id);
    if (!loop.nextRow())
      break;
  }
  transaction.commit();
}

/// The counted stages in their order; after a stop none of the rest runs.
void runCountedStages(const RunContext& run, Qihao period) {
  for (const PipelineStage& stage : stages)
    for (int member = stage.firstMember; member <= stage.lastMember; ++member) {
      if (run.state.userStop)
        return;
      stage.run(run, period, member);
    }
}

/// The one value of this row is the reduction type.
constexpr int reductionTypeId = 3900;

/// What stands behind the counted stages. The tolerance judges also after a stop, the rest does not run then.
void runClosingStages(const RunContext& run, Qihao period) {
  if (run.state.rongcuoValue > 0)
    applyRongcuo(run, period, run.state.rongcuoValue);
  if (!run.state.userStop)
    filter_Dingwei(run, period);
  if (!run.state.userStop)
    filter_Lishi(run, period);
  if (run.state.userStop)
    return;
  loadTiaojianValues(run.gConn, run.state, reductionTypeId, reductionTypeId);
  runSuoshui(run, run.state.tiaojianValue[0], period);
}

/// What would end the run in its midst ends it before the first stage, so that no row is lost: a row that holds what is no
/// number of a draw, and a reduction that was never chosen.
void requireRunnable(const RunContext& run, Qihao period) {
  for (const Candidate& row : readCandidates(run.gConn, period))
    requireNumbers(row);
  requireReductionType(conditionValue(run.gConn, reductionTypeId));
}

/// What the status text says at the end of a run, and the grid as it is then.
void showOutcome(const RunContext& run, Qihao period) {
  const QString count = toQuanjiaoDigits(countCandidates(run.gConn, period));
  run.ports.view.showRizhiGrid();
  addStatusLine(run, (run.state.userStop ? u"用户中止,当前记录余："_s : u"全部过滤缩水完成,余："_s) + count + u" 注"_s);
  run.ports.events.yield();
}

/// The end of a run, however it ends: no stop is pending, another user may log on, and nothing is left to be stopped.
class RunScope final {
 public:
  explicit RunScope(const RunContext& run) : run_(run) {
    run_.ports.controls.setEnabled(ControlId::mnu_UserQiehuan, false);
  }
  ~RunScope() {
    run_.state.userStop = false;
    run_.ports.controls.setEnabled(ControlId::mnu_UserQiehuan, true);
    run_.ports.controls.setEnabled(ControlId::cmm_stop, false);
  }
  RunScope(const RunScope&) = delete;
  RunScope& operator=(const RunScope&) = delete;

 private:
  RunContext run_;
};

}  // namespace

std::span<const PipelineStage> pipelineStages() {
  return stages;
}

bool resetRizhiBiaoji(const RunContext& run, Qihao period) {
  const std::vector<int> ids = rowIds(run.gConn, period);
  if (!ids.empty()) {
    const int maximum = 2 * static_cast<int>(ids.size());
    StageText text(run);
    LoopScope loop(run, maximum);
    const QString reading = u"正读取数据["_s + toQuanjiaoDigits(period) + u"期]．．．"_s;
    if (run.ports.status.text().size() > shortStatus)
      text.tellAlone(reading);
    else
      text.tell(reading);
    clearMarks(run, ids, loop);
    run.ports.progress.setValue(maximum);
  } else if (period > 0) {
    addStatusLine(run, u"表格中无["_s + toQuanjiaoDigits(period) + u"]期数据．"_s);
  }
  if (!ids.empty() && !run.state.userStop)
    addStatusLine(run, u"过滤缩水之前共："_s + toQuanjiaoDigits(static_cast<int>(ids.size())) + u"注．"_s);
  run.ports.status.moveCaretToEnd();
  return !ids.empty() && !run.state.userStop;
}

void runGuolvSuoshui(const RunContext& run, Qihao period) {
  const RunScope scope(run);
  if (!resetRizhiBiaoji(run, period))
    return;
  requireRunnable(run, period);
  try {
    runCountedStages(run, period);
    runClosingStages(run, period);
  } catch (const Error&) {
    run.ports.view.showRizhiGrid();  // the stages before have deleted rows that the grid still shows
    throw;
  }
  showOutcome(run, period);
}

}  // namespace elevenfive
