#include "history/celledit.h"

#include <algorithm>
#include <optional>

#include "history/search.h"
#include "model/errors.h"
#include "model/schema.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView periodColumn = u"期号";
constexpr std::size_t lastFixedColumn = 37;
constexpr int largestByte = 255;

/// The whole number that a text is, at most 2147483647; nothing for any other text.
std::optional<int> wholeNumber(const QString& text) {
  bool isNumber = false;
  const int value = text.toInt(&isNumber);
  if (!isNumber || !isCharsIn(text, u"0123456789"))
    return std::nullopt;
  return value;
}

bool holds(Store& store, Qihao q) {
  return store.value("查找开奖记录", "SELECT 期号 FROM 历史记录 WHERE 期号 = ?", q).has_value();
}

CellEdit refused(Qihao q, const QString& reason) {
  return {q, reason + u"，没有改动。"_s};
}

CellEdit editPeriod(Store& store, Qihao q, const QString& text) {
  const Qihao wanted = wholeNumber(text).value_or(0);
  if (wanted < 1)
    return refused(q, u"期号应为 1 到 2147483647 之间的整数"_s);
  if (wanted == q)
    return {q, {}};
  if (holds(store, wanted))
    return refused(q, u"历史记录中已有第 %1 期"_s.arg(wanted));
  store.execute("修改期号", "UPDATE 历史记录 SET 期号 = ? WHERE 期号 = ?", wanted, q);
  return {wanted, {}};
}

CellEdit editCount(Store& store, Qihao q, const QString& column, const QString& text) {
  const std::optional<int> value = wholeNumber(text);
  if (!text.isEmpty() && (!value || *value > largestByte))
    return refused(q, u"%1应为 0 到 %2 之间的整数"_s.arg(column).arg(largestByte));
  store.execute("修改开奖记录", u"UPDATE 历史记录 SET \"%1\" = ? WHERE 期号 = ?"_s.arg(column).toStdString(), value, q);
  return {q, {}};
}

}  // namespace

QStringList editableHistoryColumns() {
  QStringList editable{periodColumn.toString()};
  const std::vector<Column>& columns = schemaTable(u"历史记录"_s).columns;
  const auto hidden = hiddenHistoryColumns();
  for (std::size_t c = lastFixedColumn + 1; c < columns.size(); ++c)
    if (std::find(hidden.begin(), hidden.end(), columns[c].name) == hidden.end())
      editable << columns[c].name;
  return editable;
}

CellEdit editHistoryCell(Store& store, Qihao q, const QString& column, const QString& typed) {
  if (!editableHistoryColumns().contains(column))
    throw MissingData(u"历史记录的 %1 不能在表格中修改。"_s.arg(column));
  if (!holds(store, q))
    return refused(q, u"历史记录中已没有第 %1 期"_s.arg(q));
  const QString text = typed.trimmed();
  return column == periodColumn ? editPeriod(store, q, text) : editCount(store, q, column, text);
}

}  // namespace elevenfive
