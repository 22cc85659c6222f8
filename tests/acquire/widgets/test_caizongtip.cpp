#include "acquire/widgets/caizongtip.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "acquire/catalogue.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class CaizongTipTest : public ::testing::Test {
 protected:
  void SetUp() override {
    page.resize(1000, 600);
    button.setParent(&page);
    button.setGeometry(450, 20, 100, 30);
    page.show();
  }

  template <typename Control>
  Control& the(const QString& name) {
    return control<Control>(page, name);
  }

  QStringList inUse() { return data.rows("SELECT 序号 FROM 彩票类型 WHERE 使用 > 0 ORDER BY 序号"); }

  TestWorkspace data;
  RecordingPorts ports;
  QWidget page;
  QPushButton button;
  Catalogue catalogue{data.store()};
  CaizongTip tip{catalogue, ports, &page};
};

TEST_F(CaizongTipTest, HoldsAGameEachAndSelectsTheOneInUse) {
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = CASE 序号 WHEN 2 THEN 1 ELSE 0 END");
  EXPECT_FALSE(tip.isVisible());
  tip.openBelow(&button);
  EXPECT_TRUE(tip.isVisible());
  EXPECT_EQ(tip.findChildren<QRadioButton*>().size(), 29);
  EXPECT_EQ(the<QRadioButton>(u"OptionSSC_0"_s).text(), u"山东11选5(十一运夺金)"_s);
  EXPECT_EQ(the<QRadioButton>(u"OptionSSC_2"_s).text(), u"多乐彩(江西11选5)"_s);
  EXPECT_EQ(the<QRadioButton>(u"OptionSSC_28"_s).text(), u"北京11选5"_s);
  for (const QRadioButton* option : tip.findChildren<QRadioButton*>())
    EXPECT_EQ(option->isChecked(), option->objectName() == u"OptionSSC_2"_s) << option->objectName().toStdString();
}

TEST_F(CaizongTipTest, BearsItsTexts) {
  EXPECT_EQ(the<QLabel>(u"cmmTisi"_s).text(), u"要下载的数据比较多，可能需要几分钟时间，请耐心等待！"_s);
  EXPECT_EQ(the<QCheckBox>(u"CheckTip"_s).text(), u"不再提示,以后按同样选择"_s);
  EXPECT_EQ(the<QPushButton>(u"cmmCaizongOK"_s).text(), u"确 定"_s);
}

TEST_F(CaizongTipTest, AClickPutsTheGameInUseAtOnceAndStays) {
  tip.openBelow(&button);
  the<QRadioButton>(u"OptionSSC_7"_s).click();
  EXPECT_EQ(inUse(), QStringList{u"7"_s});
  EXPECT_TRUE(tip.isVisible());
  the<QRadioButton>(u"OptionSSC_3"_s).click();
  EXPECT_EQ(inUse(), QStringList{u"3"_s});
}

TEST_F(CaizongTipTest, OpenedAgainItShowsTheGameOfTheStore) {
  tip.openBelow(&button);
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = CASE 序号 WHEN 11 THEN 1 ELSE 0 END");
  tip.openBelow(&button);
  EXPECT_EQ(tip.findChildren<QRadioButton*>().size(), 29);
  EXPECT_TRUE(the<QRadioButton>(u"OptionSSC_11"_s).isChecked());
}

TEST_F(CaizongTipTest, WithNoGameInUseNoneIsSelected) {
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  tip.openBelow(&button);
  for (const QRadioButton* option : tip.findChildren<QRadioButton*>())
    EXPECT_FALSE(option->isChecked());
}

TEST_F(CaizongTipTest, TheCheckBoxChangesNothing) {
  tip.openBelow(&button);
  const QStringList before = data.rows("SELECT * FROM 彩票类型");
  click(the<QCheckBox>(u"CheckTip"_s));
  EXPECT_EQ(data.rows("SELECT * FROM 彩票类型"), before);
  tip.openBelow(&button);
  EXPECT_TRUE(tip.isVisible());
}

TEST_F(CaizongTipTest, SlidesOpenCentredBelowItsButton) {
  tip.openBelow(&button);
  EXPECT_EQ(tip.y(), 50);
  const int first = tip.height();
  EXPECT_TRUE(QTest::qWaitFor([&] { return tip.height() > first && tip.height() >= tip.childrenRect().height(); }));
  EXPECT_NEAR(tip.geometry().center().x(), 500, 1);
}

TEST_F(CaizongTipTest, FollowsItsButton) {
  tip.openBelow(&button);
  const int before = tip.x();
  button.move(430, 40);
  EXPECT_EQ(tip.x(), before - 20);
  EXPECT_EQ(tip.y(), 70);
}

TEST_F(CaizongTipTest, StaysInsideThePageAtItsEdge) {
  button.move(900, 20);
  tip.openBelow(&button);
  EXPECT_LE(tip.x() + tip.width(), page.width());
}

TEST_F(CaizongTipTest, OkAndEscapeHideItAndGiveTheFocusBack) {
  tip.openBelow(&button);
  EXPECT_EQ(page.focusWidget(), &the<QRadioButton>(u"OptionSSC_0"_s));
  click(the<QPushButton>(u"cmmCaizongOK"_s));
  EXPECT_FALSE(tip.isVisible());
  EXPECT_EQ(page.focusWidget(), &button);
  tip.openBelow(&button);
  QTest::keyClick(&the<QRadioButton>(u"OptionSSC_0"_s), Qt::Key_Escape);
  EXPECT_FALSE(tip.isVisible());
}

TEST_F(CaizongTipTest, AFaultIsToldOnceAndNothingOpens) {
  data.store().execute("test", "DROP TABLE 彩票类型");
  tip.openBelow(&button);
  EXPECT_FALSE(tip.isVisible());
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
}

}  // namespace

}  // namespace elevenfive
