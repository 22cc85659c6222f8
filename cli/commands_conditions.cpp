// Picks and conditions: the rows that a run reads.
#include <QString>
#include <algorithm>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "conditions/conditionrows.h"
#include "model/defaultrows.h"
#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Brings the row of a number to a pick value by the click that does it; a click takes back what is there already.
void pick(Session& session, int number, int value) {
  const int before = readConditionValue(session.store(), number).value_or(0);
  if (before == value)
    return;
  session.program().picking.clickNumber(number, value == 0 ? before : value);
  if (readConditionValue(session.store(), number) != value)
    throw Refused();  // beyond the limit of bankers
}

Action preparePick(const Arguments& arguments) {
  const int number = numberOf(arguments, u"NUMBER"_s);
  const int value = numberOf(arguments, u"VALUE"_s, 0, 2);
  if (!isNumber(number) && !isNumber(number - backFieldOffset))
    throw UsageError(u"参数 NUMBER 应为 1 到 11 或 101 到 111，而不是“%1”。"_s.arg(number));
  return [number, value](Session& session) { pick(session, number, value); };
}

Action preparePickAll(const Arguments&) {
  return [](Session& session) { session.program().picking.selectAllTuo(); };
}

Action preparePickClear(const Arguments&) {
  return [](Session& session) { session.program().picking.clearFront(); };
}

IdRange idRangeOf(const QString& word) {
  const qsizetype dash = word.indexOf(u'-', 1);
  const std::optional<int> first = wholeNumber(dash < 0 ? word : word.left(dash));
  const std::optional<int> last = dash < 0 ? first : wholeNumber(word.mid(dash + 1));
  if (!first || !last || *first > *last)
    throw UsageError(u"参数 ID[-LAST] 应为一个整数或由小到大的两个整数，而不是“%1”。"_s.arg(word.left(40)));
  return {*first, *last};
}

Action prepareValue(const Arguments& arguments) {
  const IdRange ids = idRangeOf(arguments.text(u"ID[-LAST]"_s));
  const int value = numberOf(arguments, u"VALUE"_s);
  return [ids, value](Session& session) {
    StoreTransaction transaction(session.store());
    const int rows = session.store().execute("修改过滤条件", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= ? AND ID <= ?",
                                             value, ids.first, ids.last);
    if (rows != static_cast<qint64>(ids.last) - ids.first + 1)
      throw MissingData(ids.first == ids.last
                            ? u"过滤条件中没有 ID 为 %1 的记录，没有改动。"_s.arg(ids.first)
                            : u"过滤条件中缺少 ID %1 到 %2 的部分记录，没有改动。"_s.arg(ids.first).arg(ids.last));
    transaction.commit();
  };
}

Action prepareUse(const Arguments& arguments) {
  const int code = numberOf(arguments, u"CODE"_s);
  const int value = numberOf(arguments, u"VALUE"_s);
  return [code, value](Session& session) {
    if (!setConditionUse(session.store(), code, value))
      throw MissingData(u"过滤条件使用情况中没有编号为 %1 的条件，没有改动。"_s.arg(code));
  };
}

Action prepareAttribute(const Arguments& arguments) {
  const QString name = arguments.text(u"COLUMN"_s);
  const auto& columns = attributeColumns();
  if (std::none_of(columns.begin(), columns.end(), [&](const AttributeColumn& c) { return c.name == name; }))
    throw UsageError(u"号码特性中没有“%1”这一列。"_s.arg(name.left(40)));
  const std::vector<int> members = listOf(arguments, u"NUMBERS"_s, 1, numberCount);
  return [name, members](Session& session) {
    // The name is one of the table's own; nothing else goes into the text.
    const std::string column = name.toStdString();
    StoreTransaction transaction(session.store());
    session.store().execute("修改号码特性", "UPDATE 号码特性 SET \"" + column + "\" = 0");
    Statement set = session.store().query("修改号码特性", "UPDATE 号码特性 SET \"" + column + "\" = 1 WHERE 号码 = ?");
    for (const int number : members)
      if (set.run(number) == 0)
        throw MissingData(u"号码特性中缺少号码 %1 的记录，没有改动。"_s.arg(number));
    transaction.commit();
  };
}

Action prepareMatch(const Arguments& arguments) {
  const int use = numberOf(arguments, u"USE"_s, 0, 1);
  const int periods = numberOf(arguments, u"N"_s, 1, mostMatchPeriods);
  const int match = numberOf(arguments, u"M"_s, 1, mostMatches);
  return [use, periods, match](Session& session) {
    session.store().execute("修改历史数据过滤", "UPDATE 历史数据过滤 SET 使用状态 = ?, 最小值 = ?, 匹配值 = ?", use,
                            periods, match);
  };
}

constexpr QStringView picksText = u"the picks (0, 1 拖码, 2 胆码); 101..111 are the second field";

constexpr Command commands[] = {
    {u"pick NUMBER VALUE", picksText, u"", preparePick},
    {u"pick all", picksText, u"", preparePickAll},
    {u"pick clear", picksText, u"", preparePickClear},
    {u"value ID[-LAST] VALUE", u"rows of 过滤条件", u"", prepareValue},
    {u"use CODE VALUE", u"a row of 过滤条件使用情况", u"", prepareUse},
    {u"attr COLUMN NUMBERS", u"a boolean column of 号码特性: true for exactly these numbers (1,5,11, or - for none)",
     u"", prepareAttribute},
    {u"match USE N M", u"历史数据过滤: 使用状态, 最小值, 匹配值", u"", prepareMatch,
     u"USE: 0 or 1; N: 1 to 100; M: 1 to 5"},
};

}  // namespace

std::span<const Command> conditionCommands() {
  return commands;
}

}  // namespace elevenfive
