// The history page: typing draws in, showing, deleting and searching them.
#include <QImage>
#include <QLabel>
#include <QRadioButton>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class HistoryPageTest : public MainWindowTest {};

TEST_F(HistoryPageTest, TheHistoryGridHidesItsColumnsAndTintsThePeriod) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  for (const QString& column : {u"已完成"_s, u"总期号"_s, u"遗漏数据"_s, u"开奖日期"_s, u"间距七"_s, u"间距九"_s,
                                u"间距十一"_s, u"间距十二"_s, u"遗漏值总和"_s})
    EXPECT_TRUE(hidden(u"TDBGridHistory"_s, column)) << column.toStdString();
  for (const QString& column : {u"期号"_s, u"号码1"_s, u"和值"_s, u"温度值10"_s, u"自定义组10"_s})
    EXPECT_FALSE(hidden(u"TDBGridHistory"_s, column)) << column.toStdString();

  auto& grid = the<GridView>(u"TDBGridHistory"_s);
  const QImage picture = grid.viewport()->grab().toImage();
  const QRect cell = grid.visualRect(grid.rows().index(0, 0));
  EXPECT_EQ(picture.pixelColor(cell.topLeft() + QPoint(2, 2)), QColor(0xFF, 0xFF, 0xC0));
}

TEST_F(HistoryPageTest, ADrawTypedInIsSortedStoredAndShown) {
  open();
  typeDraw(u"11031510"_s, {u"03"_s, u"01"_s, u"02"_s, u"05"_s, u"04"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(data.rows("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 和值, 已完成 FROM 历史记录"),
            QStringList{u"11031510 1 2 3 4 5 15 Y"_s});
  EXPECT_EQ(the<GridView>(u"TDBGridHistory"_s).rows().rowCount(), 1);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"11031511"_s);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_3"_s).text(), QString());
}

TEST_F(HistoryPageTest, EnterInTheLastFieldAddsTheDraw) {
  open();
  typeDraw(u"11031510"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s});
  QTest::keyClick(&the<QLineEdit>(u"TextHistory_5"_s), Qt::Key_Return);
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"1"_s});
}

TEST_F(HistoryPageTest, ABadEntryIsRefusedAndItsNumbersComeBackSorted) {
  open();
  typeDraw(QString(), {u"03"_s, u"01"_s, u"02"_s, u"05"_s, u"04"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(ports.log.last(), u"critical [] 输入有误或不完整,请核对后重新输入!"_s);
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(the<QLineEdit>(u"TextHistory_%1"_s.arg(i)).text(), u"0%1"_s.arg(i));
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"0"_s});
}

TEST_F(HistoryPageTest, EntryFieldsDropWhatIsNoDigit) {
  open();
  auto& field = the<QLineEdit>(u"TextHistory_1"_s);
  QTest::keyClicks(&field, u"a1-x2"_s);
  EXPECT_EQ(field.text(), u"12"_s);
}

TEST_F(HistoryPageTest, TheLastHundredOrAllPeriodsShow) {
  QString lines;
  for (int i = 1; i <= 120; ++i)
    lines += u"%1 01 02 03 04 05\n"_s.arg(11031500 + i);
  data.addDraws(lines);
  open();
  auto& rows = the<GridView>(u"TDBGridHistory"_s).rows();
  EXPECT_EQ(rows.rowCount(), 120);
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  EXPECT_EQ(rows.rowCount(), 100);
  EXPECT_EQ(rows.keyOf(0), 11031521);
  triggerMenu(u"mnu_HistoryShowAll"_s);
  EXPECT_EQ(rows.rowCount(), 120);
  triggerMenu(u"mnu_HistoryShow100"_s);
  EXPECT_EQ(rows.rowCount(), 100);
}

TEST_F(HistoryPageTest, FewerThanAHundredPeriodsAllShowAsTheLastHundred) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11031601 02 03 04 05 07"_s);
  open();
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031601"_s);
}

TEST_F(HistoryPageTest, AnEmptyHistoryShowsNoLastHundred) {
  open();
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  EXPECT_EQ(historyRows().rowCount(), 0);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(HistoryPageTest, AHistoryThatCannotBeOpenedIsToldInOneInformationBox) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  data.store().execute("test", "DROP TABLE 历史记录");
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::information);
  EXPECT_TRUE(ports.boxes[0].text.endsWith(u"(文件丢失,需要重新安装!)"_s));
  EXPECT_GT(ports.boxes[0].text.size(), u"(文件丢失,需要重新安装!)"_s.size());
  EXPECT_EQ(historyRows().rowCount(), 0);
}

TEST_F(HistoryPageTest, ThePeriodFieldTakesTenDigits) {
  open();
  importLines("1999999999 01 02 03 04 05\r\n");
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"2000000000"_s);
}

TEST_F(HistoryPageTest, TheProgressOfAnImportShowsThePlainLineCount) {
  open();
  importLines("11031510 01 02 03 04 05\r\n11031511 02 03 04 05 06\r\nbad\r\n");
  EXPECT_EQ(the<QLabel>(u"Label_jindu_0"_s).text(), u"3"_s);
  EXPECT_EQ(the<QLabel>(u"Label_jindu_1"_s).text(), u"3"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
}

TEST_F(HistoryPageTest, ADeletedPeriodIsOutOfTheGridBeforeTheBoxAndTheStatusLineFollows) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  ports.typed = {u"11031511"_s};
  QString gridAtBox;
  QString statusAtBox;
  boxes.onShow = [&] {
    gridAtBox = shownPeriods();
    statusAtBox = the<QLabel>(u"StatusBar_3"_s).text();
  };
  click(the<QPushButton>(u"cmm_scls"_s));
  EXPECT_EQ(gridAtBox, u"11031510"_s);
  EXPECT_TRUE(statusAtBox.contains(u"※※※  11031512 期 于 "_s));
  EXPECT_TRUE(the<QLabel>(u"StatusBar_3"_s).text().contains(u"※※※  11031511 期 于 "_s));
}

TEST_F(HistoryPageTest, ImportedDrawsAreInTheGridBeforeTheBox) {
  open();
  QTemporaryDir folder;
  QFile file(folder.filePath(u"draws.txt"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("11031510 01 02 03 04 05\r\n11031511 02 03 04 05 06\r\n");
  file.close();
  files.paths = {file.fileName()};
  QString gridAtBox;
  boxes.onShow = [&] { gridAtBox = shownPeriods(); };
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  EXPECT_EQ(gridAtBox, u"11031510 11031511"_s);
}

TEST_F(HistoryPageTest, ASearchComparesByPrefixAndTakesSignsAsTheyStand) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11041510 02 03 04 05 07"_s);
  open();
  click(the<QPushButton>(u"CmmSousuo"_s));
  auto& begin = the<QPushButton>(u"filterBegin"_s);
  EXPECT_FALSE(begin.isEnabled());
  auto& field = the<QLineEdit>(u"filter_期号"_s);
  QTest::keyClicks(&field, u"1103"_s);
  EXPECT_EQ(ports.boxTexts(),
            (QStringList{u"请在表格中最顶一行空白处相应项目栏输入条件值，然后点击“搜索”按钮！"_s,
                         u"通过输入相应项目的值(允许只输入一个或者多个条件)来搜索符合条件的记录!"_s}));
  click(begin);
  EXPECT_EQ(the<GridView>(u"TDBGridHistory"_s).rows().rowCount(), 2);

  field.clear();
  QTest::keyClicks(&field, u"1%1' OR 1=1; --_"_s);  // finds nothing, so everything shows again
  click(begin);
  EXPECT_EQ(the<GridView>(u"TDBGridHistory"_s).rows().rowCount(), 3);
  EXPECT_TRUE(the<QRadioButton>(u"OptionHistoryMode_0"_s).isChecked());
  EXPECT_FALSE(field.isVisible());  // the filter row is gone, as by cmdClearFilter
  EXPECT_EQ(field.text(), QString());
  EXPECT_FALSE(begin.isVisible());
  EXPECT_EQ(data.rows("SELECT count(*) FROM 历史记录"), QStringList{u"3"_s});
}

TEST_F(HistoryPageTest, ASearchFindsNumbersAsTheyAreShown) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11031512 10 02 03 04 05"_s);
  open();
  searchFor(u"号码1"_s, u"01"_s);
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
}

TEST_F(HistoryPageTest, ASearchForASumIsAPrefix) {
  open();
  importLines(
      "11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11031512 07 08 09 10 11\n11031513 02 03 04 06 07\n"
      "11031514 01 02 03 05 01\n");
  searchFor(u"和值"_s, u"2"_s);  // sums from the second draw on: 20, 45, 22, and 18 with the 07 of the draw before
  EXPECT_EQ(shownPeriods(), u"11031511 11031513"_s);
}

TEST_F(HistoryPageTest, AnEmptySearchGivesTheTableWhole) {
  data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06"_s);
  open();
  searchFor(u"期号"_s, u"11031511"_s);
  EXPECT_EQ(shownPeriods(), u"11031511"_s);
  searchFor(u"期号"_s, u" "_s);
  EXPECT_EQ(shownPeriods(), u"11031510 11031511"_s);
}

TEST_F(HistoryPageTest, TheSearchButtonIsEnabledAfterTheBoxOfTheFirstChangeIsGone) {
  open();
  click(the<QPushButton>(u"CmmSousuo"_s));
  auto& begin = the<QPushButton>(u"filterBegin"_s);
  bool enabledAtBox = true;
  boxes.onShow = [&] { enabledAtBox = begin.isEnabled(); };
  QTest::keyClicks(&the<QLineEdit>(u"filter_期号"_s), u"1"_s);
  EXPECT_FALSE(enabledAtBox);
  EXPECT_TRUE(begin.isEnabled());
}

}  // namespace

}  // namespace elevenfive
