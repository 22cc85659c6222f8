#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

QString RecordingView::rongcuoTipCaption() const {
  return u"容错说明"_s;
}

EngineTest::EngineTest() {
  sql("UPDATE 过滤条件使用情况 SET 使用情况 = 0");
  sql("UPDATE 过滤条件 SET VALUE = 0 WHERE ID > 500 AND ID <> 3900");
  sql("UPDATE 历史数据过滤 SET 使用状态 = 0");
  workspace.addDraws(u"11031509 02 04 06 08 10"_s);
}

void EngineTest::use(int code, int value) {
  workspace.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = ? WHERE 条件 = ?", value, code);
}

void EngineTest::addRows(const QString& lines) {
  StoreTransaction transaction(workspace.store());
  Statement insert = workspace.store().query(
      "test",
      "INSERT INTO 日志表 (序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记, 缩水标记, 精选标记, 临时数据)"
      " VALUES (?, ?, ?, ?, ?, ?, ?, 0, 0, 0, 0)");
  int xuhao = 0;
  for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts)) {
    const Draw n = drawFrom(line.trimmed());
    insert.run(++xuhao, period, n[0], n[1], n[2], n[3], n[4]);
  }
  transaction.commit();
}

void EngineTest::addAllRows() {
  QString lines;
  for (int a = 1; a <= 7; ++a)
    for (int b = a + 1; b <= 8; ++b)
      for (int c = b + 1; c <= 9; ++c)
        for (int d = c + 1; d <= 10; ++d)
          for (int e = d + 1; e <= 11; ++e)
            lines += u"%1 %2 %3 %4 %5\n"_s.arg(a).arg(b).arg(c).arg(d).arg(e);
  addRows(lines);
}

QStringList EngineTest::survivors() {
  return workspace.rows(
      "SELECT 序号 || ':', printf('%02d %02d %02d %02d %02d', 号码1, 号码2, 号码3, 号码4, 号码5)"
      " FROM 日志表 WHERE 期号 = 11031510 ORDER BY 序号, ID");
}

QStringList EngineTest::numbers() {
  return workspace.rows(
      "SELECT printf('%02d %02d %02d %02d %02d', 号码1, 号码2, 号码3, 号码4, 号码5)"
      " FROM 日志表 WHERE 期号 = 11031510 ORDER BY 序号, ID");
}

QStringList EngineTest::marks() {
  return workspace.rows("SELECT 过滤标记 FROM 日志表 WHERE 期号 = 11031510 ORDER BY ID");
}

QStringList EngineTest::statusLines() {
  return ports.status.split(u"\r\n\r\n"_s, Qt::SkipEmptyParts);
}

void EngineTest::stopAtYield(int n) {
  const int last = ports.yields + n;
  ports.onYield = [this, last](int yields) {
    if (yields == last)
      driver.cmm_stop_Click();
  };
}

}  // namespace elevenfive
