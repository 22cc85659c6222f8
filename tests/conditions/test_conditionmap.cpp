#include "conditions/conditionmap.h"

#include <gtest/gtest.h>

#include "conditions/conditionpanel.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A list of a tab as it must be: its first and last item, the IDs of their rows, its switch.
struct Expected {
  int tab;
  int list;
  int items;
  QStringView first;
  int firstId;
  QStringView last;
  int lastId;
  int code;
  QStringView caption;
};

constexpr Expected expectedLists[] = {
    {2, 0, 31, u"和值=15", 1015, u"和值=45", 1045, 1, u"使用“和值”过滤"},
    {3, 0, 46, u"奇数和值=0", 2000, u"奇数和值=45", 2045, 2, u"使用“奇数和值”过滤"},
    {4, 0, 46, u"偶数和值=0", 3000, u"偶数和值=45", 3045, 3, u"使用“偶数和值”过滤"},
    {5, 0, 7, u"跨度=4", 3304, u"跨度=10", 3310, 4, u"使用“跨度”过滤"},
    {6, 0, 7, u"最大间距=1", 3401, u"最大间距=7", 3407, 5, u"使用“最大间距”过滤"},
    {7, 0, 7, u"连号=0", 3450, u"连号=5", 3456, 6, u"使用“连号”过滤"},
    {8, 0, 6, u"重叠码个数=0", 3470, u"重叠码个数=5", 3475, 7, u"使用“重叠号”过滤"},
    {9, 0, 6, u"斜位码个数=0", 3490, u"斜位码个数=5", 3495, 8, u"使用“斜位码”过滤"},
    {10, 0, 10, u"AC值=1", 3601, u"AC值=10", 3610, 9, u"使用“ＡＣ值”过滤"},
    {11, 0, 6, u"奇数个数=0", 3640, u"奇数个数=5", 3645, 10, u"使用“奇数个数”过滤"},
    {11, 1, 6, u"偶数个数=0", 3650, u"偶数个数=5", 3655, 11, u"使用“偶数个数”过滤"},
    {12, 0, 6, u"大数个数=0", 3660, u"大数个数=5", 3665, 12, u"使用“大数个数”过滤"},
    {12, 1, 6, u"小数个数=0", 3670, u"小数个数=5", 3675, 13, u"使用“小数个数”过滤"},
    {13, 0, 6, u"高尾码个数=0", 3680, u"高尾码个数=5", 3685, 14, u"使用“高尾码个数”过滤"},
    {13, 1, 6, u"低尾码个数=0", 3690, u"低尾码个数=5", 3695, 15, u"使用“低尾码个数”过滤"},
    {14, 0, 6, u"区间1开出个数=0", 3700, u"区间1开出个数=5", 3705, 16, u"使用“区间１”过滤"},
    {14, 1, 6, u"区间2开出个数=0", 3710, u"区间2开出个数=5", 3715, 17, u"使用“区间２”过滤"},
    {14, 2, 6, u"区间3开出个数=0", 3720, u"区间3开出个数=5", 3725, 18, u"使用“区间３”过滤"},
    {14, 3, 6, u"区间4开出个数=0", 3730, u"区间4开出个数=5", 3735, 19, u"使用“区间４”过滤"},
    {16, 0, 7, u"1,1,1,1,1", 4000, u"5", 4006, 37, u"使用“尾数形式”过滤"},
    {17, 0, 3, u"3,2", 4070, u"5", 4072, 42, u"使用“头数形式”过滤"},
    {18, 0, 11, u"0", 4080, u"10", 4090, 43, u"使用“头数和值”过滤"},
    {19, 0, 42, u"0", 4100, u"41", 4141, 44, u"使用“尾数和值”过滤"},
    {20, 0, 20, u"0", 4160, u"19", 4179, 46, u"使用“温度值５”过滤"},
    {21, 0, 30, u"0", 4180, u"29", 4209, 47, u"使用“温度值１０”过滤"},
};

class ConditionMap : public ::testing::TestWithParam<Expected> {
 protected:
  TestWorkspace workspace;
  ConditionPanel panel{workspace.store()};

  /// Every row of all that a condition set consists of.
  QStringList everything() {
    return workspace.rows("SELECT 'v' || ID, VALUE FROM 过滤条件 ORDER BY ID") +
           workspace.rows("SELECT 'u' || 条件, 使用情况 FROM 过滤条件使用情况 ORDER BY 条件") +
           workspace.rows("SELECT * FROM 号码特性 ORDER BY \"INDEX\"") + workspace.rows("SELECT * FROM 历史数据过滤");
  }

  /// The rows that differ, as they are now.
  static QStringList changed(const QStringList& before, const QStringList& now) {
    QStringList rows;
    for (qsizetype i = 0; i < now.size(); ++i)
      if (before.value(i) != now[i])
        rows << now[i];
    return rows;
  }
};

TEST_P(ConditionMap, ListShowsItsItemsAndSwitch) {
  const Expected& e = GetParam();
  const auto lists = panel.valueLists(e.tab);
  ASSERT_GT(lists.size(), static_cast<std::size_t>(e.list));
  const auto& list = lists[static_cast<std::size_t>(e.list)];
  ASSERT_EQ(list.items.size(), e.items);
  EXPECT_EQ(list.items.first(), e.first.toString());
  EXPECT_EQ(list.items.last(), e.last.toString());
  const auto box = panel.switches(e.tab).at(static_cast<std::size_t>(e.list));
  EXPECT_EQ(box.code, e.code);
  EXPECT_EQ(box.caption, e.caption.toString());
}

TEST_P(ConditionMap, ClickOnEachItemChangesItsOneRowAndBack) {
  const Expected& e = GetParam();
  ASSERT_EQ(e.lastId - e.firstId + 1, e.items);
  const QStringList before = everything();
  const auto selected = panel.valueLists(e.tab).at(static_cast<std::size_t>(e.list)).selected;
  ASSERT_EQ(selected.size(), static_cast<std::size_t>(e.items));
  for (int item = 0; item < e.items; ++item) {
    const bool was = selected[static_cast<std::size_t>(item)];
    panel.clickValue(e.tab, e.list, item, !was);
    const QString row = u"v%1 %2"_s.arg(e.firstId + item).arg(was ? 0 : 1);
    ASSERT_EQ(changed(before, everything()), QStringList{row});
    ASSERT_EQ(panel.valueLists(e.tab).at(static_cast<std::size_t>(e.list)).selected[static_cast<std::size_t>(item)],
              !was);
    panel.clickValue(e.tab, e.list, item, was);
    ASSERT_EQ(changed(before, everything()), QStringList{});
  }
}

TEST_P(ConditionMap, SwitchChangesItsOneRowAndBack) {
  const Expected& e = GetParam();
  const QStringList before = everything();
  const bool was = panel.switches(e.tab).at(static_cast<std::size_t>(e.list)).checked;
  panel.clickSwitch(e.code, !was);
  EXPECT_EQ(changed(before, everything()), QStringList{u"u%1 %2"_s.arg(e.code).arg(was ? 0 : 1)});
  EXPECT_EQ(panel.switches(e.tab).at(static_cast<std::size_t>(e.list)).checked, !was);
  panel.clickSwitch(e.code, was);
  EXPECT_EQ(changed(before, everything()), QStringList{});
}

INSTANTIATE_TEST_SUITE_P(AllStretches, ConditionMap, ::testing::ValuesIn(expectedLists), [](const auto& row) {
  return "Tab" + std::to_string(row.param.tab) + "List" + std::to_string(row.param.list);
});

TEST(ConditionTabs, BearTheirCaptionsInOrder) {
  QStringList captions;
  for (const ConditionTab& tab : conditionTabs()) {
    captions << tab.caption.toString();
    EXPECT_EQ(tab.index, captions.size());
  }
  EXPECT_EQ(
      captions.join(u'|'),
      u"选取号码|和值过滤|奇数和值|偶数和值|跨度过滤|最大间距|连 号|重叠号|斜位码|AC值|奇偶比|大小比|高低尾码|区间设置|"
      u"定位过滤|尾数设置|头数设置|头数和值|尾数和值|温度值5|温度值10|自定义过滤|历史数据过滤|缩水设置|查看全部"_s);
}

TEST(ConditionTabs, ListEveryStretchOfTheExpectedTable) {
  int lists = 0;
  for (const ConditionTab& tab : conditionTabs())
    lists += static_cast<int>(tab.lists.size());
  EXPECT_EQ(lists, 25);
  EXPECT_EQ(std::size(expectedLists), 25U);
}

TEST(ConditionTabs, OutsideOneToTwentyFiveThereAreNone) {
  EXPECT_EQ(conditionTab(0), nullptr);
  EXPECT_EQ(conditionTab(26), nullptr);
  EXPECT_EQ(conditionTab(25)->kind, TabKind::summary);
}

TEST(ConditionTabs, FormsStandInTheirOrder) {
  TestWorkspace workspace;
  ConditionPanel panel(workspace.store());
  EXPECT_EQ(panel.valueLists(7).front().items.join(u' '), u"连号=0 连号=2 连号=2+2 连号=3 连号=3+2 连号=4 连号=5"_s);
  EXPECT_EQ(panel.valueLists(16).front().items.join(u' '), u"1,1,1,1,1 2,1,1,1 2,2,1 3,1,1 3,2 4,1 5"_s);
  EXPECT_EQ(panel.valueLists(17).front().items.join(u' '), u"3,2 4,1 5"_s);
}

TEST(ConditionTabs, TwoPlusTwoIsTheThirdRowOfItsStretch) {
  TestWorkspace workspace;
  ConditionPanel panel(workspace.store());
  ASSERT_EQ(panel.valueLists(7).front().items[2], u"连号=2+2"_s);
  panel.clickValue(7, 0, 2, false);
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 3452"), QStringList{u"0"_s});
}

}  // namespace

}  // namespace elevenfive
