// history page and history update, as far as that needs no server.
#include <gtest/gtest.h>

#include <QFile>

#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class CommandsWeb : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(cli.call({u"init"_s}).status, 0); }

  QString file(const QString& text) {
    QFile page(cli.path(u"page.txt"_s));
    EXPECT_TRUE(page.open(QIODevice::WriteOnly));
    page.write(text.toUtf8());
    return page.fileName();
  }

  CliProcess::Outcome scan(const QString& path, const QString& date = u"2011-03-16"_s) {
    return cli.call({u"history"_s, u"page"_s, path, u"--date"_s, date});
  }

  CliProcess cli;
};

TEST_F(CommandsWeb, APageInAFileIsScannedAndDerived) {
  const auto outcome = scan(
      file(u"广东11选5\n11031511\t02\t01\t03\t04\t08\t03-15 17:50\n11031510\t01\t02\t03\t04\t05\t03-15 17:40\n"_s));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, u"rowsDone\tlowQihao\thighQihao\n2\t110315010\t110315011\n"_s);
  EXPECT_EQ(outcome.err, QString());
  EXPECT_EQ(cli.rows(u"SELECT 期号, 开奖日期, 号码1, 号码5, 和值 FROM 历史记录 ORDER BY 期号"_s),
            u"110315010\t2011-03-16\t1\t5\t15\n110315011\t2011-03-16\t1\t8\t18\n"_s);
}

TEST_F(CommandsWeb, ABrokenByteCostsNoMoreThanItsLineAndGb18030IsRead) {
  const QString header = u"rowsDone\tlowQihao\thighQihao\n"_s;
  const auto scanBytes = [this](const QByteArray& bytes) {
    QFile page(cli.path(u"bytes.txt"_s));
    EXPECT_TRUE(page.open(QIODevice::WriteOnly));
    page.write(bytes);
    page.close();
    return scan(page.fileName());
  };
  const QByteArray draw = "\n11031510 01 02 03 04 05 03-15 17:40\n";
  EXPECT_EQ(scanBytes(u"广东11选5"_s.toUtf8() + draw + "\xE5").out, header + u"1\t110315010\t110315010\n"_s);
  EXPECT_EQ(scanBytes("11\xD1\xA1"
                      "5" +
                      draw)
                .out,
            header + u"1\t110315010\t110315010\n"_s);
}

TEST_F(CommandsWeb, CrLfReadsLikeLf) {
  EXPECT_EQ(scan(file(u"11选5\r\n11031510 01 02 03 04 05 03-15 17:40\r\n"_s)).out,
            u"rowsDone\tlowQihao\thighQihao\n1\t110315010\t110315010\n"_s);
}

TEST_F(CommandsWeb, APageWithoutDrawsKeepsWhatItBeganWith) {
  EXPECT_EQ(scan(file(u"11选5"_s)).out, u"rowsDone\tlowQihao\thighQihao\n0\t0\t2003001\n"_s);
}

TEST_F(CommandsWeb, APageWithoutItsMarkIsRefused) {
  const auto outcome = scan(file(u"11031510 01 02 03 04 05 03-15 17:40"_s));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_TRUE(outcome.err.startsWith(u"[critical] 开奖数据更新失败！: 服务器忙或网络链接断开,无法完成更新!\n"_s));
  EXPECT_EQ(cli.rows(u"SELECT COUNT(*) FROM 历史记录"_s), u"0\n"_s);
}

TEST_F(CommandsWeb, AMissingFileAndWrongWordsChangeNothing) {
  EXPECT_EQ(scan(cli.path(u"none.txt"_s)).status, 1);
  EXPECT_EQ(scan(file(u"11选5"_s), u"yesterday"_s).status, 2);
  EXPECT_EQ(cli.call({u"history"_s, u"page"_s, file(u"11选5"_s)}).status, 2);
}

TEST_F(CommandsWeb, AnUpdateWithoutAnAddressSaysWhereToSetIt) {
  const auto outcome = cli.call({u"history"_s, u"update"_s});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith(u"[critical] 开奖数据更新失败！: 还没有设置下载开奖数据的网址"_s));
  EXPECT_TRUE(outcome.err.contains(u"开奖网站"_s));
}

TEST_F(CommandsWeb, AGameWithoutAPageIsToldInPanelAndBox) {
  ASSERT_EQ(cli.call({u"game"_s, u"use"_s, u"3"_s}).status, 0);
  const auto outcome = cli.call({u"history"_s, u"update"_s});
  const QString today = QDate::currentDate().toString(Qt::ISODate);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, today + u"  数据：   服务器数据还没有更新，请稍后下载。  \n"_s);
  EXPECT_EQ(outcome.err,
            u"[critical] elevenfive 11选5: 抱歉，"_s + today + u"的开奖数据在服务器中还没有更新，请稍后下载。\n"_s);
}

}  // namespace
}  // namespace elevenfive
