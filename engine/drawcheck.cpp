#include "engine/drawcheck.h"

#include <algorithm>
#include <array>
#include <vector>

#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

struct CheckedRow {
  int id = 0;
  int hits = 0;
};

std::vector<CheckedRow> countHits(Store& store, Qihao period, const Draw& draw) {
  Statement rows = store.query(
      "读取候选号码", "SELECT ID, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 WHERE 期号 = ? ORDER BY ID", period);
  std::vector<CheckedRow> checked;
  while (rows.next()) {
    int hits = 0;
    for (int position = 1; position <= drawSize; ++position) {
      const int number = rows.integer(position);
      // A lenient import may leave a 0 in a draw: it is no number that a row could hit.
      hits += isNumber(number) && std::find(draw.begin(), draw.end(), number) != draw.end() ? 1 : 0;
    }
    checked.push_back({rows.integer(0), hits});
  }
  return checked;
}

void writeHits(Store& store, const std::vector<CheckedRow>& rows) {
  StoreTransaction transaction(store, OnFault::undo);
  Statement write = store.query("写入买中个数", "UPDATE 日志表 SET 买中个数 = ? WHERE ID = ?");
  for (const CheckedRow& row : rows)
    write.run(row.hits, row.id);
  transaction.commit();
}

void tellIncomplete(Boxes& boxes, Qihao period) {
  const QString text = period > 0 ? u"第%1期的日志记录或历史记录不完整！\r\n无法核对哦^_^！！"_s.arg(period)
                                  : u"没有要核对的号码！请先选号！"_s;
  boxes.show({BoxKind::plain, u"出错啦!"_s, text, BoxButtons::ok});
}

}  // namespace

bool checkKaijiang(const RunContext& run, Qihao period) {
  const std::optional<Draw> draw = drawOf(run.gConn, period);
  const std::vector<CheckedRow> rows = draw ? countHits(run.gConn, period, *draw) : std::vector<CheckedRow>();
  if (rows.empty()) {
    tellIncomplete(run.ports.boxes, period);
    return false;
  }
  writeHits(run.gConn, rows);
  std::array<int, drawSize + 1> rowsByHits{};
  for (const CheckedRow& row : rows)
    ++rowsByHits[static_cast<std::size_t>(row.hits)];
  setStatus(run, run.ports.status.text() + statusBreak() + u"开奖核对结果如下——"_s + statusBreak() + u"中五个号： "_s +
                     toQuanjiaoDigits(rowsByHits[5]) + u" 注"_s + statusBreak() + u"中四个号： "_s +
                     toQuanjiaoDigits(rowsByHits[4]) + u" 注"_s);
  run.ports.view.showRizhiGrid();
  run.ports.view.showDrawnNumbers(*draw);
  return true;
}

}  // namespace elevenfive
