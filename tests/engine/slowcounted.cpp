// The stages whose passes are counted.
#include "tests/engine/slowengine.h"

#include <cstdlib>

#include "tests/engine/slowtexts.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

}  // namespace

// A stage whose rows and status text are as before where a fault ends it.
void SlowEngine::guarded(const std::function<void()>& stage) {
  const std::vector<Row> rowsBefore = rows;
  const QString statusBefore = status;
  try {
    stage();
  } catch (const Fault&) {
    rows = rowsBefore;
    status = statusBefore;
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
  status = tip + lineBreaks() + label + u"过滤正在进行中．．．"_s;
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
    if (value < 0 || value > 199)
      throw Fault{};  // beyond the buffer: five numbers that repeat
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
    status = tip + lineBreaks() + label + u"过滤后余："_s + wide(passes) + u" 注"_s;
}

// ---- stages that look at earlier draws ----

void SlowEngine::warn(int flag, const QString& name) {
  if (warned.at(static_cast<std::size_t>(flag)))
    return;
  boxes << u"注意，本次过滤使用了["_s + name + u"]这个过滤条件,["_s + name + u"]的设置与历史开奖记录相关！"_s +
               lineBreaks() + u"在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。"_s +
               lineBreaks() + u"[下次不再提示！]"_s;
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
  status = tip + lineBreaks() + u"[重叠号]过滤正在进行中．．．"_s;
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
  status = tip + lineBreaks() + u"[斜位码]过滤正在进行中．．．"_s;
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
  status = tip + lineBreaks() + label + u"过滤正在进行中．．．"_s;
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
  status = tip + lineBreaks() + u"["_s + label + u"] "_s + text;
  load(first, first + 4);
  const std::vector<int> ids = openRows(period);
  if (ids.empty())
    return;
  status = tip + lineBreaks() + u"["_s + label + u"]过滤正在进行中．．．"_s;
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
    status =
        tip + lineBreaks() + u"["_s + label + u"]"_s + text + lineBreaks() + u"过滤后余："_s + wide(passes) + u" 注"_s;
}

}  // namespace elevenfive::slow
