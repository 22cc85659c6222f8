// pick, value, use, attr, match, preview, count.
#include <gtest/gtest.h>

#include "model/workspace.h"
#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class ConditionCommands : public ::testing::Test {
 protected:
  ConditionCommands() { cli.call({u"init"_s}); }

  QString picks() {
    return cli.rows(u"SELECT group_concat(VALUE, '') FROM (SELECT VALUE FROM 过滤条件 WHERE ID <= 11 ORDER BY ID)"_s);
  }
  QString value(int id) { return cli.rows(u"SELECT VALUE FROM 过滤条件 WHERE ID = %1"_s.arg(id)); }
  int sum() { return cli.rows(u"SELECT SUM(VALUE * ID) FROM 过滤条件"_s).trimmed().toInt(); }

  CliProcess cli;
};

const QString boxTitle = u" elevenfive 11选5: "_s;

}  // namespace

TEST_F(ConditionCommands, PickBringsANumberToItsValue) {
  cli.batch(u"pick clear\npick 1 1\npick 1 1\npick 5 2\npick 11 1\npick 11 0\npick 10 0\n"_s);
  EXPECT_EQ(picks(), u"10002000000\n"_s);
}

TEST_F(ConditionCommands, PickAnswersTheQuestionOfAChangeWithYes) {
  const auto outcome = cli.call({u"pick"_s, u"3"_s, u"2"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_EQ(outcome.err, u"[question]"_s + boxTitle + u"号码：03之前已经被设为拖码，现在要把它改为胆码吗？\n"_s);
  EXPECT_EQ(picks(), u"11211111111\n"_s);
}

TEST_F(ConditionCommands, AFifthBankerIsRefusedAndTheRowStays) {
  cli.batch(u"pick clear\npick 1 2\npick 2 2\npick 3 2\npick 4 2\npick 5 1\n"_s);
  for (const QString& number : {u"5"_s, u"6"_s}) {
    const auto outcome = cli.call({u"pick"_s, number, u"2"_s});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_TRUE(outcome.err.endsWith(u"[info]"_s + boxTitle + u"“胆码”最多只设 ４ 个.\n"_s))
        << outcome.err.toStdString();
  }
  EXPECT_EQ(picks(), u"22221000000\n"_s);
}

TEST_F(ConditionCommands, TheSecondFieldHoldsOneBanker) {
  cli.batch(u"pick 101 2\n"_s);
  const auto outcome = cli.call({u"pick"_s, u"103"_s, u"2"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[info]"_s + boxTitle + u"后区“胆码”最多只设 １ 个.\n"_s);
  EXPECT_EQ(value(101) + value(103), u"2\n0\n"_s);
}

TEST_F(ConditionCommands, PickClearAndAllTakeTheFirstFieldOnly) {
  cli.batch(u"value 12 7\npick 105 1\npick clear\n"_s);
  EXPECT_EQ(picks() + value(12) + value(105), u"00000000000\n0\n1\n"_s);
  cli.batch(u"pick all\n"_s);
  EXPECT_EQ(picks(), u"11111111111\n"_s);
}

TEST_F(ConditionCommands, PicksThatDoNotExistAreWrongWords) {
  const int before = sum();
  for (const QString& words : {u"0 1"_s, u"12 1"_s, u"100 1"_s, u"112 1"_s, u"-1 1"_s, u"1 3"_s, u"1 -1"_s, u"1 x"_s,
                               u"1"_s, u"none"_s, u"all 1"_s})
    EXPECT_EQ(cli.call(u"pick "_s.append(words).split(u' ')).status, exitUsage) << words.toStdString();
  EXPECT_EQ(sum(), before);
}

TEST_F(ConditionCommands, ValueWritesOneRowOrARange) {
  cli.batch(u"value 1000 -5\nvalue 1001-1003 9\n"_s);
  EXPECT_EQ(value(1000) + value(1001) + value(1002) + value(1003) + value(1004), u"-5\n9\n9\n9\n0\n"_s);
}

TEST_F(ConditionCommands, ValueOfARowThatDoesNotExistChangesNothing) {
  const int before = sum();
  for (const QString& ids :
       {u"41"_s, u"0"_s, u"40-50"_s, u"30-105"_s, u"9998-10000"_s, u"-2147483648"_s, u"1-2147483647"_s}) {
    const auto outcome = cli.call({u"value"_s, ids, u"77"_s});
    EXPECT_EQ(outcome.status, exitFailed) << ids.toStdString();
    EXPECT_EQ(outcome.err.count(u'\n'), 1);
  }
  EXPECT_EQ(sum(), before);
}

TEST_F(ConditionCommands, ValueWithWrongWordsChangesNothing) {
  const int before = sum();
  for (const QString& words :
       {u"1-"_s, u"-"_s, u"5-1 1"_s, u"1-x 1"_s, u"1,2 1"_s, u"1 1.5"_s, u"1 2147483648"_s, u"1--2 1"_s})
    EXPECT_EQ(cli.call(u"value "_s.append(words).split(u' ')).status, exitUsage) << words.toStdString();
  EXPECT_EQ(sum(), before);
}

TEST_F(ConditionCommands, UseSwitchesACode) {
  cli.batch(u"use 1 0\nuse 75 3\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 IN (1, 75) ORDER BY 条件"_s), u"0\n3\n"_s);
  EXPECT_EQ(cli.call({u"use"_s, u"48"_s, u"1"_s}).status, exitFailed);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 过滤条件使用情况"_s), u"63\n"_s);
}

TEST_F(ConditionCommands, AttrMakesAColumnTrueForExactlyTheseNumbers) {
  cli.batch(u"attr 大数 1,5,11\nattr 小数 -\nattr 第7位 3\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 号码 FROM 号码特性 WHERE 大数 = 1 ORDER BY 号码"_s), u"1\n5\n11\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 号码特性 WHERE 小数 = 1"_s), u"0\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 号码 FROM 号码特性 WHERE 第7位 = 1"_s), u"3\n"_s);
}

TEST_F(ConditionCommands, AttrTakesBooleanColumnsAndNumbersOnly) {
  for (const QStringList& words :
       {QStringList{u"号码"_s, u"1"_s}, QStringList{u"INDEX"_s, u"1"_s}, QStringList{u"大数\" = 1; --"_s, u"1"_s},
        QStringList{u"大数"_s, u"12"_s}, QStringList{u"大数"_s, u"0"_s}, QStringList{u"大数"_s, u"1, 2"_s},
        QStringList{u"大数"_s, QString()}})
    EXPECT_EQ(cli.call(QStringList{u"attr"_s} + words).status, exitUsage) << words.join(u' ').toStdString();
  EXPECT_EQ(cli.rows(u"SELECT group_concat(号码) FROM 号码特性 WHERE 大数 = 1"_s), u"6,7,8,9,10,11\n"_s);
}

TEST_F(ConditionCommands, AttrOfANumberWithoutItsRowChangesNothing) {
  {
    Workspace workspace({cli.folder(), cli.folder()});
    workspace.gConn.execute("test", "DELETE FROM 号码特性 WHERE 号码 = 5");
    workspace.close();
  }
  const auto outcome = cli.call({u"attr"_s, u"大数"_s, u"1,5"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[critical]"_s + boxTitle + u"号码特性中缺少号码 5 的记录，没有改动。\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT group_concat(号码) FROM 号码特性 WHERE 大数 = 1"_s), u"6,7,8,9,10,11\n"_s);
}

TEST_F(ConditionCommands, MatchLeavesTheUpperPeriodAlone) {
  cli.batch(u"match 0 30 3\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 使用状态, 最小值, 最大值, 匹配值 FROM 历史数据过滤"_s), u"0\t30\t2008266\t3\n"_s);
}

TEST_F(ConditionCommands, MatchTakesWhatItsBoxesOffer) {
  for (const QStringList& words :
       {QStringList{u"2"_s, u"5"_s, u"4"_s}, QStringList{u"1"_s, u"0"_s, u"4"_s}, QStringList{u"1"_s, u"101"_s, u"4"_s},
        QStringList{u"1"_s, u"5"_s, u"0"_s}, QStringList{u"1"_s, u"5"_s, u"6"_s}})
    EXPECT_EQ(cli.call(QStringList{u"match"_s} + words).status, exitUsage) << words.join(u' ').toStdString();
  EXPECT_EQ(cli.call({u"match"_s, u"1"_s, u"100"_s, u"5"_s}).status, exitDone);
  EXPECT_EQ(cli.rows(u"SELECT 使用状态, 最小值, 匹配值 FROM 历史数据过滤"_s), u"1\t100\t5\n"_s);
}

TEST_F(ConditionCommands, PreviewShowsTheAllowedRuns) {
  EXPECT_EQ(cli.call({u"preview"_s, u"1"_s}).out, u"[１９-４０]\n"_s);
  EXPECT_EQ(cli.call({u"preview"_s, u"48"_s}).status, exitUsage);
}

TEST_F(ConditionCommands, CountTellsPicksAndCombinations) {
  const auto outcome = cli.batch(u"pick clear\npick 1 2\npick 2 1\npick 3 1\npick 4 1\npick 5 1\npick 6 1\ncount\n"_s);
  EXPECT_TRUE(
      outcome.out.endsWith(u"> count\n已选“拖码”个数： ５\n\n已选“胆码”个数： １\n"
                           "过滤缩水前全部号码组合： ５  注\n"_s))  // C(5, 4)
      << outcome.out.toStdString();
}

TEST_F(ConditionCommands, CountOfConditionsLeavesOutThoseWithoutTolerance) {
  // In use from the start: 1, 4, 5, 7, 8, 9, 46, 47, 70, and 38 to 41, which are not counted.
  EXPECT_EQ(cli.call({u"count"_s, u"--conditions"_s}).out, u"9\n"_s);
  EXPECT_EQ(cli.batch(u"use 2 1\nuse 30 1\nuse 45 1\ncount --conditions\n"_s).out.section(u'\n', -2), u"10\n"_s);
}

}  // namespace elevenfive
