#include "engine/numbersets.h"

#include <algorithm>

#include "model/defaultrows.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The name as SQL, where it is one of the table's columns: nothing else ever becomes part of a statement.
QString columnSql(const QString& name) {
  const auto& columns = attributeColumns();
  if (std::none_of(columns.begin(), columns.end(), [&](const AttributeColumn& c) { return c.name == name; }))
    throw StoreError(u"号码特性中没有名为 %1 的列。"_s.arg(name));
  return u"\"%1\""_s.arg(name);
}

}  // namespace

std::vector<NumberSet> readNumberSets(Store& store, const QStringList& columns) {
  QString sql = u"SELECT 号码"_s;
  for (const QString& column : columns)
    sql += u", "_s + columnSql(column);
  Statement rows = store.query("读取号码特性", (sql + u" FROM 号码特性 ORDER BY \"INDEX\""_s).toStdString());
  std::vector<NumberSet> sets(static_cast<std::size_t>(columns.size()));
  while (rows.next()) {
    const int number = rows.integer(0);
    if (!isNumber(number))
      continue;
    for (int i = 0; i < columns.size(); ++i)
      sets[static_cast<std::size_t>(i)][static_cast<std::size_t>(number)] = rows.integer(i + 1) != 0;
  }
  return sets;
}

NumberSet readNumberSet(Store& store, const QString& column) {
  return readNumberSets(store, {column}).front();
}

int countIn(const NumberSet& set, const Draw& numbers) {
  return static_cast<int>(
      std::count_if(numbers.begin(), numbers.end(), [&](int n) { return set[static_cast<std::size_t>(n)]; }));
}

}  // namespace elevenfive
