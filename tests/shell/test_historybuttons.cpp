// The entry strip of the history page and the work that its buttons start: what is disabled meanwhile, what a fault leaves.
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class HistoryButtonsTest : public MainWindowTest {
 protected:
  /// Looks at the window again and again while its events run.
  void watch(const std::function<void()>& look) {
    QObject::connect(&poll_, &QTimer::timeout, window.get(), look);
    poll_.start(0);
  }

  void refuseWrites(const char* event, const QString& when) {
    data.store().execute("test",
                         u"CREATE TRIGGER refuse BEFORE %1 ON 历史记录 WHEN %2 BEGIN "
                         "SELECT RAISE(ABORT, 'no'); END"_s.arg(QLatin1StringView(event), when)
                             .toStdString());
  }

  static QByteArray draws(int count) {
    QByteArray text;
    for (int i = 0; i < count; ++i)
      text += QByteArray::number(11031500 + i) + (i % 2 == 0 ? " 01 02 03 04 05\r\n" : " 02 03 04 05 06\r\n");
    return text;
  }

  QString field(int i) { return the<QLineEdit>(u"TextHistory_%1"_s.arg(i)).text(); }

 private:
  QTimer poll_;
};

TEST_F(HistoryButtonsTest, AFieldSelectsItsTextWhenItGetsTheFocus) {
  open();
  for (int i = 0; i <= 5; ++i) {
    auto& entry = the<QLineEdit>(u"TextHistory_%1"_s.arg(i));
    entry.setText(u"10"_s);
    entry.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return entry.selectedText() == u"10"_s; })) << i;
  }
}

TEST_F(HistoryButtonsTest, TheMenuEntryOfTheEntryTellsWhatToDoAndGoesToTheFirstNumber) {
  open();
  window->selectTopTab(3);
  triggerMenu(u"mnu_InputKaiJian"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"请输入开奖号码,然后点击“添加记录”"_s});
  EXPECT_EQ(window->focusWidget(), &the<QLineEdit>(u"TextHistory_1"_s));
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isVisible());
}

TEST_F(HistoryButtonsTest, TheFrameOfTheDataModeBearsItsCaption) {
  open();
  QStringList captions;
  for (const QLabel* label : the<QWidget>(u"FrameHistoryMode"_s).findChildren<QLabel*>())
    captions << label->text();
  EXPECT_TRUE(captions.contains(u"数据模式"_s)) << captions.join(u'|').toStdString();
}

TEST_F(HistoryButtonsTest, ABadEntrySlidesTheStripInFromTheLeft) {
  open();
  auto& strip = the<QWidget>(u"FrameHkaijian"_s);
  auto& timer = the<QTimer>(u"TimerHuadong"_s);
  EXPECT_EQ(strip.x(), 0);
  EXPECT_FALSE(timer.isActive());
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"输入有误或不完整,请核对后重新输入!"_s});
  EXPECT_TRUE(timer.isActive());
  EXPECT_EQ(strip.x(), -strip.width());
  EXPECT_TRUE(QTest::qWaitFor([&] { return strip.x() > -strip.width(); }));
  EXPECT_LT(strip.x(), 0);
  EXPECT_EQ((strip.x() + strip.width()) % 33, 0);  // 500 twips a tick
  EXPECT_TRUE(QTest::qWaitFor([&] { return !timer.isActive(); }));
  EXPECT_EQ(strip.x(), 0);
  EXPECT_EQ(window->focusWidget(), &the<QLineEdit>(u"TextHistory_1"_s));
}

TEST_F(HistoryButtonsTest, ADrawOfAPeriodThatIsThereTakesItsRow) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11031512 07 08 09 10 11"_s);
  open();
  typeDraw(u"11031511"_s, {u"11"_s, u"10"_s, u"9"_s, u"8"_s, u"1"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  QStringList numbers;
  for (const QString& column : {u"号码1"_s, u"号码2"_s, u"号码5"_s, u"和值"_s})
    numbers << historyRows().index(1, historyRows().columnOf(column)).data().toString();
  EXPECT_EQ(numbers.join(u' '), u"1 8 11 39"_s);
  EXPECT_EQ(field(0), u"11031513"_s);
}

TEST_F(HistoryButtonsTest, AReplacedDrawShowsInTheLastHundredAndBesideTheFilterRowToo) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  const auto first = [&] { return historyRows().index(0, historyRows().columnOf(u"号码5"_s)).data().toString(); };
  triggerMenu(u"mnu_HistoryShow100"_s);
  typeDraw(u"11031510"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"6"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511"_s);
  EXPECT_EQ(first(), u"6"_s);

  triggerMenu(u"mnu_HistoryShowAll"_s);
  searchFor(u"期号"_s, u"11031510"_s);
  typeDraw(u"11031510"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"7"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511"_s);
  EXPECT_EQ(first(), u"7"_s);
}

TEST_F(HistoryButtonsTest, AStoreThatRefusesADrawIsToldOnceAndTheEntryStays) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  refuseWrites("INSERT", u"1"_s);
  typeDraw(u"11031511"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"6"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"保存开奖记录失败："_s));
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
  EXPECT_EQ(field(0) + u' ' + field(1) + u' ' + field(5), u"11031511 01 06"_s);
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
}

TEST_F(HistoryButtonsTest, ADrawThatIsStoredButCannotBeDerivedShows) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  refuseWrites("UPDATE", u"1"_s);
  typeDraw(u"11031511"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"6"_s});
  QString gridAtBox;
  QString statusAtBox;
  boxes.onShow = [&] {
    gridAtBox = shownPeriods();
    statusAtBox = the<QLabel>(u"StatusBar_3"_s).text();
  };
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(gridAtBox, u"11031510 11031511"_s);
  EXPECT_TRUE(statusAtBox.contains(u"※※※  11031512 期 于 "_s)) << statusAtBox.toStdString();
  EXPECT_EQ(field(0), u"11031511"_s);
}

TEST_F(HistoryButtonsTest, WhatAnImportStoredBeforeAFaultIsDerivedAndShownAndThenTheFaultIsToldOnce) {
  open();
  refuseWrites("INSERT", u"NEW.期号 = 11031512"_s);
  QString gridAtBox;
  boxes.onShow = [&] { gridAtBox = shownPeriods(); };
  importLines("11031510 01 02 03 04 05\r\n11031511 02 03 04 05 06\r\n11031512 03 04 05 06 07\r\n");
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"保存开奖记录失败："_s)) << ports.boxes[0].text.toStdString();
  EXPECT_EQ(gridAtBox, u"11031510 11031511"_s);
  EXPECT_EQ(data.rows("SELECT 期号, 和值 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"11031510 -"_s, u"11031511 20"_s}));
  EXPECT_EQ(field(0), u"11031512"_s);
  EXPECT_TRUE(the<QLabel>(u"StatusBar_3"_s).text().contains(u"※※※  11031512 期 于 "_s));
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
  EXPECT_FALSE(the<QPushButton>(u"CmmDaoruStop"_s).isVisible());
  EXPECT_TRUE(QTest::qWaitFor([&] { return !the<QProgressBar>(u"ProgressBar_TuBiao"_s).isVisible(); }));
}

TEST_F(HistoryButtonsTest, TheOldDrawsGoBeforeTheFileIsChosen) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  ports.answers = {Answer::yes};
  click(the<QPushButton>(u"newBtnHistory_99"_s));  // no file is chosen
  EXPECT_EQ(ports.boxTexts(), QStringList{u"原有的历史数据是否要清空？"_s});
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"0"_s});
  EXPECT_EQ(shownPeriods(), QString());
  EXPECT_EQ(field(0), QString());
  EXPECT_TRUE(the<QLabel>(u"StatusBar_3"_s).text().contains(u"※※※  0 期 于 "_s));
  ports.boxes.clear();
  window->selectTopTab(2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"之前有删除记录的操作,需要刷新数据..."_s});
}

TEST_F(HistoryButtonsTest, NothingElseStartsWhileTheOldDrawsGo) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::yes};
  boxes.onShow = [&] {
    EXPECT_FALSE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
    QTest::qWait(100);  // the next yield runs the events again
  };
  int looks = 0;
  watch([&] {
    if (data.rows("SELECT count(*) FROM 历史记录") != QStringList{u"0"_s})
      return;
    if (++looks == 1)
      the<QPushButton>(u"newBtnHistory_3"_s).click();  // a click that finds the button disabled
  });
  click(the<QPushButton>(u"newBtnHistory_99"_s));  // no file is chosen
  EXPECT_GT(looks, 0);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"原有的历史数据是否要清空？"_s});
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
}

TEST_F(HistoryButtonsTest, TheSecondPanelTellsOfTheRunningDerivationAndIsEmptyAfterIt) {
  open();
  QStringList seen;
  watch([&] {
    const QString text = the<QLabel>(u"StatusBar_2"_s).text();
    if (!text.isEmpty() && !seen.contains(text))
      seen << text;
  });
  importLines(draws(20000));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  ASSERT_FALSE(seen.isEmpty());
  for (const QString& text : seen) {
    EXPECT_TRUE(text.startsWith(u"   正在统计 110"_s)) << text.toStdString();
    EXPECT_TRUE(text.endsWith(u" 期号码的温度值。。。。。。  "_s)) << text.toStdString();
  }
  EXPECT_EQ(the<QLabel>(u"StatusBar_2"_s).text(), QString());
}

TEST_F(HistoryButtonsTest, TheEntryStripIsDisabledWhileAnImportRuns) {
  open();
  bool enabled = false;
  bool running = false;
  watch([&] {
    if (!the<QPushButton>(u"CmmDaoruStop"_s).isVisible())
      return;
    running = true;
    enabled = enabled || the<QWidget>(u"FrameHkaijian"_s).isEnabled();
  });
  importLines(draws(20000));
  EXPECT_TRUE(running);
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
}

TEST_F(HistoryButtonsTest, AnExportDisablesTheEntryStripAndOffersNoStop) {
  data.addDraws(QString::fromLatin1(draws(10000)).remove(u'\r'));
  open();
  bool running = false;
  bool stopOffered = false;
  watch([&] {
    running = running || !the<QWidget>(u"FrameHkaijian"_s).isEnabled();
    stopOffered = stopOffered || the<QPushButton>(u"CmmDaoruStop"_s).isVisible();
  });
  click(the<QPushButton>(u"cmm_Daocu"_s));
  EXPECT_TRUE(running);
  EXPECT_FALSE(stopOffered);
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
  EXPECT_EQ(texts.texts.size(), 1);
}

TEST_F(HistoryButtonsTest, AButtonThatWasDisabledMeanwhileHasTheFocusAgain) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no, Answer::no};
  for (const QString& name : {u"newBtnHistory_99"_s, u"cmm_Daocu"_s, u"newBtnHistory_3"_s}) {
    auto& button = the<QPushButton>(name);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_TRUE(button.hasFocus()) << name.toStdString();
  }
  EXPECT_EQ(texts.texts.size(), 1);  // the export was made
}

TEST_F(HistoryButtonsTest, AnExportThatCannotWriteItsFileLeavesTheStripEnabled) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  ASSERT_TRUE(QDir().mkpath(data.folders.program + u"/daocuTemp.txt"_s));
  open();
  click(the<QPushButton>(u"cmm_Daocu"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"无法写入文件 "_s)) << ports.boxes[0].text.toStdString();
  EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
  EXPECT_TRUE(texts.texts.isEmpty());
}

TEST_F(HistoryButtonsTest, TheGameChooserOpensBelowItsButtonAndKeepsTheDraws) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  auto& button = the<QPushButton>(u"newBtnHistory_7"_s);
  EXPECT_EQ(button.text(), u"下载设置"_s);
  EXPECT_EQ(button.toolTip(), u"选择彩票种类"_s);
  auto& panel = the<QWidget>(u"fraCaizongTip"_s);
  EXPECT_FALSE(panel.isVisible());
  click(button);
  EXPECT_TRUE(panel.isVisible());
  const QPoint below = button.mapTo(window.get(), QPoint(button.width() / 2, button.height()));
  EXPECT_EQ(panel.y(), below.y());
  EXPECT_GE(panel.x(), 0);
  EXPECT_LE(panel.geometry().right(), window->width());
  EXPECT_TRUE(QTest::qWaitFor([&] { return panel.height() > 100; }));
  the<QAbstractButton>(u"OptionSSC_5"_s).click();
  EXPECT_EQ(data.rows("SELECT 序号 FROM 彩票类型 WHERE 使用 <> 0"), QStringList{u"5"_s});
  click(the<QPushButton>(u"cmmCaizongOK"_s));
  EXPECT_FALSE(panel.isVisible());
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"1"_s});
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(HistoryButtonsTest, TheGameChooserGoesWithItsPage) {
  open();
  click(the<QPushButton>(u"newBtnHistory_7"_s));
  window->selectTopTab(2);
  EXPECT_FALSE(the<QWidget>(u"fraCaizongTip"_s).isVisible());
}

}  // namespace

}  // namespace elevenfive
