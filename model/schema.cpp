#include "model/schema.h"

#include <algorithm>
#include <initializer_list>

#include "model/defaultrows.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;
using enum ColumnType;

/// Digits of the largest miss that the distribution chart can show, over its 10,001 periods.
constexpr int missWidth = 5;

/// name1 .. nameN of one type.
std::vector<Column> numbered(const QString& name, int first, int last, ColumnType type) {
  std::vector<Column> columns;
  for (int n = first; n <= last; ++n)
    columns.push_back({name + QString::number(n), type});
  return columns;
}

/// Columns "01".."NN".
std::vector<Column> twoDigitColumns(int last, ColumnType type, int length = 0) {
  std::vector<Column> columns;
  for (int n = 1; n <= last; ++n)
    columns.push_back({u"%1"_s.arg(n, 2, 10, QChar(u'0')), type, length});
  return columns;
}

std::vector<Column> bytes(std::initializer_list<QStringView> names) {
  std::vector<Column> columns;
  for (const QStringView name : names)
    columns.push_back({name.toString(), byte});
  return columns;
}

std::vector<Column> joined(std::initializer_list<std::vector<Column>> parts) {
  std::vector<Column> columns;
  for (const auto& part : parts)
    columns.insert(columns.end(), part.begin(), part.end());
  return columns;
}

Table historyTable() {
  return {u"历史记录"_s,
          joined({{{u"期号"_s, int32}, {u"开奖日期"_s, dateTime}},
                  numbered(u"号码"_s, 1, 5, byte),
                  bytes({u"和值", u"奇数和值", u"偶数和值", u"跨度", u"最大间距", u"AC值", u"奇数个数", u"偶数个数",
                         u"大数个数", u"小数个数", u"低尾码个数", u"高尾码个数"}),
                  {{u"连号"_s, text, 50}},
                  bytes({u"重叠号", u"斜位码"}),
                  numbered(u"区间"_s, 1, 4, byte),
                  {{u"尾数形式"_s, text, 50},
                   {u"间距七"_s, text, 50},
                   {u"间距九"_s, text, 50},
                   {u"间距十一"_s, text, 50},
                   {u"间距十二"_s, text, 50},
                   {u"头数形式"_s, text, 50}},
                  bytes({u"头数和值", u"尾数和值", u"温度值5", u"温度值10"}),
                  {{u"遗漏值总和"_s, int32}},
                  numbered(u"自定义组"_s, 1, 10, byte),
                  {{u"遗漏数据"_s, byte}, {u"总期号"_s, int32}, {u"已完成"_s, text, 1}}}),
          u"期号"_s,
          {}};
}

Table valueTable(const QString& name) {
  return {name, {{u"ID"_s, int32}, {u"VALUE"_s, int32}}, u"ID"_s, {}};
}

Table useTable(const QString& name) {
  return {name, {{u"条件"_s, int32}, {u"使用情况"_s, int32}}, u"条件"_s, {}};
}

Table matchTable() {
  return {u"历史数据过滤"_s,
          {{u"使用状态"_s, int32}, {u"最小值"_s, int32}, {u"最大值"_s, int32}, {u"匹配值"_s, int32}},
          {},
          {}};
}

Table attributeTable() {
  std::vector<Column> columns{{u"INDEX"_s, byte}, {u"号码"_s, int32}};
  for (const AttributeColumn& column : attributeColumns())
    columns.push_back({column.name, boolean});
  return {u"号码特性"_s, columns, u"INDEX"_s, {u"INDEX"_s}};
}

Table candidateTable() {
  return {u"日志表"_s,
          joined({{{u"ID"_s, int32}, {u"序号"_s, int32}, {u"期号"_s, int32}},
                  numbered(u"号码"_s, 1, 5, byte),
                  {{u"买中个数"_s, byte},
                   {u"过滤标记"_s, int16},
                   {u"缩水标记"_s, int16},
                   {u"精选标记"_s, int16},
                   {u"临时数据"_s, int16}}}),
          u"ID"_s,
          {u"ID"_s, u"期号"_s, u"序号"_s}};
}

std::vector<Table> mainTables() {
  return {
      historyTable(),
      valueTable(u"过滤条件"_s),
      valueTable(u"默认过滤条件"_s),
      useTable(u"过滤条件使用情况"_s),
      useTable(u"默认过滤条件使用情况"_s),
      matchTable(),
      attributeTable(),
      candidateTable(),
      {u"彩票类型"_s,
       {{u"序号"_s, int32},
        {u"名称"_s, text, 50},
        {u"下载地址"_s, text, 100},
        {u"实时更新地址"_s, text, 100},
        {u"使用"_s, int32}},
       u"序号"_s,
       {}},
      {u"概率表"_s,
       {{u"号码"_s, int16}, {u"后区"_s, int32}, {u"前区"_s, int32}, {u"前开"_s, int32}, {u"后开"_s, int32}},
       u"号码"_s,
       {}},
      {u"号码分布"_s, joined({{{u"期号"_s, int32}}, twoDigitColumns(15, text, missWidth)}), u"期号"_s, {}},
      {u"BallColor"_s, {{u"号码"_s, byte}, {u"基本号"_s, byte}, {u"特别号"_s, byte}}, u"号码"_s, {}},
      {u"自定义别名"_s, {{u"序号"_s, int32}, {u"自定义名称"_s, text, 50}, {u"别名"_s, text, 50}}, {}, {}},
      {u"快速设置"_s,
       {{u"编号"_s, int32},
        {u"菜单ID"_s, int16},
        {u"条件名称"_s, text, 50},
        {u"条件编号"_s, int32},
        {u"范围min"_s, int32},
        {u"范围max"_s, int32}},
       u"编号"_s,
       {}},
      {u"用户表"_s, {{u"用户名"_s, text, 50}, {u"密码"_s, text, 50}, {u"最后登陆时间"_s, dateTime}}, u"用户名"_s, {}},
      {u"用户模式"_s, {{u"模式"_s, int32}}, {}, {}},
      {u"TBLhmYLTJfenbu"_s, joined({{{u"期号"_s, int32}}, twoDigitColumns(11, int32)}), {}, {}},
      {u"TBLyilouZhuhe"_s,
       {{u"Haoma"_s, text, 255},
        {u"YilouQS"_s, int32},
        {u"YilouAvg"_s, int32},
        {u"YilouPre"_s, int32},
        {u"YilouLongest"_s, int32},
        {u"YilouTotal"_s, int32}},
       {},
       {}},
      {u"数据源"_s, {{u"名称"_s, text, 50}, {u"地址"_s, text, 200}}, u"名称"_s, {}},
  };
}

std::vector<Table> templateTables() {
  return {valueTable(u"过滤条件"_s), useTable(u"过滤条件使用情况"_s), attributeTable(), matchTable()};
}

/// What a column's values must fulfil, as an SQL expression; empty where any will do.
QString boundsOf(const Column& column) {
  const QString name = u"\"%1\""_s.arg(column.name);
  const auto range = [&](const QString& low, const QString& high) {
    return u"%1 BETWEEN %2 AND %3"_s.arg(name, low, high);
  };
  switch (column.type) {
    case byte:
      return range(u"0"_s, u"255"_s);
    case int16:
      return range(u"-32768"_s, u"32767"_s);
    case int32:
      return range(u"-2147483648"_s, u"2147483647"_s);
    case boolean:
      return range(u"0"_s, u"1"_s);
    case dateTime:
      return {};
    case text:
      return u"length(%1) <= %2"_s.arg(name).arg(column.length);
  }
  return {};
}

/// Type and check of a column as SQL.
QString columnSql(const Column& column, bool isKey) {
  QString sql = u"\"%1\" "_s.arg(column.name);
  sql += column.type == text ? u"TEXT"_s : column.type == dateTime ? u"REAL"_s : u"INTEGER"_s;
  if (isKey)
    sql += column.type == text ? u" PRIMARY KEY NOT NULL"_s : u" PRIMARY KEY"_s;
  const QString bounds = boundsOf(column);
  return bounds.isEmpty() ? sql : sql + u" CHECK (%1)"_s.arg(bounds);
}

QStringList namesOf(const Table& table) {
  QStringList names;
  for (const Column& column : table.columns)
    names << column.name;
  return names;
}

/// What a store lacks of one table; empty where it is whole.
QStringList lacking(Store& store, const Table& table) {
  if (!store.hasTable(table.name))
    return {table.name};
  QStringList missing = namesOf(table);
  Statement rows = store.query("检查数据表", "SELECT name FROM pragma_table_info(?)", table.name);
  while (rows.next())
    missing.removeAll(rows.text(0));
  for (QString& name : missing)
    name = table.name + u'.' + name;
  return missing;
}

}  // namespace

const std::vector<Table>& schemaTables(StoreKind kind) {
  static const std::vector<Table> mainSchema = mainTables();
  static const std::vector<Table> templateSchema = templateTables();
  return kind == StoreKind::main ? mainSchema : templateSchema;
}

const Table& schemaTable(const QString& name) {
  const auto& tables = schemaTables(StoreKind::main);
  const auto found = std::find_if(tables.begin(), tables.end(), [&](const Table& t) { return t.name == name; });
  if (found == tables.end())
    throw StoreError(u"没有名为 %1 的数据表。"_s.arg(name));
  return *found;
}

QString createTableSql(const Table& table) {
  QStringList columns;
  for (const Column& column : table.columns)
    columns << columnSql(column, column.name == table.key);
  return u"CREATE TABLE \"%1\" (%2) STRICT"_s.arg(table.name, columns.join(u", "_s));
}

bool holdsValuesOutOfBounds(Store& store, StoreKind kind) {
  for (const Table& table : schemaTables(kind)) {
    QStringList bounds;
    for (const Column& column : table.columns)
      if (const QString one = boundsOf(column); !one.isEmpty())
        bounds << one;
    const QString sql = u"SELECT 1 FROM \"%1\" WHERE NOT (%2) LIMIT 1"_s.arg(table.name, bounds.join(u" AND "_s));
    if (store.value("检查数据表", sql.toStdString()))
      return true;
  }
  return false;
}

void createSchema(Store& store, StoreKind kind) {
  StoreTransaction transaction(store);
  for (const Table& table : schemaTables(kind)) {
    store.execute("建立数据表", createTableSql(table).toStdString());
    for (const QString& column : table.indexes) {
      // SQLite's integer key is the row's own address: a second index on it would only cost.
      if (column == table.key)
        continue;
      store.execute("建立索引", u"CREATE INDEX \"%1_%2\" ON \"%1\" (\"%2\")"_s.arg(table.name, column).toStdString());
    }
  }
  insertDefaultRows(store, kind);
  transaction.commit();
}

void checkSchema(Store& store, StoreKind kind) {
  QStringList missing;
  for (const Table& table : schemaTables(kind))
    missing << lacking(store, table);
  if (!missing.isEmpty())
    throw StoreError(u"数据文件不完整，缺少：%1。"_s.arg(missing.join(u"、"_s)));
}

}  // namespace elevenfive
