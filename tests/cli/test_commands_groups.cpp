// group and zones.
#include <gtest/gtest.h>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class GroupCommands : public ::testing::Test {
 protected:
  GroupCommands() { cli.call({u"init"_s}); }

  QString output(const QString& line) { return cli.batch(line).out.section(u'\n', 1); }

  CliProcess cli;
};

const QString counted = u"自定义组1 ——　号码：（０１,０５） 允许开出个数（０个,２个）\n"_s;

}  // namespace

TEST_F(GroupCommands, MembersAndCountsMakeAGroup) {
  EXPECT_EQ(output(u"group 1 members 5,1"_s), u"自定义组1 ——　未 使 用 \n"_s);
  EXPECT_EQ(output(u"group 1 counts 2,0"_s), counted);
  EXPECT_EQ(cli.rows(u"SELECT VALUE FROM 过滤条件 WHERE ID BETWEEN 3800 AND 3803 ORDER BY ID"_s), u"1\n0\n1\n0\n"_s);
}

TEST_F(GroupCommands, ExchangedMembersKeepTheCounts) {
  cli.batch(u"group 1 members 2,3\ngroup 1 counts 0,2\n"_s);
  EXPECT_EQ(output(u"group 1 members 1,5"_s), counted);
}

TEST_F(GroupCommands, AGroupWithoutItsLastMemberIsOff) {
  cli.batch(u"group 1 members 2,3\ngroup 1 counts 0,2\n"_s);
  EXPECT_EQ(output(u"group 1 members -"_s), u"自定义组1 ——　未 使 用 \n"_s);
  EXPECT_EQ(cli.rows(u"SELECT SUM(VALUE) FROM 过滤条件 WHERE ID BETWEEN 3800 AND 3809"_s), u"0\n"_s);
}

TEST_F(GroupCommands, CountsNeedMembers) {
  const auto outcome = cli.batch(u"group 20 counts 1\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[critical] elevenfive 11选5: 自定义组20 中没有号码，请先设置号码。\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT SUM(VALUE) FROM 过滤条件 WHERE ID BETWEEN 4590 AND 4599"_s), u"1\n"_s);
}

TEST_F(GroupCommands, UseSwitchesAGroupOnAndOff) {
  cli.batch(u"group 11 members 4\ngroup 11 counts 1\n"_s);
  EXPECT_EQ(output(u"group 11 use 0"_s), u"自定义组11 ——　未 使 用 \n"_s);
  EXPECT_EQ(output(u"group 11 use 1"_s), u"自定义组11 ——　号码：（０４） 允许开出个数（１个）\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 51"_s), u"1\n"_s);
}

TEST_F(GroupCommands, UseNeedsNeitherCountsNorMembers) {
  cli.batch(u"group 12 members 5\n"_s);
  EXPECT_EQ(output(u"group 12 use 1"_s), u"自定义组12 ——　号码：（０５）（条 件 未 设 置）\n"_s);
  EXPECT_EQ(output(u"group 13 use 1"_s), u"自定义组13 ——（ 无 号 码 ）\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 IN (52, 53)"_s), u"1\n1\n"_s);
}

TEST_F(GroupCommands, NameIsDataAndAtMostFiftyCharacters) {
  EXPECT_EQ(output(u"group 3 name \"it's \\\"my\\\" group\""_s), u"it's \"my\" group ——　未 使 用 \n"_s);
  EXPECT_EQ(cli.call({u"group"_s, u"3"_s, u"name"_s, QString(50, u'长')}).status, exitDone);
  EXPECT_EQ(cli.call({u"group"_s, u"3"_s, u"name"_s, QString(51, u'x')}).status, exitFailed);
  EXPECT_EQ(cli.call({u"group"_s, u"3"_s, u"name"_s, QString()}).status, exitUsage);
  EXPECT_EQ(cli.rows(u"SELECT 别名 FROM 自定义别名 WHERE 序号 = 3"_s), QString(50, u'长') + u'\n');
}

TEST_F(GroupCommands, CommonFillsTheGroupAndItsName) {
  EXPECT_EQ(output(u"group 1 common 除3余0(0路)"_s), u"除3余0(0路) ——　未 使 用 \n"_s);
  EXPECT_EQ(cli.rows(u"SELECT group_concat(号码) FROM 号码特性 WHERE 自定义组1 = 1"_s), u"3,6,9\n"_s);
  for (const QString& entry : {u"-------"_s, u"nonsense"_s, QString()})
    EXPECT_EQ(cli.call({u"group"_s, u"1"_s, u"common"_s, u"--"_s, entry}).status, exitFailed) << entry.toStdString();
}

TEST_F(GroupCommands, CommonTakesOnlyEntriesThatTheBoxHolds) {
  for (const QString& entry : {u"除7余0"_s, u"除3余5(0路)"_s, u"除3余0"_s, u"11_尾"_s, u"1_尾"_s, u"奇数号码x"_s,
                               u"abc期斜码"_s, u"1除4余0"_s})
    EXPECT_EQ(cli.call({u"group"_s, u"1"_s, u"common"_s, entry}).status, exitFailed) << entry.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 号码特性 WHERE 自定义组1 = 1"_s), u"0\n"_s);
  EXPECT_EQ(output(u"group 1 common １_尾"_s), u"１_尾 ——　未 使 用 \n"_s);
}

TEST_F(GroupCommands, CommonTakesTheEntryWithThePeriodThatTheBoxShows) {
  cli.batch(u"history add 11031510 1 2 3 4 5\n"_s);
  for (const QString& entry : {u"期旧码(复码)"_s, u"99999999999期旧码(复码)"_s, u"11031511期旧码(复码)"_s})
    EXPECT_EQ(output(u"group 1 common "_s + entry), u"11031511期旧码(复码) ——　未 使 用 \n"_s);
  EXPECT_EQ(cli.rows(u"SELECT group_concat(号码) FROM 号码特性 WHERE 自定义组1 = 1"_s), u"1,2,3,4,5\n"_s);
}

TEST_F(GroupCommands, TheEntriesKeepThePeriodThatWasNextWhenTheDataWasOpened) {
  const QString batch = cli.batch(u"group list\nhistory add 11031510 1 2 3 4 5\ngroup entries\n"_s).out;
  EXPECT_TRUE(batch.contains(u"\n0期旧码(复码)\n"_s));
  EXPECT_TRUE(cli.call({u"group"_s, u"entries"_s}).out.contains(u"\n11031511期旧码(复码)\n"_s));
}

TEST_F(GroupCommands, CountsThatStandAlreadySwitchTheGroupOnAndNoneSwitchesItOff) {
  cli.batch(u"group 3 members 4,8\n"_s);  // the factory set allows 2 and 3 of this group
  EXPECT_EQ(output(u"group 3 counts 2,3"_s), u"自定义组3 ——　号码：（０４,０８） 允许开出个数（２个,３个）\n"_s);
  cli.batch(u"group 1 members 4\ngroup 1 use 1\n"_s);
  EXPECT_EQ(output(u"group 1 counts -"_s), u"自定义组1 ——　未 使 用 \n"_s);
}

TEST_F(GroupCommands, NamesWithLineBreaksAreRefused) {
  for (const QString& name : {u"a\nb"_s, u"a\tb"_s, u"\x01"_s})
    EXPECT_EQ(cli.call({u"group"_s, u"2"_s, u"name"_s, name}).status, exitFailed);
  EXPECT_EQ(cli.rows(u"SELECT 别名 FROM 自定义别名 WHERE 序号 = 2"_s), u"自定义组2\n"_s);
}

TEST_F(GroupCommands, ClearBringsBackTheOwnName) {
  cli.batch(u"group 1 members 1\ngroup 1 counts 1\ngroup 1 name x\n"_s);
  EXPECT_EQ(output(u"group 1 clear"_s), u"自定义组1 ——　未 使 用 \n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 号码特性 WHERE 自定义组1 = 1"_s), u"0\n"_s);
}

TEST_F(GroupCommands, ListHasTwentyLinesAndEntriesTheirBlocks) {
  EXPECT_EQ(output(u"group list"_s).count(u'\n'), 20);
  const QStringList entries = output(u"group entries"_s).split(u'\n');
  EXPECT_EQ(entries.first(2), QStringList({u"奇数号码"_s, u"偶数号码"_s}));
  EXPECT_EQ(entries[2], u"-------"_s);
}

TEST_F(GroupCommands, GroupsAndValuesOutsideTheirRangeAreWrongWords) {
  for (const QString& words : {u"0 clear"_s, u"21 clear"_s, u"x clear"_s, u"1 members 12"_s, u"1 counts 6"_s,
                               u"1 use 2"_s, u"1 use"_s, u"1"_s, u"1 foo"_s})
    EXPECT_EQ(cli.call(u"group "_s.append(words).split(u' ')).status, exitUsage) << words.toStdString();
}

TEST_F(GroupCommands, ZonesShowClickAndClear) {
  const QString first = u" 区间1：　０１  ０２  ０３  ０４  ０５  \n"_s;
  const QString rest = u" 区间2：　０６  ０７  ０８  ０９  １０  １１  \n 区间3：　无号码\n 区间4：　无号码\n"_s;
  EXPECT_EQ(output(u"zones show"_s), first + rest);
  EXPECT_EQ(output(u"zones click 1 5"_s), u" 区间1：　０１  ０２  ０３  ０４  \n"_s + rest);
  EXPECT_EQ(output(u"zones click 1 5"_s), first + rest);
  const auto cleared = cli.batch(u"use 16 1\nzones clear\n"_s);
  EXPECT_EQ(cleared.err, u"[plain] elevenfive 11选5: 请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。\n"_s);
  EXPECT_TRUE(cleared.out.endsWith(u" 区间1：　无号码\n 区间2：　无号码\n 区间3：　无号码\n 区间4：　无号码\n"_s));
  EXPECT_EQ(cli.rows(u"SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 16"_s), u"0\n"_s);
  EXPECT_EQ(cli.batch(u"zones click 5 1\n"_s).status, exitUsage);
  EXPECT_EQ(cli.batch(u"zones click 1 12\n"_s).status, exitUsage);
}

TEST_F(GroupCommands, ZonesRecalcCountsTheHistoryAgain) {
  cli.batch(u"history add 1 1 2 3 4 5\nhistory add 2 1 2 3 4 11\nzones click 1 11\nzones recalc\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 区间1, 区间2 FROM 历史记录 ORDER BY 期号"_s), u"5\t0\n5\t1\n"_s);
}

}  // namespace elevenfive
