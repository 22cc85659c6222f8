// The panel of the zones: its buttons and texts, clearing, and the recount of the history when the first page is next shown.
#include <QCheckBox>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTabBar>
#include <QTimer>

#include "conditions/widgets/numberbutton.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView recountText = u"区间重新划分之后，各区间的开出号码个数需要重新计算。。。";

class ZonePageTest : public MainWindowTest {
 protected:
  void openZones() {
    open();
    triggerMenu(u"mnu_newQuJian"_s);
  }

  NumberButton& number(int n) { return the<NumberButton>(u"cmm_QujianHuafen_%1"_s.arg(n)); }
  void chooseZone(int k) { click(the<QRadioButton>(u"Option_QujianDingyi_%1"_s.arg(k))); }
  QStringList lines() { return the<QPlainTextEdit>(u"Text_QujianHuafen"_s).toPlainText().split(u'\n'); }
  QStringList counts() { return data.rows("SELECT 区间1, 区间2, 区间3, 区间4 FROM 历史记录 ORDER BY 期号"); }
};

TEST_F(ZonePageTest, TheMenuEntryShowsThePanelWithTheFactoryZones) {
  openZones();
  EXPECT_EQ(the<QAction>(u"mnu_newQuJian"_s).text(), u"重新划分区间..."_s);
  EXPECT_TRUE(the<QWidget>(u"Frm_Sub_5"_s).isVisible());
  EXPECT_TRUE(the<QWidget>(u"Frame_QJnumber"_s).isVisible());
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_FenQuTip"_s).isVisible());
  EXPECT_EQ(lines(), (QStringList{u" 区间1：　０１  ０２  ０３  ０４  ０５  "_s,
                                  u" 区间2：　０６  ０７  ０８  ０９  １０  １１  "_s, u" 区间3：　无号码"_s,
                                  u" 区间4：　无号码"_s, QString()}));
  EXPECT_TRUE(the<QRadioButton>(u"Option_QujianDingyi_1"_s).isChecked());
  EXPECT_EQ(number(1).text(), u"01"_s);
  EXPECT_EQ(number(11).text(), u"11"_s);
  for (int n = 1; n <= 11; ++n)
    EXPECT_EQ(number(n).backColor(), 0xC0C0C0U) << n;
}

TEST_F(ZonePageTest, AClickTakesAMemberOutOfTheCurrentZoneAndTheNextPutsItIn) {
  openZones();
  click(number(5));
  EXPECT_EQ(lines()[0], u" 区间1：　０１  ０２  ０３  ０４  "_s);
  EXPECT_EQ(number(5).backColor(), 0x8000000FU);
  chooseZone(3);
  click(number(5));
  EXPECT_EQ(lines()[2], u" 区间3：　０５  "_s);
  EXPECT_EQ(number(5).backColor(), 0xC0C0C0U);
  EXPECT_EQ(data.rows("SELECT 区间1, 区间2, 区间3, 区间4 FROM 号码特性 WHERE 号码 = 5"), QStringList{u"0 0 1 0"_s});
  click(number(5));
  EXPECT_EQ(lines()[2], u" 区间3：　无号码"_s);
}

TEST_F(ZonePageTest, ANumberInTwoZonesShowsInBothLinesAndStaysGreyInOne) {
  openZones();
  chooseZone(4);
  click(number(2));
  EXPECT_EQ(lines()[0], u" 区间1：　０１  ０２  ０３  ０４  ０５  "_s);
  EXPECT_EQ(lines()[3], u" 区间4：　０２  "_s);
  EXPECT_EQ(number(2).accessibleName(), u"号码 02 在区间1、区间4"_s);
  click(number(2));
  EXPECT_EQ(number(2).backColor(), 0xC0C0C0U);
}

TEST_F(ZonePageTest, ClearingEmptiesTheZonesBeforeItsBoxAndUnticksTheFourFilters) {
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 BETWEEN 16 AND 19");
  const QStringList values = data.rows("SELECT * FROM 过滤条件");
  openZones();
  QStringList behindTheBox;
  boxes.onShow = [&] { behindTheBox = lines(); };
  click(the<QPushButton>(u"cmm_CLSQujianHuafen"_s));
  boxes.onShow = {};
  EXPECT_EQ(ports.log, QStringList{u"plain [] 请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。"_s});
  EXPECT_EQ(behindTheBox.value(0), u" 区间1：　无号码"_s);
  for (int n = 1; n <= 11; ++n)
    EXPECT_EQ(number(n).backColor(), 0x8000000FU) << n;
  EXPECT_EQ(data.rows("SELECT SUM(区间1 + 区间2 + 区间3 + 区间4) FROM 号码特性"), QStringList{u"0"_s});
  EXPECT_EQ(data.rows("SELECT SUM(使用情况) FROM 过滤条件使用情况 WHERE 条件 BETWEEN 16 AND 19"), QStringList{u"0"_s});
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件"), values);

  click(the<QPushButton>(u"cmmQujianGuolv"_s));
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 13);
  for (int k = 1; k <= 4; ++k)
    EXPECT_FALSE(the<QCheckBox>(u"Check_useTiaojiao_%1"_s.arg(k + 3)).isChecked()) << k;
}

TEST_F(ZonePageTest, TheFirstPageRecountsTheHistoryOnceAfterAChange) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 01 02 07 08 11"_s);
  openZones();
  click(number(1));
  chooseZone(4);
  click(number(11));
  EXPECT_EQ(counts(), (QStringList{u"- - - -"_s, u"- - - -"_s}));
  window->selectTopTab(2);
  EXPECT_TRUE(ports.boxes.empty());
  bool gridBehindTheBox = false;
  boxes.onShow = [&] { gridBehindTheBox = the<GridView>(u"TDBGridHistory"_s).isVisible(); };
  window->selectTopTab(1);
  boxes.onShow = {};
  EXPECT_TRUE(gridBehindTheBox);
  EXPECT_EQ(ports.boxTexts(), QStringList{recountText.toString()});
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(counts(), (QStringList{u"4 0 0 0"_s, u"1 3 0 1"_s}));
  auto& rows = historyRows();
  EXPECT_EQ(rows.index(1, rows.columnOf(u"区间2"_s)).data().toString(), u"3"_s);
  EXPECT_TRUE(the<GridView>(u"TDBGridHistory"_s).isVisible());
  window->selectTopTab(2);
  window->selectTopTab(1);
  EXPECT_EQ(ports.boxes.size(), 1U);
}

TEST_F(ZonePageTest, WithoutDrawsThereIsNothingToRecountAfterTheBox) {
  openZones();
  click(number(1));
  window->selectTopTab(1);
  EXPECT_EQ(ports.log, QStringList{u"plain [] "_s + recountText.toString()});
  EXPECT_TRUE(the<GridView>(u"TDBGridHistory"_s).isVisible());
  EXPECT_FALSE(the<QProgressBar>(u"ProgressBar_TuBiao"_s).isVisible());
  EXPECT_TRUE(window->menuBar()->isEnabled());
  window->selectTopTab(2);
  window->selectTopTab(1);
  EXPECT_EQ(ports.boxes.size(), 1U);
}

TEST_F(ZonePageTest, ARecountShowsItsProgressInThePlaceOfTheGridAndLocksTheWindow) {
  QString draws;
  for (int i = 0; i < 400; ++i)
    draws += u"%1 01 02 03 04 05\n"_s.arg(11030101 + i);
  data.addDraws(draws);
  openZones();
  click(number(1));
  bool seen = false;
  bool gridHidden = false;
  bool locked = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    auto& bar = the<QProgressBar>(u"ProgressBar_TuBiao"_s);
    if (seen || !bar.isVisible())
      return;
    seen = bar.maximum() == 400 && bar.minimum() == 0;
    gridHidden = !the<GridView>(u"TDBGridHistory"_s).isVisible();
    locked = !window->menuBar()->isEnabled() && !the<QWidget>(u"Frm_Sub_5"_s).isEnabled() &&
             !the<QWidget>(u"Frm_Sub_1"_s).isEnabled() && !the<QWidget>(u"FrameHkaijian"_s).isEnabled();
  });
  poll.start(0);
  window->selectTopTab(1);
  EXPECT_TRUE(seen);
  EXPECT_TRUE(gridHidden);
  EXPECT_TRUE(locked);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !the<QProgressBar>(u"ProgressBar_TuBiao"_s).isVisible(); }, 2000));
  EXPECT_TRUE(window->menuBar()->isEnabled());
}

TEST_F(ZonePageTest, WhatAFormLeavesWaitsForTheEndOfLongWork) {
  QString draws;
  for (int i = 0; i < 400; ++i)
    draws += u"%1 01 02 03 04 05\n"_s.arg(11030101 + i);
  data.addDraws(draws);
  openZones();
  click(number(1));
  bool left = false;
  bool doneMeanwhile = false;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
    if (window->menuBar()->isEnabled())
      return;
    doneMeanwhile = doneMeanwhile || the<QTabBar>(u"TabStrip_Top"_s).currentIndex() != 0;
    if (!left)
      window->leaveAction(4);
    left = true;
  });
  poll.start(0);
  window->selectTopTab(1);
  poll.stop();
  QCoreApplication::processEvents();
  EXPECT_TRUE(left);
  EXPECT_FALSE(doneMeanwhile);
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 6);
  QCoreApplication::processEvents();
  window->selectTopTab(1);
  QCoreApplication::processEvents();
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 0);  // it is done once
}

TEST_F(ZonePageTest, EveryControlHasAnAccessibleName) {
  openZones();
  for (const QWidget* widget : the<QWidget>(u"Frm_Sub_5"_s).findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus)
      continue;
    EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
  }
}

TEST_F(ZonePageTest, ARecountThatFailsIsToldAndTriedAgainAtTheNextVisit) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  data.store().execute("test", "UPDATE 历史记录 SET 号码5 = 44");
  openZones();
  click(number(1));
  window->selectTopTab(1);
  ASSERT_EQ(ports.boxes.size(), 2U);
  EXPECT_EQ(ports.boxes[1].kind, BoxKind::critical);
  EXPECT_TRUE(the<GridView>(u"TDBGridHistory"_s).isVisible());
  EXPECT_TRUE(window->menuBar()->isEnabled());
  data.store().execute("test", "UPDATE 历史记录 SET 号码5 = 5");
  window->selectTopTab(1);
  EXPECT_EQ(counts(), QStringList{u"4 0 0 0"_s});
}

TEST_F(ZonePageTest, AClickOnTheSelectedTopTabLeadsBack) {
  openZones();
  auto& tabs = the<QTabBar>(u"TabStrip_Top"_s);
  ASSERT_EQ(tabs.currentIndex(), 0);
  QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(0).center());
  EXPECT_FALSE(the<QWidget>(u"Frm_Sub_5"_s).isVisible());
  EXPECT_TRUE(the<GridView>(u"TDBGridHistory"_s).isVisible());
}

TEST_F(ZonePageTest, TheTipBesideAListTellsTheNumbersOfItsZone) {
  open();
  triggerMenu(u"mnu_Tiaojian_214"_s);
  click(the<QPushButton>(u"cmm_QujianTip_2"_s));
  click(the<QPushButton>(u"cmm_QujianTip_4"_s));
  EXPECT_EQ(ports.log, (QStringList{u"plain []  区间2：　０６  ０７  ０８  ０９  １０  １１  "_s,
                                    u"plain []  区间4：　无号码"_s}));
}

}  // namespace

}  // namespace elevenfive
