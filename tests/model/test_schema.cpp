#include "model/schema.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <string>

#include "model/errors.h"
#include "model/store.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

QStringList words(const QString& text) {
  return text.simplified().split(u' ', Qt::SkipEmptyParts);
}

/// name1 .. nameN, or from another first number.
QStringList counted(const QString& name, int first, int last) {
  QStringList names;
  for (int n = first; n <= last; ++n)
    names << name + QString::number(n);
  return names;
}

QStringList columnsOf(Store& store, const QString& table) {
  QStringList names;
  Statement rows = store.query("test", "SELECT name FROM pragma_table_info(?) ORDER BY cid", table);
  while (rows.next())
    names << rows.text(0);
  return names;
}

QStringList tablesOf(Store& store) {
  QStringList names;
  Statement rows = store.query("test", "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
  while (rows.next())
    names << rows.text(0);
  return names;
}

/// A fresh store of the condition template.
class TemplateStore : public ::testing::Test {
 protected:
  TemplateStore() : store(folder.filePath(u"TJmode.tjmod"_s), StoreAccess::create) {
    createSchema(store, StoreKind::conditionTemplate);
  }
  QTemporaryDir folder;
  Store store;
};

class MainStore : public ::testing::Test {
 protected:
  QStringList columns(const QString& table) { return columnsOf(w.store(), table); }
  bool refuses(const std::string& sql) {
    try {
      w.store().execute("test", sql);
      return false;
    } catch (const StoreError&) {
      return true;
    }
  }
  bool takes(const std::string& sql) { return !refuses(sql); }
  TestWorkspace w;
};

TEST_F(MainStore, HasTheseTablesAndNoOthers) {
  QStringList expected = words(
      u"BallColor TBLhmYLTJfenbu TBLyilouZhuhe 历史数据过滤 历史记录 号码分布 号码特性 彩票类型 快速设置 数据源 日志表"
      u" 概率表 用户模式 用户表 自定义别名 过滤条件 过滤条件使用情况 默认过滤条件 默认过滤条件使用情况"_s);
  QStringList actual = tablesOf(w.store());
  expected.sort();
  actual.sort();
  EXPECT_EQ(actual, expected);
}

TEST_F(MainStore, TheHistoryHasItsColumnsInExactlyThisOrder) {
  EXPECT_EQ(
      columns(u"历史记录"_s),
      words(u"期号 开奖日期 号码1 号码2 号码3 号码4 号码5 和值 奇数和值 偶数和值 跨度 最大间距 AC值 奇数个数 偶数个数"
            u" 大数个数 小数个数 低尾码个数 高尾码个数 连号 重叠号 斜位码 区间1 区间2 区间3 区间4 尾数形式 间距七"
            u" 间距九 间距十一 间距十二 头数形式 头数和值 尾数和值 温度值5 温度值10 遗漏值总和 自定义组1 自定义组2"
            u" 自定义组3 自定义组4 自定义组5 自定义组6 自定义组7 自定义组8 自定义组9 自定义组10 遗漏数据 总期号"
            u" 已完成"_s));
}

TEST_F(MainStore, TheAttributeTableHas100ColumnsInExactlyThisOrder) {
  const QStringList expected = words(u"INDEX 号码 大数 小数 低尾码 高尾码"_s) + counted(u"区间"_s, 1, 4) +
                               counted(u"头"_s, 0, 9) + counted(u"尾"_s, 0, 9) + counted(u"九"_s, 0, 9) +
                               counted(u"七"_s, 0, 9) + counted(u"十二"_s, 0, 11) + counted(u"十一"_s, 0, 10) +
                               counted(u"自定义组"_s, 1, 20) + words(u"第1位 第2位 第3位 第4位 第5位 第6位 第7位"_s);
  EXPECT_EQ(expected.size(), 100);
  EXPECT_EQ(columns(u"号码特性"_s), expected);
}

TEST_F(MainStore, TheOtherTablesHaveTheirColumnsInOrder) {
  EXPECT_EQ(columns(u"过滤条件"_s), words(u"ID VALUE"_s));
  EXPECT_EQ(columns(u"默认过滤条件"_s), words(u"ID VALUE"_s));
  EXPECT_EQ(columns(u"过滤条件使用情况"_s), words(u"条件 使用情况"_s));
  EXPECT_EQ(columns(u"默认过滤条件使用情况"_s), words(u"条件 使用情况"_s));
  EXPECT_EQ(columns(u"历史数据过滤"_s), words(u"使用状态 最小值 最大值 匹配值"_s));
  EXPECT_EQ(columns(u"日志表"_s),
            words(u"ID 序号 期号 号码1 号码2 号码3 号码4 号码5 买中个数 过滤标记 缩水标记 精选标记"
                  u" 临时数据"_s));
  EXPECT_EQ(columns(u"彩票类型"_s), words(u"序号 名称 下载地址 实时更新地址 使用"_s));
  EXPECT_EQ(columns(u"概率表"_s), words(u"号码 后区 前区 前开 后开"_s));
  EXPECT_EQ(columns(u"号码分布"_s), words(u"期号 01 02 03 04 05 06 07 08 09 10 11 12 13 14 15"_s));
  EXPECT_EQ(columns(u"BallColor"_s), words(u"号码 基本号 特别号"_s));
  EXPECT_EQ(columns(u"自定义别名"_s), words(u"序号 自定义名称 别名"_s));
  EXPECT_EQ(columns(u"快速设置"_s), words(u"编号 菜单ID 条件名称 条件编号 范围min 范围max"_s));
  EXPECT_EQ(columns(u"用户表"_s), words(u"用户名 密码 最后登陆时间"_s));
  EXPECT_EQ(columns(u"用户模式"_s), words(u"模式"_s));
  EXPECT_EQ(columns(u"TBLhmYLTJfenbu"_s), words(u"期号 01 02 03 04 05 06 07 08 09 10 11"_s));
  EXPECT_EQ(columns(u"TBLyilouZhuhe"_s), words(u"Haoma YilouQS YilouAvg YilouPre YilouLongest YilouTotal"_s));
  EXPECT_EQ(columns(u"数据源"_s), words(u"名称 地址"_s));
}

TEST_F(MainStore, EveryTableIsStrict) {
  EXPECT_EQ(w.rows("SELECT name FROM pragma_table_list WHERE schema = 'main' AND type = 'table' AND NOT strict"
                   " AND name NOT LIKE 'sqlite_%'"),
            QStringList());
}

TEST_F(MainStore, PrimaryKeysAreThese) {
  EXPECT_EQ(w.rows("SELECT t.name, c.name FROM pragma_table_list t, pragma_table_info(t.name) c"
                   " WHERE t.schema = 'main' AND c.pk > 0 ORDER BY t.name"),
            (QStringList{u"BallColor 号码"_s, u"历史记录 期号"_s, u"号码分布 期号"_s, u"号码特性 INDEX"_s,
                         u"彩票类型 序号"_s, u"快速设置 编号"_s, u"数据源 名称"_s, u"日志表 ID"_s, u"概率表 号码"_s,
                         u"用户表 用户名"_s, u"过滤条件 ID"_s, u"过滤条件使用情况 条件"_s, u"默认过滤条件 ID"_s,
                         u"默认过滤条件使用情况 条件"_s}));
}

TEST_F(MainStore, CandidatesAreIndexedByPeriodAndByRunningNumber) {
  EXPECT_EQ(w.rows("SELECT m.tbl_name, c.name FROM sqlite_master m, pragma_index_info(m.name) c"
                   " WHERE m.type = 'index' AND m.sql IS NOT NULL ORDER BY c.name DESC"),
            (QStringList{u"日志表 期号"_s, u"日志表 序号"_s}));
}

TEST_F(MainStore, ACandidateWithoutAKeyGetsTheNextOne) {
  ASSERT_TRUE(takes("INSERT INTO 日志表 (ID, 序号) VALUES (7, 1)"));
  ASSERT_TRUE(takes("INSERT INTO 日志表 (序号) VALUES (2)"));
  EXPECT_EQ(w.rows("SELECT ID, 序号 FROM 日志表 ORDER BY ID"), (QStringList{u"7 1"_s, u"8 2"_s}));
}

TEST_F(MainStore, APeriodStandsInTheHistoryOnlyOnce) {
  ASSERT_TRUE(takes("INSERT INTO 历史记录 (期号) VALUES (11031510)"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号) VALUES (11031510)"));
}

TEST_F(MainStore, APeriodHas32Bits) {
  EXPECT_TRUE(takes("INSERT INTO 历史记录 (期号) VALUES (2147483647)"));
  EXPECT_TRUE(takes("INSERT INTO 历史记录 (期号) VALUES (-2147483648)"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号) VALUES (2147483648)"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号) VALUES (-2147483649)"));
}

TEST_F(MainStore, AByteGoesFrom0To255) {
  EXPECT_TRUE(takes("INSERT INTO 历史记录 (期号, 号码1, 和值) VALUES (1, 0, 255)"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号, 号码1) VALUES (2, -1)"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号, 和值) VALUES (2, 256)"));
}

TEST_F(MainStore, AMarkHas16Bits) {
  EXPECT_TRUE(takes("INSERT INTO 日志表 (过滤标记, 临时数据) VALUES (-32768, 32767)"));
  EXPECT_TRUE(refuses("INSERT INTO 日志表 (过滤标记) VALUES (-32769)"));
  EXPECT_TRUE(refuses("INSERT INTO 日志表 (临时数据) VALUES (32768)"));
}

TEST_F(MainStore, AnAttributeIsTrueOrFalse) {
  EXPECT_TRUE(takes("UPDATE 号码特性 SET 自定义组20 = 1"));
  EXPECT_TRUE(refuses("UPDATE 号码特性 SET 自定义组20 = 2"));
  EXPECT_TRUE(refuses("UPDATE 号码特性 SET 自定义组20 = -1"));
}

TEST_F(MainStore, ATextIsRefusedBeyondItsLength) {
  const auto longText = [](int length) { return "'" + std::string(static_cast<std::size_t>(length), 'x') + "'"; };
  EXPECT_TRUE(takes("UPDATE 自定义别名 SET 别名 = " + longText(50)));
  EXPECT_TRUE(refuses("UPDATE 自定义别名 SET 别名 = " + longText(51)));
  EXPECT_TRUE(takes("INSERT INTO TBLyilouZhuhe (Haoma) VALUES (" + longText(255) + ")"));
  EXPECT_TRUE(refuses("INSERT INTO TBLyilouZhuhe (Haoma) VALUES (" + longText(256) + ")"));
  EXPECT_TRUE(takes("UPDATE 彩票类型 SET 下载地址 = " + longText(100)));
  EXPECT_TRUE(refuses("UPDATE 彩票类型 SET 下载地址 = " + longText(101)));
  EXPECT_TRUE(takes("INSERT INTO 历史记录 (期号, 已完成) VALUES (1, 'Y')"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号, 已完成) VALUES (2, 'YY')"));
}

TEST_F(MainStore, LengthsCountCharactersNotBytes) {
  EXPECT_EQ(w.store().execute("test", "UPDATE 自定义别名 SET 别名 = ? WHERE 序号 = 1", QString(50, u'组')), 1);
  EXPECT_THROW(w.store().execute("test", "UPDATE 自定义别名 SET 别名 = ?", QString(51, u'组')), StoreError);
}

TEST_F(MainStore, TheDistributionHoldsAMissFigureInFull) {
  EXPECT_TRUE(takes("INSERT INTO 号码分布 (期号, \"01\", \"11\") VALUES (1, '105', '10001')"));
}

TEST_F(MainStore, ATextIsNoNumberAndANumberNoDate) {
  EXPECT_TRUE(refuses("UPDATE 过滤条件 SET VALUE = 'x'"));
  EXPECT_TRUE(refuses("UPDATE 过滤条件 SET VALUE = 1.5"));
  EXPECT_TRUE(refuses("INSERT INTO 历史记录 (期号, 开奖日期) VALUES (1, '2011-03-15')"));
  EXPECT_TRUE(takes("INSERT INTO 历史记录 (期号, 开奖日期) VALUES (1, 40617.5)"));
}

TEST_F(MainStore, ColumnsThatNobodyHasWrittenYetAreNull) {
  ASSERT_TRUE(takes("INSERT INTO 历史记录 (期号) VALUES (1)"));
  EXPECT_EQ(w.rows("SELECT 开奖日期, 号码1, 和值, 间距七, 总期号, 遗漏数据, 已完成 FROM 历史记录"),
            QStringList{u"- - - - - - -"_s});
}

TEST_F(MainStore, AUserNameStandsOnlyOnceAndIsNeverMissing) {
  EXPECT_TRUE(refuses("INSERT INTO 用户表 VALUES ('临时用户', '', 0)"));
  EXPECT_TRUE(refuses("INSERT INTO 用户表 VALUES (NULL, '', 0)"));
  EXPECT_TRUE(takes("INSERT INTO 用户表 VALUES ('甲', '', 0)"));
}

TEST_F(MainStore, FieldNamesAreNotCaseSensitive) {
  EXPECT_EQ(w.store().value("test", "SELECT Value FROM 过滤条件 WHERE id = 1"), 1);
}

TEST_F(MainStore, PassesTheCheckOfItsOwnTables) {
  EXPECT_NO_THROW(checkSchema(w.store(), StoreKind::main));
  EXPECT_NO_THROW(checkSchema(w.store(), StoreKind::conditionTemplate));  // it holds the template's tables too
}

TEST_F(MainStore, TheCheckNamesAllThatIsMissing) {
  w.store().executeScript("test", "DROP TABLE 概率表; DROP TABLE 用户表; ALTER TABLE 快速设置 DROP COLUMN 菜单ID;");
  try {
    checkSchema(w.store(), StoreKind::main);
    FAIL() << "no fault";
  } catch (const StoreError& fault) {
    EXPECT_EQ(fault.message(), u"数据文件不完整，缺少：概率表、快速设置.菜单ID、用户表。"_s);
  }
}

TEST_F(MainStore, CreatingTheTablesTwiceIsAFaultThatChangesNothing) {
  EXPECT_THROW(createSchema(w.store(), StoreKind::main), StoreError);
  EXPECT_EQ(w.store().value("test", "SELECT COUNT(*) FROM 过滤条件"), 1280);
}

TEST_F(TemplateStore, HasExactlyFourTables) {
  EXPECT_EQ(tablesOf(store).size(), 4);
  EXPECT_EQ(columnsOf(store, u"过滤条件"_s), words(u"ID VALUE"_s));
  EXPECT_EQ(columnsOf(store, u"过滤条件使用情况"_s), words(u"条件 使用情况"_s));
  EXPECT_EQ(columnsOf(store, u"号码特性"_s).size(), 100);
  EXPECT_EQ(columnsOf(store, u"历史数据过滤"_s), words(u"使用状态 最小值 最大值 匹配值"_s));
}

TEST_F(TemplateStore, IsNoMainDatabase) {
  EXPECT_THROW(checkSchema(store, StoreKind::main), StoreError);
  EXPECT_NO_THROW(checkSchema(store, StoreKind::conditionTemplate));
}

TEST_F(TemplateStore, HasTheRowsOfTheMainDatabaseInTheSameOrder) {
  // Saved sets are copied position by position, so equal counts are not enough.
  TestWorkspace w;
  const auto rowsOf = [](Store& from, const char* sql) {
    QStringList lines;
    Statement rows = from.query("test", sql);
    while (rows.next()) {
      QStringList cells;
      for (int c = 0; c < rows.columnCount(); ++c)
        cells << rows.text(c);
      lines << cells.join(u' ');
    }
    return lines;
  };
  for (const char* sql : {"SELECT * FROM 过滤条件 ORDER BY ID", "SELECT * FROM 过滤条件使用情况 ORDER BY 条件",
                          "SELECT * FROM 号码特性 ORDER BY \"INDEX\""}) {
    EXPECT_FALSE(rowsOf(store, sql).isEmpty()) << sql;
    EXPECT_EQ(rowsOf(store, sql), rowsOf(w.store(), sql)) << sql;
  }
}

TEST_F(TemplateStore, HasAMatchRowOfItsOwn) {
  Statement row = store.query("test", "SELECT * FROM 历史数据过滤");
  ASSERT_TRUE(row.next());
  EXPECT_EQ(row.integer(0), 0);
  EXPECT_EQ(row.integer(1), 2007001);
  EXPECT_EQ(row.integer(2), 2007030);
  EXPECT_EQ(row.integer(3), 5);
  EXPECT_FALSE(row.next());
}

TEST(Schema, FindsTablesByName) {
  EXPECT_EQ(schemaTable(u"日志表"_s).key, u"ID"_s);
  EXPECT_THROW((void)schemaTable(u"没有"_s), StoreError);
}

}  // namespace
}  // namespace elevenfive
