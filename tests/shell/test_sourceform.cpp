// 数据源 in the menu 其它: the addresses, their change and their test.
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>

#include "acquire/addresstester.h"
#include "acquire/sources.h"
#include "acquire/widgets/sourceform.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class AnsweringTester final : public AddressTester {
 public:
  QStringList asked;
  int cancelled = 0;
  Outcome pending;
  void test(const QString& address, Outcome outcome) override {
    asked << address;
    pending = std::move(outcome);
  }
  void cancel() override { ++cancelled; }
};

class SourceFormTest : public ::testing::Test {
 protected:
  /// Opens the form, does the steps in it, and shuts it where they have not.
  void inForm(const std::function<void(QDialog&)>& steps) {
    bool done = false;
    QTimer::singleShot(0, [&] {
      auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(form, nullptr);
      steps(*form);
      done = true;
      if (form->isVisible())
        form->reject();
    });
    sourceForm(w.store(), ports, tester, nullptr);
    EXPECT_TRUE(done);
  }

  QString stored(const SourceKind& kind) { return sourceAddress(w.store(), kind.name); }

  TestWorkspace w;
  RecordingPorts ports;
  AnsweringTester tester;
};

TEST_F(SourceFormTest, EachAddressSaysWhatItIsFor) {
  inForm([](QDialog& form) {
    EXPECT_EQ(form.objectName(), u"frmSource"_s);
    EXPECT_EQ(form.windowTitle(), u"数据源"_s);
    QStringList texts;
    for (const QLabel* label : form.findChildren<QLabel*>())
      texts << label->text();
    EXPECT_TRUE(texts.contains(u"开奖网站：下载开奖数据的网站"_s));
    EXPECT_TRUE(texts.contains(u"版本公告：查询新版本公告的服务器；留空则不查询"_s));
    EXPECT_EQ(control<QLineEdit>(form, u"Text_address_0"_s).text(), u"https://{province}.results.example"_s);
    EXPECT_EQ(control<QLineEdit>(form, u"Text_address_2"_s).text(), QString());
  });
}

TEST_F(SourceFormTest, OkStoresWhatWasChangedAndCancelNothing) {
  inForm([](QDialog& form) {
    control<QLineEdit>(form, u"Text_address_0"_s).setText(u" http://a.b/{province} "_s);
    control<QLineEdit>(form, u"Text_address_2"_s).setText(u"https://notice.b"_s);
    click(control<QPushButton>(form, u"cmdCancel"_s));
  });
  EXPECT_EQ(stored(resultsSite), u"https://{province}.results.example"_s);
  inForm([](QDialog& form) {
    control<QLineEdit>(form, u"Text_address_0"_s).setText(u" http://a.b/{province} "_s);
    control<QLineEdit>(form, u"Text_address_2"_s).setText(u"https://notice.b"_s);
    click(control<QPushButton>(form, u"cmdOK"_s));
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_EQ(stored(resultsSite), u"http://a.b/{province}"_s);
  EXPECT_EQ(stored(secondSite), u"https://{province}.second.example"_s);
  EXPECT_EQ(stored(noticeServer), u"https://notice.b"_s);
}

TEST_F(SourceFormTest, WhatIsNoWebAddressKeepsTheFormOpenAndNothingIsStored) {
  inForm([&](QDialog& form) {
    control<QLineEdit>(form, u"Text_address_0"_s).setText(u"http://a.b"_s);
    control<QLineEdit>(form, u"Text_address_1"_s).setText(u"a.b"_s);
    click(control<QPushButton>(form, u"cmdOK"_s));
    EXPECT_TRUE(form.isVisible());
  });
  EXPECT_EQ(ports.log, QStringList{u"critical [] “第二网站”的地址不正确，要以 http:// 或 https:// 开头。"_s});
  EXPECT_EQ(stored(resultsSite), u"https://{province}.results.example"_s);
}

TEST_F(SourceFormTest, ATestAsksTheAddressOfTheGameInUseAndShowsItsOutcome) {
  inForm([&](QDialog& form) {
    control<QLineEdit>(form, u"Text_address_0"_s).setText(u"http://a.b/{province}"_s);
    click(control<QPushButton>(form, u"cmm_test_0"_s));
    EXPECT_EQ(tester.asked, QStringList{u"http://a.b/sd"_s});
    auto& outcome = control<QLabel>(form, u"Label_outcome_0"_s);
    EXPECT_EQ(outcome.text(), u"正在测试..."_s);
    EXPECT_TRUE(form.isEnabled());  // nobody waits
    tester.pending(u"可以打开"_s);
    EXPECT_EQ(outcome.text(), u"可以打开"_s);
    QTest::keyClicks(&control<QLineEdit>(form, u"Text_address_0"_s), u"x"_s);
    EXPECT_EQ(outcome.text(), QString());  // it was said of another address
  });
  EXPECT_EQ(stored(resultsSite), u"https://{province}.results.example"_s);
  EXPECT_EQ(tester.cancelled, 1);
}

TEST_F(SourceFormTest, ASecondTestTakesThePlaceOfTheFirst) {
  inForm([&](QDialog& form) {
    click(control<QPushButton>(form, u"cmm_test_0"_s));
    click(control<QPushButton>(form, u"cmm_test_1"_s));
    EXPECT_EQ(control<QLabel>(form, u"Label_outcome_0"_s).text(), QString());
    EXPECT_EQ(control<QLabel>(form, u"Label_outcome_1"_s).text(), u"正在测试..."_s);
  });
}

TEST_F(SourceFormTest, AGameWhoseProvinceHasNoPageCannotBeTested) {
  w.store().execute("test", "UPDATE 彩票类型 SET 使用 = (序号 = 3)");  // 重庆
  inForm([&](QDialog& form) {
    click(control<QPushButton>(form, u"cmm_test_0"_s));
    EXPECT_EQ(control<QLabel>(form, u"Label_outcome_0"_s).text(),
              u"当前彩种所在的省份没有网页，请先选择别的彩种再测试。"_s);
  });
  EXPECT_EQ(tester.asked, QStringList());
}

using SourceMenuTest = MainWindowTest;

TEST_F(SourceMenuTest, TheMenuOpensTheForm) {
  open();
  QString seen;
  QTimer::singleShot(0, [&] {
    if (auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      seen = form->objectName();
      click(control<QPushButton>(*form, u"cmm_test_0"_s));
      QTRY_COMPARE(control<QLabel>(*form, u"Label_outcome_0"_s).text(), u"地址还没有设置。"_s);
      form->reject();
    }
  });
  triggerMenu(u"mnu_DataSource"_s);
  EXPECT_EQ(seen, u"frmSource"_s);
}

}  // namespace

}  // namespace elevenfive
