// history add, delete, clear, import, export, derive.
#include <gtest/gtest.h>

#include <QDate>
#include <QFile>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class HistoryCommands : public ::testing::Test {
 protected:
  HistoryCommands() { cli.call({u"init"_s}); }

  QString draws() {
    return cli.rows(u"SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 和值 FROM 历史记录 ORDER BY 期号"_s);
  }

  QString textFile(const QByteArray& content) {
    const QString path = cli.path(u"draws.txt"_s);
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return path;
  }

  QByteArray fileContent(const QString& name) {
    QFile file(cli.path(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
  }

  CliProcess cli;
};

const QString boxTitle = u" elevenfive 11选5: "_s;

}  // namespace

TEST_F(HistoryCommands, AddSortsStoresAndDerives) {
  const auto outcome = cli.batch(u"history add 11031510 9 1 2 5 4 --date 2011-03-15\n"_s);
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.out, u"> history add 11031510 9 1 2 5 4 --date 2011-03-15\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 和值, 已完成 FROM 历史记录"_s),
            u"11031510\t2011-03-15\t1\t2\t4\t5\t9\t21\tY\n"_s);
}

TEST_F(HistoryCommands, AddTakesTodayWhereNoDateIsGiven) {
  cli.call({u"history"_s, u"add"_s, u"1"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s});
  EXPECT_EQ(cli.rows(u"SELECT 开奖日期 FROM 历史记录"_s), QDate::currentDate().toString(u"yyyy-MM-dd"_s) + u'\n');
}

TEST_F(HistoryCommands, AddPlainLeavesTheDerivedColumnsEmpty) {
  cli.batch(u"history add 11031510 1 2 3 4 5 --plain\n"_s);
  EXPECT_EQ(draws(), u"11031510\t1\t2\t3\t4\t5\t\n"_s);
}

TEST_F(HistoryCommands, AddReplacesAPeriodWithoutAQuestion) {
  const auto outcome = cli.batch(u"history add 11031510 1 2 3 4 5\nhistory add 11031510 2 3 4 5 6\n"_s);
  EXPECT_EQ(outcome.err, QString());
  EXPECT_EQ(draws(), u"11031510\t2\t3\t4\t5\t6\t20\n"_s);
}

TEST_F(HistoryCommands, AddRefusesWhatTheEntryRowRefuses) {
  for (const QString& words : {u"7 1 2 3 4 4"_s, u"7 0 2 3 4 5"_s, u"7 1 2 3 4 12"_s, u"0 1 2 3 4 5"_s,
                               u"-7 1 2 3 4 5"_s, u"7 1 2 3 4 -5"_s}) {
    const auto outcome = cli.call(u"history add "_s.append(words).split(u' '));
    EXPECT_EQ(outcome.status, exitFailed) << words.toStdString();
    EXPECT_EQ(outcome.err, u"[critical]"_s + boxTitle + u"输入有误或不完整,请核对后重新输入!\n"_s);
  }
  EXPECT_EQ(draws(), QString());
}

TEST_F(HistoryCommands, AddWithWrongWordsStoresNothing) {
  for (const QString& words : {u"7 1 2 3 4"_s, u"7 1 2 3 4 5 6"_s, u"7 a 2 3 4 5"_s, u"x 1 2 3 4 5"_s,
                               u"7 1 2 3 4 5.0"_s, u"2147483648 1 2 3 4 5"_s, u"7 1 2 3 4 5 --date 2011-02-30"_s,
                               u"7 1 2 3 4 5 --date"_s, u"7 1 2 3 4 5 --refresh"_s}) {
    const auto outcome = cli.call(u"history add "_s.append(words).split(u' '));
    EXPECT_EQ(outcome.status, exitUsage) << words.toStdString();
    EXPECT_TRUE(outcome.err.endsWith(u"history add QIHAO N1 N2 N3 N4 N5 [--date YYYY-MM-DD] [--plain]\n"_s))
        << outcome.err.toStdString();
  }
  EXPECT_EQ(draws(), QString());
}

TEST_F(HistoryCommands, DeleteTellsHowItWent) {
  cli.batch(u"history add 7 1 2 3 4 5\nhistory add 8 1 2 3 4 6\n"_s);
  const auto done = cli.call({u"history"_s, u"delete"_s, u"7"_s});
  EXPECT_EQ(done.status, exitDone);
  EXPECT_EQ(done.err, u"[plain]"_s + boxTitle + u"删除完成！\n"_s);
  const auto again = cli.call({u"history"_s, u"delete"_s, u"7"_s});
  EXPECT_EQ(again.status, exitFailed);
  EXPECT_EQ(again.err, u"[plain] 删除失败: 无法完成，历史记录表格中没有该期记录！\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 期号 FROM 历史记录"_s), u"8\n"_s);
}

TEST_F(HistoryCommands, DeleteTakesAPeriodOfTenDigitsAsItStands) {
  cli.batch(u"history add 1103151001 1 2 3 4 5\nhistory add 110315100 1 2 3 4 5\nhistory delete 1103151001\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 期号 FROM 历史记录"_s), u"110315100\n"_s);
}

TEST_F(HistoryCommands, DeleteOfThePeriodZeroDoesNothingAsTheButton) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  for (const QStringList& period : {QStringList{u"0"_s}, QStringList{u"--"_s, u"-7"_s}}) {
    const auto outcome = cli.call(QStringList{u"history"_s, u"delete"_s} + period);
    EXPECT_EQ(outcome.status, exitDone) << period.last().toStdString();
    EXPECT_EQ(outcome.out, QString());
    EXPECT_EQ(outcome.err, QString());
  }
  EXPECT_EQ(cli.rows(u"SELECT 期号 FROM 历史记录"_s), u"7\n"_s);
}

TEST_F(HistoryCommands, ClearAsksAndTakesYes) {
  cli.batch(u"history add 7 1 2 3 4 5\nhistory add 8 1 2 3 4 6\n"_s);
  const auto outcome = cli.call({u"history"_s, u"clear"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.err, u"[question]"_s + boxTitle + u"确定要清空所有的历史记录吗？\n"_s);
  EXPECT_EQ(draws(), QString());
}

TEST_F(HistoryCommands, ImportKeepsTheOldDrawsUnlessToldToClear) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  const QString path = textFile("11031510 01 02 03 04 05\r\n11031511,6,7,8,9,10\n");
  const auto kept = cli.call({u"history"_s, u"import"_s, path});
  EXPECT_EQ(kept.status, exitDone);
  EXPECT_EQ(kept.err,
            u"[question]"_s + boxTitle + u"原有的历史数据是否要清空？\n[info]"_s + boxTitle + u"导入完成!\n"_s);
  EXPECT_EQ(draws().count(u'\n'), 3);
  cli.call({u"history"_s, u"import"_s, path, u"--clear"_s});
  EXPECT_EQ(cli.rows(u"SELECT 期号, 号码5 FROM 历史记录 ORDER BY 期号"_s), u"11031510\t5\n11031511\t10\n"_s);
}

TEST_F(HistoryCommands, ImportOfAMissingFileLeavesTheDraws) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  for (const QString& path : {cli.path(u"none.txt"_s), cli.folder()}) {
    const auto outcome = cli.call({u"history"_s, u"import"_s, path, u"--clear"_s});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_EQ(outcome.err, u"[critical]"_s + boxTitle + u"无法打开文件 %1。\n"_s.arg(path));
  }
  EXPECT_EQ(draws().count(u'\n'), 1);
}

TEST_F(HistoryCommands, ImportOfAnEmptyFileIsRefused) {
  const auto outcome = cli.call({u"history"_s, u"import"_s, textFile({})});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[plain]"_s + boxTitle + u"没有数据，无法导入！\n"_s);
}

TEST_F(HistoryCommands, ImportOfAFileWithoutLinesKeepsTheDrawsItWasToldToClear) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  for (const QByteArray& content : {QByteArray(), QByteArray("\xEF\xBB\xBF")}) {
    const auto outcome = cli.call({u"history"_s, u"import"_s, textFile(content), u"--clear"_s});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_EQ(outcome.err, u"[plain]"_s + boxTitle + u"没有数据，无法导入！\n"_s);
  }
  EXPECT_EQ(draws(), u"7\t1\t2\t3\t4\t5\t\n"_s);
}

TEST_F(HistoryCommands, AFileOfBlankLinesIsImportedAndAddsNothing) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  for (const QByteArray& content : {QByteArray("\r\n"), QByteArray(" \n\t\n")}) {
    const auto outcome = cli.call({u"history"_s, u"import"_s, textFile(content)});
    EXPECT_EQ(outcome.status, exitDone);
    EXPECT_TRUE(outcome.err.endsWith(u"[info]"_s + boxTitle + u"导入完成!\n"_s)) << outcome.err.toStdString();
  }
  EXPECT_EQ(draws(), u"7\t1\t2\t3\t4\t5\t\n"_s);
}

TEST_F(HistoryCommands, ImportIsDoneAlsoWhereADrawCannotBeDerived) {
  cli.batch(u"history add 11031501 1 2 3 4 5\n"_s);
  // A repeated number takes the fifth of the line before, which is 0 for the first line.
  const auto outcome = cli.call({u"history"_s, u"import"_s, textFile("11031510 01 02 03 04 04\n")});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_TRUE(outcome.err.endsWith(u"[info]"_s + boxTitle + u"导入完成!\n"_s)) << outcome.err.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT 期号, 号码5 FROM 历史记录 ORDER BY 期号"_s), u"11031501\t5\n11031510\t0\n"_s);
}

TEST_F(HistoryCommands, AnEmptyFileNameIsNone) {
  cli.batch(u"history add 7 1 2 3 4 5\n"_s);
  for (const QStringList& words :
       {QStringList{u"history"_s, u"import"_s, QString(), u"--clear"_s}, QStringList{u"history"_s, u"export"_s, {}}}) {
    const auto outcome = cli.call(words);
    EXPECT_EQ(outcome.status, exitUsage) << words.join(u' ').toStdString();
    EXPECT_EQ(outcome.err.section(u'\n', 0, 0), u"参数 FILE 应为文件名，不能为空。"_s);
  }
  EXPECT_EQ(draws().count(u'\n'), 1);
}

TEST_F(HistoryCommands, ExportWritesALineADraw) {
  cli.batch(u"history add 11031511 6 7 8 9 10\nhistory add 11031510 1 2 3 4 5\n"_s);
  EXPECT_EQ(cli.call({u"history"_s, u"export"_s, cli.path(u"out.txt"_s)}).status, exitDone);
  EXPECT_EQ(fileContent(u"out.txt"_s), "11031510 01 02 03 04 05\r\n11031511 06 07 08 09 10\r\n");
}

TEST_F(HistoryCommands, ExportIntoAMissingFolderFails) {
  const auto outcome = cli.call({u"history"_s, u"export"_s, cli.path(u"none/out.txt"_s)});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err.count(u'\n'), 1);
}

TEST_F(HistoryCommands, DeriveFillsTheRange) {
  cli.batch(
      u"history add 1 1 2 3 4 5 --plain\nhistory add 2 2 3 4 5 6 --plain\nhistory add 3 3 4 5 6 7 --plain\n"
      "history derive 2 2\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 期号, 和值, 重叠号 FROM 历史记录 ORDER BY 期号"_s), u"1\t\t\n2\t20\t4\n3\t\t\n"_s);
}

}  // namespace elevenfive
