#include "conditions/conditionpanel.h"

#include <gtest/gtest.h>

#include "conditions/conditionrows.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class Panel : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  Store& store = workspace.store();
  ConditionPanel panel{store};

  QStringList conditions() {
    return workspace.rows("SELECT ID, VALUE FROM 过滤条件 ORDER BY ID") +
           workspace.rows("SELECT 条件, 使用情况 FROM 过滤条件使用情况 ORDER BY 条件") +
           workspace.rows("SELECT * FROM 号码特性 ORDER BY \"INDEX\"") + workspace.rows("SELECT * FROM 历史数据过滤");
  }

  void allow(int first, int last, int value) {
    store.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= ? AND ID <= ?", value, first, last);
  }

  /// The selected numbers of a position list.
  QString positionNumbers(int p) {
    QStringList numbers;
    const auto list = panel.valueLists(15).at(static_cast<std::size_t>(p - 1));
    for (qsizetype i = 0; i < list.items.size(); ++i)
      if (list.selected[static_cast<std::size_t>(i)])
        numbers << list.items[i];
    return numbers.join(u' ');
  }

  ConditionPanel::SwitchState positionBox(int p) { return panel.switches(15).at(static_cast<std::size_t>(p - 1)); }
};

TEST_F(Panel, ClicksWhileAListIsFilledWriteNothing) {
  const QStringList before = conditions();
  panel.loadingPanel = true;
  panel.clickValue(2, 0, 0, true);
  panel.clickValue(15, 0, 4, true);
  panel.selectItems(2, 0, std::vector<bool>(31, true));
  panel.clickSwitch(1, false);
  panel.clickTaggedSwitch(u"37"_s, true);
  panel.setPositionTolerance(3);
  panel.setReductionType(7);
  panel.setMatchUsed(false);
  panel.setMatchField(ConditionPanel::MatchField::minimum, 77);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Panel, ItemsListsTabsAndCodesThatDoNotExistChangeNothing) {
  const QStringList before = conditions();
  panel.clickValue(2, 0, 31, true);
  panel.clickValue(2, 0, -1, true);
  panel.clickValue(2, 1, 0, true);
  panel.clickValue(1, 0, 0, true);
  panel.clickValue(26, 0, 0, true);
  panel.clickValue(15, 7, 0, true);
  panel.clickValue(15, 0, 11, true);
  panel.clickSwitch(48, true);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Panel, ItemWhoseRowIsMissingChangesNothing) {
  store.execute("test", "DELETE FROM 过滤条件 WHERE ID = 1020");
  const QStringList before = conditions();
  panel.clickValue(2, 0, 5, true);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Panel, FactorySumsShowNineteenToForty) {
  const auto list = panel.valueLists(2).front();
  for (qsizetype i = 0; i < list.items.size(); ++i)
    EXPECT_EQ(list.selected[static_cast<std::size_t>(i)], i + 15 >= 19 && i + 15 <= 40) << list.items[i].toStdString();
}

TEST_F(Panel, ValueTwoCountsAsSelected) {
  allow(1015, 1015, 2);
  EXPECT_TRUE(panel.valueLists(2).front().selected[0]);
}

TEST_F(Panel, SelectItemsBringsAListToTheSelection) {
  std::vector<bool> wanted(31, false);
  wanted[0] = wanted[30] = true;
  panel.selectItems(2, 0, wanted);
  EXPECT_EQ(panel.valueLists(2).front().selected, wanted);
  EXPECT_EQ(workspace.rows("SELECT ID FROM 过滤条件 WHERE VALUE > 0 AND ID BETWEEN 1000 AND 1170 ORDER BY ID"),
            (QStringList{u"1015"_s, u"1045"_s}));
}

TEST_F(Panel, TagOfACheckBoxIsItsCode) {
  panel.clickTaggedSwitch(u"43"_s, true);
  EXPECT_EQ(conditionUse(store, 43), 1);
  const QStringList before = conditions();
  panel.clickTaggedSwitch(QString(), true);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Panel, PreviewJoinsRunsInFullWidthDigits) {
  allow(1000, 1170, 0);
  for (const int sum : {20, 21, 22, 25})
    panel.clickValue(2, 0, sum - 15, true);
  EXPECT_EQ(panel.rangePreview(1), u"[２０-２２] , [２５]"_s);
  panel.clickValue(2, 0, 21 - 15, false);
  EXPECT_EQ(panel.rangePreview(1), u"[２０] , [２２] , [２５]"_s);
}

TEST_F(Panel, PreviewIsEmptyWithAllOffAndTheFilterCanStillBeOn) {
  allow(1000, 1170, 0);
  EXPECT_EQ(panel.rangePreview(1), QString());
  EXPECT_TRUE(panel.switches(2).front().checked);
}

TEST_F(Panel, PreviewClosesItsLastRunAtTheLastRow) {
  allow(4160, 4179, 0);
  allow(4178, 4179, 1);
  EXPECT_EQ(panel.rangePreview(24), u"[１８-１９]"_s);
  allow(4178, 4178, 0);
  EXPECT_EQ(panel.rangePreview(24), u"[１９]"_s);
}

TEST_F(Panel, PreviewEndsARunBeforeTheNextUnselectedRowThatThereIs) {
  allow(1000, 1170, 0);
  allow(1020, 1021, 1);
  store.execute("test", "DELETE FROM 过滤条件 WHERE ID = 1022");
  EXPECT_EQ(panel.rangePreview(1), u"[２０-２２]"_s);
}

TEST_F(Panel, PreviewsOfTheFactorySet) {
  const std::pair<int, QString> previews[] = {
      {1, u"[１９-４０]"_s}, {2, u"[１-４５]"_s},  {3, u"[０-４４]"_s},  {4, u"[５-１４]"_s},  {5, u"[２-１０]"_s},
      {22, u"[０-４]"_s},    {23, u"[８-３３]"_s}, {24, u"[３-１６]"_s}, {25, u"[９-２５]"_s},
  };
  for (const auto& [code, text] : previews)
    EXPECT_EQ(panel.rangePreview(code), text) << code;
}

TEST_F(Panel, OtherCodesHaveNoPreview) {
  for (const int code : {-1, 0, 6, 9, 21, 26, 1000})
    EXPECT_EQ(panel.rangePreview(code), QString()) << code;
}

TEST_F(Panel, PreviewOfABlockWithoutRowsIsEmpty) {
  store.execute("test", "DELETE FROM 过滤条件 WHERE ID BETWEEN 3300 AND 3340");
  EXPECT_EQ(panel.rangePreview(4), QString());
}

TEST_F(Panel, TipKeepsItsTextUpToTheMarker) {
  EXPECT_EQ(panel.updatedTip(5, u"跨度的说明。\r\n当前取值阅览：\r\n\r\n[１]"_s),
            u"跨度的说明。\r\n当前取值阅览：\r\n\r\n[５-１４]"_s);
  EXPECT_EQ(panel.updatedTip(18, u"说明"_s), u"说明当前取值阅览：\r\n\r\n[０-４]"_s);
}

TEST_F(Panel, TipOfATabWithoutPreviewStays) {
  for (const int tab : {1, 7, 8, 10, 11, 15, 16, 22, 26})
    EXPECT_EQ(panel.updatedTip(tab, u"说明当前取值阅览：x"_s), u"说明当前取值阅览：x"_s) << tab;
}

TEST_F(Panel, TemperatureTabsExplainThemselves) {
  EXPECT_EQ(
      ConditionPanel::helpText(20),
      u"温度值5：指的是本期开奖的5个号码在最近号码5期中各码开出次数之和。反映的是整注号码相对于最近５期的冷热程度。"_s);
  EXPECT_EQ(
      ConditionPanel::helpText(21),
      u"温度值10：指的是本期开奖的5个号码在最近号码10期中各码开出次数之和。反映的是整注号码相对于最近１０期的冷热程度。"_s);
  EXPECT_EQ(ConditionPanel::helpText(19), QString());
}

TEST_F(Panel, PositionListWritesItsColumn) {
  ASSERT_EQ(panel.valueLists(15).size(), 7U);
  EXPECT_EQ(panel.valueLists(15)[0].items.join(u' '), u"01 02 03 04 05 06 07 08 09 10 11"_s);
  panel.clickValue(15, 0, 0, true);
  panel.clickValue(15, 0, 10, true);
  panel.clickValue(15, 6, 4, true);
  EXPECT_EQ(workspace.rows("SELECT 号码 FROM 号码特性 WHERE 第1位 = 1"), (QStringList{u"1"_s, u"11"_s}));
  EXPECT_EQ(workspace.rows("SELECT 号码 FROM 号码特性 WHERE 第7位 = 1"), QStringList{u"5"_s});
  EXPECT_EQ(positionNumbers(1), u"01 11"_s);
  EXPECT_EQ(positionNumbers(2), QString());
}

TEST_F(Panel, PositionBoxIsUsableOnlyWithNumbers) {
  EXPECT_FALSE(positionBox(3).enabled);
  EXPECT_EQ(positionBox(3).code, 32);
  EXPECT_EQ(positionBox(3).caption, u"使用第３位定位过滤"_s);
  panel.clickValue(15, 2, 6, true);
  EXPECT_TRUE(positionBox(3).enabled);
  EXPECT_FALSE(positionBox(3).checked);
}

TEST_F(Panel, RemovingTheLastNumberDisablesAndUnticksThePositionBox) {
  panel.clickValue(15, 2, 6, true);
  panel.clickValue(15, 2, 7, true);
  panel.clickSwitch(32, true);
  panel.clickValue(15, 2, 6, false);
  EXPECT_TRUE(positionBox(3).enabled);
  EXPECT_TRUE(positionBox(3).checked);
  panel.clickValue(15, 2, 7, false);
  EXPECT_FALSE(positionBox(3).enabled);
  EXPECT_FALSE(positionBox(3).checked);
  EXPECT_EQ(conditionUse(store, 32), 0);
}

TEST_F(Panel, InvertingAPositionKeepsItsBoxWhicheverNumberItHeld) {
  for (const int only : {0, 10}) {
    std::vector<bool> wanted(11, false);
    wanted[static_cast<std::size_t>(only)] = true;
    panel.selectItems(15, 2, wanted);
    panel.clickSwitch(32, true);
    wanted.flip();
    panel.selectItems(15, 2, wanted);
    EXPECT_EQ(panel.valueLists(15)[2].selected, wanted) << only;
    EXPECT_TRUE(positionBox(3).checked) << only;
  }
  panel.selectItems(15, 2, std::vector<bool>(11, false));
  EXPECT_FALSE(positionBox(3).checked);
}

TEST_F(Panel, PositionBoxThatIsOnWithoutNumbersCanBeSwitchedOff) {
  setConditionUse(store, 30, 1);
  EXPECT_TRUE(positionBox(1).checked);
  EXPECT_TRUE(positionBox(1).enabled);
}

TEST_F(Panel, PositionNumberWithoutRowLeavesSwitchAndColumn) {
  store.execute("test", "UPDATE 号码特性 SET 第2位 = 0");
  panel.clickSwitch(31, true);
  store.execute("test", "DELETE FROM 号码特性 WHERE 号码 = 4");
  const QStringList before = conditions();
  panel.clickValue(15, 1, 3, true);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Panel, PositionToleranceStandsInItsRow) {
  EXPECT_EQ(panel.positionTolerance(), 0);
  panel.setPositionTolerance(2);
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 3901"), QStringList{u"2"_s});
  EXPECT_EQ(panel.positionTolerance(), 2);
}

TEST_F(Panel, ReductionTypeAndOptimisationStandInTheirRows) {
  EXPECT_EQ(panel.reductionType(), 5);
  panel.setReductionType(7);
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 3900"), QStringList{u"7"_s});
  panel.setReductionType(8);
  panel.setReductionType(2);
  EXPECT_EQ(panel.reductionType(), 7);
  const auto box = panel.switches(24).at(0);
  EXPECT_EQ(box.code, 45);
  EXPECT_EQ(box.caption, u"缩水前进行智能优化—自动分析每注号码,提高缩水后大奖命中率"_s);
  EXPECT_FALSE(box.checked);
}

TEST_F(Panel, MatchBoxesWriteTheOneRow) {
  const auto factory = panel.matchState();
  EXPECT_TRUE(factory.used);
  EXPECT_EQ(factory.minimum, 5);
  EXPECT_EQ(factory.match, 4);
  panel.setMatchUsed(false);
  panel.setMatchField(ConditionPanel::MatchField::minimum, 30);
  panel.setMatchField(ConditionPanel::MatchField::maximum, 40);
  panel.setMatchField(ConditionPanel::MatchField::match, 3);
  EXPECT_EQ(workspace.rows("SELECT * FROM 历史数据过滤"), QStringList{u"0 30 40 3"_s});
}

TEST_F(Panel, TabTellsWhetherAnythingOnItIsOn) {
  EXPECT_TRUE(panel.tabInUse(2));
  EXPECT_FALSE(panel.tabInUse(3));
  EXPECT_FALSE(panel.tabInUse(11));
  panel.clickSwitch(11, true);
  EXPECT_TRUE(panel.tabInUse(11));
  EXPECT_FALSE(panel.tabInUse(22));
  panel.clickSwitch(60, true);
  EXPECT_TRUE(panel.tabInUse(22));
  EXPECT_TRUE(panel.tabInUse(23));
  panel.setMatchUsed(false);
  EXPECT_FALSE(panel.tabInUse(23));
  EXPECT_FALSE(panel.tabInUse(0));
}

}  // namespace

}  // namespace elevenfive
