// The derived columns of a draw a second time, straight from what each column means, with no table and no shared code; and
// random histories to compare them on.
#pragma once

#include <rapidcheck.h>

#include <QMap>
#include <QStringList>
#include <algorithm>
#include <functional>
#include <set>
#include <vector>

#include "model/numbers.h"

namespace elevenfive {

struct SlowDraw {
  Qihao qihao;
  std::set<int> numbers;
};

using SlowHistory = std::vector<SlowDraw>;

/// "5,3" for classes of five and three.
inline QString spreadText(const std::set<int>& numbers, const std::function<int(int)>& classOf) {
  QMap<int, int> counts;
  for (const int n : numbers)
    ++counts[classOf(n)];
  QList<int> sizes = counts.values();
  std::sort(sizes.begin(), sizes.end(), std::greater<>());
  QStringList texts;
  for (const int size : sizes)
    texts << QString::number(size);
  return texts.join(u',');
}

/// The lengths of the runs of two and more, the longest first: "3+2"; "0" without one.
inline QString runText(const std::set<int>& numbers) {
  QList<int> runs;
  for (const int n : numbers) {
    if (numbers.count(n - 1) == 0)
      runs << 0;
    ++runs.last();
  }
  std::sort(runs.begin(), runs.end(), std::greater<>());
  QStringList texts;
  for (const int length : runs)
    if (length > 1)
      texts << QString::number(length);
  return texts.isEmpty() ? QStringLiteral("0") : texts.join(u'+');
}

inline int sumWhere(const std::set<int>& numbers, const std::function<bool(int)>& holds) {
  int sum = 0;
  for (const int n : numbers)
    sum += holds(n) ? n : 0;
  return sum;
}

inline int countWhere(const std::set<int>& numbers, const std::function<bool(int)>& holds) {
  return static_cast<int>(std::count_if(numbers.begin(), numbers.end(), holds));
}

/// How often the numbers of draw i came in the n draws before it.
inline int slowTemperature(const SlowHistory& history, std::size_t i, std::size_t n) {
  int sum = 0;
  for (std::size_t j = i >= n ? i - n : 0; j < i; ++j)
    sum += countWhere(history[i].numbers, [&](int x) { return history[j].numbers.count(x) > 0; });
  return sum;
}

/// The columns that slowColumns gives, as SQL.
inline constexpr char slowColumnNames[] =
    "和值, 奇数和值, 偶数和值, 跨度, 最大间距, AC值, 奇数个数, 偶数个数, 大数个数, 小数个数, 低尾码个数, 高尾码个数, "
    "连号,"
    " 重叠号, 斜位码, 尾数形式, 头数形式, 头数和值, 尾数和值, 温度值5, 温度值10, 已完成";

/// Those columns of draw i > 0, joined by blanks.
inline QString slowColumns(const SlowHistory& history, std::size_t i) {
  const std::set<int>& draw = history[i].numbers;
  const std::set<int>& before = history[i - 1].numbers;
  const std::vector<int> sorted(draw.begin(), draw.end());
  std::set<int> differences;
  int widest = 0;
  for (std::size_t a = 0; a < sorted.size(); ++a)
    for (std::size_t b = a + 1; b < sorted.size(); ++b)
      differences.insert(sorted[b] - sorted[a]);
  for (std::size_t a = 1; a < sorted.size(); ++a)
    widest = std::max(widest, sorted[a] - sorted[a - 1]);
  const auto odd = [](int n) { return n % 2 == 1; };
  const auto even = [](int n) { return n % 2 == 0; };
  const auto lowTail = [](int n) { return n == 10 || n == 11 || n <= 4; };
  QStringList cells;
  const auto add = [&](int value) { cells << QString::number(value); };
  add(sumWhere(draw, [](int) { return true; }));
  add(sumWhere(draw, odd));
  add(sumWhere(draw, even));
  add(sorted.back() - sorted.front());
  add(widest);
  add(static_cast<int>(differences.size()) - 4);
  add(countWhere(draw, odd));
  add(countWhere(draw, even));
  add(countWhere(draw, [](int n) { return n > 5; }));
  add(countWhere(draw, [](int n) { return n < 6; }));
  add(countWhere(draw, lowTail));
  add(5 - countWhere(draw, lowTail));
  cells << runText(draw);
  add(countWhere(draw, [&](int n) { return before.count(n) > 0; }));
  add(countWhere(draw, [&](int n) { return before.count(n - 1) > 0 || before.count(n + 1) > 0; }));
  cells << spreadText(draw, [](int n) { return n % 10; }) << spreadText(draw, [](int n) { return n / 10; });
  add(countWhere(draw, [](int n) { return n >= 10; }));
  int tails = 0;
  for (const int n : draw)
    tails += n % 10;
  add(tails);
  add(slowTemperature(history, i, 5));
  add(slowTemperature(history, i, 10));
  cells << QStringLiteral("Y");
  return cells.join(u' ');
}

/// Five different numbers.
inline std::set<int> anyNumbers() {
  std::vector<int> bag{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  std::set<int> numbers;
  while (numbers.size() < 5) {
    const auto i = *rc::gen::inRange<std::size_t>(0, bag.size());
    numbers.insert(bag[i]);
    bag.erase(bag.begin() + static_cast<std::ptrdiff_t>(i));
  }
  return numbers;
}

/// Up to most draws at periods with gaps, some of eight and some of nine digits.
inline SlowHistory anyHistory(int least, int most) {
  SlowHistory history;
  Qihao qihao = *rc::gen::element<Qihao>(2003001, 11031510, 99999990);
  const int count = *rc::gen::inRange(least, most + 1);
  for (int i = 0; i < count; ++i) {
    qihao += *rc::gen::element(1, 1, 1, 2, 17, 9000);
    history.push_back({qihao, anyNumbers()});
  }
  return history;
}

/// The history as lines "11031510 1 2 3 4 5".
inline QString textOf(const SlowHistory& history) {
  QString text;
  for (const SlowDraw& draw : history) {
    text += QString::number(draw.qihao);
    for (const int n : draw.numbers)
      text += u' ' + QString::number(n);
    text += u'\n';
  }
  return text;
}

}  // namespace elevenfive
