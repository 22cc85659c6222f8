#include "history/search.h"

#include <algorithm>

#include "model/errors.h"
#include "model/schema.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView hiddenColumns[] = {u"已完成", u"总期号",   u"遗漏数据", u"开奖日期",  u"间距七",
                                         u"间距九", u"间距十一", u"间距十二", u"遗漏值总和"};

constexpr int recentCount = 100;

/// No cell is longer; what is typed beyond it cannot change the answer, and the store limits the length of a pattern.
constexpr qsizetype longestPrefix = 100;

QString prefixPattern(const QString& text) {
  QString pattern;
  for (const QChar ch : text.left(longestPrefix)) {
    if (ch == u'%' || ch == u'_' || ch == u'\\')
      pattern += u'\\';
    pattern += ch;
  }
  return pattern + u'%';
}

const Column& historyColumn(const QString& name) {
  const std::vector<Column>& columns = schemaTable(u"历史记录"_s).columns;
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return c.name == name; });
  if (found == columns.end())
    throw MissingData(u"历史记录没有名为 %1 的项目。"_s.arg(name));
  return *found;
}

bool isDrawNumber(const Column& column) {
  return column.name.size() == 3 && column.name.startsWith(u"号码"_s);
}

/// The condition of one column, with one parameter for each pattern that it adds to the values.
QString condition(const Column& column, const QString& pattern, QStringList& values) {
  values << pattern;
  if (column.type == ColumnType::dateTime)  // 2415018.5 is the julian day of day 0
    return u"date(\"%1\" + 2415018.5) LIKE ? ESCAPE '\\'"_s.arg(column.name);
  if (!isDrawNumber(column))
    return u"\"%1\" LIKE ? ESCAPE '\\'"_s.arg(column.name);
  values << pattern;
  return u"(\"%1\" LIKE ? ESCAPE '\\' OR printf('%02d', \"%1\") LIKE ? ESCAPE '\\')"_s.replace(u"%1"_s, column.name);
}

}  // namespace

std::span<const QStringView> hiddenHistoryColumns() {
  return hiddenColumns;
}

std::optional<QihaoRange> recentQihaoRange(Store& store) {
  Statement rows = store.query("查找最近各期", "SELECT 期号 FROM 历史记录 ORDER BY 期号 DESC LIMIT ?", recentCount);
  if (!rows.next())
    return std::nullopt;
  QihaoRange range{rows.integer(0), rows.integer(0)};
  while (rows.next())
    range.first = rows.integer(0);
  return range;
}

FilterSql buildFilterSql(const std::vector<ColumnFilter>& filters) {
  QStringList conditions;
  FilterSql sql;
  for (const ColumnFilter& filter : filters) {
    const QString text = filter.text.trimmed();
    if (!text.isEmpty())
      conditions << condition(historyColumn(filter.column), prefixPattern(text), sql.values);
  }
  if (!conditions.isEmpty())
    sql.where = " where " + conditions.join(u" AND "_s).toStdString();
  return sql;
}

std::string periodsSql(const std::string& where) {
  return "SELECT 期号 FROM 历史记录" + where + " ORDER BY 期号 ASC";
}

std::vector<Qihao> searchHistory(Store& store, const FilterSql& filter) {
  Statement rows = store.query("搜索历史记录", periodsSql(filter.where));
  int parameter = 0;
  for (const QString& value : filter.values)
    rows.bindValue(++parameter, value);
  std::vector<Qihao> found;
  while (rows.next())
    found.push_back(rows.integer(0));
  return found;
}

}  // namespace elevenfive
