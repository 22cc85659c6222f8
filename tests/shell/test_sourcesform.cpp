// The form of the addresses in the data table: what it stores, and what the test of an address says.
#include <QElapsedTimer>

#include "acquire/widgets/sourcesform.h"
#include "tests/shell/webwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class SourcesFormTest : public WebWindowTest {
 protected:
  SourcesForm& form() {
    if (!form_) {
      form_ = std::make_unique<SourcesForm>(data.store(), boxes, web.loaders());
      form_->show();
      EXPECT_TRUE(QTest::qWaitForWindowExposed(form_.get()));
    }
    return *form_;
  }

  QLineEdit& address(int index) { return control<QLineEdit>(form(), u"Text_dizhi_%1"_s.arg(index)); }
  QString verdict() { return control<QLabel>(form(), u"Label_ceshi"_s).text(); }
  void clickForm(const QString& name) { click(control<QPushButton>(form(), name)); }

  /// What the test of an address says.
  void expectVerdict(int index, const QString& text) {
    clickForm(u"cmm_ceshi_%1"_s.arg(index));
    EXPECT_EQ(verdict(), text);
  }

 private:
  std::unique_ptr<SourcesForm> form_;
};

TEST_F(SourcesFormTest, ShowsEachAddressWithWhatItIsFor) {
  EXPECT_EQ(address(0).accessibleName(), u"开奖网站"_s);
  EXPECT_EQ(address(0).text(), u"http://{province}.results.test"_s);
  EXPECT_EQ(address(2).text(), QString());
  EXPECT_EQ(address(3).accessibleDescription(), u"一期开奖详情的网页"_s);
}

TEST_F(SourcesFormTest, ConfirmedAddressesAreStoredAndCancelledOnesAreNot) {
  address(0).setText(u" http://{province}.new.test "_s);
  clickForm(u"cmdOK"_s);
  EXPECT_EQ(sourceAddress(data.store(), resultsSite.name), u"http://{province}.new.test"_s);
  form().show();
  address(0).setText(u"http://other.test"_s);
  clickForm(u"cmdCancel"_s);
  EXPECT_EQ(sourceAddress(data.store(), resultsSite.name), u"http://{province}.new.test"_s);
}

TEST_F(SourcesFormTest, WhatIsNoAddressKeepsTheFormOpenAndStoresNothing) {
  address(3).setText(u"http://new.test/"_s);
  for (const QString& typed : {u"file:///etc/hostname"_s, u"ftp://results.test"_s, u"two words"_s}) {
    ports.boxes.clear();
    address(0).setText(typed);
    clickForm(u"cmdOK"_s);
    EXPECT_EQ(ports.boxTexts(), QStringList{wrongAddressText(u"开奖网站"_s)});
    EXPECT_TRUE(form().isVisible());
    EXPECT_TRUE(address(0).hasFocus());
  }
  EXPECT_EQ(sourceAddress(data.store(), resultsSite.name), u"http://{province}.results.test"_s);
  EXPECT_NE(sourceAddress(data.store(), detailPage.name), u"http://new.test/"_s);
}

TEST_F(SourcesFormTest, AnAddressWithoutItsSchemeIsTakenAsItsTestTakesIt) {
  address(0).setText(u"{province}.results.test"_s);
  clickForm(u"cmm_ceshi_0"_s);
  EXPECT_TRUE(verdict().startsWith(u"“开奖网站”：网页可以打开，共 "_s));
  clickForm(u"cmdOK"_s);
  EXPECT_EQ(sourceAddress(data.store(), resultsSite.name), u"{province}.results.test"_s);
}

TEST_F(SourcesFormTest, ATestReadsThePageOfTheGameInUse) {
  clickForm(u"cmm_ceshi_0"_s);
  EXPECT_TRUE(web.log.contains(u"navigate "_s + page));
  EXPECT_TRUE(verdict().startsWith(u"“开奖网站”：网页可以打开，共 "_s));
}

TEST_F(SourcesFormTest, ATestTellsAPageThatIsNotTheExpectedOne) {
  web.pages[page].texts = QStringList{u"welcome"_s};
  expectVerdict(0, u"“开奖网站”：网页可以打开，但不是开奖数据的网页。"_s);
}

TEST_F(SourcesFormTest, ATestTellsAControlThatCannotBeHadInItsOwnWords) {
  web.pages[page] = FakePage{{}, {}, -1, false, {}, u"读取网页的组件没有找到。"_s};
  expectVerdict(0, u"“开奖网站”：读取网页的组件没有找到。"_s);
}

TEST_F(SourcesFormTest, ATestTellsAnAddressThatIsNone) {
  expectVerdict(2, u"地址为空。"_s);
  address(3).setText(u"file:///etc/hostname"_s);
  expectVerdict(3, u"不是可用的网址。"_s);
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(SourcesFormTest, ATestForAGameWithoutAPageTellsThatTheAddressIsFine) {
  const auto expectNoPage = [this] { expectVerdict(0, u"所用彩种在开奖网站没有网页，无法测试。"_s); };
  constexpr int chongqing = 3;
  Catalogue(data.store()).selectCaizong(chongqing);
  expectNoPage();
  address(0).setText(u"results.test"_s);
  expectNoPage();
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  expectNoPage();
  address(1).setText(u"{province}.second.test"_s);
  expectVerdict(1, u"所用彩种在第二网站没有网页，无法测试。"_s);
  address(0).setText(u"ftp://results.test"_s);
  expectVerdict(0, u"不是可用的网址。"_s);
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(SourcesFormTest, ATestOfAnExampleAddressTellsThatItWasNeverSet) {
  address(1).setText(u"{province}.second.example"_s);
  expectVerdict(1, u"地址还没有设置。"_s);
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(SourcesFormTest, ATestAsksForWhatTheAddressIsUsedFor) {
  web.other.texts = QStringList{u"there"_s};
  address(2).setText(u"{province}.notice.test"_s);
  clickForm(u"cmm_ceshi_2"_s);
  EXPECT_TRUE(web.log.contains(u"navigate http://gd.notice.test?VER=53635&NAME=elevenfive"_s));
  address(3).setText(u"detail.test/draw-"_s);
  clickForm(u"cmm_ceshi_3"_s);
  EXPECT_TRUE(web.log.contains(u"navigate http://detail.test/draw-"_s));  // no draw is known yet
  data.addDraws(u"110315011 01 02 03 04 05\n"_s);
  clickForm(u"cmm_ceshi_3"_s);
  EXPECT_TRUE(web.log.contains(u"navigate http://detail.test/draw-15011.html"_s));
  EXPECT_EQ(verdict(), u"“开奖详情”：网页可以打开，共 5 字。"_s);
}

TEST_F(SourcesFormTest, ATestEndsWhenTheFormIsClosed) {
  web.pages[page].afterMs = -1;
  QTimer::singleShot(60, &form(), [this] { form().reject(); });
  QElapsedTimer waited;
  waited.start();
  clickForm(u"cmm_ceshi_0"_s);
  EXPECT_LT(waited.elapsed(), 3000);
  EXPECT_FALSE(form().isVisible());
}

TEST_F(SourcesFormTest, TheMenuOpensTheForm) {
  openWindow();
  bool shown = false;
  QTimer::singleShot(100, window.get(), [&] {
    if (auto* open = window->findChild<SourcesForm*>(u"frmSources"_s)) {
      shown = open->isVisible();
      open->reject();
    }
  });
  triggerMenu(u"mnu_Sources"_s);
  EXPECT_TRUE(shown);
}

}  // namespace

}  // namespace elevenfive
