// The update flow from a real server through the real page process into the store.
#include <QElapsedTimer>
#include <QTimer>

#include "tests/web/realupdate.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST_F(RealUpdate, AHundredDrawsInAnyOrderAreStoredAscendingAndDerived) {
  QStringList rows;
  for (int i = 1; i <= 100; ++i)  // 37 and 101 have no common divisor: every place comes once
    rows << u"110315%1 11 0%2 03 10 02"_s.arg(i * 37 % 101 - 1, 2, 10, QChar(u'0')).arg(4 + i % 6);
  page("/", tablePage(rows));
  EXPECT_TRUE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
  EXPECT_EQ(count(), 100);
  EXPECT_EQ(data.rows("SELECT COUNT(*) FROM 历史记录 WHERE 号码1 = 2 AND 号码2 = 3 AND 号码4 = 10 AND 号码5 = 11"),
            QStringList{u"100"_s});
  EXPECT_EQ(data.rows("SELECT COUNT(*) FROM 历史记录 WHERE 和值 IS NULL OR 期号 NOT BETWEEN 110315000 AND 110315099"),
            QStringList{u"0"_s});
}

TEST_F(RealUpdate, TwelvesRepeatsAndRepeatedLinesGoByTheRule) {
  page("/", tablePage({u"11031501 12 01 02 03 04"_s, u"11031502 12 11 02 03 04"_s, u"11031503 05 05 02 03 04"_s,
                       u"11031504 01 02 03 04 05"_s, u"11031504 06 07 08 09 10"_s}));
  EXPECT_TRUE(fetch());
  EXPECT_EQ(data.rows("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"110315001 1 2 3 4 11"_s, u"110315004 6 7 8 9 10"_s}));
}

TEST_F(RealUpdate, ATableThatAScriptFillsLaterFromItsServerIsRead) {
  server.answer("/data", pageReply("11031501 01 02 03 04 05", "text/plain"));
  page("/", tablePage({}, u"setTimeout(()=>fetch('/data').then(r=>r.text()).then(d=>{rows[0]=d;make()}),60)"_s));
  times.betweenReadsMs = 600;
  EXPECT_TRUE(fetch());
  EXPECT_EQ(count(), 1);
}

TEST_F(RealUpdate, LinesOfOtherLayoutsAreRead) {
  page("/",
       u"<p>11选5</p><pre>11031501 01 02 03 04 05 03-15 09:00\n11031502 01 02 03 04 06 03-15 09:10</pre>"
       "<div>11031503 01 02 03 04 07 03-15 09:20</div><ul><li>11031504 01 02 03 04 08 03-15 09:30</ul>"
       "<table><tr><td><table><tr><td>11031505</td><td>01 02 03 04 09</td><td>03-15 09:40</td></tr></table>"
       "</td></tr></table>"_s);
  EXPECT_TRUE(fetch());
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"110315001"_s, u"110315002"_s, u"110315003"_s, u"110315004"_s, u"110315005"_s}));
}

TEST_F(RealUpdate, APageWithoutDrawsIsCompleteAndTellsItsLines) {
  page("/", u"<p>11选5</p><p>维护中</p>"_s);
  EXPECT_TRUE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
  EXPECT_EQ(screen.panel, u"网页共 3 行，其中 0 行符合开奖记录的格式。"_s);
}

TEST_F(RealUpdate, APageOfAHundredThousandLinesIsScannedToItsEnd) {
  page("/",
       u"<pre id=p>11选5</pre><script>let s=[];for(let i=0;i<100000;++i)s.push('line '+i);"
       "s.push('11031501 01 02 03 04 05 03-15 09:00');p.innerText='11选5\\n'+s.join('\\n')</script>"_s);
  EXPECT_TRUE(fetch());
  EXPECT_EQ(count(), 1);
}

TEST_F(RealUpdate, ATableOfThirtyThousandRowsIsReadToItsEnd) {
  times.documentSeconds = 170;
  loader.readMs = 60'000;
  page("/",
       u"<h1>11选5</h1><div id=d></div><script>let h=['<table>'];for(let i=0;i<30000;++i)"
       "h.push('<tr><td>'+[11031501+i,'01','04','05','06','07','2011-03-15 17:36'].join('</td><td>')+'</td></tr>');"
       "d.insertAdjacentHTML('beforeend',h.join('')+'</table>')</script>"_s);
  EXPECT_TRUE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
  EXPECT_EQ(count(), 30'000);
}

class RealUpdateStatus : public RealUpdate, public ::testing::WithParamInterface<int> {};

TEST_P(RealUpdateStatus, AFaultStatusFails) {
  HttpReply reply = pageReply("<p>no such page</p>");
  reply.status = GetParam();
  server.answer("/", reply);
  expectFailed();
}

INSTANTIATE_TEST_SUITE_P(Statuses, RealUpdateStatus, ::testing::Values(403, 404, 416, 500));

TEST_F(RealUpdate, AServerThatIsNotThereFails) {
  setSourceAddress(data.store(), resultsSite.name.toString(), u"http://127.0.0.1:9"_s);
  expectFailed();
}

TEST_F(RealUpdate, AServerThatHangsIsGivenUp) {
  HttpReply reply;
  reply.ending = HttpEnding::silent;
  server.answer("/", reply);
  times.documentSeconds = 2;
  loader.readMs = 500;
  expectFailed();
}

TEST_F(RealUpdate, ABodyThatNeverEndsIsGivenUp) {
  HttpReply reply = pageReply("<p>and so on</p>\n");
  reply.length = HttpLength::chunked;
  reply.ending = HttpEnding::endless;
  reply.betweenPieces = std::chrono::milliseconds(2);
  server.answer("/", reply);
  times.documentSeconds = 2;
  loader.readMs = 1000;
  expectFailed();
}

TEST_F(RealUpdate, ABodyOfFiveAnnouncedGigabytesIsGivenUp) {
  HttpReply reply = pageReply("<p>11");
  reply.announced = 5'000'000'000;
  reply.ending = HttpEnding::hang;
  server.answer("/", reply);
  times.documentSeconds = 2;
  loader.readMs = 500;
  expectFailed();
}

TEST_F(RealUpdate, AConnectionClosedEarlyEndsWithWhatHasCome) {
  HttpReply reply = pageReply(tablePage({u"11031501 01 02 03 04 05"_s}).toUtf8());
  reply.announced = 100'000;
  reply.ending = HttpEnding::close;
  server.answer("/", reply);
  fetch();  // the engine may show what came or nothing: the table holds whole rows either way
  EXPECT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(count(), data.store().value("test", "SELECT COUNT(*) FROM 历史记录 WHERE 和值 = 15"));
}

TEST_F(RealUpdate, AScriptThatNeverEndsIsGivenUp) {
  page("/", u"11选5<script>for(;;)alert(1)</script>"_s);
  times.documentSeconds = 2;
  loader.readMs = 300;
  expectFailed();
}

TEST_F(RealUpdate, ARedirectAwayFromTheSiteIsNotFollowed) {
  HttpServer elsewhere;
  elsewhere.answer("/", pageReply(tablePage({u"11031501 01 02 03 04 05"_s}).toUtf8()));
  server.answer("/", redirectTo(elsewhere.url(u"/"_s)));
  EXPECT_FALSE(fetch());
  EXPECT_EQ(askedOf(elsewhere), QStringList());
  EXPECT_EQ(count(), 0);
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(screen.panel, u"网页被转到其它网站（127.0.0.1:%1），没有读取。"_s.arg(elsewhere.port()));
}

TEST_F(RealUpdate, ARedirectToAnotherHostOfTheSiteIsFollowed) {
  const QString place = u"http://%1.results.localhost:%2"_s;
  setSourceAddress(data.store(), resultsSite.name.toString(), place.arg(u"{province}"_s).arg(server.port()));
  server.answer("/", redirectTo(place.arg(u"www"_s).arg(server.port()) + u"/gd"_s));
  page("/gd", tablePage({u"11031501 01 02 03 04 05"_s}));
  EXPECT_TRUE(fetch());
  EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
  EXPECT_EQ(count(), 1);
}

TEST_F(RealUpdate, AStopEndsAReadingThatAScriptKeepsWaiting) {
  page("/", u"11选5<script>for(;;){}</script>"_s);
  times.documentSeconds = 1;
  loader.readMs = 20'000;
  WebUpdate& running = update();
  QTimer::singleShot(2500, [&running] { running.requestStop(); });
  QElapsedTimer waited;
  waited.start();
  EXPECT_FALSE(running.updateHistory());
  EXPECT_LT(waited.elapsed(), 8000);
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(control->processId(), 0);
}

}  // namespace
}  // namespace elevenfive
