#include "model/navigators.h"

#include <limits>

#include "model/daycount.h"
#include "model/store.h"

namespace elevenfive {

namespace {

constexpr const char* purpose = "查找期号";

}  // namespace

Qihao getLastQihao(Store& store) {
  return store.value(purpose, "SELECT 期号 FROM 历史记录 ORDER BY 期号 DESC LIMIT 1").value_or(0);
}

Qihao getNextQihao(Store& store) {
  const Qihao last = getLastQihao(store);
  return last >= 1 && last < std::numeric_limits<Qihao>::max() ? last + 1 : last;
}

Qihao getFirstQihao(Store& store) {
  return store.value(purpose, "SELECT 期号 FROM 历史记录 ORDER BY 期号 LIMIT 1").value_or(0);
}

Qihao getPrevQihao(Store& store, Qihao q, int n) {
  Statement rows =
      store.query(purpose, "SELECT 期号 FROM 历史记录 WHERE 期号 < ? ORDER BY 期号 DESC LIMIT ?", q, n < 0 ? 0 : n);
  Qihao previous = noEarlierQihao;
  while (rows.next())
    previous = rows.integer(0);
  return previous;
}

Qihao getQihaoBack(Store& store, Qihao q, int n) {
  Statement rows = store.query(purpose, "SELECT 期号 FROM 历史记录 WHERE 期号 <= ? ORDER BY 期号 DESC", q);
  Qihao found = 0;
  for (int step = 0; step <= n && rows.next(); ++step)
    found = rows.integer(0);
  return found;
}

Qihao getQihaoForward(Store& store, Qihao q, int n) {
  const auto found =
      store.value(purpose, "SELECT 期号 FROM 历史记录 WHERE 期号 >= ? ORDER BY 期号 LIMIT 1 OFFSET ?", q, n);
  return found ? *found : getLastQihao(store);
}

std::optional<QDate> getLastDate(Store& store) {
  Statement rows = store.query(purpose, "SELECT MAX(开奖日期) FROM 历史记录");
  if (!rows.next() || rows.isNull(0))
    return std::nullopt;
  return dateOfDayCount(rows.real(0));
}

std::optional<Draw> drawOf(Store& store, Qihao q) {
  Statement rows =
      store.query("读取开奖号码", "SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录 WHERE 期号 = ?", q);
  if (!rows.next())
    return std::nullopt;
  Draw draw{};
  for (int i = 0; i < drawSize; ++i)
    draw[static_cast<std::size_t>(i)] = rows.integer(i);
  return draw;
}

int getHistoryRecord(Store& store, LookBackBlock& block, Qihao q) {
  const Qihao to = getPrevQihao(store, q, 1);
  const Qihao from = getPrevQihao(store, q, LookBackBlock::depth);
  Statement rows = store.query("读取前十期号码",
                               "SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录"
                               " WHERE 期号 >= ? AND 期号 <= ? ORDER BY 期号",
                               from, to);
  int count = 0;
  for (int slot = LookBackBlock::depth; slot >= 1 && rows.next(); --slot, ++count)
    for (int position = 1; position <= drawSize; ++position)
      block.at(position, slot) = static_cast<std::int16_t>(rows.integer(position - 1));
  return count;
}

}  // namespace elevenfive
