// quick, summary, conditions, miss, misssum.
#include <gtest/gtest.h>

#include <QFile>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class SetupCommands : public ::testing::Test {
 protected:
  SetupCommands() { cli.call({u"init"_s}); }

  QString value(int id) { return cli.rows(u"SELECT VALUE FROM 过滤条件 WHERE ID = %1"_s.arg(id)); }
  QString fingerprint() {
    return cli.rows(
        u"SELECT SUM(VALUE * ID), (SELECT SUM(条件 * 使用情况) FROM 过滤条件使用情况), "
        "(SELECT SUM(号码 * 自定义组1 + 大数) FROM 号码特性), (SELECT SUM(匹配值) FROM 历史数据过滤) "
        "FROM 过滤条件"_s);
  }

  CliProcess cli;
};

}  // namespace

TEST_F(SetupCommands, QuickShowPrintsTheForm) {
  const QStringList lines = cli.call({u"quick"_s, u"show"_s}).out.split(u'\n');
  ASSERT_EQ(lines.size(), 24);
  EXPECT_EQ(lines[0], u"编号\t条件名称\tused\ttext"_s);
  EXPECT_EQ(lines[1], u"0\t和值\t1\t[19-40]"_s);
  EXPECT_EQ(lines[22], u"21\t区间4\t0\t[0]"_s);
}

TEST_F(SetupCommands, QuickSubmitWritesTheRangesOfAllRows) {
  const auto outcome = cli.call({u"quick"_s, u"submit"_s, u"0=[20-22],[25]"_s, u"6=[5]"_s});
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.err, u"[info] elevenfive 11选5: 条件设置完成！\n"_s);
  EXPECT_EQ(outcome.out.count(u'\n'), 23);
  EXPECT_EQ(cli.rows(u"SELECT group_concat(ID) FROM 过滤条件 WHERE ID BETWEEN 1000 AND 1065 AND VALUE = 1"_s),
            u"1020,1021,1022,1025\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT group_concat(ID) FROM 过滤条件 WHERE ID BETWEEN 3300 AND 3314 AND VALUE = 1"_s),
            u"3305\n"_s);
}

TEST_F(SetupCommands, QuickSubmitPrintsTheTextsThatTheFormsBoxesHoldThen) {
  const auto outcome = cli.call({u"quick"_s, u"submit"_s, u"0=25, 20-22"_s, u"6=[9-3]"_s, u"2="_s});
  ASSERT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.out.section(u'\n', 1, 1), u"0\t和值\t1\t[2520-22]"_s);  // no bracket ends the first group
  EXPECT_EQ(outcome.out.section(u'\n', 3, 3), u"2\t偶数和值\t0\t[]"_s);
  EXPECT_EQ(outcome.out.section(u'\n', 7, 7), u"6\t跨度\t1\t[9-3]"_s);
  const auto again = cli.call({u"quick"_s, u"submit"_s, u"0=[25],[20-21],[22]"_s, u"6=[5]"_s});
  EXPECT_EQ(again.out.section(u'\n', 1, 1), u"0\t和值\t1\t[25],[20-21],[22]"_s);
  EXPECT_EQ(cli.call({u"quick"_s, u"show"_s}).out.section(u'\n', 1, 1), u"0\t和值\t1\t[20-22] , [25]"_s);
}

TEST_F(SetupCommands, AFaultyQuickTextWritesNothing) {
  const QString before = fingerprint();
  const auto outcome = cli.call({u"quick"_s, u"submit"_s, u"6=[5]"_s, u"0=[20-x]"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_TRUE(outcome.err.startsWith(u"[critical] elevenfive 11选5: 出错！你设置的[和值]"_s))
      << outcome.err.toStdString();
  EXPECT_EQ(cli.call({u"quick"_s, u"submit"_s, u"22=[1]"_s}).status, exitFailed);
  for (const QString& word : {u"=[1]"_s, u"x=[1]"_s, u"0"_s, u"0.5=[1]"_s})
    EXPECT_EQ(cli.call({u"quick"_s, u"submit"_s, word}).status, exitUsage) << word.toStdString();
  EXPECT_EQ(cli.call({u"quick"_s, u"submit"_s}).status, exitUsage);
  EXPECT_EQ(cli.call({u"quick"_s, u"submit"_s, u"0=5"_s, u"0=6"_s}).status, exitUsage);
  EXPECT_EQ(fingerprint(), before);
}

TEST_F(SetupCommands, SummaryIsTheTextOfAllConditions) {
  const QString text = cli.batch(u"pick clear\npick 3 2\nsummary\n"_s).out.section(u"> summary\n"_s, 1);
  EXPECT_TRUE(text.startsWith(u" 已选“拖码”： \n 已选“胆码”： ０３\n"_s)) << text.left(200).toStdString();
  EXPECT_TRUE(text.contains(u" 和值取值范围： [１９-４０]\n"_s));
  EXPECT_FALSE(text.contains(u'\r'));
}

TEST_F(SetupCommands, AConditionFileBringsBackWhatItHeld) {
  cli.batch(u"value 1000-1010 1\nuse 2 1\nattr 自定义组1 4,7\nmatch 1 30 3\n"_s);
  const QString saved = fingerprint();
  const QString path = cli.path(u"set.Vorex"_s);
  const auto exported = cli.call({u"conditions"_s, u"export"_s, path});
  EXPECT_EQ(exported.status, exitDone);
  EXPECT_EQ(exported.err, u"[plain] elevenfive 11选5: 导出完成！\n"_s);
  const auto restored = cli.call({u"conditions"_s, u"restore"_s});
  EXPECT_EQ(restored.err, u"[plain] elevenfive 11选5: 全部过滤条件已还原为默认值！\n"_s);
  EXPECT_NE(fingerprint(), saved);
  EXPECT_EQ(value(1), u"0\n"_s);
  const auto imported = cli.call({u"conditions"_s, u"import"_s, path});
  EXPECT_EQ(imported.status, exitDone);
  EXPECT_EQ(imported.err, u"[plain] elevenfive 11选5: 导入完成！\n"_s);
  EXPECT_EQ(fingerprint(), saved);
  EXPECT_EQ(cli.call({u"conditions"_s, u"export"_s, path}).err,
            u"[question] elevenfive 11选5: 要覆盖这个文件吗？\n[plain] elevenfive 11选5: 导出完成！\n"_s);
}

TEST_F(SetupCommands, AnExportWithoutItsTemplateFails) {
  const QString path = cli.path(u"lost.Vorex"_s);
  ASSERT_TRUE(QFile::remove(cli.path(u"TJmode.tjmod"_s)));
  const auto outcome = cli.call({u"conditions"_s, u"export"_s, path});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 数据模板文件丢失无法导出，请重新安装！\n"_s);
  EXPECT_FALSE(QFile::exists(path));
}

TEST_F(SetupCommands, ForeignConditionFilesAreRefused) {
  const QString before = fingerprint();
  QFile file(cli.path(u"foreign.Vorex"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("not a database");
  file.close();
  const auto foreign = cli.call({u"conditions"_s, u"import"_s, file.fileName()});
  EXPECT_EQ(foreign.status, exitFailed);
  EXPECT_EQ(foreign.err, u"[plain] elevenfive 11选5: 文件格式错误无法导入数据！\n"_s);
  EXPECT_EQ(cli.call({u"conditions"_s, u"import"_s, cli.path(u"none.Vorex"_s)}).status, exitFailed);
  for (const QString& command : {u"import"_s, u"export"_s})
    EXPECT_EQ(cli.call({u"conditions"_s, command, QString()}).status, exitUsage) << command.toStdString();
  EXPECT_EQ(fingerprint(), before);
}

TEST_F(SetupCommands, MissPrintsTheFiguresOfEachNumber) {
  // Number 1 comes in draws 0 and 3: gaps 0 and 2, whose sum by one hit less is 2. Number 2 came once: as number 1.
  const auto outcome = cli.batch(
      u"history add 11031501 1 2 3 4 5\nhistory add 11031502 6 7 8 9 10\nhistory add 11031503 6 7 8 9 10\n"
      "history add 11031504 1 8 9 10 11\nmiss 11031504\n"_s);
  EXPECT_EQ(outcome.status, exitDone);
  const QStringList lines = outcome.out.section(u"> miss 11031504\n"_s, 1).split(u'\n');
  ASSERT_EQ(lines.size(), 13);
  EXPECT_EQ(lines[0], u"号码\tlongest\taverage\tcurrent\thits\tlast"_s);
  EXPECT_EQ(lines[1], u"1\t2\t2\t0\t2\t2"_s);
  EXPECT_EQ(lines[2], u"2\t2\t2\t0\t1\t2"_s);
}

TEST_F(SetupCommands, MissOfANumberPrintsItsMessage) {
  // Number 1 comes in draws 0, 3 and 4: gaps 0, 2 and 0, whose sum by two is 1. Number 2 came once.
  cli.batch(
      u"history add 11031501 1 2 3 4 5\nhistory add 11031502 6 7 8 9 10\nhistory add 11031503 6 7 8 9 10\n"
      "history add 11031504 1 8 9 10 11\nhistory add 11031505 1 8 9 10 11\nhistory add 11031506 6 8 9 10 11\n"_s);
  const auto often = cli.call({u"miss"_s, u"11031506"_s, u"1"_s});
  EXPECT_EQ(often.status, exitDone);
  EXPECT_EQ(often.out,
            u"号码 01 (截止 11031506 期)\n_____________________\n\n总共开出：3 期 \n\n历史遗漏最大值：2 期\n\n"
            "历史遗漏平均值：1 期\n\n最近一次的遗漏值：0 期\n\n第11031506期遗漏值：1 期\n"_s);
  EXPECT_EQ(cli.call({u"miss"_s, u"11031506"_s, u"2"_s}).out, u"(号码 02 (截止 11031506 期))  总共开出：1 期\n"_s);
  for (const QString& number : {u"0"_s, u"12"_s, u"x"_s})
    EXPECT_EQ(cli.call({u"miss"_s, u"11031506"_s, number}).status, exitUsage) << number.toStdString();
}

TEST_F(SetupCommands, MissSumFillsItsColumn) {
  // Two draws before the last one lack 1; 8, 9 and 10 came in the last draw before it, and 11 never: it counts as 10 does.
  cli.batch(
      u"history add 11031501 1 2 3 4 5\nhistory add 11031502 1 2 3 4 5\nhistory add 11031503 6 7 8 9 10\n"
      "history add 11031504 6 7 8 9 10\nhistory add 11031505 1 8 9 10 11\nmisssum 11031501 11031505\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 遗漏值总和 FROM 历史记录 WHERE 期号 = 11031505"_s), u"2\n"_s);
  EXPECT_EQ(cli.call({u"misssum"_s, u"1"_s}).status, exitUsage);
  EXPECT_EQ(cli.call({u"miss"_s, u"x"_s}).status, exitUsage);
}

}  // namespace elevenfive
