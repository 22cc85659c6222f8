#include "shell/widgets/mainwindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QTabBar>
#include <QTimer>
#include <functional>

#include "conditions/widgets/pickpage.h"
#include "model/widgets/gridview.h"
#include "shell/widgets/standardtexts.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

TEST_F(MainWindowTest, ThreeTabsBearTheirCaptions) {
  open();
  auto& tabs = the<QTabBar>(u"TabStrip_Top"_s);
  ASSERT_EQ(tabs.count(), 3);
  EXPECT_EQ(tabs.tabText(0), u" 历史开奖数据 "_s);
  EXPECT_EQ(tabs.tabText(1), u" 设置过滤条件 "_s);
  EXPECT_EQ(tabs.tabText(2), u" 生成投注号码 "_s);
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).count(), 25);
}

TEST_F(MainWindowTest, EveryControlThatTakesTheFocusHasAnAccessibleName) {
  open();
  for (int tab = 1; tab <= 3; ++tab) {
    window->selectTopTab(tab);
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
      if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus)
        continue;
      EXPECT_FALSE(widget->accessibleName().isEmpty())
          << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
    }
  }
}

TEST_F(MainWindowTest, OnePeriodIsDeletedOnRequest) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  ports.typed = {u"11031511"_s};
  click(the<QPushButton>(u"cmm_scls"_s));
  EXPECT_EQ(ports.log.mid(0, 2),
            (QStringList{u"ask [请输入期号] 您要删除哪期的记录？ = 11031511"_s, u"plain [] 删除完成！"_s}));
  EXPECT_EQ(the<GridView>(u"TDBGridHistory"_s).rows().rowCount(), 1);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"11031511"_s);

  ports.log.clear();
  ports.typed = {u"99"_s};
  click(the<QPushButton>(u"cmm_scls"_s));
  EXPECT_EQ(ports.log.last(), u"plain [删除失败] 无法完成，历史记录表格中没有该期记录！"_s);
}

TEST_F(MainWindowTest, AfterADeletionTheConditionTabTellsItOnce) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.typed = {u"11031510"_s};
  click(the<QPushButton>(u"cmm_scls"_s));
  ports.boxes.clear();
  window->selectTopTab(2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"之前有删除记录的操作,需要刷新数据..."_s});
  window->selectTopTab(1);
  window->selectTopTab(2);
  EXPECT_EQ(ports.boxes.size(), 1U);
}

TEST_F(MainWindowTest, EachMainTabCountsThePicksAnew) {
  open();
  for (const int tab : {1, 3, 2}) {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID <= 5 + ?) WHERE ID <= 11", tab);
    window->selectTopTab(tab);
    const QString combinations[] = {u"６"_s, u"２１"_s, u"５６"_s};
    EXPECT_TRUE(the<QPlainTextEdit>(u"Text_ChoseNumberTip"_s)
                    .toPlainText()
                    .contains(u"全部号码组合： %1  注"_s.arg(combinations[tab - 1])))
        << tab;
  }
}

TEST_F(MainWindowTest, ClearingAsksFirst) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no, Answer::yes};
  click(the<QPushButton>(u"newBtnHistory_3"_s));
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"1"_s});
  click(the<QPushButton>(u"newBtnHistory_3"_s));
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"0"_s});
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"确定要清空所有的历史记录吗？"_s, u"确定要清空所有的历史记录吗？"_s}));
}

TEST_F(MainWindowTest, AClearedHistoryShowsNowhereAndCountsAsDeleted) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  ASSERT_EQ(historyRows().rowCount(), 2);
  ASSERT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"11031512"_s);
  ports.answers = {Answer::yes};
  click(the<QPushButton>(u"newBtnHistory_3"_s));
  EXPECT_EQ(historyRows().rowCount(), 0);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), QString());
  EXPECT_TRUE(the<QLabel>(u"StatusBar_3"_s).text().contains(u"※※※  0 期 于 "_s));
  ports.boxes.clear();
  window->selectTopTab(2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"之前有删除记录的操作,需要刷新数据..."_s});
}

TEST_F(MainWindowTest, AHistoryThatWasNotClearedCountsAsKept) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no};
  click(the<QPushButton>(u"newBtnHistory_3"_s));
  EXPECT_EQ(historyRows().rowCount(), 1);
  ports.boxes.clear();
  window->selectTopTab(2);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(MainWindowTest, AnImportAsksAboutTheOldDrawsAndACancelledDialogImportsNothing) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no};
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"原有的历史数据是否要清空？"_s});
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"1"_s});
}

TEST_F(MainWindowTest, AnExportShowsItsText) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 07 08 09 10 11"_s);
  open();
  click(the<QPushButton>(u"cmm_Daocu"_s));
  EXPECT_EQ(texts.texts, QStringList{u"11031510 01 02 03 04 05\n11031511 07 08 09 10 11\n"_s});
}

TEST_F(MainWindowTest, AnEmptyHistoryExportsToNoEditor) {
  open();
  click(the<QPushButton>(u"cmm_Daocu"_s));
  EXPECT_TRUE(texts.texts.isEmpty());
}

TEST_F(MainWindowTest, PickButtonsBearTheColoursOfTheirState) {
  data.store().execute("test",
                       "UPDATE 过滤条件 SET VALUE = CASE ID WHEN 1 THEN 0 WHEN 2 THEN 1 ELSE 2 END WHERE ID < 4");
  open();
  window->selectTopTab(2);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_1"_s).backColor(), 0x8000000FU);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_2"_s).backColor(), 49152U);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_3"_s).backColor(), 192U);
  const QImage picture = the<PickButton>(u"cmm_C7_3"_s).grab().toImage();
  EXPECT_EQ(picture.pixelColor(picture.width() / 2, 10), QColor(192, 0, 0));
}

TEST_F(MainWindowTest, TheMachinePickShowsTicketsAndChangesNoPick) {
  open();
  window->selectTopTab(2);
  const QStringList picks = data.rows("SELECT VALUE FROM 过滤条件 WHERE ID <= 11");
  ports.typed = {u"9"_s};
  QStringList tickets;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    QWidget* form = QApplication::activeModalWidget();
    if (form == nullptr || control<QWidget>(*form, u"Picture1_1"_s).accessibleName().isEmpty())  // not drawn yet
      return;
    poll.stop();
    for (int place = 1; place <= 9; ++place)
      if (const auto* ticket = form->findChild<QWidget*>(u"Picture1_%1"_s.arg(place)))
        tickets << ticket->accessibleName();
    click(control<QPushButton>(*form, u"cmdOK"_s));
  });
  poll.start(0);
  click(the<QPushButton>(u"cmm_jixuan"_s));
  ASSERT_EQ(tickets.size(), 5);  // the most that are shown
  for (const QString& ticket : tickets) {
    const QStringList numbers = ticket.split(u' ');
    EXPECT_EQ(QSet<QString>(numbers.begin(), numbers.end()).size(), 5) << ticket.toStdString();
  }
  EXPECT_EQ(data.rows("SELECT VALUE FROM 过滤条件 WHERE ID <= 11"), picks);

  ports.typed = {u"0"_s};
  click(the<QPushButton>(u"cmm_jixuan"_s));  // no form, or this would wait for it
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(MainWindowTest, TheSwitchFollowsItsTab) {
  open();
  window->selectTopTab(2);
  auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  for (const auto& [tab, code] : {std::pair{2, 1}, {5, 4}, {10, 9}, {16, 37}, {21, 47}}) {
    data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0 WHERE 条件 = ?", code);
    tabs.setCurrentRow(tab - 1);
    auto& use = the<QCheckBox>(tab <= 10 ? u"Check_useTiaojiao_1"_s : u"Check_useTiaojiao_else"_s);
    EXPECT_FALSE(use.isChecked());
    use.click();
    EXPECT_EQ(data.store().value("test", "SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = ?", code), 1);
  }
}

TEST_F(MainWindowTest, MenuEntriesLeadToTheirTab) {
  open();
  triggerMenu(u"mnu_Tiaojian_105"_s);
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 4);
  EXPECT_FALSE(the<QMenu>(u"mnu_User"_s).menuAction()->isVisible());
}

TEST_F(MainWindowTest, ARunFromTheMenuAsksLikeItsButton) {
  open();
  ports.typed = {u"11031512"_s};
  triggerMenu(u"mnu_ShengCeng_0"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"初始化选号完成!共 ４６２ 注！"_s});
  EXPECT_EQ(the<GridView>(u"TDBGrid_RZ"_s).rows().rowCount(), 462);
}

TEST_F(MainWindowTest, AfterACheckNumbersNotDrawnKeepTwoDigitsUntilTheGridIsReadAgain) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.typed = {u"11031510"_s, u"11031510"_s};
  window->selectTopTab(3);
  auto& grid = the<GridView>(u"TDBGrid_RZ"_s);
  const int rowHeight = grid.verticalHeader()->defaultSectionSize();
  click(the<QPushButton>(u"cmmTouZhu_0"_s));
  click(the<QPushButton>(u"cmmTouZhu_6"_s));
  EXPECT_EQ(grid.verticalHeader()->defaultSectionSize(), grid.fontMetrics().height() * 27 / 16);
  EXPECT_EQ(grid.balls().displayText(8, QLocale::c()), u"08"_s);
  EXPECT_EQ(grid.balls().displayText(11, QLocale::c()), u"11"_s);
  EXPECT_EQ(grid.balls().displayText(12, QLocale::c()), u"12"_s);  // no number of the game: as it stands
  window->selectTopTab(3);
  EXPECT_EQ(grid.verticalHeader()->defaultSectionSize(), rowHeight);
}

TEST_F(MainWindowTest, AQuestionThatDeletesSaysSo) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no, Answer::no};
  click(the<QPushButton>(u"newBtnHistory_3"_s));
  window->selectTopTab(3);
  click(the<QPushButton>(u"cmmTouZhu_5"_s));
  ASSERT_EQ(ports.boxTexts(), (QStringList{u"确定要清空所有的历史记录吗？"_s, u"确认要删除全部记录吗？"_s}));
  EXPECT_TRUE(ports.boxes[0].destructive);
  EXPECT_TRUE(ports.boxes[1].destructive);
}

TEST_F(MainWindowTest, TheTextsOfTheToolkitAreChinese) {
  ASSERT_TRUE(useChineseStandardTexts());
  QLineEdit line;
  const std::unique_ptr<QMenu> menu(line.createStandardContextMenu());
  ASSERT_FALSE(menu->isEmpty());
  for (const QAction* action : menu->actions())
    EXPECT_TRUE(action->isSeparator() || action->text().at(0).unicode() > 0x2E80) << action->text().toStdString();
}

TEST_F(MainWindowTest, AFaultInARunBecomesOneCriticalBoxAndThePanelIsUsableAgain) {
  open();
  window->selectTopTab(3);
  data.store().execute("test", "DROP TABLE 日志表");
  ports.typed = {u"11031512"_s};
  click(the<QPushButton>(u"cmmTouZhu_0"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
  EXPECT_TRUE(window->menuBar()->isEnabled());
}

TEST_F(MainWindowTest, NothingElseCanStartDuringARunAndTheStopButtonEndsIt) {
  open();
  window->selectTopTab(3);
  bool otherPanelsOff = false;
  bool stopWasOn = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    auto& stop = the<QPushButton>(u"cmm_stop"_s);
    if (!stop.isEnabled())
      return;
    stopWasOn = true;
    otherPanelsOff = !the<QWidget>(u"Pic_subTouZhu"_s).isEnabled() && !the<QWidget>(u"FrameHkaijian"_s).isEnabled() &&
                     !the<QWidget>(u"FrameHistoryMode"_s).isEnabled() && !window->menuBar()->isEnabled() &&
                     !the<QWidget>(u"Frm_Sub_1"_s).isEnabled();
    click(stop);
    poll.stop();
  });
  poll.start(0);
  ports.typed = {u"11031512"_s};
  click(the<QPushButton>(u"cmmTouZhu_0"_s));
  EXPECT_TRUE(stopWasOn);
  EXPECT_TRUE(otherPanelsOff);
  EXPECT_TRUE(ports.boxes.empty());  // a stopped expansion says nothing
  EXPECT_LT(data.store().value("test", "SELECT count(*) FROM 日志表").value_or(-1), 462);
  EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
  EXPECT_TRUE(window->menuBar()->isEnabled());
}

TEST_F(MainWindowTest, AStopClickThatSpansTwoStagesEndsTheRun) {
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = (条件 <= 19)");
  open();
  window->selectTopTab(3);
  ports.typed = {u"11031512"_s};
  click(the<QPushButton>(u"cmmTouZhu_0"_s));
  auto& stop = the<QPushButton>(u"cmm_stop"_s);
  auto& status = the<QPlainTextEdit>(u"TextChaoZuoTip"_s);
  const auto stagesDone = [&] { return status.toPlainText().count(u"过滤后余"_s); };
  qsizetype pressedAfter = -1;
  qsizetype releasedAfter = -1;
  bool keptTheFocus = true;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    if (pressedAfter < 0 && stop.isEnabled()) {
      stop.setFocus();
      QTest::mousePress(&stop, Qt::LeftButton);
      pressedAfter = stagesDone();
    } else if (pressedAfter >= 0 && releasedAfter < 0) {
      keptTheFocus = keptTheFocus && window->focusWidget() == &stop;
      if (stagesDone() == pressedAfter)
        return;
      releasedAfter = stagesDone();
      QTest::mouseRelease(&stop, Qt::LeftButton);
    }
  });
  poll.start(0);
  ports.typed.clear();
  click(the<QPushButton>(u"cmmTouZhu_1"_s));
  poll.stop();
  EXPECT_GE(pressedAfter, 0);
  EXPECT_GT(releasedAfter, pressedAfter);
  EXPECT_TRUE(keptTheFocus);
  EXPECT_TRUE(status.toPlainText().contains(u"用户中止,当前记录余："_s)) << status.toPlainText().toStdString();
  EXPECT_FALSE(stop.isEnabled());
}

TEST_F(MainWindowTest, APickingPageShownByARunIsFilledWhenTheRunEnds) {
  open();
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 3) WHERE ID <= 11");
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = (条件 = 1)");
  ports.typed = {u"11031512"_s};
  triggerMenu(u"mnu_ShengCeng_0"_s);
  ASSERT_EQ(ports.boxTexts(), QStringList{u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s});
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_3"_s).backColor(), 49152U);
  EXPECT_EQ(the<PickButton>(u"cmm_C7_4"_s).backColor(), 0x8000000FU);
  const auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
  EXPECT_EQ(tabs.item(1)->toolTip(), u"使用中"_s);
  EXPECT_EQ(tabs.item(2)->toolTip(), QString());
}

TEST_F(MainWindowTest, ClosingDuringALongImportStopsItFirst) {
  open();
  const QString path = data.folders.program + u"/long.txt"_s;
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 100000; ++i)
      file.write(QByteArray::number(11000000 + i) + " 01 02 03 04 05\r\n");
  }
  files.paths = {path};
  QTimer::singleShot(60, window.get(), [&] {
    window->close();
    EXPECT_TRUE(window->isVisible());  // not while the import runs
    EXPECT_FALSE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
    EXPECT_FALSE(the<QWidget>(u"FrameHistoryMode"_s).isEnabled());
  });
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  const int imported = data.store().value("test", "SELECT count(*) FROM 历史记录").value_or(-1);
  EXPECT_GE(imported, 0);  // a slow machine may still be counting the lines
  EXPECT_LT(imported, 100000);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
  EXPECT_EQ(ports.boxTexts().last(), u"确认要退出吗？"_s);
}

TEST_F(MainWindowTest, ARefusedCloseKeepsTheWindow) {
  open();
  ports.answers = {Answer::no};
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要退出吗？"_s});
}

TEST_F(MainWindowTest, TheStatusLineTellsTheNextPeriod) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  const QString today = QDate::currentDate().toString(u"yyyy-MM-dd"_s);
  EXPECT_EQ(the<QLabel>(u"StatusBar_3"_s).text(),
            u"     ※※※  11031511 期 于 %1 开奖     今天是： %1  ※※※     "_s.arg(today));
  EXPECT_EQ(the<QLabel>(u"StatusBar_1"_s).text(), u"  ☆☆☆  历史记录： 已更新！  ☆☆☆  "_s);
}

}  // namespace

}  // namespace elevenfive
