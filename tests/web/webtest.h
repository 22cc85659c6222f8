// What tests with the real page process share.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include "acquire/catalogue.h"
#include "acquire/pagewait.h"
#include "acquire/processloader.h"
#include "acquire/sources.h"
#include "acquire/webupdate.h"
#include "tests/support/httpserver.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// Whether pages can be loaded at all: the engine's sandbox needs rights that a user of a container may lack.
inline bool engineRuns() {
  static const bool runs = [] {
    HttpServer server;
    server.answer("/", pageReply("<p>there</p>"));
    ProcessLoader page;
    bool done = false;
    page.documentComplete = [&done](bool) { done = true; };
    page.navigate(QUrl(server.url(QStringLiteral("/"))));
    runEventsFor(60'000, [&done] { return done; });
    return page.bodyText() == QStringLiteral("there");
  }();
  return runs;
}

class WebTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!engineRuns() && geteuid() != 0)
      GTEST_SKIP() << "the engine does not run for this user: its sandbox lacks rights";
    ASSERT_TRUE(engineRuns()) << "no page can be loaded by " << ProcessLoader::pageProgram().toStdString();
  }

  /// Loads a page and waits for its document, at most so many milliseconds.
  bool load(PageLoader& page, const QUrl& url, int ms = 30'000) {
    bool done = false;
    page.documentComplete = [&done](bool) { done = true; };
    page.navigate(url);
    runEventsFor(ms, [&done] { return done; });
    page.documentComplete = {};
    return done;
  }

  QString textOf(const QUrl& url) {
    ProcessLoader page;
    load(page, url);
    return page.bodyText();
  }

  void page(const QByteArray& path, const QString& body) { server.answer(path, pageReply(body.toUtf8())); }
  [[nodiscard]] QUrl root() const { return QUrl(server.url(QStringLiteral("/"))); }

  HttpServer server;
};

/// An answer that sends the asker on.
inline HttpReply redirectTo(const QString& address) {
  HttpReply reply;
  reply.status = 302;
  reply.headers = {{"Location", address.toUtf8()}};
  return reply;
}

/// A page whose script makes a table of these rows, each "11031510 01 02 03 04 05"; the script calls make() for it.
inline QString tablePage(const QStringList& rows, const QString& script = QStringLiteral("make()")) {
  return QStringLiteral(
             "<html><head><meta charset=utf-8></head><body><h1>广东11选5</h1><table id=t></table><script>"
             "const rows='%1'.split(';');"
             "function make(){t.innerHTML='<tr><th>期号</th><th>号码</th></tr>'+rows.map(r=>'<tr>'"
             "+r.split(' ').map(c=>'<td>'+c+'</td>').join('')+'<td>03-15 17:50</td></tr>').join('')}"
             "%2</script></body></html>")
      .arg(rows.join(u';'), script);
}

/// The box at the end of an update.
inline QString completedText() {
  return QStringLiteral("下载完成！(如果没有取得最新的数据请过几分钟后重试，多试几次即可。)");
}

/// The paths that a server was asked for, in order of arrival.
inline QStringList askedOf(const HttpServer& server) {
  QStringList paths;
  for (const HttpRequest& request : server.requests())
    paths << QString::fromUtf8(request.path);
  return paths;
}

}  // namespace elevenfive
