// expand, run, refine, check, rows export, import, delete.
#include <gtest/gtest.h>

#include <QFile>

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

  void writeFile(const QString& name, const QByteArray& content) {
    QFile file(cli.path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QByteArray readFile(const QString& name) {
    QFile file(cli.path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  CliProcess cli;
};

/// A draw to look back to, seven numbers, and of the conditions only 和值 19 to 40, 跨度 5 to 10, 最大间距 2 to 10 and AC值 1 to 6.
const QString sevenNumbers =
    u"history add 11031511 1 2 3 4 5\npick clear\npick 1 1\npick 2 1\npick 3 1\npick 4 1\npick 5 1\npick 6 1\npick 7 "
    u"1\n"
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
  EXPECT_EQ(lastOutput(sevenNumbers + u"expand 11031512\nrun 11031512\n"_s),
            u"初始化选号完成!共 ２１ 注！\n\n\n\n\n正读取数据[１１０３１５１２期]．．．\n\n过滤缩水之前共：２１注．\n\n"
            "[ 和 值 ]过滤后余：１５ 注\n\n[ 跨 度 ]过滤后余：１３ 注\n\n[最大间距]过滤后余：１３ 注\n\n"
            "[AC值]过滤后余：１３ 注\n\n[保五型]缩水后余：１３ 注\n\n全部过滤缩水完成,余：１３ 注\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MIN(序号), MAX(序号), MIN(过滤标记), MAX(过滤标记) FROM 日志表"_s),
            u"13\t1\t13\t4\t4\n"_s);
  // The first to survive leaves out 4 and 5: 1+2+3+6+7 = 19.
  EXPECT_EQ(cli.rows(u"SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 WHERE 序号 = 1"_s), u"1\t2\t3\t6\t7\n"_s);
}

TEST_F(RunCommands, ToleranceForgivesAsManyConditions) {
  // Of the six that fail 和值 five pass the other three conditions; the runs 1-5, 2-6 and 3-7 fail three or four.
  const QString status = lastOutput(sevenNumbers + u"expand 11031512\nrun 11031512 --tolerance 1\n"_s);
  EXPECT_TRUE(status.contains(u"[ 和 值 ]过滤后余：１５ 注\n"_s)) << status.toStdString();
  EXPECT_TRUE(status.contains(u"[ 跨 度 ]过滤后余：１８ 注\n"_s)) << status.toStdString();
  EXPECT_TRUE(status.endsWith(u"\n全部过滤缩水完成,余：１８ 注\n"_s)) << status.toStdString();
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

TEST_F(RunCommands, ARunWithoutADrawBeforeItsPeriodFails) {
  cli.batch(u"expand 11031512\n"_s);
  const auto outcome = cli.call({u"run"_s, u"11031512"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_TRUE(outcome.err.contains(u"[critical] elevenfive 11选5: "_s)) << outcome.err.toStdString();
}

TEST_F(RunCommands, ARunOverARowWithANumberAboveElevenFails) {
  writeFile(u"rows.txt"_s, "01 02 03 04 12\r\n");
  const auto outcome = cli.batch(sevenNumbers + u"rows import "_s + cli.path(u"rows.txt"_s) +
                                 u" 11031512 --format 0\nuse 9 1\nrun 11031512\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(cli.rows(u"SELECT 号码1, 号码5 FROM 日志表"_s), u"1\t12\n"_s);
}

TEST_F(RunCommands, RefineLeavesTheBestRows) {
  const auto outcome = cli.batch(sevenNumbers + u"expand 11031512\nrefine 11031512 5\n"_s);
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MIN(临时数据) FROM 日志表"_s), u"5\t999\n"_s);
}

TEST_F(RunCommands, RefineOfAPeriodWithoutRowsIsRefused) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  const auto outcome = cli.call({u"refine"_s, u"11031599"_s, u"5"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 表中无第１１０３１５９９ 期的数据！\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 日志表"_s), u"21\n"_s);
}

TEST_F(RunCommands, RefineToNoRowsDoesNothingAsTheButton) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  for (const QString& count : {u"0"_s, u"00"_s, u"-3"_s}) {
    const auto outcome = cli.call({u"refine"_s, u"11031512"_s, count});
    EXPECT_EQ(outcome.status, exitDone) << count.toStdString();
    EXPECT_EQ(outcome.out, QString());
    EXPECT_EQ(outcome.err, QString());
  }
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), COUNT(临时数据) FROM 日志表"_s), u"21\t0\n"_s);
}

TEST_F(RunCommands, ARunOfThePeriodZeroFindsNoRowAndSaysNothing) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  for (const QString& period : {u"0"_s, u"-11031512"_s}) {
    const auto outcome = cli.call({u"run"_s, period});
    EXPECT_EQ(outcome.status, exitDone) << period.toStdString();
    EXPECT_EQ(outcome.out, QString());
    EXPECT_EQ(outcome.err, QString());
  }
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MIN(期号) FROM 日志表"_s), u"21\t11031512\n"_s);
}

TEST_F(RunCommands, AnExpansionOfThePeriodZeroEmptiesTheTable) {
  for (const QString& period : {u"0"_s, u"-11031512"_s}) {
    cli.batch(sevenNumbers + u"expand 11031512\n"_s);
    const auto outcome = cli.call({u"expand"_s, period});
    EXPECT_EQ(outcome.status, exitDone) << period.toStdString();
    EXPECT_EQ(outcome.out, u"表格中号码全部删除已完成．\n"_s);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 日志表"_s), u"0\n"_s);
  }
}

TEST_F(RunCommands, ANegativeToleranceIsReadAsZero) {
  // With a tolerance of 0 thirteen of the 21 combinations stay, and no line tells of a tolerance.
  const QString status = lastOutput(sevenNumbers + u"expand 11031512\nrun 11031512 --tolerance -1\n"_s);
  EXPECT_FALSE(status.contains(u"以上条件容错"_s)) << status.toStdString();
  EXPECT_TRUE(status.endsWith(u"\n全部过滤缩水完成,余：１３ 注\n"_s)) << status.toStdString();
}

TEST_F(RunCommands, OfAPeriodOfTenDigitsTheBoxReadsNine) {
  cli.batch(sevenNumbers + u"expand 1103151200\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MIN(期号) FROM 日志表"_s), u"21\t110315120\n"_s);
}

TEST_F(RunCommands, AHistoryStageWarnsOnceInABatch) {
  const auto outcome =
      cli.batch(sevenNumbers + u"use 7 1\nexpand 11031512\nrun 11031512\nrun 11031512\nrun 11031512\n"_s);
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.out.count(u"[重叠号]过滤后余："_s), 3) << outcome.out.toStdString();
  EXPECT_EQ(outcome.err.count(u"注意，本次过滤使用了[重叠号]这个过滤条件"_s), 1) << outcome.err.toStdString();
  // The next session is another start of the program.
  EXPECT_EQ(cli.call({u"run"_s, u"11031512"_s}).err.count(u"注意，本次过滤使用了"_s), 1);
}

TEST_F(RunCommands, CheckCountsHitsAgainstTheDraw) {
  // 21 combinations of 1 to 7 against 1 2 3 6 7: one hits all five; four leave out one of the two others and one of the
  // five, 2 x 5 of them.
  const QString status =
      lastOutput(sevenNumbers + u"expand 11031512\nhistory add 11031512 1 2 3 6 7\ncheck 11031512\n"_s);
  EXPECT_TRUE(status.endsWith(u"\n\n开奖核对结果如下——\n\n中五个号： １ 注\n\n中四个号： １０ 注\n"_s))
      << status.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT 买中个数, COUNT(*) FROM 日志表 GROUP BY 1 ORDER BY 1"_s), u"3\t10\n4\t10\n5\t1\n"_s);
}

TEST_F(RunCommands, CheckOfAnUnknownPeriodIsRefused) {
  const auto outcome = cli.call({u"check"_s, u"11031512"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_TRUE(outcome.err.startsWith(u"[plain] 出错啦!: "_s)) << outcome.err.toStdString();
}

TEST_F(RunCommands, RowsGoOutAndComeInAgain) {
  cli.batch(u"pick clear\npick 1 1\npick 2 1\npick 3 1\npick 4 1\npick 5 1\npick 6 1\nexpand 11031512\n"_s);
  const QString path = cli.path(u"out.txt"_s);
  const auto out = cli.call({u"rows"_s, u"export"_s, path, u"11031512"_s});
  EXPECT_EQ(out.status, exitDone);
  EXPECT_EQ(out.out, u"\n\n号码导出完成．\n"_s);
  EXPECT_EQ(readFile(u"out.txt"_s),
            "01,02,03,04,05\r\n01,02,03,04,06\r\n01,02,03,05,06\r\n01,02,04,05,06\r\n01,03,04,05,06\r\n"
            "02,03,04,05,06\r\n");
  const auto in = cli.call({u"rows"_s, u"import"_s, path, u"11031513"_s, u"--format"_s, u"0"_s});
  EXPECT_EQ(in.status, exitDone);
  EXPECT_EQ(in.err,
            u"[question] elevenfive 11选5: 表格中原有的数据要保留吗？\n"
            "[plain] elevenfive 11选5: 数据导入完成，共导入：６ 注！\n"_s);
  EXPECT_TRUE(in.out.endsWith(u"\n\n数据导入完成，共导入：６ 注！\n"_s));
  EXPECT_EQ(cli.rows(u"SELECT 期号, COUNT(*), MAX(ID) FROM 日志表 GROUP BY 期号"_s), u"11031513\t6\t6\n"_s);
  cli.call({u"rows"_s, u"import"_s, path, u"11031513"_s, u"--format"_s, u"0"_s, u"--keep"_s});
  EXPECT_EQ(cli.rows(u"SELECT 期号, COUNT(*), MAX(序号) FROM 日志表 GROUP BY 期号"_s), u"11031513\t12\t12\n"_s);
}

TEST_F(RunCommands, RowsOfAPeriodOfTenDigitsGoOutAndComeInAgain) {
  const QString in = cli.path(u"in.txt"_s);
  const QString out = cli.path(u"out.txt"_s);
  writeFile(u"in.txt"_s, "01 02 03 04 05\r\n07 08 09 10 11\r\n");
  for (const QString& period : {u"2014121153"_s, u"2147483647"_s}) {
    const auto imported = cli.call({u"rows"_s, u"import"_s, in, period, u"--format"_s, u"0"_s});
    EXPECT_EQ(imported.status, exitDone) << imported.err.toStdString();
    EXPECT_EQ(cli.rows(u"SELECT 期号, COUNT(*) FROM 日志表 GROUP BY 期号"_s), period + u"\t2\n"_s);
    const auto exported = cli.call({u"rows"_s, u"export"_s, out, period, u"--fields"_s, u"期号,号码"_s});
    EXPECT_EQ(exported.status, exitDone) << exported.err.toStdString();
    EXPECT_EQ(readFile(u"out.txt"_s), QString(u"%1 01,02,03,04,05\r\n%1 07,08,09,10,11\r\n"_s).arg(period).toUtf8());
  }
}

TEST_F(RunCommands, ExportTakesFieldsAndSeparator) {
  cli.batch(u"pick clear\npick 1 1\npick 2 1\npick 3 1\npick 4 1\npick 5 1\npick 6 1\nexpand 11031512\n"_s);
  cli.call({u"rows"_s, u"export"_s, cli.path(u"out.txt"_s), u"11031512"_s, u"--fields"_s, u"序号,期号,号码,分隔行"_s,
            u"--separator"_s, u"--"_s});
  EXPECT_TRUE(readFile(u"out.txt"_s).startsWith("1   11031512 01--02--03--04--05\r\n2   11031512 01--"));
  EXPECT_TRUE(readFile(u"out.txt"_s).contains("03--04--05--06\r\n\r\n6   11031512 02--"));
}

TEST_F(RunCommands, ResultFilesThatCannotBeAreRefused) {
  cli.batch(u"expand 11031512\n"_s);
  EXPECT_EQ(cli.call({u"rows"_s, u"export"_s, cli.path(u"out.txt"_s), u"11031599"_s}).err,
            u"[plain] elevenfive 11选5: 表格中没有该期的号码！\n"_s);
  EXPECT_EQ(cli.call({u"rows"_s, u"export"_s, cli.path(u"out.txt"_s), u"11031599"_s}).status, exitFailed);
  EXPECT_FALSE(QFile::exists(cli.path(u"out.txt"_s)));
  EXPECT_EQ(cli.call({u"rows"_s, u"export"_s, cli.path(u"none/out.txt"_s), u"11031512"_s}).status, exitFailed);
  EXPECT_EQ(cli.call({u"rows"_s, u"export"_s, cli.path(u"x"_s), u"11031512"_s, u"--fields"_s, u"别的"_s}).status,
            exitUsage);
  const auto missing = cli.call({u"rows"_s, u"import"_s, cli.path(u"none"_s), u"11031512"_s, u"--format"_s, u"0"_s});
  EXPECT_EQ(missing.status, exitFailed);
  EXPECT_EQ(missing.err, u"[critical] elevenfive 11选5: 无法打开文件 %1。\n"_s.arg(cli.path(u"none"_s)));
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 日志表"_s), u"462\n"_s);
}

TEST_F(RunCommands, ResultFilesNeedAPeriodOfEightDigits) {
  cli.batch(sevenNumbers + u"expand 11031512\n"_s);
  writeFile(u"in.txt"_s, "11031510 01 02 03 04 05\r\n");
  const QString in = cli.path(u"in.txt"_s);
  const QString out = cli.path(u"out.txt"_s);
  for (const QString& words : {u"export "_s + out + u" 1103151"_s, u"import "_s + in + u" 1103151 --format 0"_s,
                               u"import "_s + in + u" 1103151 --format 2"_s}) {
    const auto outcome = cli.call(u"rows "_s.append(words).split(u' '));
    EXPECT_EQ(outcome.status, exitFailed) << words.toStdString();
    EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 请在文本框中输入期号。(如：11031510)\n"_s);
  }
  EXPECT_FALSE(QFile::exists(out));
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 日志表"_s), u"21\n"_s);
  EXPECT_EQ(cli.call({u"rows"_s, u"import"_s, in, u"7"_s, u"--format"_s, u"1"_s}).status, exitDone);
  EXPECT_EQ(cli.rows(u"SELECT 期号, 号码1, 号码5 FROM 日志表"_s), u"7\t1\t5\n"_s);
}

TEST_F(RunCommands, AFileWithPeriodsAndNoneTypedFillsThePeriodThatTheDialogOffers) {
  cli.batch(sevenNumbers);
  writeFile(u"in.txt"_s, "11031401 01 02 03 04 05\r\n");
  const auto outcome = cli.call({u"rows"_s, u"import"_s, cli.path(u"in.txt"_s), u"0"_s, u"--format"_s, u"1"_s});
  EXPECT_EQ(outcome.status, exitDone);
  // The next period behind the one draw 11031511.
  EXPECT_EQ(cli.rows(u"SELECT 期号, 号码1, 号码5 FROM 日志表"_s), u"11031512\t1\t5\n"_s);
}

TEST_F(RunCommands, AFileWithXuhaoGivesItsNumbersAlone) {
  writeFile(u"in.txt"_s, "7   01,02,03,04,05\r\n8   11-10-09-08-07\r\n01,02,03,04,05\r\n");
  const auto outcome = cli.call({u"rows"_s, u"import"_s, cli.path(u"in.txt"_s), u"11031512"_s, u"--format"_s, u"2"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 数据导入完成，共导入：２ 注！\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 ORDER BY 序号"_s),
            u"1\t11031512\t1\t2\t3\t4\t5\n2\t11031512\t11\t10\t9\t8\t7\n"_s);
}

TEST_F(RunCommands, OfSeventyThousandLines65535ComeIn) {
  writeFile(u"in.txt"_s, QByteArray("01 02 03 04 05\n").repeated(70000));
  const auto outcome = cli.call({u"rows"_s, u"import"_s, cli.path(u"in.txt"_s), u"11031512"_s, u"--format"_s, u"0"_s});
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_TRUE(outcome.out.endsWith(u"数据导入完成，共导入：６５５３５ 注！\n"_s)) << outcome.out.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*), MAX(序号) FROM 日志表"_s), u"65535\t65535\n"_s);
}

TEST_F(RunCommands, ABinaryFileGivesItsLineOfNumbersAlone) {
  QByteArray bytes;
  for (int n = 0; n < 4096; ++n)
    bytes += static_cast<char>((n * 131) % 256);
  for (char digit = '0'; digit <= '9'; ++digit)
    bytes.replace(digit, 'x');
  writeFile(u"in.txt"_s, bytes + "\n7   01 02 03 04 05\n" + bytes);
  const auto imported = [&](const QString& format) {
    const auto outcome =
        cli.call({u"rows"_s, u"import"_s, cli.path(u"in.txt"_s), u"11031512"_s, u"--format"_s, format});
    EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
    return cli.rows(u"SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表"_s);
  };
  EXPECT_EQ(imported(u"0"_s), u"7\t1\t2\t3\t4\n"_s);
  EXPECT_EQ(imported(u"1"_s), u"1\t2\t3\t4\t5\n"_s);
  EXPECT_EQ(imported(u"2"_s), u"1\t2\t3\t4\t5\n"_s);
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

TEST_F(RunCommands, WordsThatAreNoWholeNumbersOrNoPeriodsOfAFieldAreWrong) {
  for (const QString& words :
       {u"run 1.5"_s, u"run"_s, u"run x"_s, u"run 1 2"_s, u"expand 11031512期"_s, u"check"_s, u"refine 1"_s,
        u"refine 1 five"_s, u"rows export x -1234567"_s, u"rows export x 2147483648"_s, u"run 1 --tolerance 0.5"_s,
        u"run 1 --tolerance x"_s, u"run 1 --tolerance"_s, u"rows delete 1"_s})
    EXPECT_EQ(cli.call(words.split(u' ')).status, exitUsage) << words.toStdString();
}

}  // namespace elevenfive
