// What the person does on the condition pages: choosing values, picking numbers, finding a tab, excluding parity patterns.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>

#include "conditions/widgets/pickpage.h"
#include "conditions/widgets/tabcaptions.h"
#include "shell/widgets/mainwindow.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class ConditionPagesTest : public ::testing::Test {
 protected:
  template <typename Control>
  Control& the(const QString& name) {
    return control<Control>(window, name);
  }

  void openTab(int tab) {
    window.show();
    window.selectTopTab(2);
    the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1);
  }

  void triggerMenu(const QString& name) {
    window.show();
    the<QAction>(name).trigger();
  }

  void setValue(int id, int value) {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = ?", value, id);
  }
  int value(int id) { return data.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id).value_or(-1); }
  int use(int code) {
    return data.store().value("test", "SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = ?", code).value_or(-1);
  }

  /// The stored values of a stretch, one digit each.
  QString stretch(int first, int last) {
    return data
        .rows(QStringLiteral("SELECT VALUE FROM 过滤条件 WHERE ID BETWEEN %1 AND %2 ORDER BY ID")
                  .arg(first)
                  .arg(last)
                  .toUtf8()
                  .constData())
        .join(QString());
  }

  /// Opens tab 10, ten values, none of them allowed, and gives its list.
  QListWidget& emptyTenValues() {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
    openTab(10);
    return the<QListWidget>(u"List_TiaoJian"_s);
  }

  static void clickItem(QListWidget& list, int item, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, list.visualItemRect(list.item(item)).center());
  }

  TestWorkspace data;
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  MainWindow window{data.workspace(), {ports, ports, files, texts}};
};

TEST_F(ConditionPagesTest, AClickTogglesOneValue) {
  QListWidget& list = emptyTenValues();
  clickItem(list, 3);
  EXPECT_EQ(stretch(3601, 3610), u"0001000000"_s);
  clickItem(list, 3);
  EXPECT_EQ(stretch(3601, 3610), u"0000000000"_s);
}

TEST_F(ConditionPagesTest, ShiftAndAClickSelectTheRange) {
  QListWidget& list = emptyTenValues();
  clickItem(list, 2);
  clickItem(list, 5, Qt::ShiftModifier);
  EXPECT_EQ(stretch(3601, 3610), u"0011110000"_s);
}

TEST_F(ConditionPagesTest, ShiftAndArrowsSelectTheRange) {
  QListWidget& list = emptyTenValues();
  clickItem(list, 4);
  QTest::keyClick(&list, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&list, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(stretch(3601, 3610), u"0000111000"_s);
  QTest::keyClick(&list, Qt::Key_Home, Qt::ShiftModifier);
  EXPECT_EQ(stretch(3601, 3610), u"1111111000"_s);
}

TEST_F(ConditionPagesTest, AFaultInManyValuesAtOnceBecomesOneBox) {
  openTab(2);
  data.store().execute("test", "DROP TABLE 过滤条件");
  click(the<QPushButton>(u"cmmInvert_List_TiaoJian"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
}

TEST_F(ConditionPagesTest, TheFocusGoesThroughAListAsItStands) {
  openTab(2);
  const QStringList order{u"Check_useTiaojiao_1"_s,   u"cmmAll_List_TiaoJian"_s, u"cmmInvert_List_TiaoJian"_s,
                          u"cmmNone_List_TiaoJian"_s, u"List_TiaoJian"_s,        u"Text_tiaojianTip"_s};
  the<QWidget>(order.first()).setFocus();
  QStringList walked{order.first()};
  for (int i = 1; i < order.size(); ++i) {
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    walked << window.focusWidget()->objectName();
  }
  EXPECT_EQ(walked, order);
}

TEST_F(ConditionPagesTest, AFilterFindsATabWhateverItsBlanks) {
  openTab(1);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  auto& find = the<QLineEdit>(u"Text_findTab"_s);
  for (const QString& typed : {u"连号"_s, u"连 号"_s, u" 连号 "_s}) {
    tabs.setCurrentRow(0);
    find.setText(typed);
    EXPECT_EQ(tabs.currentRow(), 6) << typed.toStdString();
    EXPECT_TRUE(tabs.item(0)->isHidden());
    find.clear();
    EXPECT_FALSE(tabs.item(0)->isHidden());
  }
}

TEST_F(ConditionPagesTest, AMenuEntryShowsItsTabThoughTheFilterHidIt) {
  openTab(1);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  auto& find = the<QLineEdit>(u"Text_findTab"_s);
  find.setText(u"连号"_s);
  triggerMenu(u"mnu_Tiaojian_2"_s);
  EXPECT_EQ(tabs.currentRow(), 1);
  EXPECT_FALSE(tabs.currentItem()->isHidden());
  EXPECT_EQ(find.text(), QString());
  find.setText(u"跨度"_s);
  triggerMenu(u"mnu_Tiaojian_105"_s);
  EXPECT_EQ(find.text(), u"跨度"_s);  // it hides nothing that is wanted
}

TEST_F(ConditionPagesTest, OpeningTheFirstTabCountsThePicksAnew) {
  openTab(2);
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID <= 6) WHERE ID <= 11");
  openTab(1);
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_ChoseNumberTip"_s)
                  .toPlainText()
                  .contains(u"过滤缩水前全部号码组合： ６  注"_s));  // six numbers, one left out
  setValue(7, 1);
  openTab(5);
  openTab(1);
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_ChoseNumberTip"_s).toPlainText().contains(u"： ２１  注"_s));
}

TEST_F(ConditionPagesTest, AFifthBankerIsRefused) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID <= 11");
  openTab(1);
  the<QTabBar>(u"TabStrip_Qiaqu"_s).setCurrentIndex(1);
  for (int number = 1; number <= 4; ++number)
    click(the<PickButton>(u"cmm_C7_%1"_s.arg(number)));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"现在点击数字按钮可以把相应的数设为“胆码”。"_s});
  click(the<PickButton>(u"cmm_C7_5"_s));
  EXPECT_EQ(ports.boxTexts().last(), u"“胆码”最多只设 ４ 个."_s);
  EXPECT_EQ(ports.boxes.size(), 2U);
  EXPECT_EQ(stretch(1, 11), u"22220000000"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_4"_s).pick(), 2);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_5"_s).pick(), 0);
}

TEST_F(ConditionPagesTest, AStoredChoiceWithoutAButtonShowsNone) {
  openTab(24);
  EXPECT_TRUE(the<QRadioButton>(u"Option_ShuoSuiLeiXing_5"_s).isChecked());
  setValue(3900, 9);
  openTab(23);
  openTab(24);
  for (int type = 3; type <= 7; ++type)
    EXPECT_FALSE(the<QRadioButton>(u"Option_ShuoSuiLeiXing_%1"_s.arg(type)).isChecked());
  the<QRadioButton>(u"Option_ShuoSuiLeiXing_4"_s).click();
  EXPECT_EQ(value(3900), 4);

  setValue(3901, 2);
  openTab(15);
  EXPECT_TRUE(the<QRadioButton>(u"Option_DingweiRongcuo_2"_s).isChecked());
  setValue(3901, 8);
  openTab(14);
  openTab(15);
  for (int i = 0; i <= 4; ++i)
    EXPECT_FALSE(the<QRadioButton>(u"Option_DingweiRongcuo_%1"_s.arg(i)).isChecked());
}

TEST_F(ConditionPagesTest, TheSecondFieldPicksLikeTheFirstWithOneBanker) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 101 AND 111");
  const QString front = stretch(1, 11);
  openTab(1);
  click(the<PickButton>(u"cmm_C7_103"_s));
  EXPECT_EQ(stretch(101, 111), u"00100000000"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_103"_s).backColor(), 49152U);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_103"_s).text(), u"03"_s);
  the<QTabBar>(u"TabStrip_Houqu"_s).setCurrentIndex(1);
  click(the<PickButton>(u"cmm_C7_111"_s));
  EXPECT_EQ(the<PickButton>(u"cmm_C7_111"_s).backColor(), 192U);
  click(the<PickButton>(u"cmm_C7_103"_s));
  EXPECT_EQ(stretch(101, 111), u"00100000002"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_103"_s).backColor(), 49152U);
  the<QTabBar>(u"TabStrip_Houqu"_s).setCurrentIndex(0);
  EXPECT_EQ(ports.boxTexts(),
            (QStringList{u"现在点击数字按钮可以把相应的数设为后区的“胆码”。"_s,
                         u"号码：03之前已经被设为拖码，现在要把它改为胆码吗？"_s, u"后区“胆码”最多只设 １ 个."_s,
                         u"现在点击数字按钮可以把相应的数设为后区的“拖码”。"_s}));
  EXPECT_EQ(stretch(1, 11), front);
  click(the<QPushButton>(u"cmm_clsH"_s));
  EXPECT_EQ(stretch(101, 111), u"00000000000"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_111"_s).backColor(), 0x8000000FU);
  EXPECT_EQ(stretch(1, 11), front);
}

TEST_F(ConditionPagesTest, TheButtonsOfTheFirstFieldFillAndEmptyIt) {
  openTab(1);
  click(the<QPushButton>(u"cmm_clsQ"_s));
  EXPECT_EQ(stretch(1, 11), u"00000000000"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_1"_s).backColor(), 0x8000000FU);
  EXPECT_EQ(the<QLabel>(u"Label_Zhushu"_s).text(), u"过滤缩水前全部号码组合： ０  注"_s);
  click(the<QPushButton>(u"cmd_FX_0"_s));
  EXPECT_EQ(stretch(1, 11), u"11111111111"_s);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_11"_s).backColor(), 49152U);
  EXPECT_EQ(the<QPushButton>(u"cmd_FX_0"_s).text(), u"全 选"_s);
  EXPECT_EQ(the<QPushButton>(u"cmm_clsQ"_s).text(), u"清 空"_s);
  EXPECT_EQ(the<QPushButton>(u"cmm_jixuan"_s).text(), u"机 选"_s);
}

TEST_F(ConditionPagesTest, TheNumberOfCombinationsIsInViewOnEveryTab) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID <= 6) WHERE ID <= 11");
  window.show();
  window.selectTopTab(2);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  for (int row = 0; row < tabs.count(); ++row) {
    tabs.setCurrentRow(row);
    EXPECT_TRUE(the<QLabel>(u"Label_Zhushu"_s).isVisible());
    EXPECT_EQ(the<QLabel>(u"Label_Zhushu"_s).text(), u"过滤缩水前全部号码组合： ６  注"_s) << row;
  }
}

TEST_F(ConditionPagesTest, EveryTabIsReachedByTheKeyboard) {
  openTab(1);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  tabs.setFocus();
  for (int row = 1; row < 25; ++row) {
    QTest::keyClick(&tabs, Qt::Key_Down);
    EXPECT_EQ(tabs.currentRow(), row);
  }
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_TiaoJianList"_s).isVisible());
}

TEST_F(ConditionPagesTest, ShortcutsTurnTheTabsAndReachTheSearch) {
  openTab(2);
  QApplication::setActiveWindow(&window);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  auto& list = the<QListWidget>(u"List_TiaoJian"_s);
  list.setFocus();
  QTest::keyClick(&list, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(tabs.currentRow(), 2);
  QTest::keyClick(&list, Qt::Key_PageUp, Qt::ControlModifier);
  QTest::keyClick(&list, Qt::Key_PageUp, Qt::ControlModifier);
  QTest::keyClick(&tabs, Qt::Key_PageUp, Qt::ControlModifier);  // there is none before the first
  EXPECT_EQ(tabs.currentRow(), 0);
  QTest::keyClick(&tabs, Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(window.focusWidget(), &the<QLineEdit>(u"Text_findTab"_s));
  QTest::keyClicks(window.focusWidget(), u"wdz"_s);
  EXPECT_EQ(tabs.currentRow(), 19);
  QTest::keyClick(window.focusWidget(), Qt::Key_Down);
  EXPECT_EQ(window.focusWidget(), &tabs);
  QTest::keyClick(&tabs, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(tabs.currentRow(), 20);
  QTest::keyClick(&tabs, Qt::Key_PageDown, Qt::ControlModifier);  // the search hides the tabs behind it
  EXPECT_EQ(tabs.currentRow(), 20);
}

TEST_F(ConditionPagesTest, TheSearchKnowsInitialsAndWhatATabOffers) {
  const auto found = [](const QString& typed) {
    QStringList tabs;
    for (int tab = 1; tab <= 25; ++tab)
      if (tabMatches(tab, typed))
        tabs << QString::number(tab);
    return tabs.join(u' ');
  };
  EXPECT_EQ(found(u"间距"_s), u"6"_s);
  EXPECT_EQ(found(u"ZDJJ"_s), u"6"_s);
  EXPECT_EQ(found(u"偶数个数"_s), u"11"_s);
  EXPECT_EQ(found(u"胆码"_s), u"1"_s);
  EXPECT_EQ(found(u"尾数"_s), u"16 19"_s);
  EXPECT_EQ(found(u"ac"_s), u"10"_s);
  EXPECT_EQ(found(u"wdz1"_s), u"21"_s);
  EXPECT_EQ(found(u"没有"_s), QString());
  EXPECT_EQ(found(QString()).count(u' '), 24);
  EXPECT_FALSE(tabMatches(0, QString()));
  EXPECT_FALSE(tabMatches(26, QString()));
}

TEST_F(ConditionPagesTest, ThePreviewFollowsEachClick) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 1000 AND 1170");
  openTab(2);
  auto& list = the<QListWidget>(u"List_TiaoJian"_s);
  auto& tip = the<QPlainTextEdit>(u"Text_tiaojianTip"_s);
  const QString head = tip.toPlainText();
  EXPECT_TRUE(head.endsWith(u"当前取值阅览：\n\n"_s));
  for (const int sum : {20, 21, 22, 25})
    clickItem(list, sum - 15);
  EXPECT_EQ(tip.toPlainText(), head + u"[２０-２２] , [２５]"_s);
  clickItem(list, 21 - 15);
  EXPECT_EQ(tip.toPlainText(), head + u"[２０] , [２２] , [２５]"_s);
}

TEST_F(ConditionPagesTest, TheTemperatureTabsPreviewBelowTheirHelp) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 4160 AND 4209");
  openTab(21);
  clickItem(the<QListWidget>(u"List_TiaojianElse"_s), 29);
  EXPECT_EQ(
      the<QPlainTextEdit>(u"Text_elseTiaojianTip"_s).toPlainText(),
      u"温度值10：指的是本期开奖的5个号码在最近号码10期中各码开出次数之和。反映的是整注号码相对于最近１０期的冷热程度。"
      u"\n\n当前取值阅览：\n\n[２９]"_s);
}

class ParityPageTest : public ConditionPagesTest {
 protected:
  QComboBox& sign(int row, int column) { return the<QComboBox>(u"Combo1_dansuang_%1"_s.arg(row * 10 + column)); }
  QCheckBox& check(int row) { return the<QCheckBox>(u"Check1_paicu_%1"_s.arg(row)); }
  QString signs(int row) {
    QString text;
    for (int column = 1; column <= 5; ++column)
      text += sign(row, column).currentText();
    return text;
  }
};

TEST_F(ParityPageTest, OpensWithThePatternOfTheNewestDraw) {
  data.addDraws(u"11031510 01 03 05 07 09\n11031511 02 03 04 07 10"_s);
  setValue(5001, 2);
  triggerMenu(u"paicu"_s);
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  EXPECT_EQ(check(0).text(), u"排除掉上一期的单双组合形式："_s);
  EXPECT_EQ(check(5).text(), u"排除掉5："_s);
  EXPECT_EQ(signs(0), u"双单双单双"_s);
  EXPECT_EQ(stretch(5001, 5005), u"01010"_s);
}

TEST_F(ParityPageTest, FillingSwitchesNothingOn) {
  const QStringList uses = data.rows("SELECT * FROM 过滤条件使用情况");
  const QStringList values = data.rows("SELECT * FROM 过滤条件");
  for (int id = 5021; id <= 5025; ++id)
    setValue(id, id % 3);
  triggerMenu(u"paicu"_s);
  EXPECT_EQ(signs(2), u"*双单*双"_s);  // 5021 leaves 2 when divided by 3
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件使用情况"), uses);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件").size(), values.size());
  EXPECT_EQ(stretch(5021, 5025), u"20120"_s);
}

TEST_F(ParityPageTest, AChoiceIsStoredAndTicksItsRow) {
  setValue(5033, 2);
  triggerMenu(u"paicu"_s);
  EXPECT_FALSE(check(3).isChecked());
  sign(3, 3).setCurrentText(u"双"_s);
  EXPECT_EQ(value(5033), 0);
  EXPECT_TRUE(check(3).isChecked());
  EXPECT_EQ(use(73), 1);
  EXPECT_EQ(use(72), 0);
  check(3).click();
  EXPECT_EQ(use(73), 0);
}

TEST_F(ParityPageTest, ATabLeadsAwayFromThePanelAlsoTheOneBefore) {
  openTab(5);
  triggerMenu(u"paicu"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  the<QLineEdit>(u"Text_findTab"_s).setText(u"跨度"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  EXPECT_TRUE(tabs.selectedItems().isEmpty());
  tabs.setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  window.selectTopTab(1);
  window.selectTopTab(2);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  clickItem(tabs, 4);
  EXPECT_FALSE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  EXPECT_TRUE(the<QWidget>(u"pic_subTiaojian_2"_s).isVisible());
}

}  // namespace

}  // namespace elevenfive
