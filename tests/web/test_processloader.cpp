// The hidden page over a real server: what it shows, and what it does not do.
#include <signal.h>

#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>

#include "acquire/openurltext.h"
#include "tests/support/slowness.h"
#include "tests/web/processtree.h"
#include "tests/web/webtest.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class ProcessLoaderTest : public WebTest {};

TEST_F(ProcessLoaderTest, ATableHasTabsBetweenItsCellsAndALineForEachRow) {
  page("/", u"<table><tr><td>11031510</td><td>01</td></tr><tr><td>11031511</td><td>02</td></tr></table>"_s);
  EXPECT_EQ(textOf(root()), u"11031510\t01\n11031511\t02"_s);
}

TEST_F(ProcessLoaderTest, ScriptsTimersAndFramesOfTheScreenRun) {
  page("/",
       u"<p id=a></p><p id=b></p><script>setTimeout(()=>{a.innerText='timer'},50);"
       "requestAnimationFrame(()=>{b.innerText='frame'})</script>"_s);
  ProcessLoader loader;
  ASSERT_TRUE(load(loader, root()));
  QString text;
  runEventsFor(3000, [&] {
    text = loader.bodyText();
    return text.contains(u"timer"_s) && text.contains(u"frame"_s);
  });
  EXPECT_TRUE(text.contains(u"timer"_s));
}

TEST_F(ProcessLoaderTest, TheMarkupIsThatAfterTheScripts) {
  page("/", u"<p id=a></p><script>a.innerText='made'</script>"_s);
  ProcessLoader loader;
  load(loader, root());
  EXPECT_TRUE(loader.markup().contains(u"<p id=\"a\">made</p>"_s));
}

TEST_F(ProcessLoaderTest, APageInGbkIsDecoded) {
  server.answer("/", pageReply(QByteArrayLiteral("<meta charset=gbk><p>\xB9\xE3\xB6\xAB"
                                                 "11\xD1\xA1"
                                                 "5</p>"),
                               "text/html"));
  EXPECT_EQ(textOf(root()), u"广东11选5"_s);
}

TEST_F(ProcessLoaderTest, BrokenUtf8StaysReadable) {
  server.answer("/", pageReply(QByteArrayLiteral("<p>11\xE9\x80\x89"
                                                 "5 \xFF\xC3 end</p>")));
  const QString text = textOf(root());
  EXPECT_TRUE(text.startsWith(u"11选5"_s));
  EXPECT_TRUE(text.endsWith(u"end"_s));
}

TEST_F(ProcessLoaderTest, ARedirectOnTheHostIsFollowed) {
  server.answer("/", redirectTo(u"/there"_s));
  page("/there", u"arrived"_s);
  ProcessLoader loader;
  load(loader, root());
  EXPECT_EQ(loader.bodyText(), u"arrived"_s);
  EXPECT_EQ(loader.address(), QUrl(server.url(u"/there"_s)));
}

TEST_F(ProcessLoaderTest, ARedirectAwayIsRefusedAndTold) {
  HttpServer elsewhere;
  elsewhere.answer("/trap", pageReply(resultsPageMark.toUtf8()));
  server.answer("/", redirectTo(elsewhere.url(u"/trap"_s)));
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  EXPECT_EQ(loader.address(), QUrl(elsewhere.url(u"/trap"_s)));
  EXPECT_FALSE(loader.bodyText().contains(u"11选5"_s));
  EXPECT_EQ(askedOf(elsewhere), QStringList());
}

TEST_F(ProcessLoaderTest, NothingButThePageIsFetched) {
  HttpServer elsewhere;
  const QString out = elsewhere.url({});
  server.answer("/ok.js", pageReply("window.fromScript = 1", "text/javascript"));
  server.answer("/file", pageReply("download", "application/octet-stream"));
  page("/",
       u"<html><head><link rel=icon href='/icon'><script src='/ok.js'></script><script src='%1/ad.js'></script>"
       "<link rel=stylesheet href='%1/s.css'></head><body>"
       "<p id=p>page</p><img src='/picture'><img src='%1/picture'><iframe src='%1/frame'></iframe>"
       "<iframe src='file:///etc/hostname'></iframe><a id=l href='%1/link' ping='%1/ping'>l</a>"
       "<a id=d href='/file' download>d</a><form id=f action='%1/form'></form>"
       "<script>alert(1);confirm(2);prompt(3);window.open('%1/popup');window.open('/popup');"
       "fetch('%1/xhr').catch(()=>{});fetch('%1/post',{method:'POST',body:'x'}).catch(()=>{});"
       "fetch('%1/plain',{method:'POST',mode:'no-cors',body:'x'}).catch(()=>{});"
       "fetch('%1/preflight',{headers:{'X-Name':'x'}}).catch(()=>{});"
       "fetch('%1/put',{method:'PUT',body:'x'}).catch(()=>{});fetch('%1/kept',{method:'POST',keepalive:true}).catch("
       "()=>{});fetch('file:///etc/hostname').then(r=>r.text()).then(t=>{p.innerText=t})"
       ".catch(()=>{});navigator.sendBeacon('%1/beacon','x');navigator.sendBeacon('/beacon','x');"
       "try{new WebSocket('%2/socket')}catch(e){}"
       "d.click();l.click();f.submit();location.href='%1/script'</script>"
       "<meta http-equiv=refresh content='0;url=%1/refresh'></body></html>"_s.arg(
           out, QString(out).replace(u"http"_s, u"ws"_s)));
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  runEventsFor(1500, [] { return false; });
  EXPECT_TRUE(loader.bodyText().startsWith(u"page"_s));
  EXPECT_EQ(askedOf(elsewhere), QStringList());
  QStringList asked = askedOf(server);
  asked.sort();
  EXPECT_EQ(asked, (QStringList{u"/"_s, u"/ok.js"_s}));
  EXPECT_EQ(loader.address(), root());
}

TEST_F(ProcessLoaderTest, WhatThePageAsksItsOwnServerForIsSeenWithItsMethod) {
  page("/",
       u"<p>page</p><script>fetch('/get');fetch('/post',{method:'POST',body:'x'});fetch('/put',{method:'PUT'});"
       "fetch('/named',{headers:{'X-Name':'x'}})</script>"_s);
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  runEventsFor(5000, [this] { return server.requests().size() >= 5; });
  QStringList asked;
  for (const HttpRequest& request : server.requests())
    asked << QString::fromUtf8(request.method + ' ' + request.path);
  asked.sort();
  EXPECT_EQ(asked, (QStringList{u"GET /"_s, u"GET /get"_s, u"GET /named"_s, u"POST /post"_s, u"PUT /put"_s}));
}

TEST_F(ProcessLoaderTest, WhatBuildsThePageMayNotBeSentOffItsSite) {
  HttpServer elsewhere;
  for (const char* path : {"/ok.js", "/s.css", "/data", "/sent", "/frame", "/worker.js"})
    server.answer(path, redirectTo(elsewhere.url(QString::fromUtf8(path))));
  page("/",
       u"<html><head><script src='/ok.js'></script><link rel=stylesheet href='/s.css'></head><body><p>page</p>"
       "<iframe src='/frame'></iframe><script>fetch('/data').catch(()=>{});"
       "fetch('/sent',{method:'POST',body:'x'}).catch(()=>{});"
       "const x=new XMLHttpRequest();x.open('GET','/data');x.send();"
       "try{new Worker('/worker.js')}catch(e){}</script></body></html>"_s);
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  runEventsFor(5000, [this] { return askedOf(server).contains(u"/data"_s) && askedOf(server).contains(u"/sent"_s); });
  runEventsFor(1000, [] { return false; });
  EXPECT_EQ(loader.bodyText(), u"page"_s);
  for (const QString& path : {u"/ok.js"_s, u"/s.css"_s, u"/data"_s, u"/sent"_s, u"/frame"_s})
    EXPECT_TRUE(askedOf(server).contains(path)) << path.toStdString();
  EXPECT_EQ(askedOf(elsewhere), QStringList());
  EXPECT_EQ(loader.address(), root());
}

TEST_F(ProcessLoaderTest, NoOtherWayLeadsOutOfThePageEither) {
  const QHostAddress other(u"127.0.0.2"_s);
  QTcpServer connections;
  QUdpSocket datagrams;
  ASSERT_TRUE(connections.listen(other));
  ASSERT_TRUE(datagrams.bind(other));
  QStringList told;
  QObject::connect(&connections, &QTcpServer::newConnection, [&told] { told << u"connection"_s; });
  QObject::connect(&datagrams, &QUdpSocket::readyRead, [&told] { told << u"datagram"_s; });
  page("/",
       u"<html><head><link rel=preconnect href='http://127.0.0.2:%1'><link rel=dns-prefetch href='//127.0.0.2:%1'>"
       "<link rel=prefetch href='http://127.0.0.2:%1/a'><link rel=preload as=script href='http://127.0.0.2:%1/b'>"
       "<link rel=prerender href='http://127.0.0.2:%1/c'></head><body><p id=p>page</p><iframe id=f></iframe><script>"
       "for(const w of [window,f.contentWindow]){"
       "for(const urls of ['stun:127.0.0.2:%2','turn:127.0.0.2:%2','turn:127.0.0.2:%1?transport=tcp']){try{"
       "const c=new w.RTCPeerConnection({iceServers:[{urls,username:'u',credential:'c'}]});c.createDataChannel('d');"
       "c.createOffer().then(o=>c.setLocalDescription(o))}catch(e){}}"
       "try{new w.WebTransport('https://127.0.0.2:%2/')}catch(e){}"
       "try{new w.WebSocket('ws://127.0.0.2:%1/')}catch(e){}"
       "try{new w.EventSource('http://127.0.0.2:%1/')}catch(e){}"
       "try{new w.Worker('http://127.0.0.2:%1/w.js')}catch(e){}"
       "try{w.navigator.serviceWorker.register('http://127.0.0.2:%1/s.js').catch(()=>{})}catch(e){}"
       "}new Worker(URL.createObjectURL(new Blob([\"fetch('http://127.0.0.2:%1/');new WebSocket('ws://127.0.0.2:%1/');"
       "new WebTransport('https://127.0.0.2:%2/')\"])))</script></body></html>"_s.arg(connections.serverPort())
           .arg(datagrams.localPort()));
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  runEventsFor(2500, [] { return false; });
  EXPECT_TRUE(loader.bodyText().startsWith(u"page"_s));
  EXPECT_EQ(told, QStringList());
}

TEST_F(ProcessLoaderTest, ADownloadIsNotSavedAndGivesNoPage) {
  HttpReply reply = pageReply(resultsPageMark.toUtf8(), "application/octet-stream");
  reply.headers.emplace_back("Content-Disposition", "attachment; filename=elevenfive-test.bin");
  server.answer("/", reply);
  ProcessLoader loader;
  EXPECT_TRUE(load(loader, root()));
  EXPECT_EQ(loader.bodyText(), QString());
  for (const auto place : {QStandardPaths::DownloadLocation, QStandardPaths::HomeLocation})
    EXPECT_FALSE(QFile::exists(QStandardPaths::writableLocation(place) + u"/elevenfive-test.bin"_s));
}

TEST_F(ProcessLoaderTest, LoadsShareNoStateWithEachOther) {
  server.answer("/", [](const HttpRequest& request) {
    HttpReply reply = pageReply("<p id=p>" + request.header("Cookie") +
                                "</p><script>p.innerText+=localStorage.getItem('seen')||'fresh';"
                                "localStorage.setItem('seen','old')</script>");
    reply.headers.emplace_back("Set-Cookie", "seen=1; Max-Age=1000");
    reply.headers.emplace_back("Cache-Control", "max-age=1000");
    return reply;
  });
  ProcessLoader loader;
  for (int i = 0; i < 2; ++i) {
    load(loader, root());
    EXPECT_EQ(loader.bodyText(), u"fresh"_s);
  }
  EXPECT_EQ(askedOf(server), (QStringList{u"/"_s, u"/"_s}));
}

TEST_F(ProcessLoaderTest, AnAddressOfAnotherKindIsNotLoaded) {
  ProcessLoader loader;
  for (const QString& address : {u"file:///etc/hostname"_s, u"javascript:1"_s, u"chrome://version"_s}) {
    EXPECT_TRUE(load(loader, QUrl(address), 2000));
    EXPECT_EQ(loader.bodyText(), QString());
  }
}

TEST_F(ProcessLoaderTest, AScriptThatNeverEndsIsNotWaitedFor) {
  page("/", u"11选5<script>for(;;){}</script>"_s);
  ProcessLoader loader({400, 300});
  QElapsedTimer waited;
  waited.start();
  EXPECT_TRUE(load(loader, root()));
  EXPECT_EQ(loader.bodyText(), QString());
  EXPECT_LT(waited.elapsed(), 10'000);
}

TEST_F(ProcessLoaderTest, AProcessThatEndsIsToldAsADocumentThatCouldNotBeHad) {
  HttpReply silent;
  silent.ending = HttpEnding::silent;
  server.answer("/", silent);
  ProcessLoader loader;
  bool done = false;
  loader.documentComplete = [&done](bool) { done = true; };
  loader.navigate(root());
  runEventsFor(10'000, [this] { return !askedOf(server).isEmpty(); });
  EXPECT_FALSE(done);
  ASSERT_EQ(::kill(static_cast<pid_t>(loader.processId()), SIGKILL), 0);
  runEventsFor(5000, [&done] { return done; });
  EXPECT_TRUE(done);
  EXPECT_EQ(loader.bodyText(), QString());
  EXPECT_FALSE(loader.busy());
  EXPECT_EQ(loader.fault(), u"读取网页的组件意外结束，没有读到网页。"_s);
  page("/next", u"next"_s);
  load(loader, QUrl(server.url(u"/next"_s)));
  EXPECT_EQ(loader.bodyText(), u"next"_s);
  EXPECT_EQ(loader.fault(), QString());
}

TEST_F(ProcessLoaderTest, APageThatTakesTooMuchMemoryIsEndedAndTold) {
  page("/",
       u"<script>const kept=[];setInterval(()=>{for(let i=0;i<4;++i){const b=new Uint8Array(1<<25);b.fill(1);"
       "kept.push(b)}},5)</script><img>"_s);
  ProcessLoader loader;
  load(loader, root());
  runEventsFor(60'000, [&loader] { return !loader.fault().isEmpty(); });
  EXPECT_FALSE(loader.fault().isEmpty());
  EXPECT_EQ(loader.bodyText(), QString());
}

/// An environment variable with another value for the length of a scope.
class Surroundings final {
 public:
  Surroundings(const char* name, const QString& value) : name_(name), before_(qgetenv(name)) {
    qputenv(name, value.toUtf8());
  }
  ~Surroundings() { before_.isNull() ? qunsetenv(name_) : qputenv(name_, before_); }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;

 private:
  const char* name_;
  QByteArray before_;
};

TEST_F(ProcessLoaderTest, APageThatKeepsDataLeavesNothingInTheHome) {
  const QTemporaryDir home;
  const QDir temporary(home.filePath(u"tmp"_s));
  ASSERT_TRUE(temporary.mkpath(u"."_s));
  const Surroundings homeIs("HOME", home.path());
  const Surroundings dataIs("XDG_DATA_HOME", home.filePath(u"data"_s));
  const Surroundings cacheIs("XDG_CACHE_HOME", home.filePath(u"cache"_s));
  const Surroundings runtimeIs("XDG_RUNTIME_DIR", home.filePath(u"runtime"_s));
  const Surroundings temporaryIs("TMPDIR", temporary.path());
  page("/",
       u"<p id=p>none</p><script>const r=indexedDB.open('db',1);r.onupgradeneeded=()=>r.result.createObjectStore('s');"
       "r.onsuccess=()=>{p.textContent='kept'};localStorage.setItem('a','b')</script>"_s);
  ProcessLoader loader;
  ASSERT_TRUE(load(loader, root()));
  runEventsFor(10'000, [&loader] { return loader.bodyText() == u"kept"_s; });
  EXPECT_EQ(loader.bodyText(), u"kept"_s);
  loader.stop();
  const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
  EXPECT_EQ(QDir(home.path()).entryList(all), QStringList{u"tmp"_s});
  EXPECT_EQ(temporary.entryList(all), QStringList());
}

TEST_F(ProcessLoaderTest, NoProcessIsLeftBehindAStop) {
  page("/", u"11选5<script>for(;;){}</script>"_s);
  ProcessLoader loader({2000, 300});
  load(loader, root());
  const QString place = u"/proc/%1"_s.arg(loader.processId());
  EXPECT_TRUE(QFile::exists(place));
  const QList<qint64> started = descendants(loader.processId());
  EXPECT_GE(started.size(), 2);
  loader.stop();
  EXPECT_FALSE(QFile::exists(place));
  const auto left = [&started] { return std::any_of(started.begin(), started.end(), isAtWork); };
  runEventsFor(1000, [&left] { return !left(); });
  EXPECT_FALSE(left());
}

TEST_F(ProcessLoaderTest, APageThatReloadsItselfOrSubmitsAFormToItselfIsReadAtLast) {
  server.answer("/", [](const HttpRequest& request) {
    if (!request.header("Cookie").contains("seen=1"))
      return pageReply("<script>document.cookie='seen=1';location.reload()</script>");
    return pageReply(request.method + " seen");
  });
  server.answer("/form", [](const HttpRequest& request) {
    if (request.target.contains("passed"))
      return pageReply("passed");
    return pageReply("<form id=f><input name=passed></form><script>f.submit()</script>");
  });
  for (const auto& [path, text] : {std::pair(u"/"_s, u"GET seen"_s), std::pair(u"/form"_s, u"passed"_s)}) {
    ProcessLoader loader;
    ASSERT_TRUE(load(loader, QUrl(server.url(path))));
    QString read;
    runEventsFor(5000, [&] {
      read = loader.bodyText();
      return !read.isEmpty();
    });
    EXPECT_EQ(read, text);
  }
}

/// A page process out of a few shell commands, which find the number of a reading by `number`.
class ScriptedLoader : public ::testing::Test {
 protected:
  QString program(const QByteArray& afterLoad) { return script("complete\n" + afterLoad); }

  /// The same without a document of its own accord.
  QString script(const QByteArray& afterRequest) {
    QFile file(folder.filePath(u"page"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "#!/bin/sh\nnumber() { read -r line; id=${line#*:}; id=${id%%,*}; }\n"
        "at() { echo '{\"tell\":\"'$1'\",\"address\":\"'$2'\"}'; }\n"
        "complete() { at complete http://a.test/; }\n"
        "text() { echo '{\"tell\":\"text\",\"text\":\"'$1'\",\"id\":'$2'}'; }\n"
        "read -r line\n" +
        afterRequest + "\nexec cat >/dev/null\n");
    file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
    return file.fileName();
  }

  bool load(ProcessLoader& loader, const QString& address = u"http://a.test/"_s) {
    bool done = false;
    loader.documentComplete = [&done](bool) { done = true; };
    loader.navigate(QUrl(address));
    runEventsFor(10'000, [&done] { return done; });
    loader.documentComplete = {};
    return done;
  }

  /// A reading ends before its time is up, in milliseconds, and gives nothing.
  static void expectNoText(ProcessLoader& loader, qint64 mostMs) {
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(loader.bodyText(), QString());
    EXPECT_LT(waited.elapsed(), mostMs);
  }

  /// A reading by the clock gives the text "later" before its 50 ticks are over.
  void expectTheLaterText(const QByteArray& afterLoad) {
    const QString file = program(afterLoad);
    constexpr int tick = 100 * slowness;
    OpenUrlText reader([&file] { return std::make_unique<ProcessLoader>(LoaderTimes{}, file); }, tick);
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(reader.openUrlText(QUrl(u"http://a.test/"_s), true), u"later"_s);
    EXPECT_LT(waited.elapsed(), 40 * tick);
  }

  QTemporaryDir folder;
};

TEST_F(ScriptedLoader, ADocumentThatCompletesAgainDoesNotEndAReading) {
  ProcessLoader loader({}, program("number; complete; sleep 0.2; text whole $id"));
  ASSERT_TRUE(load(loader));
  EXPECT_EQ(loader.bodyText(), u"whole"_s);
}

TEST_F(ScriptedLoader, TheLateAnswerOfAReadingIsNotTakenForTheNextOnes) {
  ProcessLoader loader({180'000, 1000},
                       program("number; sleep 1.4; text late $id; number; sleep 0.2; text second $id"));
  ASSERT_TRUE(load(loader));
  EXPECT_EQ(loader.bodyText(), QString());
  EXPECT_EQ(loader.bodyText(), u"second"_s);
}

TEST_F(ScriptedLoader, AStopEndsAReadingThatWaits) {
  ProcessLoader loader({180'000, 20'000}, program(""));
  ASSERT_TRUE(load(loader));
  QTimer::singleShot(50, [&loader] { loader.stop(); });
  expectNoText(loader, 5000);
}

TEST_F(ScriptedLoader, AProcessThatEndsEndsAReading) {
  ProcessLoader loader({180'000, 20'000}, program("number; exit 1"));
  ASSERT_TRUE(load(loader));
  expectNoText(loader, 5000);
  EXPECT_FALSE(loader.fault().isEmpty());
}

TEST_F(ScriptedLoader, AProgramThatLacksALibraryIsToldAsOneThatIsMissing) {
  ProcessLoader loader({}, program("exit 127"));
  load(loader);
  runEventsFor(5000, [&loader] { return !loader.fault().isEmpty(); });
  EXPECT_EQ(loader.fault(), u"读取网页的组件 elevenfive-page 没有找到或无法启动，请重新安装本软件。"_s);
}

TEST_F(ScriptedLoader, AnAnswerWithoutAnEndIsGivenUp) {
  ProcessLoader loader({180'000, 60'000}, program("number; exec tr '\\\\0' x </dev/zero"));
  ASSERT_TRUE(load(loader));
  expectNoText(loader, 30'000);
  EXPECT_EQ(loader.processId(), 0);
  EXPECT_FALSE(loader.busy());
}

TEST_F(ScriptedLoader, AnEmptyDocumentIsWaitedOnUntilAnotherStandsInItsPlace) {
  expectTheLaterText("number; text '' $id; sleep 0.3; complete; number; text later $id; number; text later $id");
}

TEST_F(ScriptedLoader, ADocumentThatComesWhileTheOneBeforeItIsReadIsReadInItsTurn) {
  expectTheLaterText("number; complete; sleep 0.2; text '' $id; number; text later $id; number; text later $id");
}

TEST_F(ScriptedLoader, AReadingDuringAnotherGivesNothingAndLeavesTheAnswerOfTheOther) {
  ProcessLoader loader({}, program("number; sleep 0.2; text whole $id"));
  ASSERT_TRUE(load(loader));
  QString others;
  QTimer again;  // always due, so also in the turn of the loop that brings the answer
  QObject::connect(&again, &QTimer::timeout, [&] {
    QThread::msleep(3);
    others += loader.bodyText();
  });
  again.start(1);
  EXPECT_EQ(loader.bodyText(), u"whole"_s);
  again.stop();
  EXPECT_EQ(others, QString());
}

TEST_F(ScriptedLoader, ALoadThatWasSentAwayStaysAtThePlaceItWasSentTo) {
  for (const auto& [asked, sent] : {std::pair("https://a.test/"_ba, "http://a.test/"_ba),
                                    std::pair("https://a.test/"_ba, "http://www.a.test/"_ba)}) {
    ProcessLoader loader({}, script("both=$(at away " + sent + "; at complete " + asked + "); echo \"$both\""));
    ASSERT_TRUE(load(loader, QString::fromLatin1(asked)));
    EXPECT_EQ(loader.address(), QUrl(QString::fromLatin1(sent)));
  }
}

TEST_F(ScriptedLoader, ALoadThatTakesTooLongIsToldOnceLikeADocumentThatCouldNotBeHad) {
  ProcessLoader loader({200, 20'000}, script(""));
  int told = 0;
  loader.documentComplete = [&told](bool) { ++told; };
  loader.navigate(QUrl(u"http://a.test/"_s));
  EXPECT_TRUE(loader.busy());
  runEventsFor(1500, [] { return false; });
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(loader.busy());
}

TEST_F(ScriptedLoader, ALoadThatTakesTooLongEndsAReadingThatWaits) {
  ProcessLoader loader({3000, 20'000}, script(""));
  loader.navigate(QUrl(u"http://a.test/"_s));
  runEventsFor(100, [] { return false; });
  ASSERT_GT(loader.processId(), 0);
  ASSERT_TRUE(loader.busy());
  QElapsedTimer waited;
  waited.start();
  expectNoText(loader, 10'000);
  EXPECT_GT(waited.elapsed(), 1500);  // nearly all that the load had left
}

TEST_F(ScriptedLoader, AnEmptyTextIsAnAnswer) {
  ProcessLoader loader({180'000, 1500 * slowness}, program("number; text '' $id"));
  ASSERT_TRUE(load(loader));
  const QString answered = loader.bodyText();
  EXPECT_TRUE(answered.isEmpty());
  EXPECT_FALSE(answered.isNull());
  EXPECT_TRUE(loader.bodyText().isNull());
}

TEST_F(ScriptedLoader, WhatComesOfAStoppedLoadIsNotTold) {
  ProcessLoader loader({}, program("complete; complete"));
  int told = 0;
  loader.documentComplete = [&](bool) {
    ++told;
    loader.stop();
  };
  loader.navigate(QUrl(u"http://a.test/"_s));
  runEventsFor(1500, [] { return false; });
  EXPECT_EQ(told, 1);
}

TEST_F(ScriptedLoader, AStopOfThePlainReaderEndsItsReading) {
  const QString file = program("");
  OpenUrlText reader([&file] { return std::make_unique<ProcessLoader>(LoaderTimes{180'000, 20'000}, file); });
  QTimer::singleShot(1000, [&reader] { reader.requestStop(); });
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(reader.openUrlText(QUrl(u"http://a.test/"_s), true), QString());
  EXPECT_LT(waited.elapsed(), 4000);
}

TEST(ProcessLoaderStart, AMissingProgramIsToldInASentence) {
  ProcessLoader loader({}, u"/nonexistent/elevenfive-page"_s);
  bool done = false;
  loader.documentComplete = [&done](bool) { done = true; };
  loader.navigate(QUrl(u"http://127.0.0.1:9/"_s));
  runEventsFor(5000, [&done] { return done; });
  EXPECT_TRUE(done);
  EXPECT_EQ(loader.fault(), u"读取网页的组件 elevenfive-page 没有找到或无法启动，请重新安装本软件。"_s);
  EXPECT_EQ(loader.bodyText(), QString());
}

TEST_F(ProcessLoaderTest, ThePlainReaderGivesTextAndMarkup) {
  page("/08118.html", u"<h1> 奖池 </h1>"_s);
  OpenUrlText reader(processLoaders(), 400);
  EXPECT_EQ(reader.openUrlText(QUrl(server.url(u"/08118.html"_s)), true), u"奖池"_s);
  EXPECT_TRUE(reader.openUrlText(QUrl(server.url(u"/08118.html"_s)), false).startsWith(u"<html>"_s));
}

class PlainReader : public WebTest {
 protected:
  /// Ticks are shortened so that 50 of them take one and a half seconds.
  QString read(const QString& path) {
    OpenUrlText reader(processLoaders(), 30);
    waited.start();
    const QString text = reader.openUrlText(QUrl(server.url(path)), true);
    EXPECT_LT(waited.elapsed(), 60 * 30 + 1500);
    return text;
  }

  QElapsedTimer waited;
};

TEST_F(PlainReader, AServerThatHangsGivesNothingAfterItsTime) {
  HttpReply reply;
  reply.ending = HttpEnding::silent;
  server.answer("/08118.html", reply);
  EXPECT_EQ(read(u"/08118.html"_s), QString());
  EXPECT_GE(waited.elapsed(), 49 * 30);
}

TEST_F(PlainReader, APageThatStaysUnfinishedGivesWhatHasCome) {
  HttpReply reply = pageReply(QByteArray("<h1>奖池</h1>") + QByteArray(5000, ' '));
  reply.ending = HttpEnding::hang;
  server.answer("/08118.html", reply);
  EXPECT_EQ(read(u"/08118.html"_s), u"奖池"_s);
  EXPECT_GE(waited.elapsed(), 49 * 30);
}

TEST_F(PlainReader, AScriptThatNeverEndsIsNotWaitedForAnyLonger) {
  page("/08118.html", u"<h1>奖池</h1><script>for(;;){}</script>"_s);
  EXPECT_EQ(read(u"/08118.html"_s), QString());
}

TEST_F(PlainReader, AScriptThatHangsThePageOnceItHasComeIsNotWaitedForEither) {
  page("/08118.html", u"<h1>奖池</h1><script>onload=()=>setTimeout(()=>{for(;;);},0)</script>"_s);
  read(u"/08118.html"_s);  // its text, where the reading came before the script
}

}  // namespace
}  // namespace elevenfive
