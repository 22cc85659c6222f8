// expand, run, rows delete.
#include <gtest/gtest.h>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class RunCommands : public ::testing::Test {
 protected:
  RunCommands() { cli.call({u"init"_s}); }

  /// What the last line of a batch prints.
  QString lastOutput(const QString& lines) {
    const QString out = cli.batch(lines).out;
    const QString lastLine = u"> "_s + lines.trimmed().section(u'\n', -1) + u'\n';
    return out.mid(out.lastIndexOf(lastLine) + lastLine.size());
  }

  CliProcess cli;
};

/// A draw before the period, which every run compares with; seven numbers, and of the conditions only 和值 19 to 40, 跨度 5 to 10, 最大间距 2 to 10 and AC值 1 to 6.
const QString sevenNumbers =
    u"history add 11031511 1 3 5 7 9 --date 2011-03-15 --plain\npick clear\npick 1 1\npick 2 1\npick 3 1\npick 4 "
    u"1\npick 5 1\npick 6 1\npick 7 1\n"
    "use 7 0\nuse 8 0\nuse 46 0\nuse 47 0\nuse 70 0\nmatch 0 5 4\n"_s;

}  // namespace

TEST_F(RunCommands, ExpandWritesEveryCombination) {
  const auto outcome = cli.call({u"expand"_s, u"11031512"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.out, u"初始化选号完成!共 ４６２ 注！\n\n\n"_s);
  EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 初始化选号完成!共 ４６２ 注！\n"_s);
  const QStringList rows = cli.call({u"rows"_s, u"11031512"_s}).out.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(rows.size(), 463);
  EXPECT_EQ(rows[1], u"1\t1\t11031512\t1\t2\t3\t4\t5\t\t0\t\t\t"_s);
  EXPECT_EQ(rows[462], u"462\t462\t11031512\t7\t8\t9\t10\t11\t\t0\t\t\t"_s);
}

TEST_F(RunCommands, ExpandWithoutPicksIsRefused) {
  const auto outcome = cli.batch(u"pick clear\nexpand 11031512\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, u"> pick clear\n> expand 11031512\n"_s);
  EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 号码还没有选取,或者已选的号码个数太少!请先选取号码！\n"_s);
}

TEST_F(RunCommands, RunTellsEachStageAndLeavesTheSurvivors) {
  // 21 combinations; their sums are 28 less the two numbers left out, so six lie below 19 (left out: 3+7, 4+6, 4+7, 5+6,
  // 5+7, 6+7). Of the 15 the two runs 2-6 and 3-7 have a span of 4. What spans more has a gap and an AC value of its own.
  const QString status = lastOutput(sevenNumbers + u"expand 11031512\nrun 11031512\n"_s);
  const QStringList lines = status.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_GE(lines.size(), 8);
  EXPECT_EQ(lines.first(7), QStringList({u"初始化选号完成!共 ２１ 注！"_s, u"正读取数据[１１０３１５１２期]．．．"_s,
                                         u"过滤缩水之前共：２１注．"_s, u"[ 和 值 ]过滤后余：１５ 注"_s,
                                         u"[ 跨 度 ]过滤后余：１３ 注"_s, u"[最大间距]过滤后余：１３ 注"_s,
                                         u"[AC值]过滤后余：１３ 注"_s}));
  EXPECT_EQ(lines.last(), u"全部过滤缩水完成,余：１３ 注"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MIN(序号), MAX(序号), MIN(过滤标记), MAX(过滤标记) FROM 日志表"_s),
            u"13\t1\t13\t4\t4\n"_s);
  // The first to survive leaves out 3 and 6: 1+2+4+5+7 = 19.
  EXPECT_EQ(cli.rows(u"SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 WHERE 序号 = 1"_s), u"1\t2\t3\t6\t7\n"_s);
}

TEST_F(RunCommands, ToleranceForgivesAsManyConditions) {
  // Of the six that fail 和值 five pass the other three conditions; the run 1-5 and the runs 2-6 and 3-7 fail three or more.
  const QString status = lastOutput(sevenNumbers + u"expand 11031512\nrun 11031512 --tolerance 1\n"_s);
  EXPECT_TRUE(status.contains(u"[ 和 值 ]过滤后余：１５ 注\n"_s)) << status.toStdString();
  EXPECT_TRUE(status.contains(u"[ 跨 度 ]过滤后余：１８ 注\n"_s)) << status.toStdString();
}

TEST_F(RunCommands, TheStatusTextStartsEmptyWithEachSession) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  EXPECT_TRUE(cli.call({u"run"_s, u"11031512"_s}).out.startsWith(u"\n\n正读取数据[１１０３１５１２期]．．．\n"_s));
}

TEST_F(RunCommands, APeriodWithoutRowsIsNoFailure) {
  const auto outcome = cli.call({u"run"_s, u"11031512"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_TRUE(outcome.out.startsWith(u"\n\n表格中无[１１０３１５１２]期数据．\n"_s)) << outcome.out.toStdString();
  EXPECT_EQ(outcome.err, QString());
}

TEST_F(RunCommands, RowsDeleteEmptiesTheTable) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  const auto outcome = cli.call({u"rows"_s, u"delete"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.out, u"表格中号码全部删除已完成．\n"_s);
  EXPECT_EQ(outcome.err,
            u"[question] elevenfive 11选5: 确认要删除全部记录吗？\n[plain] elevenfive 11选5: 删除记录完成！\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 日志表"_s), u"0\n"_s);
}

TEST_F(RunCommands, PeriodsThatNoBoxTakesAreWrongWords) {
  for (const QString& words :
       {u"run 1103151200"_s, u"run -1"_s, u"run"_s, u"run x"_s, u"run 1 2"_s, u"expand 1103151200"_s,
        u"run 1 --tolerance -1"_s, u"run 1 --tolerance x"_s, u"run 1 --tolerance"_s, u"rows delete 1"_s})
    EXPECT_EQ(cli.call(words.split(u' ')).status, exitUsage) << words.toStdString();
}

}  // namespace elevenfive
