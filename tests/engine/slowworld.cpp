#include "tests/engine/slowworld.h"

#include <algorithm>

#include "model/store.h"

namespace elevenfive::slow {

namespace {

using namespace Qt::StringLiterals;

std::optional<int> optionalAt(const Statement& row, int column) {
  if (row.isNull(column))
    return std::nullopt;
  return row.integer(column);
}

QString textOf(const std::optional<int>& mark) {
  return mark ? QString::number(*mark) : u"-"_s;
}

QString textOf(const Row& row) {
  QStringList cells{QString::number(row.id), QString::number(row.xuhao), QString::number(row.qihao)};
  for (int number : row.numbers)
    cells << QString::number(number);
  cells << textOf(row.guolv) << textOf(row.suoshui) << textOf(row.jingxuan) << textOf(row.linshi);
  return cells.join(u' ');
}

}  // namespace

void readSettings(Store& store, SlowEngine& engine) {
  engine.history.clear();
  Statement draws =
      store.query("test", "SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 和值, 尾数和值, 遗漏值总和 FROM 历史记录");
  while (draws.next())
    engine.history.push_back(
        {draws.integer(0),
         {draws.integer(1), draws.integer(2), draws.integer(3), draws.integer(4), draws.integer(5)},
         draws.integer(6),
         draws.integer(7),
         draws.integer(8)});

  engine.values.clear();
  Statement values = store.query("test", "SELECT ID, VALUE FROM 过滤条件");
  while (values.next())
    engine.values[values.integer(0)] = values.integer(1);

  engine.uses.clear();
  Statement uses = store.query("test", "SELECT 条件, 使用情况 FROM 过滤条件使用情况");
  while (uses.next())
    engine.uses[uses.integer(0)] = uses.integer(1);

  engine.attributes.clear();
  Statement attributes = store.query("test", "SELECT * FROM 号码特性");
  while (attributes.next()) {
    int number = 0;
    for (int column = 0; column < attributes.columnCount(); ++column)
      if (attributes.columnName(column) == u"号码"_s)
        number = attributes.integer(column);
    for (int column = 0; column < attributes.columnCount(); ++column)
      engine.attributes[attributes.columnName(column)].at(static_cast<std::size_t>(number)) =
          attributes.integer(column) != 0;
  }

  engine.aliases.clear();
  Statement aliases = store.query("test", "SELECT 序号, 别名 FROM 自定义别名");
  while (aliases.next())
    engine.aliases[aliases.integer(0)] = aliases.text(1);

  Statement match = store.query("test", "SELECT 使用状态, 最小值, 匹配值 FROM 历史数据过滤");
  match.next();
  engine.match = {match.integer(0), match.integer(1), match.integer(2)};
}

void readRows(Store& store, SlowEngine& engine) {
  engine.rows.clear();
  Statement rows = store.query("test",
                               "SELECT ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5,"
                               " 过滤标记, 缩水标记, 精选标记, 临时数据 FROM 日志表 ORDER BY ID");
  while (rows.next())
    engine.rows.push_back({rows.integer(0),
                           rows.integer(1),
                           rows.integer(2),
                           {rows.integer(3), rows.integer(4), rows.integer(5), rows.integer(6), rows.integer(7)},
                           optionalAt(rows, 8),
                           optionalAt(rows, 9),
                           optionalAt(rows, 10),
                           optionalAt(rows, 11)});
}

QStringList rowTexts(const SlowEngine& engine) {
  std::vector<Row> rows = engine.rows;
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.id < b.id; });
  QStringList texts;
  for (const Row& row : rows)
    texts << textOf(row);
  return texts;
}

QStringList rowTexts(Store& store) {
  SlowEngine reader;
  readRows(store, reader);
  return rowTexts(reader);
}

QStringList valueTexts(const SlowEngine& engine) {
  QStringList texts;
  for (const auto& [id, value] : engine.values)
    texts << u"%1 %2"_s.arg(id).arg(value);
  return texts;
}

QStringList valueTexts(Store& store) {
  Statement values = store.query("test", "SELECT ID, VALUE FROM 过滤条件 ORDER BY ID");
  QStringList texts;
  while (values.next())
    texts << u"%1 %2"_s.arg(values.integer(0)).arg(values.integer(1));
  return texts;
}

}  // namespace elevenfive::slow
