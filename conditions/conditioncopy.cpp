#include "conditions/conditioncopy.h"

#include <QStringList>
#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "model/defaultrows.h"
#include "model/errors.h"
#include "model/readinglimit.h"
#include "model/schema.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// 历史数据过滤 has one row.
constexpr std::size_t historyFilterRows = 1;

/// Names in a file are not case-sensitive, as in statements.
constexpr Qt::CaseSensitivity ofNames = Qt::CaseInsensitive;

/// How a table is copied: the columns that carry values, and the order of its rows on both sides. Columns go by name, or by
/// their place behind the first so many, whatever the source calls them.
struct TableCopy {
  QString source;
  QString target;
  QStringList columns;
  QString order;
  int passedOver = -1;  ///< -1: by name
};

std::string quoted(const QString& name) {
  QByteArray bytes = name.toUtf8();
  return ('"' + bytes.replace('"', "\"\"") + '"').toStdString();
}

std::string quotedList(const QStringList& names, const char* separator, const char* behind = "") {
  std::string text;
  for (const QString& name : names)
    text += (text.empty() ? "" : separator) + quoted(name) + behind;
  return text;
}

[[noreturn]] void refuse(const QString& table) {
  throw DamagedData(u"数据表 %1 的内容不符合过滤条件文件的格式"_s.arg(table));
}

/// The values that a column of the target takes.
struct Range {
  qint64 low;
  qint64 high;
};

Range rangeOf(ColumnType type) {
  switch (type) {
    case ColumnType::byte:
      return {0, std::numeric_limits<quint8>::max()};
    case ColumnType::int16:
      return {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()};
    case ColumnType::boolean:
      return {0, 1};
    default:
      return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
  }
}

/// The ranges of some columns of a table, in their order.
std::vector<Range> rangesOf(const QString& table, const QStringList& names) {
  std::vector<Range> ranges;
  for (const QString& name : names)
    for (const Column& column : schemaTable(table).columns)
      if (column.name == name)
        ranges.push_back(rangeOf(column.type));
  return ranges;
}

/// 号码特性 begins with two keys, which stay.
constexpr int attributeKeys = 2;

/// The columns behind them.
QStringList attributeNames() {
  QStringList names;
  for (const Column& column : schemaTable(u"号码特性"_s).columns)
    names << column.name;
  return names.sliced(attributeKeys);
}

std::vector<TableCopy> setTables() {
  return {
      {u"过滤条件"_s, u"过滤条件"_s, {u"VALUE"_s}, u"ID"_s},
      {u"过滤条件使用情况"_s, u"过滤条件使用情况"_s, {u"使用情况"_s}, u"条件"_s},
      {u"号码特性"_s, u"号码特性"_s, attributeNames(), u"号码"_s, attributeKeys},
      {u"历史数据过滤"_s, u"历史数据过滤"_s, {u"使用状态"_s, u"最小值"_s, u"最大值"_s, u"匹配值"_s}, u"rowid"_s},
  };
}

/// The source's columns that carry the values, in the order of the target's. Refuses what only looks like the table: a view,
/// a virtual table (which has no page of its own), computed columns.
QStringList sourceColumns(Store& source, const TableCopy& copy) {
  const auto real = source.value(
      "检查数据表", "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ? AND rootpage > 0", copy.source);
  if (!real)
    refuse(copy.source);
  Statement columns =
      source.query("检查数据表", "SELECT name, hidden FROM pragma_table_xinfo(?) ORDER BY cid", copy.source);
  QStringList names;
  while (columns.next()) {
    if (columns.integer(1) != 0)
      refuse(copy.source);
    names << columns.text(0);
  }
  if (copy.order != u"rowid"_s && !names.contains(copy.order, ofNames))
    refuse(copy.source);
  if (copy.passedOver >= 0) {
    if (names.size() != copy.passedOver + copy.columns.size())
      refuse(copy.source);
    return names.sliced(copy.passedOver);
  }
  for (const QString& column : copy.columns)
    if (!names.contains(column, ofNames))
      refuse(copy.source);
  return copy.columns;
}

/// The rows of the target in order, told by their rowid.
std::vector<qint64> targetRows(Store& target, const TableCopy& copy) {
  std::vector<qint64> rows;
  Statement query = target.query("读取过滤条件", "SELECT rowid FROM " + quoted(copy.target) + " ORDER BY " +
                                                     (copy.order == u"rowid"_s ? "rowid" : quoted(copy.order)));
  while (query.next())
    rows.push_back(query.integer64(0));
  return rows;
}

void copyTable(Store& source, Store& target, const TableCopy& copy) {
  const QStringList columns = sourceColumns(source, copy);
  const std::vector<qint64> rows = targetRows(target, copy);
  // The first row over the target's count is enough to know that the file does not fit.
  Statement read = source.query("读取过滤条件文件",
                                "SELECT " + quotedList(columns, ", ") + " FROM " + quoted(copy.source) + " ORDER BY " +
                                    (copy.order == u"rowid"_s ? "rowid" : quoted(copy.order)) + " LIMIT ?",
                                static_cast<int>(rows.size()) + 1);
  Statement write = target.query("写入过滤条件", "UPDATE " + quoted(copy.target) + " SET " +
                                                     quotedList(copy.columns, ", ", " = ?") + " WHERE rowid = ?");
  const std::vector<Range> ranges = rangesOf(copy.target, copy.columns);
  std::size_t row = 0;
  while (read.next()) {
    if (row == rows.size())
      refuse(copy.source);
    write.reset();
    int index = 0;
    for (int column = 0; column < copy.columns.size(); ++column) {
      if (!read.isInteger(column))
        refuse(copy.source);
      const qint64 value = read.integer64(column);
      const Range& range = ranges.at(static_cast<std::size_t>(column));
      if (value < range.low || value > range.high)
        refuse(copy.source);
      write.bindValue(++index, value);
    }
    write.bindValue(++index, rows[row++]);
    write.run();
  }
}

DamagedData wrongCount(const QString& table) {
  return DamagedData(u"数据表 %1 的行数不符"_s.arg(table));
}

void demandRows(Store& store, const QString& table, std::size_t rows) {
  const int present = store.value("核对过滤条件", "SELECT COUNT(*) FROM " + quoted(table)).value_or(0);
  if (static_cast<std::size_t>(present) != rows)
    throw wrongCount(table);
}

/// Values are copied row by row, so a factory table that has lost one would give each value behind it to another row.
void copyFactoryTable(Store& store, const TableCopy& copy, std::size_t rows) {
  try {
    demandRows(store, copy.source, rows);
  } catch (const DamagedData& damage) {
    raiseOwnDamage(damage);
  }
  copyTable(store, store, copy);
}

}  // namespace

void demandAllRows(Store& store) {
  const std::size_t counts[] = {conditionIds().size(), conditionCodes().size(), std::size_t{numberCount},
                                historyFilterRows};
  for (std::size_t place = 0; const TableCopy& copy : setTables())
    demandRows(store, copy.source, counts[place++]);
}

void demandOwnRows(Store& gConn) {
  try {
    demandAllRows(gConn);
  } catch (const DamagedData& damage) {
    raiseOwnDamage(damage);
  }
}

void raiseOwnDamage(const DamagedData& damage) {
  throw StoreError(u"数据库中的过滤条件有错误（%1），请恢复备份。"_s.arg(damage.message()));
}

void copyConditionSet(Store& source, Store& target) {
  const ReadingLimit limit(source.database(), mostConditionSteps);
  StoreTransaction transaction(target, OnFault::keep);
  for (const TableCopy& copy : setTables())
    copyTable(source, target, copy);
  transaction.commit();
}

void copyFactoryConditions(Store& store) {
  demandOwnRows(store);
  StoreTransaction transaction(store);
  copyFactoryTable(store, {u"默认过滤条件"_s, u"过滤条件"_s, {u"VALUE"_s}, u"ID"_s}, conditionIds().size());
  copyFactoryTable(store, {u"默认过滤条件使用情况"_s, u"过滤条件使用情况"_s, {u"使用情况"_s}, u"条件"_s},
                   conditionCodes().size());
  transaction.commit();
}

}  // namespace elevenfive
