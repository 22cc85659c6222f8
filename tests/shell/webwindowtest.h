// The window beside a web of the test's own: 广东 is in use, and its results page holds two draws.
#pragma once

#include <QLabel>
#include <QTimer>

#include "acquire/catalogue.h"
#include "acquire/sources.h"
#include "tests/shell/mainwindowtest.h"
#include "tests/support/fakepageloader.h"

namespace elevenfive {

class WebWindowTest : public MainWindowTest {
 protected:
  void SetUp() override {
    constexpr int guangdong = 1;
    Catalogue(data.store()).selectCaizong(guangdong);
    setSourceAddress(data.store(), resultsSite.name.toString(), QStringLiteral("http://{province}.results.test"));
    web.pages[page].texts = QStringList{QStringLiteral(
        "广东11选5\n11031512\t02\t01\t03\t04\t08\t03-15 17:50\n11031511\t01\t02\t03\t04\t05\t03-15 17:40")};
  }

  void openWindow() { openBeside(web.loaders()); }

  const QString page = QStringLiteral("http://gd.results.test/?op=dcjb&num=100");
  FakeWeb web;
};

}  // namespace elevenfive
