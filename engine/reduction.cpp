#include "engine/reduction.h"

#include <array>
#include <vector>

#include "engine/candidates.h"
#include "engine/numbersets.h"
#include "model/errors.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr std::array<QStringView, lastReductionType - firstReductionType + 1> captions = {
    u"保三型", u"保四型", u"保五型", u"保六型", u"保七型"};

/// 缩水标记 of a row that was not handled, and of one that a kept row covers; a kept row holds K.
constexpr int unhandled = 0;
constexpr int covered = -1;

/// A mark that was never set counts as none of these.
constexpr int noMark = 32767;

/// The rows by score and rank; rows equal in both come in the order of `ID`.
std::vector<Candidate> readRows(Store& store, Qihao period) {
  Statement rows = store.query("读取缩水号码",
                               "SELECT ID, 序号, 号码1, 号码2, 号码3, 号码4, 号码5, 缩水标记 FROM 日志表"
                               " WHERE 期号 = ? AND 过滤标记 >= 0 ORDER BY 临时数据, 序号, ID",
                               period);
  std::vector<Candidate> candidates;
  while (rows.next())
    candidates.emplace_back(candidateAt(rows)).mark = rows.isNull(7) ? noMark : rows.integer(7);
  return candidates;
}

NumberSet setOf(const Candidate& row) {
  requireNumbers(row);
  NumberSet set{};
  for (const int n : row.numbers)
    set[static_cast<std::size_t>(n)] = true;
  return set;
}

/// Marks the rows behind `kept` that share K numbers with it, until the end or a stop.
void coverRows(const RunContext& run, std::vector<Candidate>& rows, std::size_t kept, int K) {
  const NumberSet set = setOf(rows[kept]);
  for (std::size_t i = kept + 1; i < rows.size(); ++i) {
    Candidate& row = rows[i];
    if (row.mark == unhandled || row.mark == covered) {
      requireNumbers(row);
      if (countIn(set, row.numbers) >= K)
        row.mark = covered;
    }
    run.ports.events.yield();
    if (run.state.userStop)
      return;
  }
}

/// Marks kept and covered rows until none is left or a stop; returns how many are kept.
int coverAll(const RunContext& run, std::vector<Candidate>& rows, int K) {
  int kept = 0;
  std::size_t current = 0;
  while (current < rows.size()) {
    rows[current].mark = K;
    rows[current].xuhao = ++kept;
    coverRows(run, rows, current, K);
    // Rows before the current one are kept or covered: an unhandled one can only lie behind it.
    do
      ++current;
    while (current < rows.size() && rows[current].mark != unhandled);
    run.ports.progress.setValue(kept);
    run.ports.events.yield();
    if (run.state.userStop)
      break;
  }
  return kept;
}

/// Writes the marks and ranks that changed and deletes the covered rows.
void writeRows(const RunContext& run, Qihao period, const std::vector<Candidate>& rows) {
  StoreTransaction transaction(run.gConn, OnFault::undo);
  Statement write = run.gConn.query("写入缩水标记", "UPDATE 日志表 SET 缩水标记 = ?, 序号 = ? WHERE ID = ?");
  SparseYield pace(run.ports.events);
  for (const Candidate& row : rows) {
    if (row.mark != unhandled && row.mark != noMark)
      write.run(row.mark, row.xuhao, row.id);
    pace.row();
  }
  run.gConn.execute("删除缩水掉的号码", "DELETE FROM 日志表 WHERE 期号 = ? AND 缩水标记 < 0", period);
  transaction.commit();
}

/// The type's caption in brackets, which opens its lines.
QString labelOf(int K) {
  return u"[%1]"_s.arg(reductionCaption(K));
}

void tellResult(StageText& text, int K, int count) {
  text.tell(labelOf(K) + u"缩水后余："_s + toQuanjiaoDigits(count) + u" 注"_s);
}

}  // namespace

QStringView reductionCaption(int type) {
  return captions.at(static_cast<std::size_t>(type - firstReductionType));
}

void requireReductionType(int type) {
  if (type < firstReductionType)
    throw MissingData(u"还没有选择缩水类型，请先在“缩水设置”中选择保三型到保七型中的一种。"_s);
}

int runSuoshui(const RunContext& run, int K, Qihao period) {
  requireReductionType(K);
  StageText text(run);
  std::vector<Candidate> rows = readRows(run.gConn, period);
  const int count = static_cast<int>(rows.size());
  if (K >= noReductionType) {
    tellResult(text, noReductionType, count);
    return count;
  }
  if (rows.empty()) {
    tellResult(text, K, 0);
    return 0;
  }
  const LoopScope loop(run, count);
  text.tell(labelOf(K) + u"缩水正在进行中．．．"_s);
  const int kept = coverAll(run, rows, K);
  writeRows(run, period, rows);
  run.ports.progress.setValue(count);
  tellResult(text, K, kept);
  return kept;
}

}  // namespace elevenfive
