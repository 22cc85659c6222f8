#include "acquire/webupdate.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "acquire/catalogue.h"
#include "acquire/sources.h"
#include "acquire/versionnotice.h"
#include "model/errors.h"
#include "tests/support/fakepageloader.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

constexpr int guangdong = 1;
constexpr int chongqing = 3;

const QString page = u"http://gd.results.test/?op=dcjb&num=100"_s;
const QString twoDraws =
    u"广东11选5\n期号\t号码\n11031512\t02\t01\t03\t04\t08\t03-15 17:50\n11031511\t01\t02\t03\t04\t05\t03-15 17:40"_s;
const QString completed = u"下载完成！(如果没有取得最新的数据请过几分钟后重试，多试几次即可。)"_s;
const QString failed =
    u"服务器忙或网络链接断开,无法完成更新!\r\n要正常更新需要电脑与互联网联接正常.\r\n"
    "若无法更新可能是由于你的防火墙设为禁止程序访问网络,\r\n你可以重新更改设置或关闭防火墙后再试.)\r\n"_s;

/// Logs what is shown into the ports' log, and keeps the texts of the second panel.
struct Screen final : UpdateView, StatusPanels {
  RecordingPorts& ports;
  QStringList panel;
  bool enabled = true;
  std::function<void()> onReload;

  explicit Screen(RecordingPorts& recording) : ports(recording) {}
  void setButtonsEnabled(bool on) override {
    enabled = on;
    ports.log << (on ? u"buttons on"_s : u"buttons off"_s);
  }
  void selectDataMode(bool chart) override { ports.log << (chart ? u"chart mode"_s : u"data mode"_s); }
  void showNextPeriod() override { ports.log << u"next period"_s; }
  void reloadHistoryGrid() override {
    ports.log << u"reload grid"_s;
    if (onReload)
      onReload();
  }
  void refreshViews() override { ports.log << u"refresh views"_s; }
  void setPanel(int number, const QString& text) override {
    EXPECT_EQ(number, runningPass);
    panel << text;
  }
};

class WebUpdateTest : public ::testing::Test {
 protected:
  WebUpdateTest() : screen(ports) {
    times.documentSeconds = 0.2;
    times.betweenReadsMs = 1;
    times.pulseMs = 0;
    times.noticeMs = 100;
    Catalogue(data.store()).selectCaizong(guangdong);
    setSourceAddress(data.store(), resultsSite.name.toString(), u"http://{province}.results.test"_s);
    web.pages[page].texts = QStringList{twoDraws};
  }

  WebUpdate& update() {
    if (!update_)
      update_ = std::make_unique<WebUpdate>(data.store(),
                                            UpdatePorts{ports, ports, screen, ports, screen, web.loaders(),
                                                        [this](const QUrl& url) { opened << url.toString(); }},
                                            times);
    return *update_;
  }

  bool fetch(bool interactive = true) { return update().updateFromWeb(day, interactive, QString(), 2003001); }
  QStringList draws() { return data.rows("SELECT 期号, 号码1, 号码5, 和值 FROM 历史记录 ORDER BY 期号"); }

  const QDate day{2011, 3, 16};
  TestWorkspace data;
  RecordingPorts ports;
  Screen screen;
  FakeWeb web;
  UpdateTimes times;
  QStringList opened;

 private:
  std::unique_ptr<WebUpdate> update_;
};

TEST_F(WebUpdateTest, APageOfDrawsIsStoredAndDerived) {
  EXPECT_TRUE(fetch());
  EXPECT_EQ(draws(), (QStringList{u"110315011 1 5 15"_s, u"110315012 1 8 18"_s}));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::information);
  EXPECT_EQ(ports.boxes[0].text, completed);
}

TEST_F(WebUpdateTest, ThePageOfTheGameInUseIsLoadedOnceAndReadThreeTimes) {
  fetch();
  EXPECT_EQ(web.log,
            (QStringList{u"made"_s, u"navigate "_s + page, u"text"_s, u"text"_s, u"text"_s, u"refresh"_s, u"stop"_s}));
}

TEST_F(WebUpdateTest, NothingIsMadeBeforeTheFirstPage) {
  update();
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(WebUpdateTest, TheLastOfThreeReadingsCounts) {
  web.pages[page].texts = QStringList{u"11选5 正在载入"_s, u"11选5 正在载入"_s, twoDraws};
  fetch();
  EXPECT_EQ(draws().size(), 2);
}

TEST_F(WebUpdateTest, EachDrawIsToldInTheStatusPanelWhichIsClearedAtLast) {
  fetch();
  EXPECT_TRUE(screen.panel.contains(u"数据下载中：   正在下载 110315012 期的数据。。。"_s));
  EXPECT_TRUE(screen.panel.contains(u"数据下载中：   正在下载 110315011 期的数据。。。"_s));
  EXPECT_EQ(screen.panel.last(), QString());
}

TEST_F(WebUpdateTest, TheStatusTextPulsesWhileThePageIsWaitedFor) {
  times.pulseMs = 20;
  web.pages[page].afterMs = 150;
  fetch();
  EXPECT_EQ(screen.panel.value(0), u"》》》》》   数据下载中   《《《《《"_s);
  EXPECT_EQ(screen.panel.value(1), u"》》》》》 数据下载中 《《《《《"_s);
  EXPECT_EQ(screen.panel.value(2), u"》》》》》   数据下载中   《《《《《"_s);
  const qsizetype firstDraw = screen.panel.indexOf(u"数据下载中：   正在下载 110315012 期的数据。。。"_s);
  ASSERT_GT(firstDraw, 0);
  EXPECT_FALSE(screen.panel.mid(firstDraw).contains(u"》》》》》   数据下载中   《《《《《"_s));
}

TEST_F(WebUpdateTest, AFramesDocumentEndsTheWaitToo) {
  web.pages[page].frameFirst = true;
  EXPECT_TRUE(fetch());
}

TEST_F(WebUpdateTest, AGameWithoutAPageIsToldAndNothingIsLoaded) {
  Catalogue(data.store()).selectCaizong(chongqing);
  EXPECT_FALSE(fetch());
  EXPECT_EQ(screen.panel.last(), u"2011-03-16  数据：   服务器数据还没有更新，请稍后下载。  "_s);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(ports.boxes[0].text, u"抱歉，2011-03-16的开奖数据在服务器中还没有更新，请稍后下载。"_s);
  EXPECT_EQ(web.log, QStringList());
}

class NoPage : public WebUpdateTest, public ::testing::WithParamInterface<QString> {};

TEST_P(NoPage, TheServerAlwaysHasNoDataYet) {
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  const int used = data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 1 WHERE 名称 LIKE ?", GetParam() + u'%');
  ASSERT_EQ(used, 1);
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxTexts(),
            QStringList{u"抱歉，"_s + day.toString(Qt::ISODate) + u"的开奖数据在服务器中还没有更新，请稍后下载。"_s});
  EXPECT_EQ(screen.panel.last(), day.toString(Qt::ISODate) + u"  数据：   服务器数据还没有更新，请稍后下载。  "_s);
  EXPECT_EQ(web.log, QStringList());
  EXPECT_EQ(draws(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(Games, NoPage,
                         ::testing::Values(QStringLiteral("重庆"), QStringLiteral("四川"), QStringLiteral("河南"),
                                           QStringLiteral("青海"), QStringLiteral("西藏")));

TEST_F(WebUpdateTest, WithoutAGameInUseTheServerHasNoDataEither) {
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxTexts(),
            QStringList{u"抱歉，"_s + day.toString(Qt::ISODate) + u"的开奖数据在服务器中还没有更新，请稍后下载。"_s});
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(WebUpdateTest, AnAddressThatWasNeverSetIsToldWithThePlaceToSetIt) {
  for (const QString& address : {u"http://{province}.results.example"_s, QString()}) {
    setSourceAddress(data.store(), resultsSite.name.toString(), address);
    EXPECT_FALSE(fetch());
    EXPECT_EQ(ports.boxes.back().kind, BoxKind::critical);
    EXPECT_EQ(ports.boxes.back().text, unsetAddressText());
    EXPECT_TRUE(ports.boxes.back().text.contains(u"开奖网站"_s));
  }
  EXPECT_EQ(screen.panel.last(), QString());
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(WebUpdateTest, APageThatIsNotTheExpectedOneIsToldInLines) {
  web.pages[page].texts = QStringList{u"403 Forbidden"_s};
  EXPECT_FALSE(fetch());
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(ports.boxes[0].title, u"开奖数据更新失败！"_s);
  EXPECT_EQ(ports.boxes[0].text, failed);
  EXPECT_EQ(screen.panel.last(), QString());
}

TEST_F(WebUpdateTest, APageThatNeverComesIsGivenUpAfterTheTime) {
  web.pages[page] = FakePage{{}, {}, -1, false, {}, {}};
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{failed});
}

TEST_F(WebUpdateTest, WhatHasComeWhenTheTimeIsUpIsRead) {
  web.pages[page].afterMs = -1;
  EXPECT_TRUE(fetch());
  EXPECT_EQ(draws().size(), 2);
}

TEST_F(WebUpdateTest, APageThatHangsWhenTheTimeIsUpIsAskedForItsTextOnce) {
  web.pages[page] = FakePage{{}, {}, -1, false, {}, {}};
  fetch();
  EXPECT_EQ(web.log.count(u"text"_s), 1);
}

TEST_F(WebUpdateTest, APageThatIsStillEmptyWhenTheTimeIsUpMayFillBetweenTheReadings) {
  web.pages[page].afterMs = -1;
  web.pages[page].texts = QStringList{u""_s, u""_s, twoDraws};
  EXPECT_TRUE(fetch());
  EXPECT_EQ(draws().size(), 2);
}

TEST_F(WebUpdateTest, APageThatHasComeIsReadThreeTimesAlsoWhereItHangs) {
  web.pages[page].texts = QStringList{};
  fetch();
  EXPECT_EQ(web.log.count(u"text"_s), 3);
}

TEST_F(WebUpdateTest, AcrossMidnightOnlyTheDocumentEndsTheWait) {
  double now = 86'399;
  times.clock = [&now] { return std::exchange(now, 0); };
  times.documentSeconds = 0.01;
  web.pages[page].afterMs = 150;
  QElapsedTimer waited;
  waited.start();
  EXPECT_TRUE(fetch());
  EXPECT_GE(waited.elapsed(), 150);
}

TEST_F(WebUpdateTest, APageOffTheResultsSiteIsNotRead) {
  web.pages[page].endsAt = QUrl(u"http://elsewhere.test/"_s);
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(draws(), QStringList());
  EXPECT_EQ(screen.panel.last(), u"网页被转到其它网站（elsewhere.test），没有读取。"_s);
}

TEST_F(WebUpdateTest, AControlThatCannotBeHadIsToldInItsOwnWords) {
  web.pages[page] = FakePage{{}, {}, 0, false, {}, u"读取网页的组件没有找到。"_s};
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"读取网页的组件没有找到。"_s});
}

TEST_F(WebUpdateTest, AnEmptyResultsPageIsCompleteAndTellsItsLines) {
  web.pages[page].texts = QStringList{u"广东11选5\n没有数据"_s};
  EXPECT_TRUE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{completed});
  EXPECT_EQ(draws(), QStringList());
  EXPECT_EQ(screen.panel.last(), u"网页共 2 行，其中 0 行符合开奖记录的格式。"_s);
}

TEST_F(WebUpdateTest, WithoutInteractionNoBoxAppears) {
  EXPECT_TRUE(fetch(false));
  web.pages[page].texts = QStringList{u"nothing"_s};
  EXPECT_FALSE(fetch(false));
  Catalogue(data.store()).selectCaizong(chongqing);
  EXPECT_FALSE(fetch(false));
  EXPECT_EQ(screen.panel.last(), u"2011-03-16  数据：   服务器数据还没有更新，请稍后下载。  "_s);
  setSourceAddress(data.store(), resultsSite.name.toString(), QString());
  Catalogue(data.store()).selectCaizong(guangdong);
  EXPECT_FALSE(fetch(false));
  EXPECT_EQ(ports.boxes.size(), 0U);
}

TEST_F(WebUpdateTest, ABusyControlIsStoppedFirst) {
  web.pages[page].afterMs = -1;
  QTimer::singleShot(30, [this] { fetch(); });  // while the first one waits for its document
  fetch();
  EXPECT_EQ(web.log.mid(0, 4), (QStringList{u"made"_s, u"navigate "_s + page, u"stop"_s, u"navigate "_s + page}));
}

TEST_F(WebUpdateTest, ThePageIsLetGoOfWhateverCameOfItBeforeABoxIsShown) {
  const FakePage outcomes[] = {{QStringList{u"no results"_s}, {}, 0, false, {}, {}},
                               {{}, {}, -1, false, {}, {}},
                               {QStringList{twoDraws}, {}, 0, false, QUrl(u"http://elsewhere.test/"_s), {}},
                               {{}, {}, 0, false, {}, u"网页太大，无法读取。"_s}};
  for (const FakePage& outcome : outcomes) {
    web.pages[page] = outcome;
    EXPECT_FALSE(fetch());
    EXPECT_EQ(web.log.last(), u"stop"_s);
  }
}

TEST_F(WebUpdateTest, ADrawThatTheTableRefusesLeavesTheOthersStoredAndDerived) {
  data.store().execute("test",
                       "CREATE TRIGGER refuse BEFORE INSERT ON 历史记录 WHEN NEW.期号 = 110315012"
                       " BEGIN SELECT RAISE(ABORT, 'refused'); END");
  EXPECT_THROW(update().updateHistory(), StoreError);
  EXPECT_EQ(draws(), QStringList{u"110315011 1 5 15"_s});
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(ports.log.filter(u"reload grid"_s).size(), 1);
  EXPECT_EQ(ports.log.mid(ports.log.size() - 4),
            (QStringList{u"next period"_s, u"chart mode"_s, u"refresh views"_s, u"buttons on"_s}));
}

TEST_F(WebUpdateTest, ADrawInTheTableThatCannotBeDerivedIsNamedInThePanel) {
  data.addDraws(u"110315010 01 02 03 04 05\n110315013 01 02 03 04 00\n110315014 01 02 03 04 06"_s);
  EXPECT_TRUE(update().updateFromWeb(day, true, QString(), 110315014));
  EXPECT_EQ(draws(), (QStringList{u"110315010 1 5 -"_s, u"110315011 1 5 15"_s, u"110315012 1 8 18"_s,
                                  u"110315013 1 0 -"_s, u"110315014 1 6 -"_s}));
  EXPECT_EQ(ports.boxTexts(), QStringList{completed});
  EXPECT_EQ(screen.panel.last(),
            u"第 110315013 期的号码 00 不在 01 到 11 之间，统计到此为止。请更正或删除这一期后再统计。"_s);
}

TEST_F(WebUpdateTest, AFaultOfTheTableKeepsWhatWasStoredAndClearsThePanel) {
  screen.onReload = [] { throw StoreError(u"full"_s); };
  EXPECT_TRUE(fetch());
  EXPECT_EQ(update().fault(), u"full"_s);
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(draws().size(), 2);
  EXPECT_EQ(screen.panel.last(), QString());
  screen.onReload = {};
  EXPECT_TRUE(fetch());
  EXPECT_EQ(update().fault(), QString());
}

TEST_F(WebUpdateTest, TheButtonTellsAFaultOfTheTableLast) {
  screen.onReload = [] { throw StoreError(u"full"_s); };
  EXPECT_THROW(update().updateHistory(), StoreError);
  EXPECT_EQ(ports.log.last(), u"buttons on"_s);
}

TEST_F(WebUpdateTest, TheButtonGoesThroughItsStepsInOrder) {
  EXPECT_TRUE(update().updateHistory());
  QStringList steps = ports.log;
  steps.removeIf([](const QString& step) { return step.startsWith(u"progress"_s) || step.startsWith(u"visible"_s); });
  EXPECT_EQ(steps, (QStringList{u"buttons off"_s, u"data mode"_s, u"reload grid"_s, u"info [] "_s + completed,
                                u"next period"_s, u"chart mode"_s, u"refresh views"_s, u"buttons on"_s}));
}

TEST_F(WebUpdateTest, AfterAFailureTheNextPeriodStaysAndTheButtonsComeBack) {
  web.pages.clear();
  EXPECT_FALSE(update().updateHistory());
  EXPECT_FALSE(ports.log.contains(u"next period"_s));
  EXPECT_EQ(ports.log.mid(ports.log.size() - 3), (QStringList{u"chart mode"_s, u"refresh views"_s, u"buttons on"_s}));
}

TEST_F(WebUpdateTest, AFaultBringsTheButtonsBack) {
  data.store().execute("test", "DROP TABLE 历史记录");
  EXPECT_THROW(update().updateHistory(), StoreError);
  EXPECT_TRUE(screen.enabled);
  EXPECT_FALSE(update().isRunning());
}

TEST_F(WebUpdateTest, ADrawAlreadyThereIsReplacedAndTakesTodaysDate) {
  data.addDraws(u"110315011 07 08 09 10 11"_s);
  update().updateHistory();
  EXPECT_EQ(data.rows("SELECT 号码1, 号码5 FROM 历史记录 WHERE 期号 = 110315011"), QStringList{u"1 5"_s});
  EXPECT_EQ(data.store().value("test", "SELECT COUNT(DISTINCT 开奖日期) FROM 历史记录"), 1);
}

TEST_F(WebUpdateTest, ASecondCallDuringTheFirstDoesNothing) {
  bool second = true;
  screen.onReload = [&] { second = update().updateHistory(); };
  EXPECT_TRUE(update().updateHistory());
  EXPECT_FALSE(second);
  EXPECT_EQ(web.log.filter(u"navigate"_s).size(), 1);
}

TEST_F(WebUpdateTest, AStopEndsTheWaitAtOnceAndAsksNothing) {
  times.documentSeconds = 60;
  web.pages[page].afterMs = -1;
  QTimer::singleShot(30, [this] { update().requestStop(); });
  QElapsedTimer waited;
  waited.start();
  EXPECT_FALSE(update().updateHistory());
  EXPECT_LT(waited.elapsed(), 1000);
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(draws(), QStringList());
  EXPECT_TRUE(screen.enabled);
}

TEST_F(WebUpdateTest, AStopBeforeTheFirstDrawStoresNone) {
  ports.onYield = [this](int) { update().requestStop(); };
  EXPECT_FALSE(update().updateHistory());
  ports.onYield = {};
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(draws(), QStringList());
}

TEST_F(WebUpdateTest, AStopBetweenTwoDrawsKeepsTheFirst) {
  ports.onYield = [this](int yields) {
    if (yields == 3)  // behind the two lines of the head and the first draw
      update().requestStop();
  };
  EXPECT_FALSE(update().updateHistory());
  ports.onYield = {};
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(data.rows("SELECT 期号, 和值 FROM 历史记录"), QStringList{u"110315012 18"_s});
  EXPECT_TRUE(ports.log.contains(u"next period"_s));  // the one offered before is taken now
}

TEST_F(WebUpdateTest, AStopBeforeTheFirstDrawLeavesTheNextPeriodAlone) {
  ports.onYield = [this](int yields) {
    if (yields == 1)
      update().requestStop();
  };
  EXPECT_FALSE(update().updateHistory());
  ports.onYield = {};
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录"), QStringList());
  EXPECT_FALSE(ports.log.contains(u"next period"_s));
}

TEST_F(WebUpdateTest, AStopWhenNothingRunsIsNotKept) {
  update().requestStop();
  EXPECT_TRUE(update().updateHistory());
}

const QString notice = u"http://notice.test/ask"_s;

TEST_F(WebUpdateTest, TheNoticeIsNotAskedForWhileItsAddressIsEmpty) {
  EXPECT_EQ(sourceAddress(data.store(), noticeServer.name), QString());
  update().updateHistory();
  EXPECT_EQ(web.log.filter(u"navigate"_s), QStringList{u"navigate "_s + page});
}

TEST_F(WebUpdateTest, TheNoticeIsAskedForOnceARunWithTheScrambledVersion) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  update().updateHistory();
  update().updateHistory();
  // 0.1.0 backwards, each character five codes on
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s),
            QStringList{u"navigate http://notice.test/ask?VER=53635&NAME=elevenfive"_s});
  EXPECT_EQ(ports.boxTexts(), (QStringList{completed, completed}));
  EXPECT_EQ(opened, QStringList());
}

TEST_F(WebUpdateTest, TheNoticeServerMayBeNamedByItsHostAloneAndByItsProvince) {
  for (const auto& [address, asked] :
       {std::pair(u"notice.test/ask"_s, u"http://notice.test/ask?VER=53635&NAME=elevenfive"_s),
        std::pair(u"localhost:8080/ask"_s, u"http://localhost:8080/ask?VER=53635&NAME=elevenfive"_s),
        std::pair(u"https://{province}.notice.test"_s, u"https://gd.notice.test?VER=53635&NAME=elevenfive"_s),
        std::pair(u"http://notice.test/ask?id=7"_s, u"http://notice.test/ask?id=7&VER=53635&NAME=elevenfive"_s)}) {
    setSourceAddress(data.store(), noticeServer.name.toString(), address);
    web.log.clear();
    update().setNoticeDone(false);
    update().updateHistory();
    EXPECT_EQ(web.log.filter(u"VER"_s), QStringList{u"navigate "_s + asked});
  }
}

TEST_F(WebUpdateTest, ANoticeServerOfAProvinceIsNotAskedForAGameWithoutOne) {
  setSourceAddress(data.store(), noticeServer.name.toString(), u"https://{province}.notice.test"_s);
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  update().updateHistory();
  EXPECT_EQ(web.log.filter(u"notice"_s), QStringList());
}

TEST_F(WebUpdateTest, AHostThatIsNamedAfterAnotherKindOfServerIsAskedForItsPage) {
  setSourceAddress(data.store(), resultsSite.name.toString(), u"ftp.results.test"_s);
  web.pages[u"http://ftp.results.test/?op=dcjb&num=100"_s].texts = QStringList{twoDraws};
  EXPECT_TRUE(fetch());
}

TEST_F(WebUpdateTest, AnExampleHostWithoutItsSchemeWasNeverSet) {
  setSourceAddress(data.store(), resultsSite.name.toString(), u"{province}.results.example"_s);
  EXPECT_FALSE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{unsetAddressText()});
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(WebUpdateTest, AStopLeavesTheNoticeToTheNextUpdate) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  times.documentSeconds = 60;
  web.pages[page].afterMs = -1;
  QTimer::singleShot(30, [this] { update().requestStop(); });
  update().updateHistory();
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s), QStringList());
  web.pages[page].afterMs = 0;
  update().updateHistory();
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s).size(), 1);
}

TEST_F(WebUpdateTest, TheNoticeLeavesWhatThePanelSaysOfThePage) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  web.pages[page].endsAt = QUrl(u"http://elsewhere.test/"_s);
  EXPECT_FALSE(update().updateHistory());
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s).size(), 1);
  EXPECT_EQ(screen.panel.last(), u"网页被转到其它网站（elsewhere.test），没有读取。"_s);
  EXPECT_EQ(update().leftSiteText(), screen.panel.last());
}

TEST_F(WebUpdateTest, ANoticeIsToldAndItsPageOpened) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  web.pages[noticeAddress(notice).toString()].texts = QStringList{u"  elevenfive-new-version \n"_s};
  update().updateHistory();
  EXPECT_EQ(ports.boxTexts(), (QStringList{completed, noticeText()}));
  EXPECT_EQ(opened, QStringList{notice});
  EXPECT_EQ(screen.panel.last(), QString());
}

TEST_F(WebUpdateTest, TheNoticeIsReadWhileTheButtonsAreStillOff) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  web.pages[noticeAddress(notice).toString()].texts = QStringList{u"elevenfive-new-version"_s};
  update().updateHistory();
  EXPECT_EQ(ports.log.mid(ports.log.size() - 4),
            (QStringList{u"chart mode"_s, u"refresh views"_s, u"info [] "_s + noticeText(), u"buttons on"_s}));
}

TEST_F(WebUpdateTest, ANoticeFollowsAFailedUpdateToo) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  web.pages.remove(page);
  EXPECT_FALSE(update().updateHistory());
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s).size(), 1);
}

TEST_F(WebUpdateTest, ANoticeServerThatFailsIsNotAskedAgain) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  web.pages[noticeAddress(notice).toString()].fault = u"gone"_s;
  update().updateHistory();
  update().updateHistory();
  EXPECT_EQ(web.log.filter(u"navigate http://notice"_s).size(), 1);
  EXPECT_EQ(ports.boxTexts(), (QStringList{completed, completed}));
}

TEST_F(WebUpdateTest, AStopEndsTheWaitForTheNotice) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  times.noticeMs = 60'000;
  web.pages[noticeAddress(notice).toString()].afterMs = -1;
  QTimer stop;
  QObject::connect(&stop, &QTimer::timeout, [this] {
    if (web.log.contains(u"navigate "_s + noticeAddress(notice).toString()))
      update().requestStop();
  });
  stop.start(10);
  QElapsedTimer waited;
  waited.start();
  EXPECT_TRUE(update().updateHistory());
  EXPECT_LT(waited.elapsed(), 5000);
  EXPECT_FALSE(update().isRunning());
}

TEST_F(WebUpdateTest, AFramesDocumentDoesNotStandForTheNotice) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  times.noticeMs = 5000;
  FakePage& told = web.pages[noticeAddress(notice).toString()];
  told.frameMs = 1;
  told.afterMs = 80;
  told.texts = QStringList{u"elevenfive-new-version"_s};
  QElapsedTimer waited;
  waited.start();
  update().updateHistory();
  EXPECT_GE(waited.elapsed(), 80);
  EXPECT_EQ(opened, QStringList{notice});
}

TEST_F(WebUpdateTest, ANoticeServerThatHangsEndsWithItsTime) {
  setSourceAddress(data.store(), noticeServer.name.toString(), notice);
  times.pulseMs = 20;
  web.pages[noticeAddress(notice).toString()].afterMs = -1;
  EXPECT_TRUE(update().updateHistory());
  EXPECT_TRUE(screen.panel.contains(u"》》》》》   数据载入中   《《《《《"_s));
  EXPECT_TRUE(screen.panel.contains(u"》》》》》 数据载入中 《《《《《"_s));
  EXPECT_EQ(screen.panel.last(), QString());
  EXPECT_EQ(opened, QStringList());
}

TEST_F(WebUpdateTest, AnAddressTypedWithoutItsSchemeIsTakenAsHttp) {
  setSourceAddress(data.store(), resultsSite.name.toString(), u"{province}.results.test/"_s);
  EXPECT_TRUE(fetch());
  EXPECT_TRUE(web.log.contains(u"navigate "_s + page));
}

}  // namespace
}  // namespace elevenfive
