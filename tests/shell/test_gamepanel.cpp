// 下载设置 on the history page: the panel in which the game is chosen.
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>

#include "acquire/catalogue.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

using GamePanelTest = MainWindowTest;

TEST_F(GamePanelTest, OpensUnderItsButtonWithTheGameInUseSelected) {
  open();
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = (序号 = 4)");
  auto& button = the<QPushButton>(u"newBtnHistory_7"_s);
  EXPECT_EQ(button.text(), u"下载设置"_s);
  EXPECT_EQ(button.toolTip(), u"选择彩票种类"_s);
  click(button);
  auto& panel = the<QWidget>(u"fraCaizongTip"_s);
  EXPECT_TRUE(panel.isVisible());
  EXPECT_TRUE(QTest::qWaitFor([&] { return panel.size() == panel.sizeHint(); }));
  EXPECT_EQ(panel.findChildren<QRadioButton*>().size(), 29);
  EXPECT_TRUE(control<QRadioButton>(panel, u"OptionSSC_4"_s).isChecked());
  EXPECT_EQ(control<QRadioButton>(panel, u"OptionSSC_28"_s).text(), u"北京11选5"_s);
  EXPECT_EQ(control<QLabel>(panel, u"cmmTisi"_s).text(), u"要下载的数据比较多，可能需要几分钟时间，请耐心等待！"_s);
  EXPECT_EQ(control<QCheckBox>(panel, u"CheckTip"_s).text(), u"不再提示,以后按同样选择"_s);
}

TEST_F(GamePanelTest, AClickPutsTheGameInUseAndTheButtonHidesThePanel) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  click(the<QPushButton>(u"newBtnHistory_7"_s));
  auto& panel = the<QWidget>(u"fraCaizongTip"_s);
  control<QRadioButton>(panel, u"OptionSSC_5"_s).click();
  EXPECT_EQ(data.rows("SELECT 序号, 使用 FROM 彩票类型 WHERE 使用 <> 0"), QStringList{u"5 1"_s});
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录"), QStringList{u"11031510"_s});
  auto& ok = control<QPushButton>(panel, u"cmmCaizongOK"_s);
  EXPECT_EQ(ok.text(), u"确 定"_s);
  ok.click();
  EXPECT_FALSE(panel.isVisible());
  EXPECT_TRUE(ports.boxes.empty());
}

}  // namespace

}  // namespace elevenfive
