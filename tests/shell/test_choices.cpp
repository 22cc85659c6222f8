// The boxes and tabs of the condition pages under the wheel and the keyboard: what chooses, and what only passes by.
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>
#include <QWheelEvent>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Hears the turns of the wheel that a control passes on.
class WheelBelow final : public QObject {
 public:
  explicit WheelBelow(QWidget& below) { below.installEventFilter(this); }
  int turns = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    turns += event->type() == QEvent::Wheel ? 1 : 0;
    return false;
  }
};

class ChoicesTest : public MainWindowTest {
 protected:
  void SetUp() override {
    data.addDraws(u"11031510 01 03 05 07 09\n11031511 02 03 04 07 10"_s);
    open();
    window->selectTopTab(2);
  }

  void openTab(int tab) { the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1); }

  /// Turns the wheel by three notches over a control, and tells how many of them the widget below it saw.
  int turnsPassedOn(QWidget& control) {
    WheelBelow below(*control.parentWidget());
    for (const int angle : {120, -120, -120}) {
      QWheelEvent turn(control.rect().center(), control.mapToGlobal(control.rect().center()), {}, {0, angle},
                       Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
      QSpontaneKeyEvent::setSpontaneous(&turn);  // only what the system sends is passed on
      QCoreApplication::instance()->notify(&control, &turn);
    }
    return below.turns;
  }

  /// All that the condition pages write.
  QStringList conditions() {
    return data.rows("SELECT * FROM 过滤条件") + data.rows("SELECT * FROM 过滤条件使用情况") +
           data.rows("SELECT * FROM 号码特性") + data.rows("SELECT * FROM 自定义别名") +
           data.rows("SELECT * FROM 历史数据过滤");
  }

  QComboBox& common() { return the<QComboBox>(u"ComboZDYcyfz"_s); }
};

TEST_F(ChoicesTest, TheWheelOverABoxChoosesNothingAndGoesOnBelow) {
  struct Place {
    int tab;  ///< 0: the parity panel
    QStringView box;
  };
  constexpr Place places[] = {{22, u"ComboZDYcyfz"}, {23, u"Combo_HistoryGuoLu_0"}, {23, u"Combo_HistoryGuoLu_1"},
                              {23, u"Combo_PiPei"},  {0, u"Combo1_dansuang_11"},    {0, u"Combo1_dansuang_55"}};
  for (const Place& place : places) {
    if (place.tab == 0)
      triggerMenu(u"paicu"_s);
    else
      openTab(place.tab);
    auto& box = the<QComboBox>(place.box.toString());
    const QStringList before = conditions();
    const int index = box.currentIndex();
    EXPECT_EQ(turnsPassedOn(box), 3) << place.box.toString().toStdString();
    EXPECT_EQ(box.currentIndex(), index) << place.box.toString().toStdString();
    EXPECT_EQ(conditions(), before) << place.box.toString().toStdString();
  }
}

TEST_F(ChoicesTest, TheWheelOverTheModesChangesNoMode) {
  openTab(1);
  for (const QString& name : {u"TabStrip_Qiaqu"_s, u"TabStrip_Houqu"_s}) {
    auto& modes = the<QTabBar>(name);
    EXPECT_EQ(turnsPassedOn(modes), 3);
    EXPECT_EQ(modes.currentIndex(), 0);
  }
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(ChoicesTest, TheWheelOverTheGroupsAndThePagesTurnsNoTab) {
  openTab(22);
  for (const QString& name : {u"TabStrip_ZDYchose"_s, u"TabStrip_Top"_s}) {
    auto& tabs = the<QTabBar>(name);
    tabs.setCurrentIndex(1);
    EXPECT_EQ(turnsPassedOn(tabs), 3) << name.toStdString();
    EXPECT_EQ(tabs.currentIndex(), 1) << name.toStdString();
  }
}

TEST_F(ChoicesTest, KeysOnTheClosedCommonGroupsOpenTheListAndChangeNothing) {
  openTab(22);
  const QStringList before = conditions();
  for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End,
                        Qt::Key_Return, Qt::Key_Space}) {
    common().setFocus();
    QTest::keyClick(&common(), static_cast<Qt::Key>(key));
    EXPECT_TRUE(common().view()->isVisible()) << key;
    common().hidePopup();
    EXPECT_EQ(conditions(), before) << key;
    EXPECT_EQ(common().currentIndex(), -1) << key;
  }
}

TEST_F(ChoicesTest, KeysHeldWithCtrlAltOrMetaOnTheClosedCommonGroupsChangeNothing) {
  openTab(22);
  const QStringList before = conditions();
  for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End,
                          Qt::Key_Return, Qt::Key_1, Qt::Key_Backspace}) {
      common().setFocus();
      QTest::sendKeyEvent(QTest::Click, &common(), static_cast<Qt::Key>(key), key == Qt::Key_1 ? u"1"_s : QString(),
                          modifier);
      common().hidePopup();
      EXPECT_EQ(conditions(), before) << modifier << ' ' << key;
      EXPECT_EQ(common().currentIndex(), -1) << modifier << ' ' << key;
    }
  }
}

TEST_F(ChoicesTest, AltWithAnArrowAndF4OpenTheClosedCommonGroups) {
  openTab(22);
  struct Keys {
    Qt::Key key;
    Qt::KeyboardModifier modifier;
  };
  for (const Keys& keys :
       {Keys{Qt::Key_Up, Qt::AltModifier}, Keys{Qt::Key_Down, Qt::AltModifier}, Keys{Qt::Key_F4, Qt::NoModifier}}) {
    common().setFocus();
    QTest::keyClick(&common(), keys.key, keys.modifier);
    EXPECT_TRUE(common().view()->isVisible()) << keys.key;
    common().hidePopup();
  }
}

TEST_F(ChoicesTest, ADigitOnTheClosedCommonGroupsOpensTheListAtTheFirstEntryThatBeginsWithIt) {
  openTab(22);
  const QStringList before = conditions();
  common().setFocus();
  QTest::keyClick(&common(), Qt::Key_1);
  ASSERT_TRUE(common().view()->isVisible());
  EXPECT_EQ(common().view()->currentIndex().data().toString(), u"11031512期旧码(复码)"_s);
  common().hidePopup();
  EXPECT_EQ(conditions(), before);
}

TEST_F(ChoicesTest, TheKeyboardChoosesACommonGroupFromTheOpenList) {
  openTab(22);
  common().setFocus();
  QTest::keyClick(&common(), Qt::Key_Down);
  ASSERT_TRUE(common().view()->isVisible());
  common().view()->setCurrentIndex(common().model()->index(1, 0));
  QTest::keyClick(common().view(), Qt::Key_Return);
  EXPECT_FALSE(common().view()->isVisible());
  EXPECT_EQ(data.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1").join(u' '), u"2 4 6 8 10"_s);
  EXPECT_EQ(data.rows("SELECT 别名 FROM 自定义别名 WHERE 序号 = 1"), QStringList{u"偶数号码"_s});
}

TEST_F(ChoicesTest, TabLeavesTheClosedCommonGroups) {
  openTab(22);
  common().setFocus();
  QTest::keyClick(&common(), Qt::Key_Tab);
  EXPECT_FALSE(common().hasFocus());
  EXPECT_FALSE(common().view()->isVisible());
}

TEST_F(ChoicesTest, TheParityPanelHasAMarkedButtonBelowTheTabs) {
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0 WHERE 条件 BETWEEN 70 AND 75");
  window->selectTopTab(2);
  auto& button = the<QPushButton>(u"cmmPaicu"_s);
  EXPECT_EQ(button.toolTip(), QString());
  click(button);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
  EXPECT_TRUE(button.isChecked());
  click(button);
  EXPECT_TRUE(button.isChecked());
  the<QComboBox>(u"Combo1_dansuang_34"_s).setCurrentText(u"*"_s);
  EXPECT_EQ(button.toolTip(), u"使用中"_s);
  EXPECT_EQ(button.accessibleName(), u"排除特定的单双组合 使用中"_s);
  the<QCheckBox>(u"Check1_paicu_3"_s).click();
  EXPECT_EQ(button.toolTip(), QString());
  openTab(3);
  EXPECT_FALSE(button.isChecked());
}

TEST_F(ChoicesTest, AParityRowShowsItsSignsJoined) {
  triggerMenu(u"paicu"_s);
  EXPECT_EQ(the<QLabel>(u"Label_paicu_0"_s).text(), u"双单双单双"_s);
  the<QComboBox>(u"Combo1_dansuang_15"_s).setCurrentText(u"*"_s);
  EXPECT_EQ(the<QLabel>(u"Label_paicu_1"_s).text(), u"单单单单*"_s);
}

}  // namespace

}  // namespace elevenfive
