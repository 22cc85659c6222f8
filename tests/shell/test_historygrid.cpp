// The grid of the history page: balls, cells typed over in place, and the row of fields that searches it.
#include <QLabel>
#include <QRadioButton>

#include "model/widgets/ball.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class HistoryGridTest : public MainWindowTest {
 protected:
  GridView& grid() { return the<GridView>(u"TDBGridHistory"_s); }
  QModelIndex cell(int row, const QString& column) { return historyRows().index(row, historyRows().columnOf(column)); }

  QLineEdit* openField() {
    const auto fields = grid().viewport()->findChildren<QLineEdit*>();
    return fields.isEmpty() ? nullptr : fields.constLast();
  }

  void openWithThreeDraws() {
    data.addDraws(u"11031510 01 02 03 04 05\n11031511 02 03 04 05 06\n11031512 07 08 09 10 11"_s);
    open();
  }

  /// Types over a cell as a person does with F2 and Enter.
  void typeOver(int row, const QString& column, const QString& text) {
    grid().scrollTo(cell(row, column));
    grid().setCurrentIndex(cell(row, column));
    QTest::keyClick(&grid(), Qt::Key_F2);
    QLineEdit* field = openField();
    ASSERT_NE(field, nullptr) << column.toStdString();
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
    letItSettle();
    EXPECT_EQ(openField(), nullptr);
  }

  /// Lets the field close, its text be stored and a box be shown: each is an event that the one before it has posted.
  static void letItSettle() {
    QTest::qWait(20);
    for (int turn = 0; turn < 3; ++turn)  // where the machine is so busy that the wait was over too soon
      QCoreApplication::processEvents();
  }

  QStringList stored() { return data.rows("SELECT 期号, 号码1, 自定义组2 FROM 历史记录 ORDER BY 期号"); }
  QString status() { return the<QLabel>(u"StatusBar_3"_s).text(); }
};

TEST_F(HistoryGridTest, TheNumberColumnsShowBallsOfTwoDigits) {
  openWithThreeDraws();
  for (int n = 1; n <= 5; ++n) {
    const QModelIndex number = cell(0, u"号码%1"_s.arg(n));
    auto* balls = dynamic_cast<BallDelegate*>(grid().itemDelegateForIndex(number));
    ASSERT_NE(balls, nullptr);
    EXPECT_EQ(balls->displayText(number.data(PagedTableModel::valueRole), QLocale()), u"0%1"_s.arg(n));
  }
  EXPECT_EQ(dynamic_cast<BallDelegate*>(grid().itemDelegateForIndex(cell(0, u"和值"_s))), nullptr);
  const QImage picture = grid().viewport()->grab().toImage();
  const QRect ball = grid().visualRect(cell(0, u"号码1"_s));
  const QPoint belowTheDigits(ball.center().x(), ball.bottom() - ball.height() / 6);
  EXPECT_NE(picture.pixelColor(belowTheDigits), picture.pixelColor(ball.topLeft() + QPoint(1, 1)));
}

TEST_F(HistoryGridTest, APeriodTypedOverIsWrittenAndTheStatusLineFollows) {
  openWithThreeDraws();
  typeOver(2, u"期号"_s, u"11031599"_s);
  EXPECT_EQ(stored(), (QStringList{u"11031510 1 -"_s, u"11031511 2 -"_s, u"11031599 7 -"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031599"_s);
  EXPECT_TRUE(status().contains(u"※※※  11031600 期 于 "_s)) << status().toStdString();
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"11031600"_s);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(HistoryGridTest, ARowMovesToThePlaceOfItsNewPeriod) {
  openWithThreeDraws();
  typeOver(0, u"期号"_s, u"2000000000"_s);
  EXPECT_EQ(shownPeriods(), u"11031511 11031512 2000000000"_s);
  EXPECT_EQ(cell(2, u"号码1"_s).data().toString(), u"1"_s);
  EXPECT_EQ(grid().currentIndex().row(), 2);
  typeOver(2, u"期号"_s, u"5"_s);
  EXPECT_EQ(shownPeriods(), u"5 11031511 11031512"_s);
  EXPECT_EQ(cell(0, u"期号"_s).data().toString(), u"5"_s);
}

TEST_F(HistoryGridTest, ACountOfAGroupIsTypedOverAfterADoubleClick) {
  openWithThreeDraws();
  grid().scrollTo(cell(1, u"自定义组2"_s));
  const QPoint place = grid().visualRect(cell(1, u"自定义组2"_s)).center();
  QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(openField(), nullptr);
  QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, place);
  QLineEdit* field = openField();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, u"4"_s);
  QTest::keyClick(field, Qt::Key_Return);
  letItSettle();
  EXPECT_EQ(stored(), (QStringList{u"11031510 1 -"_s, u"11031511 2 4"_s, u"11031512 7 -"_s}));
  EXPECT_EQ(cell(1, u"自定义组2"_s).data().toString(), u"4"_s);
}

TEST_F(HistoryGridTest, WhatCannotBeTakenIsToldOnceAndChangesNothing) {
  openWithThreeDraws();
  const QString before = status();
  typeOver(0, u"期号"_s, u"11031511"_s);
  typeOver(0, u"期号"_s, u"2147483648"_s);
  typeOver(0, u"自定义组2"_s, u"300"_s);
  EXPECT_EQ(ports.log, (QStringList{u"critical [] 历史记录中已有第 11031511 期，没有改动。"_s,
                                    u"critical [] 期号应为 1 到 2147483647 之间的整数，没有改动。"_s,
                                    u"critical [] 自定义组2应为 0 到 255 之间的整数，没有改动。"_s}));
  EXPECT_EQ(stored(), (QStringList{u"11031510 1 -"_s, u"11031511 2 -"_s, u"11031512 7 -"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  EXPECT_EQ(cell(0, u"期号"_s).data().toString(), u"11031510"_s);
  EXPECT_EQ(status(), before);
}

TEST_F(HistoryGridTest, AStoreThatRefusesAnEditIsToldOnce) {
  openWithThreeDraws();
  data.store().execute("test", "CREATE TRIGGER refuse BEFORE UPDATE ON 历史记录 BEGIN SELECT RAISE(ABORT, 'no'); END");
  typeOver(0, u"自定义组2"_s, u"3"_s);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.startsWith(u"修改开奖记录失败："_s)) << ports.boxes[0].text.toStdString();
}

TEST_F(HistoryGridTest, EscapeLeavesTheCell) {
  openWithThreeDraws();
  grid().setCurrentIndex(cell(0, u"期号"_s));
  QTest::keyClick(&grid(), Qt::Key_F2);
  ASSERT_NE(openField(), nullptr);
  QTest::keyClicks(openField(), u"7"_s);
  QTest::keyClick(openField(), Qt::Key_Escape);
  letItSettle();
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
}

TEST_F(HistoryGridTest, NoneOfTheColumnsUpToTheThirtySeventhCanBeTypedOver) {
  openWithThreeDraws();
  for (int c = 1; c <= 37; ++c)
    EXPECT_FALSE(historyRows().index(0, c).flags().testFlag(Qt::ItemIsEditable)) << c;
  EXPECT_EQ(historyRows().headerData(37, Qt::Horizontal, Qt::DisplayRole).toString(), u"自定义组1"_s);
  for (const QString& column : {u"期号"_s, u"自定义组2"_s, u"自定义组10"_s})
    EXPECT_TRUE(cell(0, column).flags().testFlag(Qt::ItemIsEditable)) << column.toStdString();
}

TEST_F(HistoryGridTest, NothingIsTypedOverWhileAnImportRuns) {
  openWithThreeDraws();
  ports.answers = {Answer::no};
  bool looked = false;
  boxes.onShow = [&] {  // the closing box of the import, the window still busy
    if (the<QWidget>(u"FrameHkaijian"_s).isEnabled())
      return;
    looked = true;
    grid().setCurrentIndex(cell(0, u"期号"_s));
    QTest::keyClick(&grid(), Qt::Key_F2);
    EXPECT_EQ(openField(), nullptr);
    EXPECT_FALSE(historyRows().setData(cell(0, u"期号"_s), u"7"_s));
  };
  importLines("11031513 01 02 03 04 05\r\n");
  EXPECT_TRUE(looked);
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512 11031513"_s);
}

TEST_F(HistoryGridTest, AfterASearchTheFieldHasTheFocusAgain) {
  openWithThreeDraws();
  click(the<QPushButton>(u"CmmSousuo"_s));
  auto& field = the<QLineEdit>(u"filter_号码1"_s);
  field.setFocus();
  QTest::keyClicks(&field, u"0"_s);
  click(the<QPushButton>(u"filterBegin"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  EXPECT_EQ(window->focusWidget(), &field);
  QTest::keyClicks(&field, u"2"_s);  // on in the row, without another click
  click(the<QPushButton>(u"filterBegin"_s));
  EXPECT_EQ(shownPeriods(), u"11031511"_s);
}

TEST_F(HistoryGridTest, TheFirstChangeIsExplainedOncePerRun) {
  openWithThreeDraws();
  const QString explained = u"通过输入相应项目的值(允许只输入一个或者多个条件)来搜索符合条件的记录!"_s;
  searchFor(u"期号"_s, u"11031510"_s);
  EXPECT_EQ(ports.boxTexts().count(explained), 1);
  searchFor(u"期号"_s, u"11031511"_s);
  EXPECT_EQ(shownPeriods(), u"11031511"_s);
  EXPECT_EQ(ports.boxTexts().count(explained), 1);
}

TEST_F(HistoryGridTest, TheSearchButtonWaitsForTheNextChange) {
  openWithThreeDraws();
  searchFor(u"期号"_s, u"1103151"_s);
  auto& begin = the<QPushButton>(u"filterBegin"_s);
  EXPECT_FALSE(begin.isEnabled());
  QTest::keyClicks(&the<QLineEdit>(u"filter_期号"_s), u"2"_s);
  EXPECT_TRUE(begin.isEnabled());
  QTest::keyClick(&the<QLineEdit>(u"filter_期号"_s), Qt::Key_Return);
  EXPECT_EQ(shownPeriods(), u"11031512"_s);
  EXPECT_FALSE(begin.isEnabled());
}

TEST_F(HistoryGridTest, ClearingTheSearchBringsTheTableBackAndKeepsTheMode) {
  openWithThreeDraws();
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  searchFor(u"期号"_s, u"11031511"_s);
  EXPECT_EQ(shownPeriods(), u"11031511"_s);
  click(the<QPushButton>(u"cmdClearFilter"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  EXPECT_FALSE(the<QLineEdit>(u"filter_期号"_s).isVisible());
  EXPECT_EQ(the<QLineEdit>(u"filter_期号"_s).text(), QString());
  EXPECT_FALSE(the<QPushButton>(u"filterBegin"_s).isVisible());
  EXPECT_FALSE(the<QPushButton>(u"filterBegin"_s).isEnabled());
  EXPECT_FALSE(the<QPushButton>(u"cmdClearFilter"_s).isVisible());
  EXPECT_TRUE(the<QRadioButton>(u"OptionHistoryMode_0"_s).isChecked());
}

TEST_F(HistoryGridTest, TheModeThatIsSelectedAlreadyEndsASearchToo) {
  openWithThreeDraws();
  searchFor(u"期号"_s, u"11031511"_s);
  triggerMenu(u"mnu_HistoryShowAll"_s);
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  searchFor(u"期号"_s, u"11031511"_s);
  EXPECT_EQ(shownPeriods(), u"11031511"_s);
  click(the<QRadioButton>(u"OptionHistoryMode_1"_s));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
}

}  // namespace

}  // namespace elevenfive
