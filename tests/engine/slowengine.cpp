#include "tests/engine/slowengine.h"

#include <algorithm>
#include <stdexcept>

#include "tests/engine/slowtexts.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

// C(n - d, k - d) by Pascal's rule.
int choose(int n, int k) {
  if (k < 0 || k > n)
    return 0;
  if (k == 0 || k == n)
    return 1;
  return choose(n - 1, k - 1) + choose(n - 1, k);
}

}  // namespace

// ---- small steps that all stages share ----

Row& SlowEngine::rowOf(int id) {
  for (Row& row : rows)
    if (row.id == id)
      return row;
  throw std::logic_error("no such row");
}

void SlowEngine::yield() {
  ++yields;
  if (yields == stopAtYield)
    stop = true;
}

void SlowEngine::load(int first, int last) {
  int slot = first % 10;
  for (const auto& [id, value] : values)
    if (id >= first && id <= last)
      buffer.at(static_cast<std::size_t>(slot++)) = value;
}

int SlowEngine::use(int code) const {
  const auto found = uses.find(code);
  return found == uses.end() ? 0 : found->second;
}

Qihao SlowEngine::previous(Qihao period, int n) const {
  std::vector<Qihao> before;
  for (const PastDraw& draw : history)
    if (draw.qihao < period)
      before.push_back(draw.qihao);
  std::sort(before.rbegin(), before.rend());
  if (before.empty() || n < 1)
    return 2003001;
  if (n > static_cast<int>(before.size()))
    return before.back();
  return before.at(static_cast<std::size_t>(n - 1));
}

Draw SlowEngine::drawOf(Qihao period) const {
  for (const PastDraw& draw : history)
    if (draw.qihao == period)
      return draw.numbers;
  throw Fault{};
}

// The IDs of the period's rows with 过滤标记 of 0 and above, by 序号, then ID.
std::vector<int> SlowEngine::openRows(Qihao period) const {
  std::vector<std::pair<int, int>> found;
  for (const Row& row : rows)
    if (row.qihao == period && row.guolv && *row.guolv >= 0)
      found.emplace_back(row.xuhao, row.id);
  std::sort(found.begin(), found.end());
  std::vector<int> ids;
  for (const auto& [xuhao, id] : found)
    ids.push_back(id);
  return ids;
}

void SlowEngine::deleteBelowZero(Qihao period) {
  std::erase_if(rows, [&](const Row& row) { return row.qihao == period && row.guolv && *row.guolv < 0; });
}

int SlowEngine::countRows(Qihao period) const {
  return static_cast<int>(std::count_if(rows.begin(), rows.end(), [&](const Row& row) { return row.qihao == period; }));
}

Members SlowEngine::members(const QString& column) const {
  return attributes.at(column);
}

std::vector<Members> SlowEngine::classes(const QString& family, int count) const {
  std::vector<Members> all;
  for (int digit = 0; digit < count; ++digit)
    all.push_back(members(family + QString::number(digit)));
  return all;
}

// ---- the expansion ----

int SlowEngine::initXuanhao(Qihao period) {
  if (period < 1)
    return 0;
  int drags = 0;
  int bankers = 0;
  for (const auto& [id, value] : values) {
    if (id < 40 && value == 1)
      ++drags;
    if (id < 40 && value == 2)
      ++bankers;
  }
  const int total = drags + bankers < 5    ? 0
                    : drags + bankers == 5 ? 1
                    : bankers >= 5         ? 1
                                           : choose(drags + bankers - bankers, 5 - bankers);
  if (total <= 0) {
    boxes << u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s;
    return 0;
  }

  std::erase_if(rows, [&](const Row& row) { return row.qihao != period; });
  int lastId = 0;
  for (const Row& row : rows)
    lastId = std::max(lastId, row.id);
  int count = countRows(period);
  if (count > 0) {
    boxes << u"该期数已有记录存在日志表中!要删除它吗？\r\n按'是',删除它;按'否'保留它!"_s;
    if (deleteOldRows) {
      rows.clear();
      count = 0;
    }
  }

  std::array<bool, 12> allowed{};
  std::array<bool, 12> banker{};
  load(1, 11);
  for (std::size_t number = 1; number <= 11; ++number) {
    allowed.at(number) = buffer.at(number) >= 1;
    banker.at(number) = buffer.at(number) == 2;
  }
  load(101, 111);

  int xuhao = 0;
  const auto addRow = [&](const Draw& numbers) {
    int held = 0;
    for (int number : numbers) {
      if (!allowed.at(static_cast<std::size_t>(number)))
        return;
      if (banker.at(static_cast<std::size_t>(number)))
        ++held;
    }
    if (held < bankers)
      return;
    yield();
    rows.push_back({++lastId, ++xuhao, period, numbers, 0, {}, {}, {}});
    ++count;
  };
  for (int a = 1; a <= 7; ++a)
    for (int b = a + 1; b <= 8; ++b)
      for (int c = b + 1; c <= 9; ++c)
        for (int d = c + 1; d <= 10; ++d)
          for (int e = d + 1; e <= 11; ++e)
            if (!stop)
              addRow({a, b, c, d, e});

  if (!stop) {
    const QString done = u"初始化选号完成!共 "_s + wide(count) + u" 注！"_s;
    boxes << done;
    status = done + u"\r\n"_s + lineBreaks();
  }
  stop = false;
  return count;
}

// ---- the run ----

bool SlowEngine::runGuolvSuoshui(Qihao period) {
  if (!resetMarks(period)) {
    stop = false;
    return true;
  }
  // What no stage could do anything with ends the run before the first one.
  for (const Row& row : rows)
    for (int number : row.numbers)
      if (row.qihao == period && (number < 1 || number > 11))
        return false;
  if (values.at(3900) < 3)
    return false;
  try {
    countedStages(period);
    if (tolerance > 0)
      guarded([&] { applyTolerance(period); });
    if (!stop)
      guarded([&] { positionFilter(period); });
    if (!stop)
      guarded([&] { matchFilter(period); });
    if (!stop) {
      load(3900, 3900);
      guarded([&] { reduce(period, buffer[0]); });
    }
  } catch (const Fault&) {
    return false;
  }
  const int left = countRows(period);
  if (stop)
    status += lineBreaks() + u"用户中止,当前记录余："_s + wide(left) + u" 注"_s;
  else
    status += lineBreaks() + u"全部过滤缩水完成,余："_s + wide(left) + u" 注"_s;
  yield();
  stop = false;
  return true;
}

bool SlowEngine::resetMarks(Qihao period) {
  const int count = countRows(period);
  if (count == 0) {
    if (period > 0)
      status += lineBreaks() + u"表格中无["_s + wide(period) + u"]期数据．"_s;
    return false;
  }
  const QString reading = lineBreaks() + u"正读取数据["_s + wide(period) + u"期]．．．"_s;
  status = status.size() > 30 ? reading : status + reading;

  // The rows in no told order: by ID.
  std::vector<int> ids;
  for (const Row& row : rows)
    if (row.qihao == period)
      ids.push_back(row.id);
  std::sort(ids.begin(), ids.end());
  for (int id : ids) {
    Row& row = rowOf(id);
    row.guolv = 0;
    row.suoshui = 0;
    row.jingxuan = 0;
    row.linshi = 0;
    yield();
    if (stop)
      break;
  }
  if (stop)
    return false;
  status += lineBreaks() + u"过滤缩水之前共："_s + wide(count) + u"注．"_s;
  return true;
}

}  // namespace elevenfive::slow
