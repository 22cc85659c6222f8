#include "conditions/conditionsummary.h"

#include <QStringList>

#include "conditions/conditionmap.h"
#include "conditions/conditionpanel.h"
#include "conditions/conditionrows.h"
#include "conditions/customgroups.h"
#include "conditions/parityexclusion.h"
#include "conditions/rangetext.h"
#include "engine/positionfilter.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView notUsed = u" 未 使 用";

/// A line of the ranges: its label and the code of its list.
struct RangeLine {
  QStringView label;
  int code;
};

constexpr RangeLine rangeLines[] = {
    {u" 和值取值范围： ", 1},
    {u" 头数和值范围： ", 43},
    {u" 尾数和值范围： ", 44},
    {u" 奇数和值取值范围： ", 2},
    {u" 偶数和值取值范围： ", 3},
    {u" 跨度取值范围： ", 4},
    {u" 最大间距取值范围： ", 5},
    {u" 温度值５取值范围： ", 46},
    {u" 温度值１０取值范围： ", 47},
    {u" 连号取值范围： ", 6},
    {u" 重叠号取值范围： ", 7},
    {u" 斜位码取值范围： ", 8},
    {u" ＡＣ值取值范围： ", 9},
    {u" 奇数个数取值范围： ", 10},
    {u" 偶数个数取值范围： ", 11},
    {u" 大数个数取值范围： ", 12},
    {u" 小数个数取值范围： ", 13},
    {u" 高尾码个数取值范围： ", 14},
    {u" 低尾码个数取值范围： ", 15},
    {u" 区间1开出号码个数取值范围： ", 16},
    {u" 区间2开出号码个数取值范围： ", 17},
    {u" 区间3开出号码个数取值范围： ", 18},
    {u" 区间4开出号码个数取值范围： ", 19},
};

constexpr RangeLine formLines[] = {{u" 尾数形式： ", 37}, {u" 头数形式： ", 42}};

/// The position filter looks at five positions; the panel has two more.
constexpr int summaryPositions = 5;

/// The numbers of a statement, two full-width digits each.
QString numbersText(Statement query) {
  QStringList numbers;
  while (query.next())
    numbers << toQuanjiaoDigits(twoDigits(query.integer(0)));
  return numbers.join(u',');
}

QString picksText(Store& store, int value) {
  return numbersText(
      store.query("读取号码", "SELECT ID FROM 过滤条件 WHERE ID <= 11 AND VALUE = ? ORDER BY ID", value));
}

QStringList pickLines(Store& store) {
  return {u" 已选“拖码”： "_s + picksText(store, 1), u" 已选“胆码”： "_s + picksText(store, 2)};
}

QStringList positionLines(Store& store) {
  QStringList lines;
  for (int p = 1; p <= summaryPositions; ++p) {
    if (!isConditionUsed(store, positionCode(p)))
      continue;
    const std::string sql =
        "SELECT 号码 FROM 号码特性 WHERE \"" + positionColumn(p).toStdString() + "\" <> 0 ORDER BY 号码";
    lines << u" 第 %1 位允许开出的号码： "_s.arg(toQuanjiaoDigits(p)) + numbersText(store.query("读取定位号码", sql));
  }
  lines << u" 定位过滤容错条件个数： "_s + toQuanjiaoDigits(readConditionValue(store, positionToleranceId).value_or(0));
  return lines;
}

/// The selected items of a list: forms in brackets of their own, since they hold commas themselves.
QString itemsText(Store& store, const ValueList& list) {
  QStringList items;
  for (const int offset : allowedOffsets(store, list.base, list.lastId)) {
    if (list.forms.empty())
      items << toQuanjiaoDigits(offset);
    else if (offset < list.itemCount())
      items << u"（"_s + toQuanjiaoDigits(list.forms[static_cast<std::size_t>(offset)].toString()) + u"）"_s;
  }
  return items.join(list.forms.empty() ? u","_s : QString());
}

QString listLine(Store& store, const RangeLine& line) {
  const QString label = line.label.toString();
  if (!isConditionUsed(store, line.code))
    return label + notUsed.toString();
  const ValueList& list = *listOfCode(line.code);
  return label +
         (list.previewCode == 0 ? itemsText(store, list) : toQuanjiaoDigits(rangeText(store, list.base, list.lastId)));
}

QStringList listLines(Store& store, std::span<const RangeLine> rows) {
  QStringList lines;
  for (const RangeLine& row : rows)
    lines << listLine(store, row);
  return lines;
}

QStringList groupLines(Store& store, RunState* run) {
  QStringList lines;
  for (const QString& line : zdyLines(store, run))
    lines << u' ' + line;
  return lines;
}

QStringList matchLines(Store& store) {
  const ConditionPanel::MatchState match = ConditionPanel(store).matchState();
  const QString text = match.used ? u" 过滤掉最近: %1 期内，匹配值为: %2 及以上的号码."_s.arg(
                                        toQuanjiaoDigits(match.minimum), toQuanjiaoDigits(match.match))
                                  : notUsed.toString();
  return {u" 历史数据过滤： "_s + text};
}

QStringList parityLines(Store& store) {
  QStringList lines;
  for (int row = 0; row < parityRowCount; ++row) {
    if (!isConditionUsed(store, parityCode(row)))
      continue;
    lines << (row == 0 ? u" √ 【排除掉上一期的单双组合形式】"_s
                       : u" √ 排除掉单双组合： "_s + parityPattern(store, row));
  }
  return lines;
}

QStringList reductionLines(Store& store) {
  const int option = readConditionValue(store, reductionTypeId).value_or(0) - firstReductionType;
  const bool known = option >= 0 && option < static_cast<int>(std::size(reductionTypes));
  return {u" 缩 水 类 型： "_s + (known ? reductionTypes[option].toString() : QString()),
          u" 缩水智能优化： "_s + (isConditionUsed(store, optimiseCode) ? u"★☆★☆★ 使 用 ★☆★☆★"_s : u"未 使 用"_s)};
}

}  // namespace

QString buildConditionSummary(Store& store, RunState* run) {
  const QStringList groups[] = {
      pickLines(store),       positionLines(store), listLines(store, rangeLines), listLines(store, formLines),
      groupLines(store, run), matchLines(store),    parityLines(store),           reductionLines(store),
  };
  QStringList lines;
  for (const QStringList& group : groups) {
    if (!lines.isEmpty() && !group.isEmpty())
      lines << summaryRule.toString();
    lines << group;
  }
  return lines.join(u"\r\n"_s) + u"\r\n"_s;
}

}  // namespace elevenfive
