// The stages behind the counted ones: tolerance, positions, match with the history, reduction.
#include "tests/engine/slowengine.h"

#include <algorithm>

#include "tests/engine/slowtexts.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

}  // namespace

// ---- the stages behind the counted ones ----

int SlowEngine::countConditions() const {
  int count = 0;
  for (const auto& [code, use] : uses) {
    if (use <= 0)
      continue;
    const bool outside = (code >= 38 && code <= 41) || (code >= 30 && code <= 36) || code == 45;
    if (!outside)
      ++count;
  }
  return count;
}

void SlowEngine::applyTolerance(Qihao period) {
  const int needed = countConditions() - tolerance;
  const auto inPeriod = [&](const Row& row) { return row.qihao == period && row.guolv; };
  const auto kept =
      std::count_if(rows.begin(), rows.end(), [&](const Row& row) { return inPeriod(row) && *row.guolv >= needed; });
  std::erase_if(rows, [&](const Row& row) { return inPeriod(row) && *row.guolv < needed; });
  if (!stop)
    status += lineBreaks() + u"以上条件容错"_s + wide(tolerance) + u"后余："_s + wide(static_cast<int>(kept)) +
              u" 注"_s + lineBreaks();
}

void SlowEngine::positionFilter(Qihao period) {
  const QString tip = status;
  std::vector<int> activePlaces;
  for (int place = 1; place <= 5; ++place)
    if (use(29 + place) == 1)
      activePlaces.push_back(place);
  const int allowedMisses = values.at(3901);
  if (activePlaces.empty())
    return;
  const QString label = u"[号码定位,容错值="_s + wide(allowedMisses) + u"]"_s;
  if (allowedMisses >= static_cast<int>(activePlaces.size())) {
    status = tip + lineBreaks() + label + u" <容错值太大无法过滤掉号码.>"_s;
    return;
  }
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  status = tip + lineBreaks() + u"[号码定位]过滤正在进行中．．．"_s;
  int passes = 0;
  for (int id : ids) {
    Row& row = rowOf(id);
    int misses = 0;
    for (int number : row.numbers)
      if (number < 1 || number > 11)
        throw Fault{};
    for (int place : activePlaces) {
      const int number = row.numbers.at(static_cast<std::size_t>(place - 1));
      if (!members(u"第"_s + QString::number(place) + u"位"_s).at(static_cast<std::size_t>(number)))
        ++misses;
    }
    if (misses > allowedMisses) {
      row.guolv = -1;
    } else {
      row.guolv = 1;
      ++passes;
      row.xuhao = passes;
    }
    yield();
    if (stop)
      break;
  }
  deleteBelowZero(period);
  if (!stop)
    status = tip + lineBreaks() + label + u"过滤后余："_s + wide(passes) + u" 注"_s;
}

void SlowEngine::matchFilter(Qihao period) {
  const QString tip = status;
  if (match.inUse != 1)
    return;
  const Qihao from = previous(period, match.window);
  const Qihao to = previous(period, 1);
  std::map<Qihao, Draw> window;
  for (const PastDraw& draw : history)
    if (draw.qihao >= from && draw.qihao <= to)
      window[draw.qihao] = draw.numbers;
  if (!window.empty())
    status = tip + lineBreaks() + u"[历史数据过滤]过滤正进行中．．．"_s;
  int passes = 0;
  for (const auto& [qihao, numbers] : window) {
    const std::vector<int> ids = openRows(period);
    if (!ids.empty()) {
      passes = 0;
      for (int id : ids) {
        Row& row = rowOf(id);
        for (int number : row.numbers)
          if (number < 1 || number > 11)
            throw Fault{};
        if (countIn(row.numbers, setOf(numbers)) < match.threshold) {
          row.guolv = 1;
          ++passes;
          row.xuhao = passes;
        } else {
          row.guolv = -1;
        }
        yield();
        if (stop)
          break;
      }
      deleteBelowZero(period);
    }
    if (stop)
      break;
  }
  if (!stop)
    status = tip + lineBreaks() + u"[历史数据过滤]过滤后余："_s + wide(passes) + u" 注"_s;
}

void SlowEngine::reduce(Qihao period, int type) {
  const QString tip = status;
  // 临时数据, then 序号, then ID.
  std::vector<std::array<int, 3>> keys;
  for (const Row& row : rows)
    if (row.qihao == period && row.guolv && *row.guolv >= 0)
      keys.push_back({row.linshi.value_or(0), row.xuhao, row.id});
  std::sort(keys.begin(), keys.end());
  std::vector<int> ids;
  for (const auto& key : keys)
    ids.push_back(key[2]);

  if (type >= 5) {
    status = tip + lineBreaks() + u"[保五型]缩水后余："_s + wide(static_cast<int>(ids.size())) + u" 注"_s;
    return;
  }

  const QString label = type == 3 ? u"[保三型]"_s : u"[保四型]"_s;
  int kept = 0;
  if (!ids.empty()) {
    status = tip + lineBreaks() + label + u"缩水正在进行中．．．"_s;
    std::size_t current = 0;
    while (current < ids.size()) {
      Row& keeper = rowOf(ids.at(current));
      keeper.suoshui = type;
      ++kept;
      keeper.xuhao = kept;
      for (int number : keeper.numbers)
        if (number < 1 || number > 11)
          throw Fault{};
      const std::set<int> flags = setOf(keeper.numbers);
      for (std::size_t later = current + 1; later < ids.size(); ++later) {
        Row& row = rowOf(ids.at(later));
        for (int number : row.numbers)
          if (number < 1 || number > 11)
            throw Fault{};
        if ((row.suoshui == 0 || row.suoshui == -1) && countIn(row.numbers, flags) >= type)
          row.suoshui = -1;
        yield();
        if (stop)
          break;
      }
      current = 0;
      while (current < ids.size() && rowOf(ids.at(current)).suoshui != 0)
        ++current;
      yield();
      if (stop)
        break;
    }
  }
  std::erase_if(rows, [&](const Row& row) { return row.qihao == period && row.suoshui && *row.suoshui < 0; });
  status = tip + lineBreaks() + label + u"缩水后余："_s + wide(kept) + u" 注"_s;
}

}  // namespace elevenfive::slow
