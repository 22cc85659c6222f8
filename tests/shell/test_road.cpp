// The road of a typical run, walked in the window with mouse and keyboard: import, pick, set conditions, expand, run, see
// the survivors.
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class RoadTest : public MainWindowTest {
 protected:
  RoadTest() { open(); }

  void clickTab(QTabBar& tabs, int tab) {
    QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab - 1).center());
  }

  void selectTopTab(int tab) { clickTab(the<QTabBar>(u"TabStrip_Top"_s), tab); }

  void clickItem(QListWidget& list, QListWidgetItem* item) {
    list.scrollToItem(item);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(item).center());
  }

  void selectConditionTab(int tab) {
    auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
    clickItem(tabs, tabs.item(tab - 1));
  }

  /// Allows these values of the tab that shows, and no others.
  void allowOnly(const QStringList& values) {
    click(the<QPushButton>(u"cmmNone_List_TiaoJian"_s));
    auto& list = the<QListWidget>(u"List_TiaoJian"_s);
    for (const QString& value : values) {
      const auto items = list.findItems(value, Qt::MatchExactly);
      ASSERT_EQ(items.size(), 1) << value.toStdString();
      clickItem(list, items.front());
    }
  }

  /// Ticks the switch of the tab that shows, by the keyboard.
  void useTab(const QString& caption) {
    auto& use = the<QCheckBox>(u"Check_useTiaojiao_1"_s);
    EXPECT_EQ(use.text(), caption);
    use.setFocus();
    QTest::keyClick(&use, Qt::Key_Space);
    EXPECT_TRUE(use.isChecked());
  }

  void useNothing() {
    data.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0");
    data.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0");
  }

  QStringList codesInUse() { return data.rows("SELECT 条件 FROM 过滤条件使用情况 WHERE 使用情况 = 1 ORDER BY 条件"); }

  void clickNumbers(const QList<int>& numbers) {
    for (const int number : numbers)
      click(the<QAbstractButton>(u"cmm_C7_%1"_s.arg(number)));
  }

  QString picks() { return data.rows("SELECT VALUE FROM 过滤条件 WHERE ID <= 11 ORDER BY ID").join(u' '); }

  QString pickTip() { return the<QPlainTextEdit>(u"Text_ChoseNumberTip"_s).toPlainText(); }

  /// Clicks 第一步：初始化 or 第二步：过滤缩水 with these answers; what stood in the records of boxes is dropped.
  void runWith(int button, std::deque<QString> answers) {
    ports.boxes.clear();
    ports.inputs.clear();
    ports.typed = std::move(answers);
    clickRun(button);
  }

  // The steps of the road.
  void importTwoDraws();
  void pickSevenWithABanker();
  void allowTwoSums();
  void expandFifteenRows();
  void runOverTheSums();
};

void RoadTest::importTwoDraws() {
  importLines("11031510 02 04 05 10 11\r\n11031511-08-03-07-10-11\r\n");
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  auto& grid = the<GridView>(u"TDBGridHistory"_s);
  ASSERT_EQ(shownPeriods(), u"11031510 11031511"_s);
  QStringList cells;
  for (const QString& column : {u"号码1"_s, u"号码2"_s, u"号码3"_s, u"号码4"_s, u"号码5"_s, u"和值"_s, u"奇数和值"_s,
                                u"偶数和值"_s, u"跨度"_s, u"最大间距"_s})
    cells << grid.rows().index(1, grid.rows().columnOf(column)).data().toString();
  EXPECT_EQ(cells.join(u' '), u"3 7 8 10 11 39 21 18 8 4"_s);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"11031512"_s);
}

void RoadTest::pickSevenWithABanker() {
  ports.boxes.clear();
  selectTopTab(2);
  click(the<QPushButton>(u"cmm_clsQ"_s));
  clickNumbers({2, 3, 4, 5, 6, 7});
  clickTab(the<QTabBar>(u"TabStrip_Qiaqu"_s), 2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"现在点击数字按钮可以把相应的数设为“胆码”。"_s});
  clickNumbers({1});
  EXPECT_EQ(picks(), u"2 1 1 1 1 1 1 0 0 0 0"_s);
  EXPECT_TRUE(pickTip().contains(u"过滤缩水前全部号码组合： １５  注"_s));
}

void RoadTest::allowTwoSums() {
  useNothing();
  selectConditionTab(2);
  allowOnly({u"和值=20"_s, u"和值=21"_s});
  EXPECT_EQ(data.rows("SELECT ID FROM 过滤条件 WHERE ID BETWEEN 1015 AND 1045 AND VALUE = 1").join(u' '),
            u"1020 1021"_s);
  EXPECT_TRUE(the<QPlainTextEdit>(u"Text_tiaojianTip"_s).toPlainText().endsWith(u"[２０-２１]"_s));
  useTab(u"使用“和值”过滤"_s);
  EXPECT_EQ(codesInUse(), QStringList{u"1"_s});
}

void RoadTest::expandFifteenRows() {
  selectTopTab(3);
  runWith(0, {u"11031512"_s});
  EXPECT_EQ(ports.boxTexts(), QStringList{u"初始化选号完成!共 １５ 注！"_s});
  ASSERT_EQ(gridRows().size(), 15);
  EXPECT_EQ(gridRows().front(), u"1 11031512 1 2 3 4 5"_s);
}

/// Four of 2..7 that sum to 19 or 20: 2+4+6+7, 3+4+5+7; 2+5+6+7, 3+4+6+7.
void RoadTest::runOverTheSums() {
  runWith(1, {});  // the defaults: the period of the current row, tolerance 0
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_EQ(ports.inputs[0].defaultText, u"11031512"_s);
  EXPECT_EQ(ports.inputs[1].title, u"过滤条件容错设置"_s);
  EXPECT_EQ(ports.inputs[1].prompt,
            the<QLabel>(u"LabelRongcuoTip"_s).text() + u"\r\n\r\n（范围在 0-0之间，建议在２以内，推荐设为０）"_s);
  EXPECT_EQ(gridRows(), (QStringList{u"1 11031512 1 2 4 6 7"_s, u"2 11031512 1 2 5 6 7"_s, u"3 11031512 1 3 4 5 7"_s,
                                     u"4 11031512 1 3 4 6 7"_s}));
  EXPECT_EQ(status(),
            u"初始化选号完成!共 １５ 注！\n\n\n"
            "\n\n正读取数据[１１０３１５１２期]．．．"
            "\n\n过滤缩水之前共：１５注．"
            "\n\n[ 和 值 ]过滤后余：４ 注"
            "\n\n[保五型]缩水后余：４ 注"
            "\n\n全部过滤缩水完成,余：４ 注"_s);
  EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
  EXPECT_FALSE(the<QPushButton>(u"cmm_stop"_s).isEnabled());
  EXPECT_EQ(data.rows("SELECT count(*) FROM 日志表"), QStringList{u"4"_s});
}

TEST_F(RoadTest, FromTheImportToTheSurvivors) {
  importTwoDraws();
  pickSevenWithABanker();
  allowTwoSums();
  expandFifteenRows();
  runOverTheSums();
}

/// The rows that 1, 2, 4, 5, 8, 11 give, with what each passes of 连号=2+2 and AC值=4:
///   1 2 4 5 8    two pairs of neighbours, differences 1 2 3 4 6 7 (AC 2)           one
///   1 2 4 5 11   two pairs of neighbours, differences 1 2 3 4 6 7 9 10 (AC 4)      both
///   1 2 4 8 11   one pair, differences 1 2 3 4 6 7 9 10 (AC 4)                     one
///   1 2 5 8 11   one pair, differences 1 3 4 6 7 9 10 (AC 3)                       none
///   1 4 5 8 11   one pair, differences 1 3 4 6 7 10 (AC 2)                         none
///   2 4 5 8 11   one pair, differences 1 2 3 4 6 7 9 (AC 3)                        none
TEST_F(RoadTest, ARunOverTwoConditionsWithToleranceOneKeepsRowsThatFailOneOfThem) {
  importTwoDraws();
  useNothing();
  selectTopTab(2);
  click(the<QPushButton>(u"cmm_clsQ"_s));
  clickNumbers({1, 2, 4, 5, 8, 11});
  selectConditionTab(7);
  allowOnly({u"连号=2+2"_s});
  useTab(u"使用“连号”过滤"_s);
  selectConditionTab(10);
  allowOnly({u"AC值=4"_s});
  useTab(u"使用“ＡＣ值”过滤"_s);
  EXPECT_EQ(codesInUse(), (QStringList{u"6"_s, u"9"_s}));

  selectTopTab(3);
  runWith(0, {u"11031512"_s});
  ASSERT_EQ(gridRows().size(), 6);
  runWith(1, {u"11031512"_s, u"1"_s});
  ASSERT_EQ(ports.inputs.size(), 2U);
  EXPECT_TRUE(ports.inputs[1].prompt.endsWith(u"（范围在 0-1之间，建议在２以内，推荐设为０）"_s));
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(status(),
            u"初始化选号完成!共 ６ 注！\n\n\n"
            "\n\n正读取数据[１１０３１５１２期]．．．"
            "\n\n过滤缩水之前共：６注．"
            "\n\n[连号]过滤后余：２ 注"
            "\n\n[AC值]过滤后余：２ 注"
            "\n\n以上条件容错１后余：３ 注\n\n"
            "\n\n[保五型]缩水后余：３ 注"
            "\n\n全部过滤缩水完成,余：３ 注"_s);
  // A row keeps the rank of the last condition that it passed: the first two of 连号, the last two of AC值.
  EXPECT_EQ(gridRows(),
            (QStringList{u"1 11031512 1 2 4 5 8"_s, u"1 11031512 1 2 4 5 11"_s, u"2 11031512 1 2 4 8 11"_s}));
  EXPECT_EQ(data.rows("SELECT ID, 序号, 号码5, 过滤标记, 缩水标记, 临时数据 FROM 日志表 ORDER BY ID"),
            (QStringList{u"1 1 8 1 0 0"_s, u"2 1 11 2 0 0"_s, u"3 2 11 1 0 0"_s}));
}

TEST_F(RoadTest, WithoutPicksTheExpansionLeadsToThePickingPage) {
  selectTopTab(2);
  click(the<QPushButton>(u"cmm_clsQ"_s));
  selectConditionTab(5);
  selectTopTab(3);
  runWith(0, {u"11031512"_s});
  EXPECT_EQ(ports.boxTexts(), QStringList{u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s});
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1);
  EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow(), 0);
}

}  // namespace

}  // namespace elevenfive
