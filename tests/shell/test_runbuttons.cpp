// The seven buttons of the run panel, clicked in the window: what each one asks, what it answers and what it leaves in
// the grid.
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTimer>

#include "model/store.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Works a modal dialog once it is up.
void whenOpen(const std::function<void(QWidget&)>& step) {
  QTimer::singleShot(0, [step] {
    if (QWidget* dialog = QApplication::activeModalWidget())
      step(*dialog);
    else
      whenOpen(step);
  });
}

class RunButtonsTest : public MainWindowTest {
 protected:
  /// Puts combinations of the period 11031512 into 日志表, "01 02 03 04 05" each, and opens the window over them.
  void openWith(const QStringList& combinations) {
    Statement insert =
        data.store().query("test",
                           "INSERT INTO 日志表 (ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记)"
                           " VALUES (?, ?, 11031512, ?, ?, ?, ?, ?, 0)");
    for (int xuhao = 1; const QString& combination : combinations) {
      const Draw n = drawFrom(combination);
      insert.run(xuhao, xuhao, n[0], n[1], n[2], n[3], n[4]);
      ++xuhao;
    }
    open();
    window->selectTopTab(3);
    ports.log.clear();
    ports.boxes.clear();
  }

  /// Fills frmFromFile once it is up: numbers only, for a period.
  void answerImport(const QString& period) {
    whenOpen([period](QWidget& dialog) {
      EXPECT_EQ(dialog.objectName(), u"frmFromFile"_s);
      control<QRadioButton>(dialog, u"Option_GeShi_0"_s).setChecked(true);
      control<QLineEdit>(dialog, u"Txt_FromFileQS"_s).setText(period);
      click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
    });
  }

  /// The five numbers of a row of the grid: o where a ball is drawn, - where the number stands alone.
  QString balls(int row) {
    auto& grid = the<GridView>(u"TDBGrid_RZ"_s);
    QString shown;
    for (int position = 1; position <= 5; ++position) {
      const QRect cell = grid.visualRect(grid.rows().index(row, grid.rows().columnOf(u"号码%1"_s.arg(position))));
      const QImage image = grid.viewport()->grab(cell).toImage();
      // Inside a ball, but above its digits; and the background beside it.
      const QColor above = image.pixelColor(image.width() / 2, image.height() / 2 - image.height() * 36 / 100);
      shown += above == image.pixelColor(2, image.height() / 2) ? u'-' : u'o';
    }
    return shown;
  }

  QString exportPath() { return data.folders.program + u"/daocuTemp.txt"_s; }

  /// Without earlier draws every row has the same differences, so its sum alone ranks it: 23 to 35 first, then 36 to 38,
  /// then 21 and 22, then 39 and more, and 15 to 20 last.
  const QStringList rowsBySum{u"01 02 03 04 05"_s, u"05 06 07 08 09"_s, u"07 08 09 10 11"_s, u"06 07 08 09 10"_s,
                              u"04 05 06 07 08"_s, u"02 03 04 06 07"_s, u"05 06 08 09 10"_s};

  const QString deleted = u"表格中号码全部删除已完成．"_s;
};

TEST_F(RunButtonsTest, TheRowBearsItsCaptionsAndTips) {
  open();
  const QStringList captions{u"第一步：初始化"_s, u"第二步：过滤缩水"_s, u"精选号码"_s, u"导出"_s, u"导入"_s,
                             u"删除"_s,           u"开奖核对"_s};
  for (int i = 0; i < captions.size(); ++i)
    EXPECT_EQ(the<QPushButton>(u"cmmTouZhu_%1"_s.arg(i)).text(), captions[i]);
  EXPECT_EQ(the<QPushButton>(u"cmmTouZhu_0"_s).toolTip(), u"第一步：展开所选号码的全部组合"_s);
  EXPECT_EQ(the<QPushButton>(u"cmmTouZhu_1"_s).toolTip(), u"第二步：按照设定的条件过滤"_s);
}

TEST_F(RunButtonsTest, TheExpansionAsksThePeriodAndFillsTheGrid) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID IN (1, 3, 5, 7, 9, 11)) WHERE ID BETWEEN 1 AND 11");
  openWith({u"01 02 03 04 05"_s});
  clickRun(0);
  ASSERT_EQ(ports.inputs.size(), 1U);
  EXPECT_EQ(ports.inputs[0].prompt,
            u"[注意,只需要输入8位数字(如,11041510)的期号！]\r\n\r\n请输入你要过滤或者要核对的期号："_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031511"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"初始化选号完成!共 ６ 注！"_s});
  EXPECT_EQ(gridRows(),
            (QStringList{u"1 11031511 1 3 5 7 9"_s, u"2 11031511 1 3 5 7 11"_s, u"3 11031511 1 3 5 9 11"_s,
                         u"4 11031511 1 3 7 9 11"_s, u"5 11031511 1 5 7 9 11"_s, u"6 11031511 3 5 7 9 11"_s}));
  EXPECT_EQ(status(), u"初始化选号完成!共 ６ 注！\n\n\n"_s);
}

TEST_F(RunButtonsTest, ACancelledExpansionEmptiesTheTableAndAddsNothing) {
  openWith({u"01 02 03 04 05"_s});
  ports.typed = {QString()};
  clickRun(0);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(gridRows().isEmpty());
  EXPECT_EQ(status(), deleted);
}

TEST_F(RunButtonsTest, TheRunAsksThePeriodAndTheTolerance) {
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = (条件 IN (1, 2, 10))");
  openWith({u"01 02 03 04 05"_s});
  ports.typed = {u"11031513"_s};
  clickRun(1);
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[0].prompt, u"要过滤哪期的号码 ？"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031512"_s);
  EXPECT_EQ(ports.inputs[1].title, u"过滤条件容错设置"_s);
  EXPECT_EQ(ports.inputs[1].prompt,
            the<QLabel>(u"LabelRongcuoTip"_s).text() + u"\r\n\r\n（范围在 0-2之间，建议在２以内，推荐设为０）"_s);
  EXPECT_EQ(ports.inputs[1].defaultText, u"0"_s);
  EXPECT_TRUE(status().contains(u"表格中无[１１０３１５１３]期数据．"_s));
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 1 2 3 4 5"_s});
}

TEST_F(RunButtonsTest, ATypedToleranceForgivesAsManyConditions) {
  data.addDraws(u"11031511 01 03 05 07 09"_s);
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = (条件 IN (1, 4))");
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID BETWEEN 1020 AND 1030) WHERE ID BETWEEN 1000 AND 1170");
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 3304) WHERE ID BETWEEN 3300 AND 3340");
  data.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0");
  // 和值 20 to 30 and 跨度 4: both hold, 和值 fails with 15, 跨度 fails with 10, both fail with 43 and 5.
  openWith({u"03 04 05 06 07"_s, u"01 02 03 04 05"_s, u"01 02 03 04 11"_s, u"06 07 09 10 11"_s});
  ports.typed = {u"11031512"_s, u"1"_s};
  clickRun(1);
  EXPECT_TRUE(
      status().contains(u"[ 和 值 ]过滤后余：２ 注\n\n[ 跨 度 ]过滤后余：２ 注\n\n以上条件容错１后余：３ 注\n\n"_s))
      << status().toStdString();
  EXPECT_TRUE(status().endsWith(u"全部过滤缩水完成,余：３ 注"_s)) << status().toStdString();
  QStringList left = gridRows();
  left.replaceInStrings(QRegularExpression(u"^[0-9]+ "_s), QString());
  left.sort();
  EXPECT_EQ(left, (QStringList{u"11031512 1 2 3 4 11"_s, u"11031512 1 2 3 4 5"_s, u"11031512 3 4 5 6 7"_s}));
}

TEST_F(RunButtonsTest, ACancelledRunAsksBothQuestionsAndLeavesEverything) {
  openWith({u"01 02 03 04 05"_s});
  const QString before = status();
  ports.typed = {QString(), QString()};
  clickRun(1);
  EXPECT_EQ(ports.inputs.size(), 2U);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 1 2 3 4 5"_s});
  EXPECT_EQ(status(), before);
  EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
}

TEST_F(RunButtonsTest, TheAnalysisAsksPeriodAndCountAndKeepsFiveByDefault) {
  openWith(rowsBySum);
  const QString before = status();
  clickRun(2);
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[0].prompt, u"要精选哪期的号码 ？"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031512"_s);
  EXPECT_EQ(ports.inputs[1].prompt, u"要精选出多少注 ？"_s);
  EXPECT_EQ(ports.inputs[1].defaultText, u"5"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"精选号码完成！"_s});
  EXPECT_EQ(gridRows(), (QStringList{u"2 11031512 5 6 7 8 9"_s, u"3 11031512 7 8 9 10 11"_s, u"5 11031512 4 5 6 7 8"_s,
                                     u"6 11031512 2 3 4 6 7"_s, u"7 11031512 5 6 8 9 10"_s}));
  EXPECT_EQ(status(), before + u"\n\n[ 号码分析 ] 完 成 "_s);
}

TEST_F(RunButtonsTest, TheAnalysisKeepsAsManyRowsAsTyped) {
  openWith(rowsBySum);
  ports.typed = {u"11031512"_s, u"2"_s};
  clickRun(2);
  EXPECT_EQ(gridRows(), (QStringList{u"2 11031512 5 6 7 8 9"_s, u"5 11031512 4 5 6 7 8"_s}));
}

TEST_F(RunButtonsTest, TheAnalysisOfNoRowsKeepsAllRows) {
  openWith(rowsBySum);
  ports.typed = {u"11031512"_s, u"0"_s};
  clickRun(2);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(gridRows().size(), 7);
}

TEST_F(RunButtonsTest, TheAnalysisOfAPeriodWithoutRowsSaysSo) {
  openWith(rowsBySum);
  ports.typed = {u"11031513"_s, u"5"_s};
  clickRun(2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表中无第１１０３１５１３ 期的数据！"_s});
  EXPECT_EQ(gridRows().size(), 7);
}

TEST_F(RunButtonsTest, AnExportWritesTheRowsAndShowsThem) {
  openWith({u"01 02 03 04 05"_s, u"07 08 09 10 11"_s, u"01 02 03 04 06"_s, u"01 02 03 04 07"_s, u"01 02 03 04 08"_s,
            u"01 02 03 04 09"_s});
  const QString before = status();
  whenOpen([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), u"frmToFile"_s);
    for (int i = 0; i <= 3; ++i)
      control<QCheckBox>(dialog, u"Check_ToFile_%1"_s.arg(i)).setChecked(true);
    control<QLineEdit>(dialog, u"TextFG"_s).setText(u"-"_s);
    control<QLineEdit>(dialog, u"Txt_ToFileQS"_s).setText(u"11031512"_s);
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
  });
  clickRun(3);
  const QString lines =
      u"1   11031512 01-02-03-04-05\n2   11031512 07-08-09-10-11\n3   11031512 01-02-03-04-06\n"
      "4   11031512 01-02-03-04-07\n5   11031512 01-02-03-04-08\n\n6   11031512 01-02-03-04-09\n"_s;
  EXPECT_EQ(texts.texts, QStringList{lines});
  QFile file(exportPath());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(file.readAll()), QString(lines).replace(u"\n"_s, u"\r\n"_s));
  EXPECT_EQ(status(), before + u"\n\n号码导出完成．"_s);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
}

TEST_F(RunButtonsTest, AnExportOfAPeriodWithoutRowsSaysSo) {
  openWith({u"01 02 03 04 05"_s});
  whenOpen([](QWidget& dialog) {
    control<QLineEdit>(dialog, u"Txt_ToFileQS"_s).setText(u"11031513"_s);
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
  });
  clickRun(3);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表格中没有该期的号码！"_s});
  EXPECT_TRUE(texts.texts.isEmpty());
  EXPECT_FALSE(QFile::exists(exportPath()));
}

TEST_F(RunButtonsTest, ACancelledExportSaysAndWritesNothing) {
  openWith({u"01 02 03 04 05"_s});
  whenOpen([](QWidget& dialog) { click(control<QPushButton>(dialog, u"cmm_Cancel"_s)); });
  clickRun(3);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(texts.texts.isEmpty());
  EXPECT_FALSE(QFile::exists(exportPath()));
}

TEST_F(RunButtonsTest, AnImportThatKeepsNothingReplacesTheRows) {
  openWith({u"01 02 03 04 05"_s});
  chooseFileOf("02-04-06-08-10\r\n1 2 3\r\n11 09 07 05 03\r\n");
  const QString before = status();
  ports.answers = {Answer::no};
  answerImport(u"11031514"_s);
  clickRun(4);
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"表格中原有的数据要保留吗？"_s, u"数据导入完成，共导入：２ 注！"_s}));
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::yesNo);
  EXPECT_EQ(gridRows(), (QStringList{u"1 11031514 2 4 6 8 10"_s, u"2 11031514 11 9 7 5 3"_s}));
  EXPECT_EQ(status(), before + deleted + u"\n\n数据导入完成，共导入：２ 注！"_s);
}

TEST_F(RunButtonsTest, AnImportThatKeepsTheRowsCountsOnFromThem) {
  openWith({u"01 02 03 04 05"_s, u"07 08 09 10 11"_s});
  chooseFileOf("02 04 06 08 10\r\n");
  const QString before = status();
  ports.answers = {Answer::yes};
  answerImport(u"11031512"_s);
  clickRun(4);
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"表格中原有的数据要保留吗？"_s, u"数据导入完成，共导入：１ 注！"_s}));
  EXPECT_EQ(gridRows(),
            (QStringList{u"1 11031512 1 2 3 4 5"_s, u"2 11031512 7 8 9 10 11"_s, u"3 11031512 2 4 6 8 10"_s}));
  EXPECT_EQ(status(), before + u"\n\n数据导入完成，共导入：１ 注！"_s);
}

TEST_F(RunButtonsTest, TheGridIsOrderedByPeriodBeforeTheRunningNumber) {
  openWith({u"01 02 03 04 05"_s, u"07 08 09 10 11"_s});
  chooseFileOf("02 04 06 08 10\r\n");
  ports.answers = {Answer::yes};
  answerImport(u"11031510"_s);
  clickRun(4);
  EXPECT_EQ(gridRows(),
            (QStringList{u"3 11031510 2 4 6 8 10"_s, u"1 11031512 1 2 3 4 5"_s, u"2 11031512 7 8 9 10 11"_s}));
}

TEST_F(RunButtonsTest, TheColumnsOfTheGridAreCentredAndLocked) {
  openWith({u"01 02 03 04 05"_s});
  auto& grid = the<GridView>(u"TDBGrid_RZ"_s);
  EXPECT_EQ(grid.editTriggers(), QAbstractItemView::NoEditTriggers);
  ASSERT_GE(grid.rows().columnCount(), 12);
  for (int column = 1; column <= 11; ++column) {
    const QModelIndex cell = grid.rows().index(0, column);
    EXPECT_EQ(cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>(), Qt::AlignCenter) << column;
    EXPECT_FALSE(cell.flags().testFlag(Qt::ItemIsEditable)) << column;
  }
}

TEST_F(RunButtonsTest, AnImportIntoAnEmptyTableAsksNothingFirst) {
  openWith({});
  chooseFileOf("02 04 06 08 10\r\n");
  answerImport(u"11031512"_s);
  clickRun(4);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"数据导入完成，共导入：１ 注！"_s});
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 2 4 6 8 10"_s});
}

TEST_F(RunButtonsTest, AnImportWithoutAFileDoesNothing) {
  openWith({u"01 02 03 04 05"_s});
  const QString before = status();
  clickRun(4);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 1 2 3 4 5"_s});
  EXPECT_EQ(status(), before);
}

TEST_F(RunButtonsTest, ADeletionThatIsCancelledKeepsTheRows) {
  openWith({u"01 02 03 04 05"_s});
  const QString before = status();
  ports.answers = {Answer::no};
  clickRun(5);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要删除全部记录吗？"_s});
  EXPECT_EQ(ports.boxes[0].buttons, BoxButtons::okCancel);
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 1 2 3 4 5"_s});
  EXPECT_EQ(status(), before);
}

TEST_F(RunButtonsTest, ADeletionEmptiesTheGrid) {
  openWith({u"01 02 03 04 05"_s});
  const QString before = status();
  ports.answers = {Answer::yes};
  clickRun(5);
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"确认要删除全部记录吗？"_s, u"删除记录完成！"_s}));
  EXPECT_TRUE(gridRows().isEmpty());
  EXPECT_EQ(data.rows("SELECT count(*) FROM 日志表"), QStringList{u"0"_s});
  EXPECT_EQ(status(), before + deleted);
}

TEST_F(RunButtonsTest, TheCheckShowsTheHitsAndCountsFiveAndFour) {
  data.addDraws(u"11031512 02 04 06 08 10"_s);
  openWith({u"02 04 06 08 10"_s, u"02 04 06 08 11"_s, u"01 04 06 08 10"_s, u"01 03 05 07 10"_s, u"01 03 05 07 09"_s});
  const QString before = status();
  clickRun(6);
  ASSERT_EQ(ports.inputs.size(), 1U);
  EXPECT_EQ(ports.inputs[0].prompt, u"您要核对哪期的数据?"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031512"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"开奖核对完成,结果请查看右边的操作提示！"_s});
  EXPECT_FALSE(hidden(u"TDBGrid_RZ"_s, u"买中个数"_s));
  EXPECT_EQ(gridRows(),
            (QStringList{u"1 11031512 2 4 6 8 10 5"_s, u"2 11031512 2 4 6 8 11 4"_s, u"3 11031512 1 4 6 8 10 4"_s,
                         u"4 11031512 1 3 5 7 10 1"_s, u"5 11031512 1 3 5 7 9 0"_s}));
  EXPECT_EQ(status(), before + u"\n\n开奖核对结果如下——\n\n中五个号： １ 注\n\n中四个号： ２ 注"_s);
}

TEST_F(RunButtonsTest, OnlyCellsOfDrawnNumbersShowARedBallAlsoWhereARowRepeatsOne) {
  data.addDraws(u"11031512 02 04 06 08 10"_s);
  openWith({u"01 02 03 04 05"_s, u"02 02 04 05 07"_s});
  EXPECT_EQ(balls(1), u"ooooo"_s);
  clickRun(6);
  EXPECT_EQ(gridRows(), (QStringList{u"1 11031512 1 2 3 4 5 2"_s, u"2 11031512 2 2 4 5 7 3"_s}));
  EXPECT_EQ(balls(1), u"ooo--"_s);
}

TEST_F(RunButtonsTest, ACheckWithoutTheDrawFailsAndLeavesTheRows) {
  data.addDraws(u"11031511 02 04 06 08 10"_s);
  openWith({u"02 04 06 08 10"_s});
  const QString before = status();
  clickRun(6);
  EXPECT_EQ(ports.log.filter(u"plain"_s),
            QStringList{u"plain [出错啦!] 第11031512期的日志记录或历史记录不完整！\r\n无法核对哦^_^！！"_s});
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 2 4 6 8 10"_s});
  EXPECT_EQ(status(), before);
}

TEST_F(RunButtonsTest, ACheckOfNoPeriodFails) {
  openWith({u"02 04 06 08 10"_s});
  ports.typed = {u"abc"_s};
  clickRun(6);
  EXPECT_EQ(ports.log.filter(u"plain"_s), QStringList{u"plain [出错啦!] 没有要核对的号码！请先选号！"_s});
}

TEST_F(RunButtonsTest, AnEmptyAnswerChecksNothing) {
  openWith({u"02 04 06 08 10"_s});
  ports.typed = {QString()};
  clickRun(6);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(gridRows(), QStringList{u"1 11031512 2 4 6 8 10"_s});
}

}  // namespace

}  // namespace elevenfive
