#include "tests/engine/slowengine.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

const QString lines = u"\r\n\r\n"_s;

QString wide(int number) {
  QString text = QString::number(number);
  for (QChar& c : text)
    if (c >= u'0' && c <= u'9')
      c = QChar(c.unicode() - u'0' + u'０');
  return text;
}

std::set<int> setOf(const Draw& draw) {
  return {draw.begin(), draw.end()};
}

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
    status = done + u"\r\n"_s + lines;
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
    status += lines + u"用户中止,当前记录余："_s + wide(left) + u" 注"_s;
  else
    status += lines + u"全部过滤缩水完成,余："_s + wide(left) + u" 注"_s;
  yield();
  stop = false;
  return true;
}

bool SlowEngine::resetMarks(Qihao period) {
  const int count = countRows(period);
  if (count == 0) {
    if (period > 0)
      status += lines + u"表格中无["_s + wide(period) + u"]期数据．"_s;
    return false;
  }
  const QString reading = lines + u"正读取数据["_s + wide(period) + u"期]．．．"_s;
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
  status += lines + u"过滤缩水之前共："_s + wide(count) + u"注．"_s;
  return true;
}

// A stage whose rows are as before where a fault ends it.
void SlowEngine::guarded(const std::function<void()>& stage) {
  const std::vector<Row> before = rows;
  try {
    stage();
  } catch (const Fault&) {
    rows = before;
    throw;
  }
}

void SlowEngine::countedStages(Qihao period) {
  const auto run = [&](const std::function<void()>& stage) {
    if (!stop)
      guarded(stage);
  };
  const auto simple = [&](int code, int first, int last, const QString& label, const Attribute& attribute) {
    run([&] { standardPass(period, code, first, last, label, attribute); });
  };
  const auto inColumn = [this](const QString& column, bool wanted) {
    return [this, column, wanted](const Draw& row) {
      int count = 0;
      for (int number : row)
        if (members(column).at(static_cast<std::size_t>(number)) == wanted)
          ++count;
      return count;
    };
  };

  simple(1, 1000, 1170, u"[ 和 值 ]"_s, sum);
  simple(43, 4080, 4099, u"[头数和值]"_s, sumOfTens);
  simple(44, 4100, 4159, u"[尾数和值]"_s, sumOfUnits);
  simple(2, 2000, 2170, u"[奇数和值]"_s, sumOfOdd);
  simple(3, 3000, 3170, u"[偶数和值]"_s, sumOfEven);
  simple(10, 3640, 3649, u"[奇数个数]"_s, countOdd);
  simple(11, 3650, 3659, u"[偶数个数]"_s, countEven);
  simple(12, 3660, 3669, u"[大数个数]"_s, inColumn(u"大数"_s, true));
  simple(13, 3670, 3679, u"[小数个数]"_s, inColumn(u"大数"_s, false));
  simple(14, 3680, 3689, u"[高尾码个数]"_s, inColumn(u"高尾码"_s, true));
  simple(15, 3690, 3699, u"[低尾码个数]"_s, inColumn(u"高尾码"_s, false));
  run([&] { temperature(period, 5); });
  run([&] { temperature(period, 10); });
  for (int k = 1; k <= 4; ++k) {
    const QString zone = u"区间"_s + QString::number(k);
    simple(15 + k, 3700 + 10 * (k - 1), 3709 + 10 * (k - 1), u"["_s + zone + u"]"_s, inColumn(zone, true));
  }
  for (int k = 1; k <= 20; ++k) {
    const QString column = u"自定义组"_s + QString::number(k);
    const QString alias = aliases.contains(k) ? aliases.at(k) : QString();
    const int code = k <= 10 ? 19 + k : 40 + k;
    const int first = k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11);
    simple(code, first, first + 9, u"["_s + alias + u"]"_s, inColumn(column, true));
  }
  simple(4, 3300, 3340, u"[ 跨 度 ]"_s, span);
  simple(5, 3400, 3440, u"[最大间距]"_s, largestGap);
  simple(6, 3450, 3460, u"[连号]"_s, runCode);
  simple(9, 3600, 3630, u"[AC值]"_s, acValue);
  run([&] { repeatedNumbers(period); });
  run([&] { diagonalNumbers(period); });
  simple(37, 4000, 4009, u"[尾数形式]"_s,
         [this](const Draw& row) { return tailFormCode(spreadOver(row, classes(u"尾"_s, 10))); });
  simple(42, 4070, 4079, u"[头数形式]"_s,
         [this](const Draw& row) { return headFormCode(spreadOver(row, classes(u"头"_s, 10))); });
  for (int pattern = 0; pattern <= 5; ++pattern)
    run([&] { excludeParity(period, pattern); });
}

void SlowEngine::standardPass(Qihao period, int code, int first, int last, const QString& label,
                              const Attribute& attribute) {
  const QString tip = status;
  if (use(code) != 1)
    return;
  load(first, last);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  status = tip + lines + label + u"过滤正在进行中．．．"_s;
  scan(period, label, ids, tip, attribute);
}

// The row loop of a stage, from its running line to its result line.
void SlowEngine::scan(Qihao period, const QString& label, const std::vector<int>& ids, const QString& tip,
                      const Attribute& attribute) {
  int passes = 0;
  for (int id : ids) {
    Row& row = rowOf(id);
    for (int number : row.numbers)
      if (number < 1 || number > 11)
        throw Fault{};
    const int value = attribute(row.numbers);
    if (buffer.at(static_cast<std::size_t>(value)) >= 1) {
      row.guolv = *row.guolv + 1;
      ++passes;
      row.xuhao = passes;
    } else if (tolerance <= 0) {
      row.guolv = -1;
    }
    yield();
    if (stop)
      break;
  }
  deleteBelowZero(period);
  if (!stop)
    status = tip + lines + label + u"过滤后余："_s + wide(passes) + u" 注"_s;
}

// ---- stages that look at earlier draws ----

void SlowEngine::warn(int flag, const QString& name) {
  if (warned.at(static_cast<std::size_t>(flag)))
    return;
  boxes << u"注意，本次过滤使用了["_s + name + u"]这个过滤条件,["_s + name + u"]的设置与历史开奖记录相关！"_s + lines +
               u"在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。"_s + lines +
               u"[下次不再提示！]"_s;
  warned.at(static_cast<std::size_t>(flag)) = true;
}

void SlowEngine::repeatedNumbers(Qihao period) {
  const QString tip = status;
  if (use(7) != 1)
    return;
  load(3470, 3480);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  warn(0, u"重叠号"_s);
  status = tip + lines + u"[重叠号]过滤正在进行中．．．"_s;
  const std::set<int> drawn = setOf(drawOf(previous(period, 1)));
  scan(period, u"[重叠号]"_s, ids, tip, [&](const Draw& row) { return countIn(row, drawn); });
}

void SlowEngine::diagonalNumbers(Qihao period) {
  const QString tip = status;
  if (use(8) != 1)
    return;
  load(3490, 3500);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  warn(1, u"斜位码"_s);
  status = tip + lines + u"[斜位码]过滤正在进行中．．．"_s;
  const std::set<int> drawn = setOf(drawOf(previous(period, 1)));
  scan(period, u"[斜位码]"_s, ids, tip, [&](const Draw& row) { return countBeside(row, drawn); });
}

void SlowEngine::temperature(Qihao period, int draws) {
  const QString tip = status;
  const QString name = u"温度值"_s + QString::number(draws);
  if (use(draws == 5 ? 46 : 47) != 1)
    return;
  warn(draws == 5 ? 2 : 3, name);
  if (draws == 5)
    load(4160, 4179);
  else
    load(4180, 4209);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  const Qihao from = previous(period, draws);
  const auto hits = [&](int number) {
    int count = 0;
    for (const PastDraw& draw : history)
      if (draw.qihao < period && draw.qihao >= from && setOf(draw.numbers).contains(number))
        ++count;
    return count;
  };
  const QString label = u"["_s + name + u"]"_s;
  status = tip + lines + label + u"过滤正在进行中．．．"_s;
  scan(period, label, ids, tip,
       [&](const Draw& row) { return hits(row[0]) + hits(row[1]) + hits(row[2]) + hits(row[3]) + hits(row[4]); });
}

// ---- parity patterns ----

QString SlowEngine::parityText(int first) const {
  QString text;
  for (int id = first; id < first + 5; ++id) {
    const int value = values.at(id);
    if (value == 0)
      text += u"双"_s;
    if (value == 1)
      text += u"单"_s;
    if (value == 2)
      text += u"*"_s;
  }
  return text;
}

void SlowEngine::excludeParity(Qihao period, int pattern) {
  const QString label =
      pattern == 0 ? u"排除掉上期单双组合："_s : u"排除掉单双组合"_s + QString::number(pattern) + u"："_s;
  if (pattern == 0) {
    const Draw before = drawOf(previous(period, 1));
    for (int position = 0; position < 5; ++position)
      values[5001 + position] = before.at(static_cast<std::size_t>(position)) % 2;
  }
  const QString tip = status;
  if (use(70 + pattern) != 1)
    return;
  const int first = 5000 + 10 * pattern + 1;
  const QString text = parityText(first);
  status = tip + lines + u"["_s + label + u"] "_s + text;
  load(first, first + 4);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  status = tip + lines + u"["_s + label + u"]过滤正在进行中．．．"_s;
  int passes = 0;
  for (int id : ids) {
    Row& row = rowOf(id);
    int difference = 0;
    for (std::size_t position = 1; position <= 5; ++position) {
      const int wanted = buffer.at(position);
      const int number = row.numbers.at(position - 1);
      if (number < 1 || number > 11)
        throw Fault{};
      const int held = wanted == 2 ? 2 : number % 2;
      difference += std::abs(wanted - held);
    }
    if (difference >= 1) {
      row.guolv = *row.guolv + 1;
      ++passes;
      row.xuhao = passes;
    } else if (tolerance <= 0) {
      row.guolv = -1;
    }
    yield();
    if (stop)
      break;
  }
  deleteBelowZero(period);
  if (!stop)
    status = tip + lines + u"["_s + label + u"]"_s + text + lines + u"过滤后余："_s + wide(passes) + u" 注"_s;
}

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
    status +=
        lines + u"以上条件容错"_s + wide(tolerance) + u"后余："_s + wide(static_cast<int>(kept)) + u" 注"_s + lines;
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
    status = tip + lines + label + u" <容错值太大无法过滤掉号码.>"_s;
    return;
  }
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  status = tip + lines + u"[号码定位]过滤正在进行中．．．"_s;
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
    status = tip + lines + label + u"过滤后余："_s + wide(passes) + u" 注"_s;
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
    status = tip + lines + u"[历史数据过滤]过滤正进行中．．．"_s;
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
    status = tip + lines + u"[历史数据过滤]过滤后余："_s + wide(passes) + u" 注"_s;
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
    status = tip + lines + u"[保五型]缩水后余："_s + wide(static_cast<int>(ids.size())) + u" 注"_s;
    return;
  }

  const QString label = type == 3 ? u"[保三型]"_s : u"[保四型]"_s;
  int kept = 0;
  if (!ids.empty()) {
    status = tip + lines + label + u"缩水正在进行中．．．"_s;
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
  status = tip + lines + label + u"缩水后余："_s + wide(kept) + u" 注"_s;
}

}  // namespace elevenfive::slow
