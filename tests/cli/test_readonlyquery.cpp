#include "cli/readonlyquery.h"

#include <gtest/gtest.h>

#include <sstream>

#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class ReadOnlyQueryTest : public ::testing::Test {
 protected:
  QString printed(const QString& sql) {
    std::ostringstream out;
    ReadOnlyQuery(data.store(), sql).print(out);
    return QString::fromStdString(out.str());
  }

  QString faultOf(const QString& sql) {
    try {
      printed(sql);
    } catch (const StoreError& fault) {
      return fault.message();
    }
    return {};
  }

  TestWorkspace data;
};

}  // namespace

TEST_F(ReadOnlyQueryTest, PrintsHeaderAndRows) {
  EXPECT_EQ(printed(u"SELECT ID, VALUE FROM 过滤条件 WHERE ID IN (1, 40, 3900) ORDER BY ID;"_s),
            u"ID\tVALUE\n1\t1\n40\t0\n3900\t5\n"_s);
  EXPECT_EQ(printed(u"SELECT 期号 FROM 历史记录"_s), u"期号\n"_s);
}

TEST_F(ReadOnlyQueryTest, NullIsAnEmptyCellAndRealsAreShort) {
  EXPECT_EQ(printed(u"SELECT NULL AS a, 0.1 AS b, 43000.0 AS c, -2.5 AS d, 1.0 / 3 AS e, '' AS f"_s),
            u"a\tb\tc\td\te\tf\n\t0.1\t43000\t-2.5\t0.3333333333333333\t\n"_s);
}

TEST_F(ReadOnlyQueryTest, DateColumnsPrintAsDates) {
  data.store().execute("test",
                       "INSERT INTO 历史记录 (期号, 开奖日期) VALUES (1, 0.0), (2, 43000.0), (3, 43000.75), "
                       "(4, -1.0), (5, NULL), (6, 1e300)");
  EXPECT_EQ(printed(u"SELECT 期号, 开奖日期 AS d FROM 历史记录 ORDER BY 期号"_s),
            u"期号\td\n1\t1899-12-30\n2\t2017-09-22\n3\t2017-09-22 18:00:00\n4\t1899-12-29\n5\t\n6\t1e+300\n"_s);
}

TEST_F(ReadOnlyQueryTest, WhatIsCalculatedFromADatePrintsAsOneOnlyUnderItsName) {
  // Day 39083 is 2007-01-01, so 39377 is the 295th day of that year.
  EXPECT_EQ(printed(u"SELECT MIN(最后登陆时间) AS a, MIN(最后登陆时间) AS 开奖日期 FROM 用户表"_s),
            u"a\t开奖日期\n39377\t2007-10-22\n"_s);
}

TEST_F(ReadOnlyQueryTest, TabsAndLineEndsInCellsPrintAsBlanks) {
  EXPECT_EQ(printed(u"SELECT char(97, 9, 98, 10, 99, 13, 100) AS x"_s), u"x\na b c d\n"_s);
}

TEST_F(ReadOnlyQueryTest, CommentsBehindTheStatementAreNoSecondOne) {
  EXPECT_EQ(printed(u"SELECT 1 AS x; -- done\n ; /* all */"_s), u"x\n1\n"_s);
}

TEST_F(ReadOnlyQueryTest, WhatDescribesTheStoreMayBeAsked) {
  EXPECT_EQ(printed(u"PRAGMA user_version"_s), u"user_version\n0\n"_s);
  EXPECT_EQ(printed(u"PRAGMA integrity_check"_s), u"integrity_check\nok\n"_s);
  EXPECT_EQ(printed(u"SELECT name FROM pragma_table_info('用户模式')"_s), u"name\n模式\n"_s);
}

TEST_F(ReadOnlyQueryTest, WhatWouldWriteIsRefusedAndWritesNothing) {
  const QString attached = data.folders.program + u"/other.db"_s;
  for (const QString& sql : {u"DELETE FROM 过滤条件"_s,
                             u"UPDATE 过滤条件 SET VALUE = 7"_s,
                             u"INSERT INTO 用户模式 VALUES (3)"_s,
                             u"REPLACE INTO 过滤条件 VALUES (1, 9)"_s,
                             u"CREATE TABLE x (a)"_s,
                             u"CREATE TEMP TABLE x (a)"_s,
                             u"DROP TABLE 过滤条件"_s,
                             u"ALTER TABLE 用户模式 ADD COLUMN x"_s,
                             u"BEGIN"_s,
                             u"COMMIT"_s,
                             u"SAVEPOINT s"_s,
                             u"VACUUM"_s,
                             u"VACUUM INTO '%1'"_s.arg(attached),
                             u"ATTACH '%1' AS other"_s.arg(attached),
                             u"DETACH main"_s,
                             u"PRAGMA user_version = 3"_s,
                             u"PRAGMA journal_mode = DELETE"_s,
                             u"PRAGMA query_only = 1"_s,
                             u"PRAGMA writable_schema"_s,
                             u"REINDEX"_s,
                             u"ANALYZE"_s,
                             u"SELECT load_extension('x')"_s,
                             u"DELETE FROM 用户模式 RETURNING 模式"_s,
                             u"WITH a AS (SELECT 1) DELETE FROM 过滤条件"_s,
                             u"SELECT 1; DELETE FROM 过滤条件"_s,
                             u"SELECT 1; SELECT 2"_s,
                             u"SELECT 1; nonsense"_s})
    EXPECT_EQ(faultOf(sql), u"只允许执行一条只读的查询语句，没有执行。"_s) << sql.toStdString();
  EXPECT_FALSE(data.store().inTransaction());
  EXPECT_FALSE(QFile::exists(attached));
  EXPECT_EQ(data.rows("SELECT COUNT(*), SUM(VALUE) FROM 过滤条件"),
            data.rows("SELECT COUNT(*), SUM(VALUE) - 1 FROM 默认过滤条件"));
  EXPECT_EQ(data.rows("SELECT * FROM 用户模式"), QStringList(u"0"_s));
}

TEST_F(ReadOnlyQueryTest, TheStoreCanBeWrittenAgainAfterwards) {
  faultOf(u"DELETE FROM 过滤条件"_s);
  printed(u"SELECT 1"_s);
  EXPECT_EQ(data.store().execute("test", "UPDATE 用户模式 SET 模式 = 1"), 1);
}

TEST_F(ReadOnlyQueryTest, FaultyStatementsSayWhatIsWrong) {
  EXPECT_EQ(faultOf(u"SELECT x FROM 没有"_s), u"执行查询语句失败：no such table: 没有。"_s);
  EXPECT_EQ(faultOf(u"SELECT '"_s), u"执行查询语句失败：unrecognized token: \"'\"。"_s);
  EXPECT_EQ(faultOf(u" ; -- nothing"_s), u"没有可执行的查询语句。"_s);
  EXPECT_EQ(faultOf(QString()), u"没有可执行的查询语句。"_s);
}

}  // namespace elevenfive
