// Every value list of the condition panel, worked through its widgets: each item, each check box and each button of a list
// changes exactly the rows that it stands for.
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTabBar>
#include <numeric>
#include <vector>

#include "conditions/widgets/pickpage.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A list of a tab, its check box, and the rows that both stand for.
struct ListFacts {
  int tab;
  QStringView list;
  QStringView check;
  int items;
  int firstId;
  int code;
};

constexpr ListFacts lists[] = {
    {2, u"List_TiaoJian", u"Check_useTiaojiao_1", 31, 1015, 1},
    {3, u"List_TiaoJian", u"Check_useTiaojiao_1", 46, 2000, 2},
    {4, u"List_TiaoJian", u"Check_useTiaojiao_1", 46, 3000, 3},
    {5, u"List_TiaoJian", u"Check_useTiaojiao_1", 7, 3304, 4},
    {6, u"List_TiaoJian", u"Check_useTiaojiao_1", 7, 3401, 5},
    {7, u"List_TiaoJian", u"Check_useTiaojiao_1", 7, 3450, 6},
    {8, u"List_TiaoJian", u"Check_useTiaojiao_1", 6, 3470, 7},
    {9, u"List_TiaoJian", u"Check_useTiaojiao_1", 6, 3490, 8},
    {10, u"List_TiaoJian", u"Check_useTiaojiao_1", 10, 3601, 9},
    {11, u"List_TJ_0", u"Check_useTiaojiao_2", 6, 3640, 10},
    {11, u"List_TJ_1", u"Check_useTiaojiao_3", 6, 3650, 11},
    {12, u"List_TJ_0", u"Check_useTiaojiao_2", 6, 3660, 12},
    {12, u"List_TJ_1", u"Check_useTiaojiao_3", 6, 3670, 13},
    {13, u"List_TJ_0", u"Check_useTiaojiao_2", 6, 3680, 14},
    {13, u"List_TJ_1", u"Check_useTiaojiao_3", 6, 3690, 15},
    {14, u"List_QJ_1", u"Check_useTiaojiao_4", 6, 3700, 16},
    {14, u"List_QJ_2", u"Check_useTiaojiao_5", 6, 3710, 17},
    {14, u"List_QJ_3", u"Check_useTiaojiao_6", 6, 3720, 18},
    {14, u"List_QJ_4", u"Check_useTiaojiao_7", 6, 3730, 19},
    {16, u"List_TiaojianElse", u"Check_useTiaojiao_else", 7, 4000, 37},
    {17, u"List_TiaojianElse", u"Check_useTiaojiao_else", 3, 4070, 42},
    {18, u"List_TiaojianElse", u"Check_useTiaojiao_else", 11, 4080, 43},
    {19, u"List_TiaojianElse", u"Check_useTiaojiao_else", 42, 4100, 44},
    {20, u"List_TiaojianElse", u"Check_useTiaojiao_else", 20, 4160, 46},
    {21, u"List_TiaojianElse", u"Check_useTiaojiao_else", 30, 4180, 47},
};

class ConditionListsTest : public MainWindowTest {
 protected:
  void SetUp() override {
    open();
    window->selectTopTab(2);
    for (const char* table : {"过滤条件", "过滤条件使用情况", "号码特性", "历史数据过滤"})
      data.store().execute("test", "CREATE TEMP TABLE kept_" + std::string(table) + " AS SELECT * FROM " + table);
  }

  void openTab(int tab) { the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1); }

  /// The rows that are not as they were at the start: an ID and its value, a code and its use, the number of any other.
  QStringList changed() {
    return data.rows(
        "SELECT 'v' || ID, VALUE FROM (SELECT * FROM 过滤条件 EXCEPT SELECT * FROM kept_过滤条件) UNION ALL "
        "SELECT 'u' || 条件, 使用情况 FROM (SELECT * FROM 过滤条件使用情况 EXCEPT SELECT * FROM kept_过滤条件使用情况) "
        "UNION ALL SELECT 'n' || 号码, 0 FROM (SELECT * FROM 号码特性 EXCEPT SELECT * FROM kept_号码特性) UNION ALL "
        "SELECT 'm' || 最小值, 0 FROM (SELECT * FROM 历史数据过滤 EXCEPT SELECT * FROM kept_历史数据过滤)");
  }

  /// Drags from the middle of the first of these items over the middles of the others.
  static void dragOver(QListWidget& list, const std::vector<int>& items) {
    const auto centre = [&](int item) { return list.visualItemRect(list.item(item)).center(); };
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, centre(items.front()));
    for (const int item : items) {
      QMouseEvent move(QEvent::MouseMove, centre(item), list.viewport()->mapToGlobal(centre(item)), Qt::NoButton,
                       Qt::LeftButton, {});
      QApplication::sendEvent(list.viewport(), &move);
    }
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, centre(items.back()));
  }

  /// Drags from an item to a later one.
  static void drag(QListWidget& list, int from, int to) {
    std::vector<int> items(static_cast<std::size_t>(to - from) + 1);
    std::iota(items.begin(), items.end(), from);
    dragOver(list, items);
  }

  /// The numbers with a mark in a column of 号码特性.
  QString numbersWith(const QString& column) {
    return data.rows(u"SELECT 号码 FROM 号码特性 WHERE %1 = 1 ORDER BY 号码"_s.arg(column).toUtf8().constData())
        .join(u' ');
  }

  static void clickItem(QListWidget& list, int item) {
    list.scrollToItem(list.item(item));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(item)).center());
  }

  /// A click, and another on the same item within the time that makes it a double click.
  static void clickTwiceAtOnce(QListWidget& list, int item) {
    clickItem(list, item);
    const QPointF centre = list.visualItemRect(list.item(item)).center();
    const QPointF onScreen = list.viewport()->mapToGlobal(centre);
    QMouseEvent press(QEvent::MouseButtonDblClick, centre, onScreen, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, centre, onScreen, Qt::LeftButton, Qt::NoButton, {});
    for (QMouseEvent* event : {&press, &release})
      QApplication::sendEvent(list.viewport(), event);
  }

  int value(int id) { return data.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id).value_or(-1); }

  /// What a list's rows would be changed to where its items take these states.
  QStringList changesTo(const ListFacts& facts, const std::function<bool(bool was)>& state) {
    QStringList expected;
    for (int item = 0; item < facts.items; ++item) {
      const int id = facts.firstId + item;
      const bool was = data.store().value("test", "SELECT VALUE FROM kept_过滤条件 WHERE ID = ?", id).value_or(-1) > 0;
      if (state(was) != was)
        expected << u"v%1 %2"_s.arg(id).arg(was ? 0 : 1);
    }
    return expected;
  }

  /// The tabs that bear the mark of a condition in use.
  QString marked() {
    const auto& tabs = the<QListWidget>(u"TabStrip_TiaoJian"_s);
    QStringList found;
    for (int row = 0; row < tabs.count(); ++row)
      if (tabs.item(row)->toolTip() == u"使用中"_s)
        found << QString::number(row + 1);
    return found.join(u' ');
  }

  /// A change of rows from which the test starts, not one that it finds.
  void prepare(const std::string& table, const std::string& change) {
    for (const char* prefix : {"", "kept_"})
      data.store().execute("test", "UPDATE " + (prefix + table) + " SET " + change);
  }

  /// The numbers of each of the seven position columns.
  QStringList positions() {
    QStringList all;
    for (int p = 1; p <= 7; ++p)
      all << data.rows(u"SELECT 号码 FROM 号码特性 WHERE 第%1位 = 1 ORDER BY 号码"_s.arg(p).toUtf8().constData())
                 .join(u' ');
    return all;
  }

  void restore() {
    data.store().execute("test",
                         "UPDATE 过滤条件 SET VALUE = (SELECT VALUE FROM kept_过滤条件 k WHERE k.ID = 过滤条件.ID)");
  }
};

TEST_F(ConditionListsTest, AClickOnEachItemChangesItsOneRowAndTheNextClickBringsItBack) {
  for (const ListFacts& facts : lists) {
    openTab(facts.tab);
    auto& list = the<QListWidget>(facts.list.toString());
    ASSERT_EQ(list.count(), facts.items) << facts.tab;
    for (int item = 0; item < facts.items; ++item) {
      const int before = value(facts.firstId + item);
      ASSERT_EQ(list.item(item)->isSelected(), before > 0) << facts.tab << ' ' << item;
      clickItem(list, item);
      ASSERT_EQ(changed(), QStringList{u"v%1 %2"_s.arg(facts.firstId + item).arg(1 - before)}) << facts.tab;
      ASSERT_EQ(list.item(item)->isSelected(), before == 0);
      clickItem(list, item);
      ASSERT_EQ(changed(), QStringList{}) << facts.tab << ' ' << item;
    }
  }
}

TEST_F(ConditionListsTest, ACheckBoxChangesItsOneSwitchAndBack) {
  for (const ListFacts& facts : lists) {
    openTab(facts.tab);
    auto& check = the<QCheckBox>(facts.check.toString());
    const bool was = check.isChecked();
    check.click();
    EXPECT_EQ(changed(), QStringList{u"u%1 %2"_s.arg(facts.code).arg(was ? 0 : 1)}) << facts.tab;
    check.click();
    EXPECT_EQ(changed(), QStringList{}) << facts.tab;
  }
}

TEST_F(ConditionListsTest, TheButtonsOfAListWriteWhatTheClicksWould) {
  for (const ListFacts& facts : lists) {
    openTab(facts.tab);
    click(the<QPushButton>(u"cmmInvert_"_s + facts.list.toString()));
    EXPECT_EQ(changed(), changesTo(facts, [](bool was) { return !was; })) << facts.tab;
    click(the<QPushButton>(u"cmmAll_"_s + facts.list.toString()));
    EXPECT_EQ(changed(), changesTo(facts, [](bool) { return true; })) << facts.tab;
    click(the<QPushButton>(u"cmmNone_"_s + facts.list.toString()));
    EXPECT_EQ(changed(), changesTo(facts, [](bool) { return false; })) << facts.tab;
    restore();
  }
}

TEST_F(ConditionListsTest, TwoClicksAtOnceAreTwoClicks) {
  prepare("过滤条件", "VALUE = 0 WHERE ID BETWEEN 3800 AND 3809");
  prepare("号码特性", "自定义组1 = (号码 = 5)");
  const auto expectNoChange = [this](int tab, const QString& name) {
    openTab(tab);
    auto& list = the<QListWidget>(name);
    for (const int item : {0, 3}) {
      const bool before = list.item(item)->isSelected();
      clickItem(list, item);
      EXPECT_NE(changed(), QStringList{}) << tab;
      clickItem(list, item);
      clickTwiceAtOnce(list, item);
      EXPECT_EQ(changed(), QStringList{}) << tab << ' ' << item;
      EXPECT_EQ(list.item(item)->isSelected(), before) << tab << ' ' << item;
    }
  };
  expectNoChange(2, u"List_TiaoJian"_s);
  expectNoChange(15, u"List_DingweiNumber_3"_s);
  expectNoChange(22, u"List_ZDYset"_s);
}

TEST_F(ConditionListsTest, ADragSelectsTheItemsThatItPasses) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
  data.store().execute("test", "UPDATE kept_过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
  openTab(10);
  drag(the<QListWidget>(u"List_TiaoJian"_s), 1, 3);
  EXPECT_EQ(changed(), (QStringList{u"v3602 1"_s, u"v3603 1"_s, u"v3604 1"_s}));
}

TEST_F(ConditionListsTest, ADragThatComesBackLeavesWhatItHadSwept) {
  const std::vector<int> thereAndBack{1, 2, 3, 4, 3, 2};
  prepare("过滤条件", "VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
  openTab(10);
  dragOver(the<QListWidget>(u"List_TiaoJian"_s), thereAndBack);
  EXPECT_EQ(changed(), (QStringList{u"v3602 1"_s, u"v3603 1"_s}));
  restore();

  prepare("过滤条件", "VALUE = 1 WHERE ID BETWEEN 3601 AND 3610");  // from a selected one it takes away
  openTab(9);
  openTab(10);
  dragOver(the<QListWidget>(u"List_TiaoJian"_s), thereAndBack);
  EXPECT_EQ(changed(), (QStringList{u"v3602 0"_s, u"v3603 0"_s}));
  restore();

  prepare("号码特性", "第3位 = 0");
  openTab(15);
  dragOver(the<QListWidget>(u"List_DingweiNumber_3"_s), thereAndBack);
  EXPECT_EQ(numbersWith(u"第3位"_s), u"2 3"_s);
  restore();

  prepare("过滤条件", "VALUE = 0 WHERE ID BETWEEN 3800 AND 3809");
  prepare("号码特性", "自定义组1 = (号码 = 5)");
  openTab(22);
  dragOver(the<QListWidget>(u"List_ZDYset"_s), thereAndBack);
  EXPECT_EQ(data.rows("SELECT ID FROM 过滤条件 WHERE ID BETWEEN 3800 AND 3809 AND VALUE > 0"),
            (QStringList{u"3801"_s, u"3802"_s}));
}

TEST_F(ConditionListsTest, ADragOverAPositionListAllowsTheNumbersThatItPasses) {
  data.store().execute("test", "UPDATE 号码特性 SET 第3位 = 0");
  openTab(15);
  drag(the<QListWidget>(u"List_DingweiNumber_3"_s), 4, 7);
  EXPECT_EQ(numbersWith(u"第3位"_s), u"5 6 7 8"_s);
  EXPECT_TRUE(the<QCheckBox>(u"Check_useDingWeiTiaojiao_32"_s).isEnabled());
}

TEST_F(ConditionListsTest, ShiftSelectsARangeOfAPositionList) {
  data.store().execute("test", "UPDATE 号码特性 SET 第3位 = 0, 第4位 = 0");
  openTab(15);
  auto& list = the<QListWidget>(u"List_DingweiNumber_3"_s);
  clickItem(list, 1);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier, list.visualItemRect(list.item(4)).center());
  EXPECT_EQ(numbersWith(u"第3位"_s), u"2 3 4 5"_s);
  auto& next = the<QListWidget>(u"List_DingweiNumber_4"_s);
  next.setFocus();
  next.setCurrentRow(8, QItemSelectionModel::NoUpdate);
  QTest::keyClick(&next, Qt::Key_Space);
  QTest::keyClick(&next, Qt::Key_Right, Qt::ShiftModifier);
  QTest::keyClick(&next, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(numbersWith(u"第4位"_s), u"9 10 11"_s);
}

TEST_F(ConditionListsTest, ADragAndShiftSelectTheCountsOfAGroup) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3809");
  data.store().execute("test", "UPDATE kept_过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3809");
  openTab(22);
  click(the<PickButton>(u"cmm_ZDY_5"_s));
  auto& list = the<QListWidget>(u"List_ZDYset"_s);
  drag(list, 1, 2);
  EXPECT_EQ(changed(), (QStringList{u"v3801 1"_s, u"v3802 1"_s, u"u20 1"_s, u"n5 0"_s}));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier, list.visualItemRect(list.item(4)).center());
  EXPECT_EQ(changed(), (QStringList{u"v3801 1"_s, u"v3802 1"_s, u"v3803 1"_s, u"v3804 1"_s, u"u20 1"_s, u"n5 0"_s}));
}

TEST_F(ConditionListsTest, ANumberOfAPositionListChangesItsOneFieldAndBack) {
  data.store().execute("test", "UPDATE 号码特性 SET 第1位 = (号码 > 4), 第2位 = 1, 第7位 = 0");
  data.store().execute("test", "UPDATE kept_号码特性 SET 第1位 = (号码 > 4), 第2位 = 1, 第7位 = 0");
  openTab(15);
  for (int p = 1; p <= 7; ++p) {
    auto& list = the<QListWidget>(u"List_DingweiNumber_%1"_s.arg(p));
    ASSERT_EQ(list.count(), 11);
    for (int number = 1; number <= 11; ++number) {
      const auto row = [&] {
        return data.rows(u"SELECT * FROM 号码特性 WHERE 号码 = %1"_s.arg(number).toUtf8().constData())
            .value(0)
            .split(u' ');
      };
      const auto field = [&] {
        return data.rows(u"SELECT 第%1位 FROM 号码特性 WHERE 号码 = %2"_s.arg(p).arg(number).toUtf8().constData());
      };
      const QStringList before = row();
      const bool was = list.item(number - 1)->isSelected();
      ASSERT_EQ(field(), QStringList{was ? u"1"_s : u"0"_s});
      clickItem(list, number - 1);
      ASSERT_EQ(changed(), QStringList{u"n%1 0"_s.arg(number)}) << p;
      ASSERT_EQ(field(), QStringList{was ? u"0"_s : u"1"_s}) << p << ' ' << number;
      const QStringList after = row();
      int fields = 0;
      for (qsizetype i = 0; i < after.size(); ++i)
        fields += after[i] == before[i] ? 0 : 1;
      ASSERT_EQ(fields, 1) << p << ' ' << number;
      clickItem(list, number - 1);
      ASSERT_EQ(changed(), QStringList{});
    }
  }
}

TEST_F(ConditionListsTest, APositionsCheckBoxChangesItsOneSwitchAndBack) {
  data.store().execute(
      "test", "UPDATE 号码特性 SET 第1位 = 1, 第2位 = 1, 第3位 = 1, 第4位 = 1, 第5位 = 1, 第6位 = 1, 第7位 = 1");
  data.store().execute("test", "DELETE FROM kept_号码特性");
  data.store().execute("test", "INSERT INTO kept_号码特性 SELECT * FROM 号码特性");
  openTab(15);
  for (int p = 1; p <= 7; ++p) {
    auto& check = the<QCheckBox>(u"Check_useDingWeiTiaojiao_%1"_s.arg(p + 29));
    EXPECT_EQ(check.text(), u"使用第%1位定位过滤"_s.arg(u"０１２３４５６７"_s.at(p)));
    check.click();
    EXPECT_EQ(changed(), QStringList{u"u%1 1"_s.arg(p + 29)});
    check.click();
    EXPECT_EQ(changed(), QStringList{});
  }
}

TEST_F(ConditionListsTest, TypingOnAListGoesToAnItemAndChangesNothing) {
  openTab(19);
  auto& list = the<QListWidget>(u"List_TiaojianElse"_s);
  list.setFocus();
  QTest::keyClicks(&list, u"15"_s);
  EXPECT_EQ(list.currentRow(), 15);  // the items are 0 to 41
  EXPECT_EQ(changed(), QStringList{});
  QTest::keyClick(&list, Qt::Key_Space);
  EXPECT_EQ(changed().size(), 1);  // only now is one chosen or taken back
}

TEST_F(ConditionListsTest, ACountOfAGroupChangesItsRowAndTheSwitchOfItsGroup) {
  data.store().execute("test",
                       "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3899 OR ID BETWEEN 4500 AND 4599");
  data.store().execute("test",
                       "UPDATE kept_过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3899 OR ID BETWEEN 4500 AND 4599");
  openTab(22);
  for (int k = 1; k <= 20; ++k) {
    const int firstId = k <= 10 ? 3790 + 10 * k : 4390 + 10 * k;
    const int code = k <= 10 ? 19 + k : 40 + k;
    the<QTabBar>(u"TabStrip_ZDYchose"_s).setCurrentIndex(k - 1);
    click(the<PickButton>(u"cmm_ZDY_5"_s));
    EXPECT_EQ(changed(), QStringList{u"n5 0"_s}) << k;
    auto& list = the<QListWidget>(u"List_ZDYset"_s);
    for (int count = 0; count <= 5; ++count) {
      clickItem(list, count);
      EXPECT_EQ(changed(), (QStringList{u"v%1 1"_s.arg(firstId + count), u"u%1 1"_s.arg(code), u"n5 0"_s})) << k;
      EXPECT_TRUE(the<QCheckBox>(u"Check_Zdy"_s).isChecked());
      clickItem(list, count);
      EXPECT_EQ(changed(), QStringList{u"n5 0"_s}) << k;
      EXPECT_FALSE(the<QCheckBox>(u"Check_Zdy"_s).isEnabled());
    }
    click(the<QPushButton>(u"cmmAll_List_ZDYset"_s));
    EXPECT_EQ(changed().size(), 6 + 1 + 1) << k;
    click(the<QPushButton>(u"cmmNone_List_ZDYset"_s));
    clickItem(list, 2);
    click(the<QPushButton>(u"cmmInvert_List_ZDYset"_s));
    QStringList others{u"u%1 1"_s.arg(code), u"n5 0"_s};
    for (const int count : {5, 4, 3, 1, 0})
      others.prepend(u"v%1 1"_s.arg(firstId + count));
    EXPECT_EQ(changed(), others) << k;
    click(the<QPushButton>(u"cmmInvert_List_ZDYset"_s));
    EXPECT_EQ(changed(), (QStringList{u"v%1 1"_s.arg(firstId + 2), u"u%1 1"_s.arg(code), u"n5 0"_s})) << k;
    click(the<QPushButton>(u"cmmNone_List_ZDYset"_s));
    click(the<PickButton>(u"cmm_ZDY_5"_s));
    EXPECT_EQ(changed(), QStringList{}) << k;
  }
}

TEST_F(ConditionListsTest, TheButtonsOfAPositionListWriteItsColumnAndOnlyEmptyingUnticksItsBox) {
  for (int p = 1; p <= 7; ++p)
    prepare("号码特性", "第" + std::to_string(p) + "位 = (号码 > 4)");
  const QString upper = u"5 6 7 8 9 10 11"_s;
  const QStringList before(7, upper);
  openTab(15);
  for (int p = 1; p <= 7; ++p) {
    const QString list = u"List_DingweiNumber_%1"_s.arg(p);
    auto& check = the<QCheckBox>(u"Check_useDingWeiTiaojiao_%1"_s.arg(p + 29));
    check.click();
    QStringList expected = before;
    expected[p - 1] = u"1 2 3 4"_s;
    click(the<QPushButton>(u"cmmInvert_"_s + list));
    EXPECT_EQ(positions(), expected) << p;
    EXPECT_TRUE(check.isChecked()) << p;
    expected[p - 1] = u"1 2 3 4 "_s + upper;
    click(the<QPushButton>(u"cmmAll_"_s + list));
    EXPECT_EQ(positions(), expected) << p;
    EXPECT_TRUE(check.isChecked()) << p;
    expected[p - 1] = QString();
    click(the<QPushButton>(u"cmmNone_"_s + list));
    EXPECT_EQ(positions(), expected) << p;
    EXPECT_FALSE(check.isChecked()) << p;
    EXPECT_FALSE(check.isEnabled()) << p;
    prepare("号码特性", "第" + std::to_string(p) + "位 = (号码 > 4)");
    EXPECT_EQ(changed(), QStringList{}) << p;
  }
}

TEST_F(ConditionListsTest, InvertingAPositionOfOneNumberKeepsItsBoxTickedAtBothEnds) {
  for (const int number : {1, 11}) {
    prepare("号码特性", "第3位 = (号码 = " + std::to_string(number) + ")");
    prepare("过滤条件使用情况", "使用情况 = 1 WHERE 条件 = 32");
    openTab(14);
    openTab(15);
    click(the<QPushButton>(u"cmmInvert_List_DingweiNumber_3"_s));
    EXPECT_EQ(positions()[2].count(u' '), 9) << number;
    EXPECT_TRUE(the<QCheckBox>(u"Check_useDingWeiTiaojiao_32"_s).isChecked()) << number;
    EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 32"), QStringList{u"1"_s}) << number;
  }
}

TEST_F(ConditionListsTest, EachSignOfAParityRowIsStoredInItsCellAndTicksItsRowOnly) {
  prepare("过滤条件", "VALUE = 0 WHERE ID BETWEEN 5000 AND 5059");
  prepare("过滤条件使用情况", "使用情况 = 0 WHERE 条件 BETWEEN 70 AND 75");
  triggerMenu(u"paicu"_s);
  for (int row = 0; row <= 5; ++row) {
    auto& check = the<QCheckBox>(u"Check1_paicu_%1"_s.arg(row));
    EXPECT_EQ(check.text(), row == 0 ? u"排除掉上一期的单双组合形式："_s : u"排除掉%1："_s.arg(row));
    const QString on = u"u%1 1"_s.arg(70 + row);
    for (int column = 1; column <= 5; ++column) {
      auto& sign = the<QComboBox>(u"Combo1_dansuang_%1"_s.arg(row * 10 + column));
      const QString cell = u"v%1 "_s.arg(5000 + column + row * 10);
      EXPECT_EQ(sign.currentText(), u"双"_s);
      sign.setCurrentText(u"*"_s);
      EXPECT_EQ(changed(), (QStringList{cell + u'2', on})) << row << ' ' << column;
      sign.setCurrentText(u"单"_s);
      EXPECT_EQ(changed(), (QStringList{cell + u'1', on})) << row << ' ' << column;
      sign.setCurrentText(u"双"_s);
      EXPECT_EQ(changed(), QStringList{on}) << row << ' ' << column;
      EXPECT_TRUE(check.isChecked());
      check.click();
      EXPECT_EQ(changed(), QStringList{}) << row << ' ' << column;
    }
    check.click();
    EXPECT_EQ(changed(), QStringList{on});
    check.click();
  }
}

TEST_F(ConditionListsTest, EachReductionTypeAndEachToleranceIsStoredInItsRow) {
  prepare("过滤条件", "VALUE = 0 WHERE ID IN (3900, 3901)");
  openTab(24);
  const QStringList types{u"保三型"_s, u"保四型"_s, u"保五型"_s, u"保六型"_s, u"保七型"_s};
  for (int type = 3; type <= 7; ++type) {
    auto& option = the<QRadioButton>(u"Option_ShuoSuiLeiXing_%1"_s.arg(type));
    EXPECT_EQ(option.text(), types[type - 3]);
    option.click();
    EXPECT_EQ(changed(), QStringList{u"v3900 %1"_s.arg(type)});
  }
  prepare("过滤条件", "VALUE = 0 WHERE ID = 3900");
  openTab(15);
  for (const int tolerance : {1, 2, 3, 4}) {
    click(the<QRadioButton>(u"Option_DingweiRongcuo_%1"_s.arg(tolerance)));
    EXPECT_EQ(changed(), QStringList{u"v3901 %1"_s.arg(tolerance)});
  }
  click(the<QRadioButton>(u"Option_DingweiRongcuo_0"_s));
  EXPECT_EQ(changed(), QStringList{});
}

TEST_F(ConditionListsTest, ACheckBoxMarksItsTabWhileItIsTicked) {
  prepare("过滤条件使用情况", "使用情况 = 0");
  prepare("历史数据过滤", "使用状态 = 0");
  for (int p = 1; p <= 7; ++p)
    prepare("号码特性", "第" + std::to_string(p) + "位 = 1");
  window->selectTopTab(1);
  window->selectTopTab(2);
  EXPECT_EQ(marked(), QString());
  const auto expectMark = [this](int tab, const QString& name) {
    openTab(tab);
    auto& check = the<QCheckBox>(name);
    check.click();
    EXPECT_EQ(marked(), QString::number(tab)) << name.toStdString();
    check.click();
    EXPECT_EQ(marked(), QString()) << tab << ' ' << name.toStdString();
  };
  for (const ListFacts& facts : lists)
    expectMark(facts.tab, facts.check.toString());
  for (int code = 30; code <= 36; ++code)
    expectMark(15, u"Check_useDingWeiTiaojiao_%1"_s.arg(code));
  for (int k = 1; k <= 20; ++k) {
    openTab(22);
    the<QTabBar>(u"TabStrip_ZDYchose"_s).setCurrentIndex(k - 1);
    expectMark(22, u"Check_Zdy"_s);
  }
  expectMark(23, u"Check_Historyguolu"_s);
  expectMark(24, u"Check_auto"_s);
}

TEST_F(ConditionListsTest, ATabOfManyBoxesKeepsItsMarkUntilTheLastIsOff) {
  prepare("过滤条件使用情况", "使用情况 = 0");
  prepare("历史数据过滤", "使用状态 = 0");
  openTab(11);
  the<QCheckBox>(u"Check_useTiaojiao_2"_s).click();
  the<QCheckBox>(u"Check_useTiaojiao_3"_s).click();
  the<QCheckBox>(u"Check_useTiaojiao_2"_s).click();
  window->selectTopTab(1);
  window->selectTopTab(2);
  EXPECT_EQ(marked(), u"11"_s);
  the<QCheckBox>(u"Check_useTiaojiao_3"_s).click();
  EXPECT_EQ(marked(), QString());
}

TEST_F(ConditionListsTest, MarksFollowAnImportedSetAndTheFactorySet) {
  prepare("过滤条件使用情况", "使用情况 = (条件 IN (3, 52, 45))");
  prepare("历史数据过滤", "使用状态 = 0");
  files.paths = {data.folders.program + u"/set.Vorex"_s};
  triggerMenu(u"daocu"_s);
  prepare("过滤条件使用情况", "使用情况 = 1");
  files.paths = {data.folders.program + u"/set.Vorex"_s};
  triggerMenu(u"daoru"_s);
  EXPECT_EQ(marked(), u"4 22 24"_s);
  data.store().execute("test", "UPDATE 默认过滤条件使用情况 SET 使用情况 = (条件 IN (14, 47))");
  triggerMenu(u"huanyuan"_s);
  EXPECT_EQ(marked(), u"13 21 23"_s);
}

}  // namespace

}  // namespace elevenfive
