// Every value list of the condition panel, worked through its widgets: each item, each check box and each button of a list
// changes exactly the rows that it stands for.
#include <QCheckBox>
#include <QListWidget>
#include <QMouseEvent>
#include <QTabBar>

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

  static void clickItem(QListWidget& list, int item) {
    list.scrollToItem(list.item(item));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(item)).center());
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

TEST_F(ConditionListsTest, ADragSelectsTheItemsThatItPasses) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
  data.store().execute("test", "UPDATE kept_过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3601 AND 3610");
  openTab(10);
  auto& list = the<QListWidget>(u"List_TiaoJian"_s);
  const auto centre = [&](int item) { return list.visualItemRect(list.item(item)).center(); };
  QTest::mousePress(list.viewport(), Qt::LeftButton, {}, centre(1));
  for (const int item : {2, 3}) {
    QMouseEvent move(QEvent::MouseMove, centre(item), list.viewport()->mapToGlobal(centre(item)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(list.viewport(), &move);
  }
  QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, centre(3));
  EXPECT_EQ(changed(), (QStringList{u"v3602 1"_s, u"v3603 1"_s, u"v3604 1"_s}));
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

TEST_F(ConditionListsTest, ACountOfAGroupChangesItsRowAndTheSwitchOfItsGroup) {
  data.store().execute("test",
                       "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3899 OR ID BETWEEN 4500 AND 4599");
  data.store().execute("test",
                       "UPDATE kept_过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3800 AND 3899 OR ID BETWEEN 4500 AND 4599");
  openTab(22);
  for (const auto& [k, firstId, code] :
       {std::tuple{1, 3800, 20}, {2, 3810, 21}, {10, 3890, 29}, {11, 4500, 51}, {20, 4590, 60}}) {
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
    click(the<PickButton>(u"cmm_ZDY_5"_s));
    EXPECT_EQ(changed(), QStringList{}) << k;
  }
}

}  // namespace

}  // namespace elevenfive
