#include "engine/analysis.h"

#include <vector>

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "engine/scoring.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int chosenMark = 999;

std::vector<Candidate> readAllRows(Store& store, Qihao period) {
  Statement rows =
      store.query("读取候选号码",
                  "SELECT ID, 序号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 WHERE 期号 = ? ORDER BY ID", period);
  std::vector<Candidate> all;
  while (rows.next())
    all.push_back(candidateAt(rows));
  return all;
}

/// Writes the score of each row until the end or a stop.
template <typename Scorer>
void scoreRows(const RunContext& run, const std::vector<Candidate>& rows, Scorer& scorer, LoopScope& loop) {
  Statement write = run.gConn.query("写入临时数据", "UPDATE 日志表 SET 临时数据 = ? WHERE ID = ?");
  for (const Candidate& row : rows) {
    write.run(scorer.score(row.numbers), row.id);
    if (!loop.nextRow())
      break;
  }
}

/// Writes a mark to the rows of a period that stand first by their scores.
void markLowest(Store& store, Qihao period, int count, int mark) {
  store.execute("标记号码",
                "UPDATE 日志表 SET 临时数据 = ? WHERE ID IN"
                " (SELECT ID FROM 日志表 WHERE 期号 = ? ORDER BY 临时数据, 序号, ID LIMIT ?)",
                mark, period, count);
}

/// Scores and chooses inside one transaction, so that a fault in between leaves the rows as they were.
void chooseRows(const RunContext& run, Qihao period, int wanted, const std::vector<Candidate>& rows) {
  StageText text(run);
  LoopScope loop(run, static_cast<int>(rows.size()));
  text.tell(u"[ 号码分析 ]分析正在进行中．．．"_s);
  HaomaScorer scorer(readEarlierDraws(run.gConn, period));
  StoreTransaction transaction(run.gConn, OnFault::undo);
  scoreRows(run, rows, scorer, loop);
  markLowest(run.gConn, period, wanted, chosenMark);
  if (!run.state.userStop)
    text.tell(u"[ 号码分析 ] 完 成 "_s);
  run.gConn.execute("删除未选中的号码", "DELETE FROM 日志表 WHERE 期号 = ? AND 临时数据 <> ?", period, chosenMark);
  transaction.commit();
}

}  // namespace

void analyseHaoma(const RunContext& run, Qihao period, int wanted) {
  const std::vector<Candidate> rows = readAllRows(run.gConn, period);
  if (rows.empty()) {
    run.ports.boxes.plain(u"表中无第"_s + toQuanjiaoDigits(period) + u" 期的数据！"_s);
    return;
  }
  const StopCleared stopCleared(run.state);
  chooseRows(run, period, wanted, rows);
  run.ports.boxes.plain(u"精选号码完成！"_s);
  run.ports.view.showRizhiGrid();
}

int zhinengYouhua(const RunContext& run, Qihao period, int type) {
  constexpr int optimiseSwitch = 45;
  constexpr int leastTypeWithoutReduction = 5;
  if (!conditionInUse(run.gConn, optimiseSwitch) || type >= leastTypeWithoutReduction)
    return 0;
  StageText text(run);
  const std::vector<Candidate> rows = readCandidates(run.gConn, period);
  if (rows.empty())
    return 0;
  LoopScope loop(run, static_cast<int>(rows.size()));
  text.tell(u"[ 智能优化 ]优化正在进行中．．．"_s);
  YouhuaScorer scorer(readEarlierDraws(run.gConn, period), readPreviousFigures(run.gConn, period));
  StoreTransaction transaction(run.gConn, OnFault::undo);
  scoreRows(run, rows, scorer, loop);
  const int better = (countCandidates(run.gConn, period) * 6 + 9) / 10;  // 60 percent, rounded up
  markLowest(run.gConn, period, better, 0);
  transaction.commit();
  if (!run.state.userStop)
    text.tell(u"[ 智能优化 ] 完 成 "_s);
  return static_cast<int>(rows.size());
}

}  // namespace elevenfive
