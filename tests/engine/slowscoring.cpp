#include "tests/engine/slowscoring.h"

#include <algorithm>
#include <tuple>

#include "tests/engine/slowengine.h"
#include "tests/engine/slowtexts.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

// The ten pairs of a draw as differences, the first place less each later one, and so on.
std::vector<int> pairsOf(const Draw& draw) {
  return {draw[0] - draw[1], draw[0] - draw[2], draw[0] - draw[3], draw[0] - draw[4], draw[1] - draw[2],
          draw[1] - draw[3], draw[1] - draw[4], draw[2] - draw[3], draw[2] - draw[4], draw[3] - draw[4]};
}

// A vector of so many zeros, written over from its start by the draws of the places first..last less `other`, then by pairs.
std::vector<int> vectorOf(std::size_t size, const TenDraws& past, int first, int last, const Draw& other) {
  std::vector<int> slots;
  for (int place = first; place <= last; ++place)
    for (int theirs : past.numbers.at(static_cast<std::size_t>(place)))
      for (int own : other)
        slots.push_back(theirs - own);
  for (int difference : pairsOf(other))
    slots.push_back(difference);
  slots.resize(size, 0);
  return slots;
}

// 临时数据 with what is empty first, then 序号, then ID.
std::vector<int> byScore(const std::vector<Row>& rows, Qihao period) {
  std::vector<std::tuple<std::optional<int>, int, int>> keys;
  for (const Row& row : rows)
    if (row.qihao == period)
      keys.emplace_back(row.linshi, row.xuhao, row.id);
  std::sort(keys.begin(), keys.end());
  std::vector<int> ids;
  ids.reserve(keys.size());
  for (const auto& key : keys)
    ids.push_back(std::get<2>(key));
  return ids;
}

}  // namespace

int haomaScore(const TenDraws& past, const Draw& row) {
  const std::vector<int> ofDraws = vectorOf(463, past, 2, 5, past.numbers[1]);
  const std::vector<int> ofRow = vectorOf(463, past, 1, 9, row);
  int score = 0;
  for (std::size_t slot = 1; slot <= 462; ++slot)
    if (ofDraws.at(slot) == ofRow.at(slot))
      ++score;
  const int s = sum(row);
  if (s >= 15 && s <= 20)
    score += 7;
  else if (s >= 21 && s <= 22)
    score += 5;
  else if (s >= 23 && s <= 35)
    score -= 13;
  else if (s >= 36 && s <= 38)
    score -= 8;
  else
    score += 6;
  if (s == past.sums[8])
    score += 6;
  else if (s == past.sums[9])
    score += 8;
  else if (s == past.sums[10])
    score += 10;
  return score;
}

int youhuaScore(const TenDraws& past, int units, int misses, const Draw& row) {
  const std::vector<int> ofDraws = vectorOf(236, past, 2, 10, past.numbers[1]);
  const std::vector<int> ofRow = vectorOf(236, past, 2, 10, row);
  int score = 0;
  for (std::size_t slot = 0; slot < 236; ++slot)
    if (ofDraws.at(slot) == ofRow.at(slot))
      ++score;
  const int u = sumOfUnits(row);
  if (u > 2)
    score += 50;
  if (u == misses)
    score += 50;
  if (u == units)
    score += 50;
  return score;
}

std::vector<PastDraw> SlowEngine::before(Qihao period) const {
  std::vector<PastDraw> draws;
  for (const PastDraw& draw : history)
    if (draw.qihao < period)
      draws.push_back(draw);
  std::sort(draws.begin(), draws.end(), [](const PastDraw& a, const PastDraw& b) { return a.qihao < b.qihao; });
  return draws;
}

TenDraws SlowEngine::tenDraws(Qihao period) const {
  std::vector<PastDraw> draws = before(period);
  if (draws.size() > 10)
    draws.erase(draws.begin(), draws.end() - 10);
  TenDraws past;
  std::size_t place = 10;
  for (const PastDraw& draw : draws) {
    past.numbers.at(place) = draw.numbers;
    past.sums.at(place) = draw.sum;
    --place;
  }
  return past;
}

void SlowEngine::analyseHaoma(Qihao period, int wanted) {
  std::vector<int> ids;
  for (const Row& row : rows)
    if (row.qihao == period)
      ids.push_back(row.id);
  std::sort(ids.begin(), ids.end());
  if (ids.empty()) {
    boxes << u"表中无第"_s + wide(period) + u" 期的数据！"_s;
    return;
  }
  const QString tip = status;
  status = tip + lineBreaks() + u"[ 号码分析 ]分析正在进行中．．．"_s;
  const TenDraws past = tenDraws(period);
  for (int id : ids) {
    rowOf(id).linshi = haomaScore(past, rowOf(id).numbers);
    yield();
    if (stop)
      break;
  }
  int marked = 0;
  for (int id : byScore(rows, period))
    if (marked++ < wanted)
      rowOf(id).linshi = 999;
  if (!stop)
    status = tip + lineBreaks() + u"[ 号码分析 ] 完 成 "_s;
  std::erase_if(rows, [&](const Row& row) { return row.qihao == period && row.linshi && *row.linshi != 999; });
  boxes << u"精选号码完成！"_s;
  stop = false;
}

void SlowEngine::zhinengYouhua(Qihao period, int type) {
  if (use(45) != 1 || type >= 5)
    return;
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  const QString tip = status;
  status = tip + lineBreaks() + u"[ 智能优化 ]优化正在进行中．．．"_s;
  const TenDraws past = tenDraws(period);
  const std::vector<PastDraw> draws = before(period);
  const int units = draws.empty() ? -1 : draws.back().units;
  const int misses = draws.empty() ? -1 : draws.back().misses;
  for (int id : ids) {
    rowOf(id).linshi = youhuaScore(past, units, misses, rowOf(id).numbers);
    yield();
    if (stop)
      break;
  }
  const std::vector<int> order = byScore(rows, period);
  for (std::size_t n = 0; 10 * n < 6 * order.size(); ++n)
    rowOf(order.at(n)).linshi = 0;
  if (!stop)
    status = tip + lineBreaks() + u"[ 智能优化 ] 完 成 "_s;
}

}  // namespace elevenfive::slow
