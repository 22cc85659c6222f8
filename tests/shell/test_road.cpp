// The road of a typical run, walked in the window with mouse and keyboard: import, pick, set conditions, expand, run, see
// the survivors.
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>

#include "model/widgets/gridview.h"
#include "shell/widgets/mainwindow.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class RoadTest : public ::testing::Test {
 protected:
  RoadTest() {
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
  }
  ~RoadTest() override { ports.answers = {Answer::yes}; }

  /// A text file with these lines.
  QString fileOf(const QByteArray& lines) {
    const QString path = data.folders.program + u"/draws.txt"_s;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(lines);
    return path;
  }

  void selectTopTab(int tab) {
    auto& tabs = control<QTabBar>(window, u"TabStrip_Top"_s);
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab - 1).center());
  }

  void selectConditionTab(int tab) {
    auto& tabs = control<QListWidget>(window, u"TabStrip_TiaoJian"_s);
    tabs.scrollToItem(tabs.item(tab - 1));
    QTest::mouseClick(tabs.viewport(), Qt::LeftButton, {}, tabs.visualItemRect(tabs.item(tab - 1)).center());
  }

  void clickValue(const QString& text) {
    auto& list = control<QListWidget>(window, u"List_TiaoJian"_s);
    const auto items = list.findItems(text, Qt::MatchExactly);
    ASSERT_EQ(items.size(), 1) << text.toStdString();
    list.scrollToItem(items.front());
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(items.front()).center());
  }

  /// The shown cells of a grid's row, joined by blanks.
  QString gridRow(const QString& name, int row) {
    auto& grid = control<QTableView>(window, name);
    QStringList cells;
    for (int c = 0; c < grid.model()->columnCount(); ++c)
      if (!grid.isColumnHidden(c))
        cells << grid.model()->index(row, c).data().toString();
    return cells.join(u' ').trimmed();
  }

  int gridRows(const QString& name) { return control<QTableView>(window, name).model()->rowCount(); }

  QString status() { return control<QPlainTextEdit>(window, u"TextChaoZuoTip"_s).toPlainText(); }

  TestWorkspace data;
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  MainWindow window{data.workspace(), {ports, ports, files, texts}};
};

TEST_F(RoadTest, FromTheImportToTheSurvivors) {
  // Import, and look at the draws.
  files.paths = {fileOf("11031510 02 04 05 10 11\r\n11031511-08-03-07-10-11\r\n")};
  click(control<QPushButton>(window, u"newBtnHistory_99"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  ASSERT_EQ(gridRows(u"TDBGridHistory"_s), 2);
  EXPECT_TRUE(gridRow(u"TDBGridHistory"_s, 1).startsWith(u"11031511 3 7 8 10 11 39 21 18 8 4 "_s));
  EXPECT_EQ(control<QLineEdit>(window, u"TextHistory_0"_s).text(), u"11031512"_s);

  // Pick 01 to 07, of which 01 is a banker.
  ports.boxes.clear();
  selectTopTab(2);
  click(control<QPushButton>(window, u"cmm_clsQ"_s));
  for (int number = 2; number <= 7; ++number)
    click(control<QAbstractButton>(window, u"cmm_C7_%1"_s.arg(number)));
  auto& modes = control<QTabBar>(window, u"TabStrip_Qiaqu"_s);
  QTest::mouseClick(&modes, Qt::LeftButton, {}, modes.tabRect(1).center());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"现在点击数字按钮可以把相应的数设为“胆码”。"_s});
  click(control<QAbstractButton>(window, u"cmm_C7_1"_s));
  EXPECT_EQ(data.rows("SELECT VALUE FROM 过滤条件 WHERE ID BETWEEN 1 AND 8 ORDER BY ID").join(u' '),
            u"2 1 1 1 1 1 1 0"_s);
  EXPECT_TRUE(control<QPlainTextEdit>(window, u"Text_ChoseNumberTip"_s)
                  .toPlainText()
                  .contains(u"过滤缩水前全部号码组合： １５  注"_s));

  // Allow the sums 20 and 21 alone, switch everything else off.
  data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0");
  data.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0");
  selectConditionTab(2);
  click(control<QPushButton>(window, u"cmmNone_List_TiaoJian"_s));
  EXPECT_TRUE(
      data.rows("SELECT ID FROM 过滤条件 WHERE ID BETWEEN 1000 AND 1170 AND VALUE > 0 AND ID <= 1045").isEmpty());
  clickValue(u"和值=20"_s);
  clickValue(u"和值=21"_s);
  EXPECT_EQ(data.rows("SELECT ID FROM 过滤条件 WHERE ID BETWEEN 1015 AND 1045 AND VALUE = 1").join(u' '),
            u"1020 1021"_s);
  EXPECT_TRUE(control<QPlainTextEdit>(window, u"Text_tiaojianTip"_s).toPlainText().endsWith(u"[２０-２１]"_s));
  auto& use = control<QCheckBox>(window, u"Check_useTiaojiao_1"_s);
  EXPECT_EQ(use.text(), u"使用“和值”过滤"_s);
  use.setFocus();
  QTest::keyClick(&use, Qt::Key_Space);
  EXPECT_EQ(data.rows("SELECT 条件 FROM 过滤条件使用情况 WHERE 使用情况 = 1"), QStringList{u"1"_s});

  // Expand, and run without tolerance.
  selectTopTab(3);
  ports.boxes.clear();
  ports.inputs.clear();
  ports.typed = {u"11031512"_s};
  click(control<QPushButton>(window, u"cmmTouZhu_0"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"初始化选号完成!共 １５ 注！"_s});
  EXPECT_EQ(gridRows(u"TDBGrid_RZ"_s), 15);
  EXPECT_EQ(gridRow(u"TDBGrid_RZ"_s, 0), u"1 11031512 1 2 3 4 5"_s);

  ports.typed.clear();  // the defaults: the period of the current row, tolerance 0
  click(control<QPushButton>(window, u"cmmTouZhu_1"_s));
  ASSERT_GE(ports.inputs.size(), 3U);
  EXPECT_EQ(ports.inputs[1].defaultText, u"11031512"_s);
  EXPECT_EQ(ports.inputs[2].title, u"过滤条件容错设置"_s);
  EXPECT_TRUE(ports.inputs[2].prompt.startsWith(control<QLabel>(window, u"LabelRongcuoTip"_s).text() +
                                                u"\r\n\r\n（范围在 0-0之间"_s));

  // Four of 2..7 that sum to 19 or 20: 2+4+6+7, 3+4+5+7; 2+5+6+7, 3+4+6+7.
  ASSERT_EQ(gridRows(u"TDBGrid_RZ"_s), 4);
  EXPECT_EQ(gridRow(u"TDBGrid_RZ"_s, 0), u"1 11031512 1 2 4 6 7"_s);
  EXPECT_EQ(gridRow(u"TDBGrid_RZ"_s, 1), u"2 11031512 1 2 5 6 7"_s);
  EXPECT_EQ(gridRow(u"TDBGrid_RZ"_s, 2), u"3 11031512 1 3 4 5 7"_s);
  EXPECT_EQ(gridRow(u"TDBGrid_RZ"_s, 3), u"4 11031512 1 3 4 6 7"_s);
  EXPECT_TRUE(status().contains(u"[ 和 值 ]过滤后余：４ 注"_s)) << status().toStdString();
  EXPECT_TRUE(status().contains(u"全部过滤缩水完成,余：４ 注"_s)) << status().toStdString();
  EXPECT_TRUE(control<QWidget>(window, u"Pic_subTouZhu"_s).isEnabled());
  EXPECT_FALSE(control<QPushButton>(window, u"cmm_stop"_s).isEnabled());
  EXPECT_EQ(data.rows("SELECT count(*) FROM 日志表"), QStringList{u"4"_s});
}

TEST_F(RoadTest, WithoutPicksTheExpansionLeadsToThePickingPage) {
  selectTopTab(2);
  click(control<QPushButton>(window, u"cmm_clsQ"_s));
  selectConditionTab(5);
  selectTopTab(3);
  ports.typed = {u"11031512"_s};
  click(control<QPushButton>(window, u"cmmTouZhu_0"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s});
  EXPECT_EQ(control<QTabBar>(window, u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_EQ(control<QListWidget>(window, u"TabStrip_TiaoJian"_s).currentRow(), 0);
}

}  // namespace

}  // namespace elevenfive
