#include "engine/scoring.h"

#include "model/store.h"

namespace elevenfive {

namespace {

/// The rows whose sum stands well go ahead.
int sumBonus(int sum) {
  struct Band {
    int first;
    int last;
    int change;
  };
  static constexpr Band bands[] = {{15, 20, 7}, {21, 22, 5}, {23, 35, -13}, {36, 38, -8}};
  for (const Band& band : bands)
    if (sum >= band.first && sum <= band.last)
      return band.change;
  return 6;
}

/// A sum that an older draw had counts against the row; the first of them alone.
int repeatBonus(const EarlierDraws& earlier, int sum) {
  if (sum == earlier.sums[8])
    return 6;
  if (sum == earlier.sums[9])
    return 8;
  if (sum == earlier.sums[10])
    return 10;
  return 0;
}

int sumOf(const Draw& row) {
  return row[0] + row[1] + row[2] + row[3] + row[4];
}

}  // namespace

EarlierDraws readEarlierDraws(Store& store, Qihao period) {
  LookBackBlock block;
  getHistoryRecord(store, block, period);
  Statement sums =
      store.query("读取前十期和值", "SELECT 和值 FROM 历史记录 WHERE 期号 >= ? AND 期号 <= ? ORDER BY 期号",
                  getPrevQihao(store, period, EarlierDraws::depth), getPrevQihao(store, period, 1));
  EarlierDraws earlier;
  for (int back = 1; back <= EarlierDraws::depth; ++back)
    for (int position = 1; position <= drawSize; ++position)
      earlier.numbers[static_cast<std::size_t>(back)][static_cast<std::size_t>(position - 1)] =
          block.at(position, back);
  for (std::size_t back = EarlierDraws::depth; back >= 1 && sums.next(); --back)
    earlier.sums[back] = sums.integer(0);
  return earlier;
}

HaomaScorer::HaomaScorer(const EarlierDraws& earlier) : earlier_(earlier) {
  reference_.addDraws(earlier_, 2, 5, earlier_.numbers[1]);
  reference_.addPairs(earlier_.numbers[1]);
}

int HaomaScorer::score(const Draw& row) {
  differences_.restart();
  differences_.addDraws(earlier_, 1, 9, row);
  differences_.addPairs(row);
  const int sum = sumOf(row);
  return reference_.agreeing(differences_, 1) + sumBonus(sum) + repeatBonus(earlier_, sum);
}

PreviousFigures readPreviousFigures(Store& store, Qihao period) {
  Statement previous = store.query("读取上期开奖", "SELECT 尾数和值, 遗漏值总和 FROM 历史记录 WHERE 期号 = ?",
                                   getPrevQihao(store, period, 1));
  if (!previous.next())
    return {};
  return {previous.integer(0), previous.integer(1)};
}

YouhuaScorer::YouhuaScorer(const EarlierDraws& earlier, const PreviousFigures& previous)
    : earlier_(earlier), previous_(previous) {
  reference_.addDraws(earlier_, 2, 10, earlier_.numbers[1]);
  reference_.addPairs(earlier_.numbers[1]);
}

int YouhuaScorer::score(const Draw& row) {
  constexpr int bonus = 50;
  constexpr int firstUnitsDigit = 1;  // of the number 1
  differences_.restart();
  differences_.addDraws(earlier_, 2, 10, row);
  differences_.addPairs(row);
  int units = 0;
  for (const int number : row)
    units += number % 10;
  int score = reference_.agreeing(differences_, 0);
  if (units > 2 * firstUnitsDigit)
    score += bonus;
  if (units == previous_.misses)
    score += bonus;
  if (units == previous_.units)
    score += bonus;
  return score;
}

}  // namespace elevenfive
