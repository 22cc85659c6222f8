// What tests with the real page process share.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include "acquire/catalogue.h"
#include "acquire/pagewait.h"
#include "acquire/processloader.h"
#include "acquire/sources.h"
#include "acquire/webupdate.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"
#include "tests/web/webserver.h"

namespace elevenfive {

/// Whether pages can be loaded at all: the engine's sandbox needs rights that a user of a container may lack.
inline bool engineRuns() {
  static const bool runs = [] {
    WebServer server;
    server.page("/", QStringLiteral("<p>there</p>"));
    ProcessLoader page;
    bool done = false;
    page.documentComplete = [&done](bool) { done = true; };
    page.navigate(server.url(QStringLiteral("/")));
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

  WebServer server;
};

}  // namespace elevenfive
