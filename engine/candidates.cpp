#include "engine/candidates.h"

#include <algorithm>

#include "model/errors.h"
#include "model/texts.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

Candidate candidateAt(const Statement& rows) {
  return {rows.integer(0),
          rows.integer(1),
          {rows.integer(2), rows.integer(3), rows.integer(4), rows.integer(5), rows.integer(6)}};
}

std::vector<Candidate> readCandidates(Store& store, Qihao period) {
  Statement rows = store.query("读取候选号码",
                               "SELECT ID, 序号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记 FROM 日志表"
                               " WHERE 期号 = ? AND 过滤标记 >= 0 ORDER BY 序号, ID",
                               period);
  std::vector<Candidate> candidates;
  while (rows.next())
    candidates.emplace_back(candidateAt(rows)).mark = rows.integer(7);
  return candidates;
}

int countCandidates(Store& store, Qihao period) {
  return store.value("统计候选号码", "SELECT COUNT(*) FROM 日志表 WHERE 期号 = ?", period).value_or(0);
}

void requireNumbers(const Candidate& row) {
  if (!std::all_of(row.numbers.begin(), row.numbers.end(), isNumber))
    throw NumberFault(
        u"序号 %1 的号码（%2）不在 01 到 11 之间，过滤已中止，请删除这一注或重新导入号码。"_s.arg(row.xuhao).arg(
            drawText(row.numbers, u" "_s)));
}

void refuseRow(const Candidate& row) {
  throw NumberFault(u"序号 %1 的号码（%2）无法计算，过滤已中止，请删除这一注或重新导入号码。"_s.arg(row.xuhao).arg(
      drawText(row.numbers, u" "_s)));
}

CandidateWriter::CandidateWriter(Store& store)
    : mark_(store.query("写入过滤标记", "UPDATE 日志表 SET 过滤标记 = ? WHERE ID = ?")),
      markAndXuhao_(store.query("写入过滤标记", "UPDATE 日志表 SET 过滤标记 = ?, 序号 = ? WHERE ID = ?")),
      remove_(store.query("删除未通过的号码", "DELETE FROM 日志表 WHERE ID = ?")) {}

void CandidateWriter::pass(const Candidate& row, int mark, int rank) {
  if (row.xuhao == rank)
    mark_.run(mark, row.id);
  else
    markAndXuhao_.run(mark, rank, row.id);
}

void CandidateWriter::fail(const Candidate& row) {
  mark_.run(deletedMark, row.id);
}

void CandidateWriter::remove(const Candidate& row) {
  remove_.run(row.id);
}

void deleteMarkedCandidates(Store& store, Qihao period) {
  store.execute("删除未通过的号码", "DELETE FROM 日志表 WHERE 期号 = ? AND 过滤标记 < 0", period);
}

}  // namespace elevenfive
