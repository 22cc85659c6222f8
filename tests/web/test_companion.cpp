// history update and history page of the companion, over real pages.
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <sstream>
#include <string>
#include <thread>

#include "acquire/versionnotice.h"
#include "tests/cli/cliprocess.h"
#include "tests/web/processtree.h"
#include "tests/web/webtest.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QStringList twoRows{u"11031502 01 02 03 04 06"_s, u"11031501 01 02 03 04 05"_s};

class Companion : public WebTest {
 protected:
  void SetUp() override {
    WebTest::SetUp();
    ASSERT_EQ(cli.call({u"init"_s}).status, 0);
    ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"开奖网站"_s, server.url({})}).status, 0);
  }

  CliProcess::Outcome update() { return cli.call({u"history"_s, u"update"_s}); }
  /// Stores the draws of a page that was saved as this text, on a day in the middle of March 2011.
  CliProcess::Outcome pageFromFile(const QString& text) {
    QFile file(cli.path(u"page.txt"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    file.close();
    return cli.call({u"history"_s, u"page"_s, file.fileName(), u"--date"_s, u"2011-03-16"_s});
  }

  /// The update ended with status 1 and this box alone on standard error; the history is empty.
  void expectRefused(const QString& title, const QString& text) {
    const CliProcess::Outcome outcome = update();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, u"[critical] "_s + title + u": "_s + QString(text).replace(u"\r\n"_s, u"\n"_s) +
                               (text.endsWith(u'\n') ? QString() : u"\n"_s));
    EXPECT_EQ(draws(), QString());
  }
  void expectFailed() { expectRefused(failedUpdateTitle.toString(), failedUpdateText()); }

  QString draws() { return cli.rows(u"SELECT 期号, 和值 FROM 历史记录 ORDER BY 期号"_s); }

  /// Does something to the working database between two calls of the companion.
  void alter(const char* sql) {
    Workspace workspace({cli.folder(), cli.folder()}, {});
    workspace.gConn.executeScript("test", sql);
    workspace.close();
  }

  CliProcess cli;
};

TEST_F(Companion, UpdatesTheHistory) {
  page("/", tablePage(twoRows));
  const CliProcess::Outcome outcome = update();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            u"数据下载中：   正在下载 110315002 期的数据。。。\n数据下载中：   正在下载 110315001 期的数据。。。\n"
            "   正在统计 110315002 期号码的温度值。。。。。。  \n"_s);
  EXPECT_EQ(outcome.err, u"[info] elevenfive 11选5: "_s + completedText() + u"\n"_s);
  EXPECT_EQ(draws(), u"110315001\t15\n110315002\t16\n"_s);
}

TEST_F(Companion, TellsEachLineOfAPageAlsoTwoOfOnePeriod) {
  page("/", tablePage({u"11031501 01 02 03 04 06"_s, u"11031501 01 02 03 04 05"_s}));
  EXPECT_TRUE(update().out.startsWith(
      u"数据下载中：   正在下载 110315001 期的数据。。。\n数据下载中：   正在下载 110315001 期的数据。。。\n"_s));
  EXPECT_EQ(draws(), u"110315001\t15\n"_s);
}

TEST_F(Companion, AskForTheNoticeOnceABatch) {
  page("/", tablePage(twoRows));
  page("/notice", u"nothing new"_s);
  ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, server.url(u"/notice"_s)}).status, 0);
  EXPECT_EQ(cli.batch(u"history update\nhistory update\n"_s).status, 0);
  EXPECT_EQ(askedOf(server), (QStringList{u"/"_s, u"/notice"_s, u"/"_s}));
}

TEST_F(Companion, ANoticeIsToldOnStandardErrorAndItsPageOnStandardOutput) {
  page("/", tablePage({u"11031501 01 02 03 04 05"_s}));
  page("/notice", u"elevenfive-new-version"_s);
  ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, server.url(u"/notice"_s)}).status, 0);
  const CliProcess::Outcome outcome = update();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.endsWith(u'\n' + server.url(u"/notice"_s) + u'\n'));
  const QString title = u"[info] elevenfive 11选5: "_s;
  EXPECT_EQ(outcome.err, title + completedText() + u'\n' + title + noticeText() + u'\n');
}

TEST_F(Companion, APageWithoutDrawsIsNoFailureAndTellsItsLines) {
  page("/", u"<p>11选5</p>"_s);
  const CliProcess::Outcome outcome = update();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, u"网页共 1 行，其中 0 行符合开奖记录的格式。\n"_s);
  EXPECT_EQ(outcome.err, u"[info] elevenfive 11选5: "_s + completedText() + u"\n"_s);
}

TEST_F(Companion, APageThatIsNotTheExpectedOneIsRefused) {
  page("/", u"welcome"_s);
  expectFailed();
}

TEST_F(Companion, AStatusThatIsNoPageIsRefused) {
  expectFailed();  // 404, as no page is there
}

TEST_F(Companion, AServerThatIsNotThereIsRefused) {
  ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"开奖网站"_s, u"http://127.0.0.1:9"_s}).status, 0);
  expectFailed();
}

TEST_F(Companion, ARedirectCircleIsRefused) {
  server.answer("/", redirectTo(u"/?again"_s));
  expectFailed();
}

TEST_F(Companion, APageThatIsLedOffItsSiteIsRefused) {
  HttpServer elsewhere;
  server.answer("/", redirectTo(elsewhere.url(u"/"_s)));
  expectRefused(u"elevenfive 11选5"_s, u"网页被转到其它网站（127.0.0.1:%1），没有读取。"_s.arg(elsewhere.port()));
}

TEST_F(Companion, AnAddressThatWasNeverSetIsRefused) {
  ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"开奖网站"_s, u"http://results.example"_s}).status, 0);
  expectRefused(failedUpdateTitle.toString(), unsetAddressText());
}

TEST_F(Companion, AGameWithoutAPageIsRefused) {
  ASSERT_EQ(cli.call({u"game"_s, u"use"_s, u"3"_s}).status, 0);
  expectRefused(u"elevenfive 11选5"_s, u"抱歉，"_s + QDate::currentDate().toString(Qt::ISODate) +
                                           u"的开奖数据在服务器中还没有更新，请稍后下载。"_s);
}

TEST_F(Companion, APageThatTakesTooMuchMemoryIsRefused) {
  page("/",
       u"11选5<script>const kept=[];for(;;){kept.push(new Uint8Array(1<<27).fill(1));"
       "for(const end=Date.now()+25;Date.now()<end;);}</script>"_s);
  expectRefused(failedUpdateTitle.toString(), u"网页太大，无法读取。"_s);
}

TEST_F(Companion, AMissingPageProcessIsRefused) {
  QTemporaryDir elsewhere;
  const QString program = elsewhere.filePath(u"elevenfive-cli"_s);
  ASSERT_TRUE(QFile::copy(QCoreApplication::applicationDirPath() + u"/elevenfive-cli"_s, program));
  QProcess process;
  process.start(program, {u"--folder"_s, cli.folder(), u"--temp"_s, cli.folder(), u"history"_s, u"update"_s});
  ASSERT_TRUE(process.waitForFinished(60'000));
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_EQ(QString::fromUtf8(process.readAllStandardError()),
            u"[critical] "_s + failedUpdateTitle.toString() +
                u": 读取网页的组件 elevenfive-page 没有找到或无法启动，请重新安装本软件。\n"_s);
}

TEST_F(Companion, OneThatIsKilledInTheMiddleOfAPageLeavesNoProcessAndItsDataWhole) {
  ASSERT_EQ(cli.call({u"history"_s, u"add"_s, u"11031500"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s}).status, 0);
  const QString drawsBefore = draws();
  page("/", u"11选5<script>for(;;){}</script>"_s);
  QProcess process;
  process.start(QCoreApplication::applicationDirPath() + u"/elevenfive-cli"_s,
                {u"--folder"_s, cli.folder(), u"--temp"_s, cli.folder(), u"history"_s, u"update"_s});
  ASSERT_TRUE(process.waitForStarted());
  QList<qint64> started;
  runEventsFor(30'000, [&] {
    started = descendants(process.processId());
    return !server.requests().empty() && started.size() > 2;
  });
  ASSERT_GT(started.size(), 2);
  process.kill();
  ASSERT_TRUE(process.waitForFinished());
  const auto left = [&started] { return std::any_of(started.begin(), started.end(), isAtWork); };
  runEventsFor(10'000, [&left] { return !left(); });
  EXPECT_FALSE(left());
  EXPECT_EQ(draws(), drawsBefore);
  page("/", tablePage(twoRows));
  EXPECT_EQ(update().status, 0);
  EXPECT_EQ(draws(), drawsBefore + u"110315001\t15\n110315002\t16\n"_s);
}

constexpr const char* refuseSecond =
    "CREATE TRIGGER refuse BEFORE INSERT ON 历史记录 WHEN NEW.期号 = 110315002 BEGIN SELECT RAISE(ABORT, 'refused'); "
    "END";

TEST_F(Companion, AnInterruptedUpdateSaysSo) {
  page("/", u"11选5<script>for(;;){}</script>"_s);
  QTimer interrupt;
  QObject::connect(&interrupt, &QTimer::timeout, [this, &interrupt] {
    if (server.requests().empty())
      return;
    interrupt.stop();
    std::raise(SIGINT);
  });
  interrupt.start(10);
  expectRefused(u"elevenfive 11选5"_s, u"下载已被中断，已经保存的开奖数据保留不变。"_s);
}

/// Standard output of a call, which raises SIGINT as soon as a text stands in it, once or again and again.
class RaisingOutput final : public std::stringbuf {
 public:
  RaisingOutput(const QString& at, bool again) : at_(at.toStdString()), again_(again) {}
  ~RaisingOutput() override { stop(); }

  void stop() {
    stopped_ = true;
    if (impatient_.joinable())
      impatient_.join();
  }

 protected:
  int sync() override {
    if (!raised_ && str().find(at_) != std::string::npos) {
      raised_ = true;
      std::raise(SIGINT);
      if (again_)
        impatient_ = std::thread([this] {
          while (!stopped_) {
            ::kill(::getpid(), SIGINT);
            std::this_thread::sleep_for(std::chrono::microseconds(500));
          }
        });
    }
    return 0;
  }

 private:
  std::string at_;
  bool again_;
  bool raised_ = false;
  std::atomic<bool> stopped_ = false;
  std::thread impatient_;
};

class InterruptedCompanion : public Companion {
 protected:
  /// Runs a batch that is interrupted when the text is printed, and expects it to end with its first line.
  void expectInterruptedAt(const QString& text) {
    RaisingOutput buffer(text, keepsAsking);
    std::ostream out(&buffer);
    std::istringstream in("history update\nhistory clear\n");
    std::ostringstream err;
    const QStringList words{u"--folder"_s, cli.folder(), u"--temp"_s, cli.folder(), u"batch"_s};
    EXPECT_EQ(runProgram(words, {in, out, err}), 1);
    buffer.stop();
    EXPECT_TRUE(QString::fromStdString(err.str()).endsWith(interrupted)) << err.str();
    told = QString::fromStdString(err.str());
    EXPECT_FALSE(QString::fromStdString(buffer.str()).contains(u"history clear"_s));
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);  // nothing breaks off what is left to do
  }

  /// So many draws, from 110000010 on.
  void giveDraws(int count) {
    QStringList rows;
    for (int i = 0; i < count; ++i)
      rows << u"%1 01 02 03 04 05"_s.arg(11000010 + i);
    page("/", tablePage(rows));
  }

  QString count() { return cli.rows(u"SELECT COUNT(*) FROM 历史记录"_s).trimmed(); }

  const QString interrupted = u"下载已被中断，已经保存的开奖数据保留不变。\n"_s;
  QString told;
  bool keepsAsking = false;
};

TEST_F(InterruptedCompanion, BetweenTheLinesOfAPageKeepsTheDrawsBefore) {
  giveDraws(500);
  expectInterruptedAt(u"正在下载 110000012 期"_s);
  EXPECT_EQ(count(), u"3"_s);
  EXPECT_FALSE(told.contains(u"下载完成"_s));
}

TEST_F(InterruptedCompanion, WhileItDerivesKeepsTheDrawsAndTellsNoSuccess) {
  giveDraws(20);
  expectInterruptedAt(u"正在统计"_s);
  EXPECT_EQ(count(), u"20"_s);
  EXPECT_FALSE(told.contains(u"下载完成"_s));
}

TEST_F(InterruptedCompanion, WhileTheNoticeIsWaitedForEndsTheBatchToo) {
  giveDraws(2);
  HttpReply silent;
  silent.ending = HttpEnding::silent;
  server.answer("/notice", silent);
  ASSERT_EQ(cli.call({u"source"_s, u"set"_s, u"版本公告"_s, server.url(u"/notice"_s)}).status, 0);
  QTimer interrupt;
  QObject::connect(&interrupt, &QTimer::timeout, [this, &interrupt] {
    if (!askedOf(server).contains(u"/notice"_s))
      return;
    interrupt.stop();
    std::raise(SIGINT);
  });
  interrupt.start(10);
  expectInterruptedAt(u"no such text"_s);
  EXPECT_EQ(count(), u"2"_s);
}

TEST_F(InterruptedCompanion, ByAPersonWhoKeepsAskingStillPutsItsDataBack) {
  giveDraws(500);
  keepsAsking = true;
  expectInterruptedAt(u"正在下载 110000012 期"_s);
  EXPECT_EQ(QDir(cli.path(u"Bak"_s)).entryList({u"elevenfive-*"_s}), QStringList());  // no work was left behind
  EXPECT_EQ(count(), u"3"_s);
}

TEST_F(Companion, APageFromAFileNamesTheDrawThatEndsItsDerivation) {
  alter(
      "INSERT INTO 历史记录 (期号, 号码1, 号码2, 号码3, 号码4, 号码5) VALUES (110315003, 0, 1, 2, 3, 4),"
      " (110315004, 1, 2, 3, 4, 5)");
  const CliProcess::Outcome outcome =
      pageFromFile(u"11选5\n11031502 01 02 03 04 06 03-15 17:50\n11031505 01 02 03 04 05 03-15 17:40\n"_s);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, u"rowsDone\tlowQihao\thighQihao\n2\t110315002\t110315005\n"_s);
  EXPECT_EQ(
      outcome.err,
      u"[plain] elevenfive 11选5: 第 110315003 期的号码 00 不在 01 到 11 之间，统计到此为止。请更正或删除这一期后再统计。\n"_s);
  EXPECT_EQ(draws(), u"110315002\t16\n110315003\t\n110315004\t\n110315005\t\n"_s);
}

TEST_F(Companion, ADrawThatTheTableRefusesFailsTheUpdateAndKeepsTheOthers) {
  alter(refuseSecond);
  page("/", tablePage(twoRows));
  const CliProcess::Outcome outcome = update();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, u"[critical] elevenfive 11选5: 保存开奖记录失败：数值超出允许的范围。\n"_s);
  EXPECT_EQ(draws(), u"110315001\t15\n"_s);
}

TEST_F(Companion, ADrawThatTheTableRefusesFailsAPageFromAFileAndKeepsTheOthers) {
  alter(refuseSecond);
  const CliProcess::Outcome outcome =
      pageFromFile(u"11选5\n11031502 01 02 03 04 06 03-15 17:50\n11031501 01 02 03 04 05 03-15 17:40\n"_s);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, QString());
  EXPECT_EQ(outcome.err, u"[critical] elevenfive 11选5: 保存开奖记录失败：数值超出允许的范围。\n"_s);
  EXPECT_EQ(draws(), u"110315001\t15\n"_s);
}

TEST_F(Companion, OfTwoFaultsOfTheTableAPageFromAFileTellsTheFirst) {
  alter(refuseSecond);
  alter("CREATE TRIGGER refuseAll BEFORE UPDATE ON 历史记录 BEGIN SELECT RAISE(ABORT, 'refused'); END");
  const CliProcess::Outcome outcome =
      pageFromFile(u"11选5\n11031502 01 02 03 04 06 03-15 17:50\n11031501 01 02 03 04 05 03-15 17:40\n"_s);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, u"[critical] elevenfive 11选5: 保存开奖记录失败：数值超出允许的范围。\n"_s);
}

}  // namespace
}  // namespace elevenfive
