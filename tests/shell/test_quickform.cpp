// The quick setup form as it is worked with: its pages, the way it leads the main window along, submitting, and what its buttons
// leave for the main window.
#include <QCheckBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>

#include "conditions/pendingaction.h"
#include "conditions/widgets/pickpage.h"
#include "conditions/widgets/quickform.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView unsetSum = u"出错！未设置[和值]的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)";
constexpr QStringView illegalSpan =
    u"出错！你设置的[跨度]的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]或者[5]是合法的)";

class QuickFormTest : public MainWindowTest {
 protected:
  void SetUp() override {
    open();
    window->selectTopTab(2);
  }

  void openForm() { click(the<QPushButton>(u"cmm_kuaisusezi"_s)); }
  QuickForm* form() { return window->findChild<QuickForm*>(u"Frm_kuaisusizi"_s); }

  QCheckBox& use(int row) { return the<QCheckBox>(u"Check_sfsy_%1"_s.arg(row)); }
  QLineEdit& text(int row) { return the<QLineEdit>(u"Text_quzifanwei_%1"_s.arg(row)); }
  QPushButton& submit() { return the<QPushButton>(u"cmm_submit"_s); }

  void type(int row, const QString& typed) {
    text(row).selectAll();
    QTest::keyClick(&text(row), Qt::Key_Delete);
    QInputMethodEvent commit;  // as an input method types Chinese signs
    commit.setCommitString(typed);
    QApplication::sendEvent(&text(row), &commit);
  }

  int tab() { return the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow() + 1; }
  int topTab() { return the<QTabBar>(u"TabStrip_Top"_s).currentIndex() + 1; }

  int conditionUse(int code) {
    return data.store().value("test", "SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = ?", code).value_or(-1);
  }

  QString allowed(int first, int last) {
    return data
        .rows(u"SELECT ID FROM 过滤条件 WHERE VALUE > 0 AND ID BETWEEN %1 AND %2 ORDER BY ID"_s.arg(first)
                  .arg(last)
                  .toUtf8()
                  .constData())
        .join(u' ');
  }

  /// Lets the main window become active after the form, as a click on it would.
  void activateWindow() {
    QApplication::setActiveWindow(form());
    QApplication::setActiveWindow(window.get());
  }

  /// Clicks a button that closes the form, and lets the main window do what it left.
  void clickAndLeave(const QString& name) {
    click(the<QPushButton>(name));
    for (int time = 0; time < 5; ++time) {
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QCoreApplication::processEvents();
    }
  }
};

TEST_F(QuickFormTest, OpensBesideTheWindowWithTheRowsOfTheStore) {
  EXPECT_EQ(the<QPushButton>(u"cmm_kuaisusezi"_s).text(), u"过滤条件快速设置"_s);
  openForm();
  ASSERT_NE(form(), nullptr);
  EXPECT_TRUE(form()->isVisible());
  EXPECT_FALSE(form()->isModal());
  EXPECT_EQ(form()->findChildren<QLineEdit*>().size(), 22);
  EXPECT_EQ(use(0).text(), u"和值"_s);
  EXPECT_TRUE(use(0).isChecked());
  EXPECT_EQ(text(0).text(), u"[19-40]"_s);
  EXPECT_EQ(text(0).toolTip(), u"和值，直接在文本框里修改然后提交就可以了。"_s);
  EXPECT_FALSE(use(21).isChecked());
  EXPECT_EQ(text(21).text(), u"[0]"_s);
  EXPECT_FALSE(submit().isEnabled());
  bool noteShown = false;
  for (const QLabel* label : form()->findChildren<QLabel*>())
    noteShown = noteShown || label->text() == u"注：点击按钮可以打开相应的详细设置页面进行设置。"_s;
  EXPECT_TRUE(noteShown);
}

TEST_F(QuickFormTest, EveryControlHasAnAccessibleName) {
  openForm();
  for (const QWidget* widget : form()->findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus)
      continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}

TEST_F(QuickFormTest, ThePageShownLastIsTakenUpWhenTheFormOpensAgain) {
  openForm();
  auto& turn = the<QPushButton>(u"Label_page"_s);
  EXPECT_EQ(turn.text(), u"下一页>"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_tj_0"_s).isVisible());
  EXPECT_FALSE(the<QWidget>(u"Frame1_tj_1"_s).isVisible());
  click(turn);
  EXPECT_EQ(turn.text(), u"<上一页"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_tj_1"_s).isVisible());
  form()->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  ASSERT_EQ(form(), nullptr);
  openForm();
  EXPECT_EQ(the<QPushButton>(u"Label_page"_s).text(), u"<上一页"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_tj_1"_s).isVisible());
}

TEST_F(QuickFormTest, ABoxWritesItsCodeAtOnceAndLeadsToItsTab) {
  struct BoxFacts {
    int row;
    int code;
    int tab;
  };
  constexpr BoxFacts facts[] = {{0, 1, 2},    {1, 2, 3},    {2, 3, 4},    {3, 43, 18},  {4, 44, 19},  {5, 9, 10},
                                {6, 4, 5},    {7, 5, 6},    {8, 46, 20},  {9, 47, 21},  {10, 7, 8},   {11, 8, 9},
                                {12, 12, 12}, {13, 13, 12}, {14, 10, 11}, {15, 11, 11}, {16, 14, 13}, {17, 15, 13},
                                {18, 16, 14}, {19, 17, 14}, {20, 18, 14}, {21, 19, 14}};
  openForm();
  for (const BoxFacts& fact : facts) {
    const bool was = use(fact.row).isChecked();
    ASSERT_EQ(conditionUse(fact.code), was ? 1 : 0) << fact.row;
    use(fact.row).click();
    EXPECT_EQ(conditionUse(fact.code), was ? 0 : 1) << fact.row;
    EXPECT_EQ(tab(), fact.tab) << fact.row;
  }
  EXPECT_FALSE(submit().isEnabled());
}

TEST_F(QuickFormTest, ATextLeadsToItsTabFromAnyPage) {
  openForm();
  window->selectTopTab(1);
  click(text(6));
  EXPECT_EQ(topTab(), 2);
  EXPECT_EQ(tab(), 5);
  QApplication::setActiveWindow(form());
  text(6).setFocus();
  QTest::keyClick(&text(6), Qt::Key_Tab);  // to the box of the next row
  QTest::keyClick(form()->focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(form()->focusWidget(), &text(7));
  EXPECT_EQ(tab(), 6);
  EXPECT_TRUE(form()->isVisible());
}

TEST_F(QuickFormTest, ABoxShowsOnThePanelBehindTheForm) {
  openForm();
  use(1).click();
  EXPECT_TRUE(the<QCheckBox>(u"Check_useTiaojiao_1"_s).isChecked());
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).item(2)->toolTip(), u"使用中"_s);
}

TEST_F(QuickFormTest, AChangedTextPaintsTheSubmitButtonUntilItIsSubmitted) {
  openForm();
  type(0, u"【20－22】，25"_s);
  EXPECT_TRUE(submit().isEnabled());
  EXPECT_EQ(submit().grab().toImage().pixelColor(6, submit().height() / 2), QColor(0xFF, 0x80, 0x00));
  EXPECT_EQ(allowed(1000, 1014), QString());  // nothing before the submit
  click(submit());
  EXPECT_EQ(ports.log, QStringList{u"info [] 条件设置完成！"_s});
  EXPECT_EQ(text(0).text(), u"[20-22]25]"_s);
  EXPECT_EQ(allowed(1000, 1065), u"1020 1021 1022 1025"_s);
  EXPECT_FALSE(submit().isEnabled());
  EXPECT_NE(submit().grab().toImage().pixelColor(6, submit().height() / 2), QColor(0xFF, 0x80, 0x00));
}

TEST_F(QuickFormTest, ASubmitShowsItsTextsBeforeTheBoxAndTheRowsOnThePanel) {
  openForm();
  click(text(0));
  type(0, u"20-22][25"_s);
  QString behindTheBox;
  boxes.onShow = [&] { behindTheBox = text(0).text(); };
  click(submit());
  boxes.onShow = {};
  EXPECT_EQ(behindTheBox, u"[20-22],[25]"_s);
  EXPECT_EQ(tab(), 2);
  auto& list = the<QListWidget>(u"List_TiaoJian"_s);
  QStringList selected;
  for (int item = 0; item < list.count(); ++item)
    if (list.item(item)->isSelected())
      selected << list.item(item)->text();
  EXPECT_EQ(selected.join(u' '), u"和值=20 和值=21 和值=22 和值=25"_s);
}

TEST_F(QuickFormTest, FaultsAreToldOneAfterAnotherAndNothingIsWritten) {
  const QStringList before = data.rows("SELECT * FROM 过滤条件");
  openForm();
  type(0, QString());
  type(6, u"[a]"_s);
  type(7, u"[3]"_s);
  click(submit());
  EXPECT_EQ(ports.boxTexts(), (QStringList{unsetSum.toString(), illegalSpan.toString()}));
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件"), before);
  EXPECT_EQ(text(0).text(), u"[]"_s);
  EXPECT_TRUE(submit().isEnabled());
}

TEST_F(QuickFormTest, EnterSubmitsAndPressesNoOtherButton) {
  openForm();
  QTest::keyClick(&text(0), Qt::Key_Return);
  EXPECT_TRUE(form()->isVisible());
  EXPECT_TRUE(ports.log.isEmpty());
  type(0, u"[30]"_s);
  QTest::keyClick(&text(0), Qt::Key_Return);
  EXPECT_EQ(allowed(1000, 1065), u"1030"_s);
}

TEST_F(QuickFormTest, ATextOfTenThousandCharactersWithForeignBracketsAndDigitsIsRefusedWhole) {
  openForm();
  QString typed;
  const QString odd = u"［］〔〕「」『』〖〗｛｝()⟦⟧１２３٣४"_s;
  while (typed.size() < 10000)
    typed += odd;
  text(6).setText(typed);
  text(0).setFocus();
  type(0, u"[30]"_s);
  click(submit());
  EXPECT_EQ(ports.boxTexts(), QStringList{illegalSpan.toString()});
  EXPECT_EQ(allowed(1000, 1021), u"1019 1020 1021"_s);
}

TEST_F(QuickFormTest, TheHelpShowsItsFourExamples) {
  openForm();
  click(the<QPushButton>(u"cmmHow"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(the<QLabel>(u"Text_juli"_s).text(), ports.boxes[0].text);
  EXPECT_FALSE(the<QLabel>(u"Text_juli"_s).isVisible());
  for (const QString& part :
       {u"[20-39],[41-44],[46-60]"_s, u"[8]"_s, u"[1],[2],[3],[4],[5]"_s, u"[1-5]"_s, u"[20-60]"_s})
    EXPECT_TRUE(ports.boxes[0].text.contains(part)) << part.toStdString();
}

TEST_F(QuickFormTest, IsOutOfSightWhileTheMainWindowIsActiveAndKeepsWhatWasTyped) {
  openForm();
  type(0, u"[30]"_s);
  QPointer<QuickForm> same = form();
  activateWindow();
  EXPECT_FALSE(form()->isVisible());
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 3307) WHERE ID BETWEEN 3300 AND 3340");
  openForm();
  EXPECT_EQ(form(), same);
  EXPECT_TRUE(form()->isVisible());
  EXPECT_EQ(text(0).text(), u"[30]"_s);  // typed, not submitted
  EXPECT_EQ(text(6).text(), u"[7]"_s);   // as the panel has it meanwhile
  EXPECT_TRUE(submit().isEnabled());
}

TEST_F(QuickFormTest, WhatAButtonLeavesIsDoneWhenTheMainWindowBecomesActive) {
  openForm();
  QApplication::setActiveWindow(form());
  ASSERT_FALSE(window->isActiveWindow());
  QList<bool> active;
  QObject::connect(&the<QListWidget>(u"TabStrip_TiaoJian"_s), &QListWidget::currentRowChanged, window.get(),
                   [&] { active << window->isActiveWindow(); });
  click(the<QPushButton>(u"cmmQitatj_0"_s));
  EXPECT_TRUE(active.isEmpty());
  for (int time = 0; time < 10; ++time)  // no time passes
    QCoreApplication::processEvents();
  EXPECT_EQ(tab(), 7);
  EXPECT_EQ(active, QList<bool>{true});
  window->selectTopTab(3);
  activateWindow();
  QTest::qWait(600);
  EXPECT_EQ(topTab(), 3);  // it is done once
}

TEST_F(QuickFormTest, WhatAFormLeavesIsDoneAfterAWhileWhereTheDesktopKeepsTheWindowInactive) {
  window->hide();  // such a window never becomes active
  ASSERT_FALSE(window->isActiveWindow());
  window->leaveAction(4);
  QCoreApplication::processEvents();
  EXPECT_EQ(tab(), 1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return tab() == 7; }, 5000));
}

TEST_F(QuickFormTest, WhatAFormLeavesIsForgottenOnceTheDataGoes) {
  window->leaveAction(4);
  window->releaseData();
  activateWindow();
  QTest::qWait(600);
  EXPECT_EQ(tab(), 1);
}

TEST_F(QuickFormTest, AnotherUserDoesNotFindWhatWasTyped) {
  openForm();
  type(0, u"[30]"_s);
  window->setSwitchUser([] { return UserSwitch::done; });
  triggerMenu(u"mnu_UserQiehuan"_s);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(form(), nullptr);
}

TEST_F(QuickFormTest, TheButtonsOfOtherConditionsLeadToTheTabsThatTheyAreBoundTo) {
  struct ButtonFacts {
    int index;
    QStringView caption;
    int tab;
  };
  constexpr ButtonFacts facts[] = {
      {0, u"连号设置...", 7},        {1, u"头数形式...", 17},  {2, u"尾数形式...", 16},  {3, u"间距七...", 18},
      {4, u"间距九...", 17},         {5, u"间距十一...", 19},  {6, u"间距十二...", 20},  {7, u"历史数据过滤...", 23},
      {8, u"自定义过滤条件...", 22}, {10, u"缩水设置...", 24}, {11, u"定位过滤...", 15},
  };
  for (const ButtonFacts& fact : facts) {
    window->selectTopTab(1);
    window->selectTopTab(2);
    openForm();
    const QString name = u"cmmQitatj_%1"_s.arg(fact.index);
    EXPECT_EQ(the<QPushButton>(name).text(), fact.caption.toString());
    window->selectTopTab(3);
    clickAndLeave(name);
    EXPECT_EQ(form(), nullptr) << fact.index;
    EXPECT_EQ(topTab(), 2) << fact.index;
    EXPECT_EQ(tab(), fact.tab) << fact.index;
  }
}

TEST_F(QuickFormTest, TheParityButtonOpensThePanel) {
  openForm();
  EXPECT_EQ(the<QPushButton>(u"cmmQitatj_9"_s).text(), u"排除特定单双组合"_s);
  clickAndLeave(u"cmmQitatj_9"_s);
  EXPECT_TRUE(the<QWidget>(u"Frame1_pcMain"_s).isVisible());
}

TEST_F(QuickFormTest, ExportImportAndRestoreRunOnceTheMainWindowIsBack) {
  const QString path = data.folders.program + u"/set.Vorex"_s;
  openForm();
  EXPECT_EQ(the<QPushButton>(u"cmmDaocutj_0"_s).text(), u"导出..."_s);
  EXPECT_EQ(the<QPushButton>(u"cmmDaocutj_1"_s).text(), u"导入..."_s);
  EXPECT_EQ(the<QPushButton>(u"cmmDaocutj_2"_s).text(), u"所有条件全部还原为默认值"_s);
  files.paths = {path};
  clickAndLeave(u"cmmDaocutj_0"_s);
  EXPECT_EQ(ports.boxTexts().last(), u"导出完成！"_s);
  openForm();
  clickAndLeave(u"cmmDaocutj_2"_s);
  EXPECT_EQ(ports.boxTexts().last(), u"全部过滤条件已还原为默认值！"_s);
  openForm();
  files.paths = {path};
  clickAndLeave(u"cmmDaocutj_1"_s);
  EXPECT_EQ(ports.boxTexts().last(), u"导入完成！"_s);
  EXPECT_EQ(ports.boxes.size(), 3U);
  EXPECT_EQ(tab(), 1);
}

}  // namespace

}  // namespace elevenfive
