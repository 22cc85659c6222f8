// The ways to a condition tab through the menu, and the previews that a tab shows of what its list allows.
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>

#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

struct EntryFacts {
  QStringView name;
  QStringView caption;
  int tab;
};

constexpr EntryFacts entries[] = {
    {u"mnu_TiaojianChoseNumber", u"选取号码...", 1},
    {u"mnu_Tiaojian_2", u"和值...", 2},
    {u"mnu_Tiaojian_3", u"奇数和值...", 3},
    {u"mnu_Tiaojian_4", u"偶数和值...", 4},
    {u"mnu_Tiaojian_11", u"奇偶比...", 11},
    {u"mnu_Tiaojian_12", u"大小比...", 12},
    {u"mnu_Tiaojian_13", u"高低尾码...", 13},
    {u"mnu_Tiaojian_105", u"跨度...", 5},
    {u"mnu_Tiaojian_106", u"最大间距...", 6},
    {u"mnu_Tiaojian_107", u"连号...", 7},
    {u"mnu_Tiaojian_110", u"A C 值...", 10},
    {u"mnu_Tiaojian_208", u"重叠号...", 8},
    {u"mnu_Tiaojian_209", u"斜位码...", 9},
    {u"mnu_Tiaojian_214", u"区间设置...", 14},
    {u"mnu_Tiaojian_215", u"定位过滤...", 15},
    {u"mnu_Tiaojian_223", u"历史数据过滤...", 23},
    {u"mnu_Tiaojian_316", u"尾数设置...", 16},
    {u"mnu_Tiaojian_317", u"头数设置...", 17},
    {u"mnu_Tiaojian_318", u"头数和值...", 18},
    {u"mnu_Tiaojian_319", u"尾数和值...", 19},
    {u"mnu_Tiaojian_320", u"温度值5", 20},
    {u"mnu_Tiaojian_321", u"温度值10", 21},
    {u"mnu_Tiaojian_322", u"自定义条件...", 22},
    {u"paicu", u"排除特定的单双组合", 0},
    {u"mnu_TiaojianShuosui", u"缩水设置...", 24},
    {u"huanyuan", u"全部还原为默认值", 0},
    {u"daocu", u"导出过滤条件...", 0},
    {u"daoru", u"导入过滤条件...", 0},
    {u"mnu_TiaojianView", u"查看全部设置情况", 25},
};

/// A list with a preview: its stretch, the item that is clicked, and what the preview says then.
struct PreviewFacts {
  int tab;
  QStringView list;
  QStringView tip;
  int first;
  int last;
  int item;
  QStringView preview;
};

constexpr PreviewFacts previews[] = {
    {2, u"List_TiaoJian", u"Text_tiaojianTip", 1000, 1170, 30, u"[４５]"},
    {3, u"List_TiaoJian", u"Text_tiaojianTip", 2000, 2170, 9, u"[９]"},
    {4, u"List_TiaoJian", u"Text_tiaojianTip", 3000, 3170, 30, u"[３０]"},
    {5, u"List_TiaoJian", u"Text_tiaojianTip", 3300, 3340, 0, u"[４]"},
    {6, u"List_TiaoJian", u"Text_tiaojianTip", 3400, 3440, 6, u"[７]"},
    {18, u"List_TiaojianElse", u"Text_elseTiaojianTip", 4080, 4099, 10, u"[１０]"},
    {19, u"List_TiaojianElse", u"Text_elseTiaojianTip", 4100, 4159, 41, u"[４１]"},
    {20, u"List_TiaojianElse", u"Text_elseTiaojianTip", 4160, 4179, 19, u"[１９]"},
    {21, u"List_TiaojianElse", u"Text_elseTiaojianTip", 4180, 4209, 0, u"[０]"},
};

class ConditionTabsTest : public MainWindowTest {
 protected:
  void openTab(int tab) {
    window->selectTopTab(2);
    the<QListWidget>(u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1);
  }

  static void clickItem(QListWidget& list, int item) {
    list.scrollToItem(list.item(item));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(item)).center());
  }
};

TEST_F(ConditionTabsTest, TheMenuHoldsItsEntriesInTheirOrder) {
  open();
  QStringList expected;
  for (const EntryFacts& facts : entries)
    expected << facts.name.toString() + u' ' + facts.caption.toString();
  QStringList found;
  for (const QAction* action : the<QMenu>(u"mnu_GuoLuTiaoJian"_s).actions())
    if (!action->isSeparator())
      found << action->objectName() + u' ' + action->text();
  EXPECT_EQ(found, expected);
}

TEST_F(ConditionTabsTest, EachEntryLeadsToItsTabFromTheThirdPage) {
  open();
  for (const EntryFacts& facts : entries) {
    if (facts.tab == 0)
      continue;
    window->selectTopTab(3);
    ASSERT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 2);
    triggerMenu(facts.name.toString());
    EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 1) << facts.tab;
    EXPECT_EQ(the<QListWidget>(u"TabStrip_TiaoJian"_s).currentRow() + 1, facts.tab);
  }
}

TEST_F(ConditionTabsTest, AClickShowsInThePreviewOfItsTab) {
  open();
  for (const PreviewFacts& facts : previews) {
    data.store().execute("test", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN ? AND ?", facts.first, facts.last);
    openTab(facts.tab);
    const auto& tip = the<QPlainTextEdit>(facts.tip.toString());
    EXPECT_TRUE(tip.isVisible()) << facts.tab;
    EXPECT_TRUE(tip.toPlainText().endsWith(u"当前取值阅览：\n\n"_s)) << facts.tab;
    auto& list = the<QListWidget>(facts.list.toString());
    clickItem(list, facts.item);
    EXPECT_TRUE(tip.toPlainText().endsWith(u"当前取值阅览：\n\n"_s.append(facts.preview))) << facts.tab;
    clickItem(list, facts.item);
    EXPECT_TRUE(tip.toPlainText().endsWith(u"当前取值阅览：\n\n"_s)) << facts.tab;
  }
}

TEST_F(ConditionTabsTest, TheOtherTabsOfOneListShowNoPreview) {
  open();
  for (const int tab : {7, 8, 9, 10, 16, 17}) {
    openTab(tab);
    const bool first = tab <= 10;
    clickItem(the<QListWidget>(first ? u"List_TiaoJian"_s : u"List_TiaojianElse"_s), 0);
    const auto& tip = the<QPlainTextEdit>(first ? u"Text_tiaojianTip"_s : u"Text_elseTiaojianTip"_s);
    EXPECT_FALSE(tip.isVisible() && tip.toPlainText().contains(u"当前取值阅览"_s)) << tab;
  }
}

TEST_F(ConditionTabsTest, TheTemperatureOfFivePeriodsExplainsItself) {
  open();
  openTab(20);
  EXPECT_TRUE(
      the<QPlainTextEdit>(u"Text_elseTiaojianTip"_s)
          .toPlainText()
          .startsWith(
              u"温度值5：指的是本期开奖的5个号码在最近号码5期中各码开出次数之和。反映的是整注号码相对于最近５期的冷热程度。"_s));
}

}  // namespace

}  // namespace elevenfive
