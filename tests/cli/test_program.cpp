#include "cli/program.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "model/workspace.h"
#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

const QString callUsage =
    u"usage: elevenfive-cli [--folder DIR] [--temp DIR] COMMAND [ARGUMENTS]\n"
    "       elevenfive-cli [--folder DIR] [--temp DIR] batch [FILE | -]\n"_s;

/// A fresh data file stands in the folder.
class Program : public ::testing::Test {
 protected:
  Program() { cli.call({u"init"_s}); }

  void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  CliProcess cli;
};

}  // namespace

TEST_F(Program, InitMakesDataFileAndTemplate) {
  EXPECT_TRUE(QFileInfo::exists(cli.path(u"elevenfive.dat"_s)));
  EXPECT_TRUE(QFileInfo::exists(cli.path(u"TJmode.tjmod"_s)));
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 过滤条件"_s), u"1280\n"_s);
}

TEST_F(Program, InitRefusesWhereADataFileStands) {
  cli.call({u"source"_s, u"set"_s, u"版本公告"_s, u"http://kept.example"_s});
  const auto again = cli.call({u"init"_s});
  EXPECT_EQ(again.status, exitFailed);
  EXPECT_EQ(again.out, QString());
  EXPECT_EQ(again.err, u"[critical] elevenfive 11选5: 文件夹 %1 中已有数据文件，没有改动。\n"_s.arg(cli.folder()));
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), u"http://kept.example\n"_s);
}

TEST_F(Program, InitWithForceBeginsAnew) {
  cli.call({u"source"_s, u"set"_s, u"版本公告"_s, u"http://lost.example"_s});
  const auto again = cli.call({u"init"_s, u"--force"_s});
  EXPECT_EQ(again.status, exitDone);
  EXPECT_EQ(again.out + again.err, QString());
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), u"\n"_s);
}

TEST(ProgramWithoutData, MissingDataFileIsAFailureWithOneLine) {
  CliProcess cli;
  const auto outcome = cli.call({u"rows"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_TRUE(outcome.err.startsWith(u"[critical] elevenfive 11选5: "_s)) << outcome.err.toStdString();
  EXPECT_EQ(outcome.err.count(u'\n'), 1);
}

TEST(ProgramWithoutData, BatchMayBeginWithInit) {
  CliProcess cli;
  const auto outcome = cli.batch(u"init\nsql \"SELECT COUNT(*) AS n FROM 彩票类型\"\n"_s);
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.out, u"> init\n> sql \"SELECT COUNT(*) AS n FROM 彩票类型\"\nn\n29\n"_s);
}

TEST_F(Program, TheDataIsLockedForOneAtATime) {
  const Workspace other({cli.folder(), cli.folder()});
  const auto outcome = cli.call({u"rows"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[info] elevenfive 11选5: 程序正在运行,不允许同时打开多个!!!\n"_s);
}

TEST_F(Program, WrongWordsEndWithTheUsageOfWhatWasMeant) {
  const auto outcome = cli.call({u"rows"_s, u"11031510"_s, u"1"_s});
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_EQ(outcome.err, u"多余的参数：“1”。\nusage: elevenfive-cli [--folder DIR] [--temp DIR] rows [QIHAO]\n"_s);
}

TEST_F(Program, ACommandWithoutItsSecondWordIsTold) {
  struct Case {
    QStringList words;
    int ways;
  };
  for (const Case& one : {Case{{u"history"_s}, 8}, Case{{u"group"_s, u"1"_s}, 6}}) {
    const auto outcome = cli.call(one.words);
    EXPECT_EQ(outcome.status, exitUsage);
    EXPECT_EQ(outcome.err.section(u'\n', 0, 0), u"命令 %1 没有这种用法。"_s.arg(one.words.first()));
    EXPECT_EQ(outcome.err.count(u'\n'), 1 + one.ways);  // one line for each of the ways
  }
  EXPECT_EQ(cli.call({u"pick"_s}).err.section(u'\n', 0, 0), u"缺少参数 NUMBER。"_s);
}

TEST_F(Program, OfSeveralWaysTheFaultIsToldOfTheOneWhoseOptionWasTyped) {
  struct Case {
    QString words;
    QString fault;
  };
  for (const Case& one :
       {Case{u"count --conditions extra"_s, u"多余的参数：“extra”。"_s},
        Case{u"count --conditions --conditions"_s, u"选项 --conditions 给了两次。"_s},
        Case{u"count extra"_s, u"多余的参数：“extra”。"_s}, Case{u"count --other"_s, u"没有这个选项：--other。"_s},
        Case{u"rows --other"_s, u"没有这个选项：--other。"_s}, Case{u"miss"_s, u"缺少参数 QIHAO。"_s},
        Case{u"miss 1 2 3"_s, u"命令 miss 没有这种用法。"_s}}) {
    const auto outcome = cli.call(one.words.split(u' '));
    EXPECT_EQ(outcome.status, exitUsage) << one.words.toStdString();
    EXPECT_EQ(outcome.err.section(u'\n', 0, 0), one.fault) << one.words.toStdString();
  }
}

TEST_F(Program, UnknownCommandEndsWithTheCall) {
  for (const QStringList& words : {QStringList{u"frobnicate"_s}, QStringList{QString()}, QStringList{u"ROWS"_s}}) {
    const auto outcome = cli.call(words);
    EXPECT_EQ(outcome.status, exitUsage);
    EXPECT_EQ(outcome.out, QString());
    EXPECT_EQ(outcome.err,
              u"没有这个命令：“%1”。\n"_s.arg(words.first()) + callUsage + u"       elevenfive-cli --help\n"_s);
  }
}

TEST_F(Program, MissingCommandAndGlobalOptionsAreWrongWords) {
  EXPECT_EQ(CliProcess::callAsIs({}).status, exitUsage);
  EXPECT_EQ(CliProcess::callAsIs({u"--folder"_s}).status, exitUsage);
  EXPECT_EQ(CliProcess::callAsIs({u"--folder"_s, QString(), u"rows"_s}).status, exitUsage);
  EXPECT_EQ(CliProcess::callAsIs({u"--color"_s, u"rows"_s}).status, exitUsage);
  EXPECT_EQ(CliProcess::callAsIs({u"--folder"_s, cli.folder()}).err.section(u'\n', 0, 0), u"缺少命令。"_s);
}

TEST_F(Program, NumbersMustBeWholeNumbers) {
  for (const QString& word : {u"x"_s, u"1.5"_s, u"1e3"_s, u"１１"_s, u"' OR 1=1"_s}) {
    const auto outcome = cli.call({u"rows"_s, word});
    EXPECT_EQ(outcome.status, exitUsage) << word.toStdString();
    EXPECT_EQ(outcome.err.section(u'\n', 0, 0), u"参数 QIHAO 应为整数，而不是“%1”。"_s.arg(word));
  }
  const auto outcome = cli.call({u"game"_s, u"use"_s, u"99999999999"_s});
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_EQ(outcome.err.section(u'\n', 0, 0), u"参数 N 超出范围：“99999999999”。"_s);
}

TEST_F(Program, VeryLongWordsAreToldInShort) {
  const auto outcome = cli.call({u"rows"_s, QString(1000000, u'9')});
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_LT(outcome.err.size(), 300);
}

TEST_F(Program, HostileTextIsData) {
  const QString hostile = u"x'; DROP TABLE 数据源; --\"\\"_s;
  const auto outcome = cli.call({u"source"_s, u"set"_s, hostile, u"a"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err, u"[critical] elevenfive 11选5: 没有名为“%1”的地址。\n"_s.arg(hostile));
  const QString address = u"http://x.test/';DROP/**/TABLE/**/数据源;--\"\\"_s;
  EXPECT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, address}).status, exitDone);
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), address + u'\n');
}

TEST_F(Program, AnAddressThatIsTooLongIsRefused) {
  const QString longest = u"http://x.test/"_s + QString(186, u'a');
  ASSERT_EQ(longest.size(), 200);
  EXPECT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, longest}).status, exitDone);
  EXPECT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, longest + u'b'}).status, exitFailed);
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), longest + u'\n');
}

TEST_F(Program, BatchTakesAFileNameAndNoOption) {
  const auto option = cli.call({u"batch"_s, u"--x"_s});
  EXPECT_EQ(option.status, exitUsage);
  EXPECT_TRUE(option.err.startsWith(u"没有这个选项：--x。\n"_s)) << option.err.toStdString();
  const auto nothing = cli.call({u"batch"_s, QString()});
  EXPECT_EQ(nothing.status, exitUsage);
  EXPECT_TRUE(nothing.err.startsWith(u"batch 之后的文件名不能为空。\n"_s)) << nothing.err.toStdString();
}

TEST_F(Program, TooFewBallsEndACallAsTheyEndTheWindowsStart) {
  {
    Workspace workspace({cli.folder(), cli.folder()});
    workspace.gConn.execute("test", "DELETE FROM BallColor WHERE 号码 > 10");
    workspace.close();
  }
  for (int time = 0; time < 2; ++time) {
    const auto outcome = cli.call({u"value"_s, u"3900"_s, u"7"_s});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_EQ(outcome.err, u"[plain] elevenfive 11选5: 程序初始化出错,即将退出。。。\n"_s);
  }
}

TEST_F(Program, WhatAnOpeningKeptIsToldOnceBehindTheFaultWithWhichItEnds) {
  cli.call({u"value"_s, u"3900"_s, u"7"_s});
  const QString pack = cli.path(u"elevenfive.dat"_s);
  QFile file(pack);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("garbage");
  file.close();
  QFile::remove(cli.path(u"Bak/elevenfive.dat"_s));
  ASSERT_TRUE(QDir().mkpath(cli.path(u"Temp/elevenfive.dat-journal/full"_s)));  // nothing can take its place
  const auto outcome = cli.batch(u"value 3900 7\nvalue 3900 7\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  const QStringList lines = outcome.err.split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(lines.size(), 2) << outcome.err.toStdString();
  EXPECT_TRUE(lines[0].startsWith(u"[critical] "_s)) << outcome.err.toStdString();
  EXPECT_TRUE(lines[1].startsWith(u"[info] elevenfive 11选5: 数据文件已损坏（"_s)) << outcome.err.toStdString();
}

TEST_F(Program, ABallTableThatIsTooShortComesBeforeTheNoticesOfTheOpening) {
  {
    Workspace workspace({cli.folder(), cli.folder()});
    workspace.gConn.execute("test", "DELETE FROM BallColor WHERE 号码 > 10");
    workspace.close();
  }
  cli.call({u"value"_s, u"3900"_s, u"7"_s});  // takes the backup
  QFile::remove(cli.path(u"elevenfive.dat"_s));
  QFile::remove(cli.path(u"Bak/elevenfive.dat"_s));
  EXPECT_EQ(cli.call({u"value"_s, u"3900"_s, u"7"_s}).err,
            u"[plain] elevenfive 11选5: 程序初始化出错,即将退出。。。\n"
            "[info] elevenfive 11选5: 找不到数据文件，已改用备份。\n"_s);
}

TEST_F(Program, BytesThatAreNoTextAreWrongWords) {
  const QString name = QString::fromUtf8("a\xff\xfe");  // as the system's decoding gives it
  const auto outcome = cli.call({u"user"_s, u"logon"_s, name, u"p"_s, u"--create"_s});
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_TRUE(outcome.err.startsWith(u"命令行含有不能使用的字符。"_s)) << outcome.err.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 用户表"_s), u"1\n"_s);
}

TEST_F(Program, SourceListPrintsTheAddresses) {
  EXPECT_EQ(cli.call({u"source"_s, u"list"_s}).out,
            u"名称\t地址\n开奖网站\thttps://{province}.results.example\n第二网站\thttps://{province}.second.example\n"
            "版本公告\t\n开奖详情\thttps://{province}.detail.example\n"_s);
}

TEST_F(Program, GameListPrintsTheCatalogue) {
  const QStringList lines = cli.call({u"game"_s, u"list"_s}).out.split(u'\n');
  ASSERT_EQ(lines.size(), 31);  // header, 29 games, and what stands behind the last line end
  EXPECT_EQ(lines[0], u"序号\t名称\t下载地址\t实时更新地址\t使用"_s);
  EXPECT_EQ(lines[2].section(u'\t', 0, 1), u"1\t广东11选5"_s);
  EXPECT_TRUE(lines[1].endsWith(u"\t1"_s));
}

TEST_F(Program, RowsOfAnEmptyTableAreTheHeader) {
  EXPECT_EQ(cli.call({u"rows"_s}).out,
            u"ID\t序号\t期号\t号码1\t号码2\t号码3\t号码4\t号码5\t买中个数\t过滤标记\t缩水标记"
            "\t精选标记\t临时数据\n"_s);
}

TEST_F(Program, RowsComeByPeriodThenRankThenId) {
  {
    Workspace workspace({cli.folder(), cli.folder()});
    workspace.gConn.execute("test",
                            "INSERT INTO 日志表 (ID, 序号, 期号, 过滤标记) VALUES (1, 2, 9, 0), (2, 1, 9, 0), "
                            "(3, 1, 9, -1), (4, 5, 8, 0)");
  }
  const QString row = u"%1\t%2\t%3\t\t\t\t\t\t\t%4\t\t\t\n"_s;
  EXPECT_EQ(cli.call({u"rows"_s}).out.section(u'\n', 1),
            row.arg(4).arg(5).arg(8).arg(0) + row.arg(2).arg(1).arg(9).arg(0) + row.arg(3).arg(1).arg(9).arg(-1) +
                row.arg(1).arg(2).arg(9).arg(0));
  EXPECT_EQ(cli.call({u"rows"_s, u"8"_s}).out.section(u'\n', 1), row.arg(4).arg(5).arg(8).arg(0));
  EXPECT_EQ(cli.call({u"rows"_s, u"7"_s}).out.count(u'\n'), 1);
}

TEST_F(Program, BatchPrintsEachLineAsItStands) {
  const auto outcome = cli.batch(u"\n# a comment\n  sql   'SELECT 1 AS x'  \r\n\t\nsql \"SELECT 2 AS y\""_s);
  EXPECT_EQ(outcome.status, exitDone);
  EXPECT_EQ(outcome.out, u">   sql   'SELECT 1 AS x'  \nx\n1\n> sql \"SELECT 2 AS y\"\ny\n2\n"_s);
  EXPECT_EQ(outcome.err, QString());
}

TEST_F(Program, BatchStopsAtTheFirstFailureAndKeepsWhatWasDone) {
  const auto outcome = cli.batch(u"source set 版本公告 first\nsource set 没有 x\nsource set 版本公告 second\n"_s);
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.out, u"> source set 版本公告 first\n> source set 没有 x\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), u"first\n"_s);
}

TEST_F(Program, BatchStopsAtWrongWordsWithTheirStatus) {
  const auto outcome = cli.batch(u"source set 版本公告 first\nrows 1 2\nsource set 版本公告 second\n"_s);
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_EQ(outcome.out, u"> source set 版本公告 first\n> rows 1 2\n"_s);
  EXPECT_EQ(cli.rows(u"SELECT 地址 FROM 数据源 WHERE 名称 = '版本公告'"_s), u"first\n"_s);
}

TEST_F(Program, BatchReadsAFileOrStandardInput) {
  writeFile(cli.path(u"lines.txt"_s), "\xEF\xBB\xBFsql 'SELECT 3 AS z'\r\n");
  const QString printed = u"> sql 'SELECT 3 AS z'\nz\n3\n"_s;
  EXPECT_EQ(cli.call({u"batch"_s, cli.path(u"lines.txt"_s)}).out, printed);
  EXPECT_EQ(cli.call({u"batch"_s, u"-"_s}, u"sql 'SELECT 3 AS z'\n"_s).out, printed);
  EXPECT_EQ(cli.call({u"batch"_s}, u"sql 'SELECT 3 AS z'\n"_s).out, printed);
}

TEST_F(Program, ABatchFileIsReadInOneCodeAsAWhole) {
  writeFile(cli.path(u"gb.txt"_s), "sql \"SELECT '\xC6\xDA\xBA\xC5' AS z\"\n");
  EXPECT_EQ(cli.call({u"batch"_s, cli.path(u"gb.txt"_s)}).out, u"> sql \"SELECT '期号' AS z\"\nz\n期号\n"_s);
  // One byte that is no UTF-8 in the second line: the first one is not read in another code than it.
  writeFile(cli.path(u"both.txt"_s), "sql \"SELECT '\xE6\x9C\x9F' AS z\"\nsql \"SELECT '\xFF' AS z\"\n");
  const auto both = cli.call({u"batch"_s, cli.path(u"both.txt"_s)});
  EXPECT_EQ(both.status, exitUsage);
  EXPECT_FALSE(both.out.contains(u"期"_s)) << both.out.toStdString();
}

TEST_F(Program, ALineOfStandardInputThatIsNoUtf8IsWrongWordsAndChangesNothing) {
  // The last character of the name is cut off; the bytes would be another name in another code.
  const auto outcome = cli.callWithBytes({u"batch"_s}, "user logon \xE7\x94\xB2\xE5 p --create\n");
  EXPECT_EQ(outcome.status, exitUsage);
  EXPECT_TRUE(outcome.err.startsWith(u"命令行含有不能使用的字符。"_s)) << outcome.err.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 用户表"_s), u"1\n"_s);
  EXPECT_EQ(cli.callWithBytes({u"batch"_s}, "\xEF\xBB\xBFsql 'SELECT 3 AS z'\n").out,
            u"> sql 'SELECT 3 AS z'\nz\n3\n"_s);
}

TEST_F(Program, BatchOfAMissingFileFails) {
  const auto outcome = cli.call({u"batch"_s, cli.path(u"none.txt"_s)});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_EQ(outcome.err.count(u'\n'), 1);
  EXPECT_EQ(cli.call({u"batch"_s, u"a"_s, u"b"_s}).status, exitUsage);
}

TEST_F(Program, BatchLinesTakeNoGlobalOptionsAndNoBatch) {
  EXPECT_EQ(cli.batch(u"--folder . rows\n"_s).status, exitUsage);
  EXPECT_EQ(cli.batch(u"batch -\n"_s).status, exitUsage);
  EXPECT_EQ(cli.batch(u"rows \"1\n"_s).err.section(u'\n', 0, 0), u"引号没有成对。"_s);
  EXPECT_EQ(cli.batch(QStringLiteral("rows \0 1\n")).status, exitUsage);
}

TEST_F(Program, BatchOfBinaryBytesEndsWithWrongWords) {
  writeFile(cli.path(u"binary"_s), QByteArray::fromHex("fffe00ff10808081c3280a0a27") + QByteArray(100000, '\x01'));
  EXPECT_EQ(cli.call({u"batch"_s, cli.path(u"binary"_s)}).status, exitUsage);
}

TEST_F(Program, HelpOfACommandIsItsRows) {
  const QString rows = u"rows [QIHAO]\n    日志表 in 期号, 序号, ID order\n    prints: all 13 columns\n"_s;
  const auto help = cli.call({u"rows"_s, u"--help"_s});
  EXPECT_EQ(help.status, exitDone);
  EXPECT_TRUE(help.out.startsWith(rows)) << help.out.toStdString();
  EXPECT_EQ(help.err, QString());
  EXPECT_EQ(
      cli.call({u"source"_s, u"set"_s, u"--help"_s}).out,
      u"source list\nsource set NAME ADDRESS\n    the addresses that are configuration (results site, second site, "
      "notice server, detail page)\n    prints: table\n"_s);
  EXPECT_EQ(cli.call({u"frobnicate"_s, u"--help"_s}).status, exitUsage);
  const auto batch = cli.call({u"batch"_s, u"--help"_s});
  EXPECT_EQ(batch.status, exitDone);
  EXPECT_TRUE(batch.out.startsWith(u"batch [FILE | -]\n    reads one command a line "_s)) << batch.out.toStdString();
}

TEST(ProgramWithoutData, HelpNeedsNoData) {
  const auto help = CliProcess::callAsIs({u"--help"_s});
  EXPECT_EQ(help.status, exitDone);
  EXPECT_TRUE(help.out.startsWith(callUsage + u"\ninit [--force]\n"_s)) << help.out.left(300).toStdString();
  EXPECT_EQ(CliProcess::callAsIs({u"--folder"_s, u"/nonexistent"_s, u"--help"_s}).out, help.out);
}

TEST(ProgramWithoutData, HelpListsEveryCommand) {
  QStringList usages;
  for (const QString& line : CliProcess::callAsIs({u"--help"_s}).out.split(u'\n', Qt::SkipEmptyParts).mid(2))
    if (!line.startsWith(u' '))
      usages << line;
  EXPECT_EQ(usages.join(u'\n'),
            uR"(init [--force]
sql STATEMENT
history add QIHAO N1 N2 N3 N4 N5 [--date YYYY-MM-DD] [--plain]
history delete QIHAO
history clear
history import FILE [--clear]
history export FILE
history derive FROM TO
history page FILE --date YYYY-MM-DD
history update
game list
game use N
game source
source list
source set NAME ADDRESS
miss QIHAO
miss QIHAO N
misssum FROM TO
pick NUMBER VALUE
pick all
pick clear
value ID[-LAST] VALUE
use CODE VALUE
attr COLUMN NUMBERS
match USE N M
group K members NUMBERS
group K counts COUNTS
group K use 0|1
group K name TEXT
group K common ENTRY
group K clear
group list
group entries
zones show
zones click K N
zones clear
zones recalc
quick show
quick submit ROW=TEXT ...
preview CODE
summary
conditions export FILE
conditions import FILE
conditions restore
count
count --conditions
expand QIHAO
run QIHAO [--tolerance T]
refine QIHAO COUNT
check QIHAO
rows [QIHAO]
rows export FILE QIHAO [--fields LIST] [--separator TEXT]
rows import FILE QIHAO --format 0|1|2 [--keep]
rows delete
user list
user mode N
user logon NAME PASSWORD [--create]
pack FILE1 FILE2 PACK
unpack PACK FILE2 FILE1
batch [FILE | -])"_s);
}

TEST(ProgramWithoutData, EveryCommandHasAHelpOfItsOwn) {
  const QString whole = CliProcess::callAsIs({u"--help"_s}).out;
  for (const QString& words : {u"history add"_s, u"group K members"_s, u"count"_s, u"rows export"_s, u"unpack"_s}) {
    const auto help = CliProcess::callAsIs(words.split(u' ') + QStringList{u"--help"_s});
    EXPECT_EQ(help.status, exitDone) << words.toStdString();
    EXPECT_TRUE((u'\n' + help.out).contains(u'\n' + words)) << help.out.toStdString();
    EXPECT_TRUE(whole.contains(u'\n' + help.out)) << help.out.toStdString();
  }
}

}  // namespace elevenfive
