#include "history/temperature.h"

#include <algorithm>

#include "history/drawrows.h"
#include "history/pass.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A draw as a set, bit n for number n. A number that a row holds twice counts once.
unsigned setOf(const Draw& draw) {
  unsigned set = 0;
  for (const int n : draw)
    if (isNumber(n))
      set |= 1U << n;
  return set;
}

}  // namespace

void RecentDraws::add(const Draw& draw) {
  sets_[count_++ % sets_.size()] = setOf(draw);
}

int RecentDraws::temperature(const Draw& draw, int span) const {
  int sum = 0;
  const std::size_t reach = std::min(count_, static_cast<std::size_t>(span));
  for (std::size_t back = 1; back <= reach; ++back)
    for (const int n : draw)
      sum += static_cast<int>(sets_[(count_ - back) % sets_.size()] >> n & 1U);
  return sum;
}

void visitWithRecent(Store& store, const DrawRow& first, Qihao to,
                     const std::function<void(const DrawRow& row, const RecentDraws& recent)>& visit) {
  // The draws up to the first one only warm the window up.
  const Qihao warmUp = std::min(getPrevQihao(store, first.qihao, RecentDraws::longSpan), first.qihao);
  DrawRows rows(store, warmUp, to);
  RecentDraws recent;
  while (const std::optional<DrawRow> row = rows.next()) {
    if (row->qihao > first.qihao)
      visit(*row, recent);
    recent.add(row->numbers);
  }
}

void showWenDuPeriod(StatusPanels* panels, Qihao q) {
  if (panels != nullptr)
    panels->setPanel(StatusPanels::runningPass,
                     u"   正在统计 "_s + QString::number(q) + u" 期号码的温度值。。。。。。  "_s);
}

int calc_WenDu(Store& store, Qihao q, int n) {
  DrawRows rows(store, getPrevQihao(store, q, n), q);
  std::array<int, numberCount + 1> count{};
  while (const std::optional<DrawRow> row = rows.next()) {
    if (row->qihao == q) {
      checkNumbers(*row);
      int sum = 0;
      for (const int x : row->numbers)
        sum += count[static_cast<std::size_t>(x)];
      return sum;
    }
    const unsigned set = setOf(row->numbers);
    for (int k = 1; k <= numberCount; ++k)
      count[static_cast<std::size_t>(k)] += (set >> k & 1U) != 0 ? 1 : 0;
  }
  return 0;
}

void calcWenDuRange(Store& store, Qihao from, Qihao to, Progress* progress, Events& events, StatusPanels* panels) {
  const Qihao prev = getPrevQihao(store, from, 1);
  PassBar bar(progress, progress != nullptr ? countDraws(store, prev, to) : 0, 0);
  const PanelEmptied panel(progress != nullptr ? panels : nullptr);
  const std::optional<DrawRow> first = DrawRows(store, prev, to).next();
  if (!first)
    return;
  Statement update = store.query("统计温度值", "UPDATE 历史记录 SET 温度值5 = ?, 温度值10 = ? WHERE 期号 = ?");
  PassTransaction transaction(store);
  int done = 0;
  visitWithRecent(store, *first, to, [&](const DrawRow& row, const RecentDraws& recent) {
    checkNumbers(row);
    bar.set(++done);
    update.run(recent.temperature(row.numbers, RecentDraws::shortSpan),
               recent.temperature(row.numbers, RecentDraws::longSpan), row.qihao);
    transaction.rowDone();
    showWenDuPeriod(panels, row.qihao);
    events.yield();
  });
  transaction.commit();
  bar.fill();
}

}  // namespace elevenfive
