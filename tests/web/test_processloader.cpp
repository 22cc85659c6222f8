// The hidden page over a real server: what it shows, and what it does not do.
#include <signal.h>

#include <QElapsedTimer>
#include <QFile>

#include "acquire/openurltext.h"
#include "tests/web/webtest.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class ProcessLoaderTest : public WebTest {};

TEST_F(ProcessLoaderTest, ATableHasTabsBetweenItsCellsAndALineForEachRow) {
  server.page("/", u"<table><tr><td>11031510</td><td>01</td></tr><tr><td>11031511</td><td>02</td></tr></table>"_s);
  EXPECT_EQ(textOf(server.url(u"/"_s)), u"11031510\t01\n11031511\t02"_s);
}

TEST_F(ProcessLoaderTest, ScriptsTimersAndFramesOfTheScreenRun) {
  server.page("/",
              u"<p id=a></p><p id=b></p><script>setTimeout(()=>{a.innerText='timer'},50);"
              "requestAnimationFrame(()=>{b.innerText='frame'})</script>"_s);
  ProcessLoader page;
  ASSERT_TRUE(load(page, server.url(u"/"_s)));
  QString text;
  runEventsFor(3000, [&] {
    text = page.bodyText();
    return text.contains(u"timer"_s) && text.contains(u"frame"_s);
  });
  EXPECT_TRUE(text.contains(u"timer"_s));
}

TEST_F(ProcessLoaderTest, TheMarkupIsThatAfterTheScripts) {
  server.page("/", u"<p id=a></p><script>a.innerText='made'</script>"_s);
  ProcessLoader page;
  load(page, server.url(u"/"_s));
  EXPECT_TRUE(page.markup().contains(u"<p id=\"a\">made</p>"_s));
}

TEST_F(ProcessLoaderTest, APageInGbkIsDecoded) {
  server.bytes("/",
               "<meta charset=gbk><p>\xB9\xE3\xB6\xAB"
               "11\xD1\xA1"
               "5</p>",
               "text/html");
  EXPECT_EQ(textOf(server.url(u"/"_s)), u"广东11选5"_s);
}

TEST_F(ProcessLoaderTest, BrokenUtf8StaysReadable) {
  server.bytes("/",
               "<p>11\xE9\x80\x89"
               "5 \xFF\xC3 end</p>",
               "text/html; charset=utf-8");
  const QString text = textOf(server.url(u"/"_s));
  EXPECT_TRUE(text.startsWith(u"11选5"_s));
  EXPECT_TRUE(text.endsWith(u"end"_s));
}

TEST_F(ProcessLoaderTest, ARedirectOnTheHostIsFollowed) {
  server.server.Get("/", [](const httplib::Request&, httplib::Response& r) { r.set_redirect("/there"); });
  server.page("/there", u"arrived"_s);
  ProcessLoader page;
  load(page, server.url(u"/"_s));
  EXPECT_EQ(page.bodyText(), u"arrived"_s);
  EXPECT_EQ(page.address(), server.url(u"/there"_s));
}

TEST_F(ProcessLoaderTest, ARedirectAwayIsRefusedAndTold) {
  WebServer elsewhere;
  elsewhere.page("/trap", u"11选5"_s);
  const std::string trap = elsewhere.url(u"/trap"_s).toString().toStdString();
  server.server.Get("/", [trap](const httplib::Request&, httplib::Response& r) { r.set_redirect(trap); });
  ProcessLoader page;
  EXPECT_TRUE(load(page, server.url(u"/"_s)));
  EXPECT_EQ(page.address(), elsewhere.url(u"/trap"_s));
  EXPECT_FALSE(page.bodyText().contains(u"11选5"_s));
  EXPECT_EQ(elsewhere.log(), QStringList());
}

TEST_F(ProcessLoaderTest, NothingButThePageIsFetched) {
  WebServer elsewhere;
  const QString out = elsewhere.base();
  server.page("/ok.js", u"document.title='x'; window.fromScript=1"_s, "text/javascript");
  server.page("/file", u"download"_s, "application/octet-stream");
  server.page("/",
              u"<html><head><link rel=icon href='/icon'><script src='/ok.js'></script><script src='%1/ad.js'></script>"
              "<link rel=stylesheet href='%1/s.css'></head><body>"
              "<p id=p>page</p><img src='/picture'><img src='%1/picture'><iframe src='%1/frame'></iframe>"
              "<iframe src='file:///etc/hostname'></iframe><a id=l href='%1/link' ping='%1/ping'>l</a>"
              "<a id=d href='/file' download>d</a><form id=f action='%1/form'></form>"
              "<script>alert(1);confirm(2);prompt(3);window.open('%1/popup');window.open('/popup');"
              "fetch('%1/xhr').catch(()=>{});fetch('file:///etc/hostname').then(r=>r.text()).then(t=>{p.innerText=t})"
              ".catch(()=>{});navigator.sendBeacon('%1/beacon','x');navigator.sendBeacon('/beacon','x');"
              "try{new WebSocket('%2/socket')}catch(e){}"
              "d.click();l.click();f.submit();location.href='%1/script'</script>"
              "<meta http-equiv=refresh content='0;url=%1/refresh'></body></html>"_s.arg(
                  out, QString(out).replace(u"http"_s, u"ws"_s)));
  ProcessLoader page;
  EXPECT_TRUE(load(page, server.url(u"/"_s)));
  runEventsFor(1500, [] { return false; });
  EXPECT_TRUE(page.bodyText().startsWith(u"page"_s));
  EXPECT_EQ(elsewhere.log(), QStringList());
  QStringList asked = server.log();
  asked.sort();
  EXPECT_EQ(asked, (QStringList{u"/"_s, u"/ok.js"_s}));
}

TEST_F(ProcessLoaderTest, ADownloadIsNotSavedAndGivesNoPage) {
  server.server.Get("/", [](const httplib::Request&, httplib::Response& r) {
    r.set_header("Content-Disposition", "attachment; filename=elevenfive-test.bin");
    r.set_content(
        "11\xE9\x80\x89"
        "5",
        "application/octet-stream");
  });
  ProcessLoader page;
  EXPECT_TRUE(load(page, server.url(u"/"_s)));
  EXPECT_EQ(page.bodyText(), QString());
}

TEST_F(ProcessLoaderTest, LoadsShareNoStateWithEachOther) {
  server.server.Get("/", [](const httplib::Request& request, httplib::Response& r) {
    r.set_header("Set-Cookie", "seen=1; Max-Age=1000");
    r.set_header("Cache-Control", "max-age=1000");
    r.set_content(
        "<p id=p>" + request.get_header_value("Cookie") +
            "</p><script>p.innerText+=localStorage.getItem('seen')||'fresh';localStorage.setItem('seen','old')"
            "</script>",
        "text/html");
  });
  ProcessLoader page;
  for (int i = 0; i < 2; ++i) {
    load(page, server.url(u"/"_s));
    EXPECT_EQ(page.bodyText(), u"fresh"_s);
  }
  EXPECT_EQ(server.log(), (QStringList{u"/"_s, u"/"_s}));
}

TEST_F(ProcessLoaderTest, AnAddressOfAnotherKindIsNotLoaded) {
  ProcessLoader page;
  for (const QString& address : {u"file:///etc/hostname"_s, u"javascript:1"_s, u"chrome://version"_s}) {
    EXPECT_TRUE(load(page, QUrl(address), 2000));
    EXPECT_EQ(page.bodyText(), QString());
  }
}

TEST_F(ProcessLoaderTest, AScriptThatNeverEndsIsNotWaitedFor) {
  server.page("/", u"11选5<script>for(;;){}</script>"_s);
  ProcessLoader page({400, 300});
  QElapsedTimer waited;
  waited.start();
  EXPECT_TRUE(load(page, server.url(u"/"_s)));
  EXPECT_EQ(page.bodyText(), QString());
  EXPECT_LT(waited.elapsed(), 10'000);
}

TEST_F(ProcessLoaderTest, AProcessThatEndsIsToldAsADocumentThatCouldNotBeHad) {
  server.server.Get("/", [this](const httplib::Request&, httplib::Response&) { server.hang(); });
  ProcessLoader page;
  bool done = false;
  page.documentComplete = [&done](bool) { done = true; };
  page.navigate(server.url(u"/"_s));
  runEventsFor(10'000, [this] { return !server.log().isEmpty(); });
  EXPECT_FALSE(done);
  ASSERT_EQ(::kill(static_cast<pid_t>(page.processId()), SIGKILL), 0);
  runEventsFor(5000, [&done] { return done; });
  EXPECT_TRUE(done);
  EXPECT_EQ(page.bodyText(), QString());
  EXPECT_FALSE(page.busy());
  EXPECT_EQ(page.fault(), u"读取网页的组件意外结束，没有读到网页。"_s);
  server.page("/next", u"next"_s);
  load(page, server.url(u"/next"_s));
  EXPECT_EQ(page.bodyText(), u"next"_s);
  EXPECT_EQ(page.fault(), QString());
}

TEST_F(ProcessLoaderTest, APageThatTakesTooMuchMemoryIsEndedAndTold) {
  server.page("/",
              u"<script>const kept=[];setInterval(()=>{for(let i=0;i<4;++i){const b=new Uint8Array(1<<25);b.fill(1);"
              "kept.push(b)}},5)</script><img>"_s);
  ProcessLoader page;
  load(page, server.url(u"/"_s));
  runEventsFor(30'000, [&page] { return !page.fault().isEmpty(); });
  EXPECT_FALSE(page.fault().isEmpty());
  EXPECT_EQ(page.bodyText(), QString());
}

TEST_F(ProcessLoaderTest, NoProcessIsLeftBehindAStop) {
  server.page("/", u"11选5<script>for(;;){}</script>"_s);
  ProcessLoader page({2000, 300});
  load(page, server.url(u"/"_s));
  const QString place = u"/proc/%1"_s.arg(page.processId());
  EXPECT_TRUE(QFile::exists(place));
  page.stop();
  EXPECT_FALSE(QFile::exists(place));
}

TEST(ProcessLoaderStart, AMissingProgramIsToldInASentence) {
  ProcessLoader page({}, u"/nonexistent/elevenfive-page"_s);
  bool done = false;
  page.documentComplete = [&done](bool) { done = true; };
  page.navigate(QUrl(u"http://127.0.0.1:9/"_s));
  runEventsFor(5000, [&done] { return done; });
  EXPECT_TRUE(done);
  EXPECT_EQ(page.fault(), u"读取网页的组件 elevenfive-page 没有找到或无法启动，请重新安装本软件。"_s);
  EXPECT_EQ(page.bodyText(), QString());
}

TEST_F(ProcessLoaderTest, ThePlainReaderGivesTextAndMarkup) {
  server.page("/08118.html", u"<h1> 奖池 </h1>"_s);
  OpenUrlText reader(processLoaders(), 400);
  EXPECT_EQ(reader.openUrlText(server.url(u"/08118.html"_s), true), u"奖池"_s);
  EXPECT_TRUE(reader.openUrlText(server.url(u"/08118.html"_s), false).startsWith(u"<html>"_s));
}

}  // namespace
}  // namespace elevenfive
