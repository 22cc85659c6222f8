#include "conditions/zones.h"

#include <gtest/gtest.h>

#include "conditions/conditionpanel.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class ZonesTest : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  ConditionPanel panel{workspace.store()};
  Zones zones{workspace.store(), panel, ports};
};

TEST_F(ZonesTest, FactoryZonesShowTheirNumbers) {
  EXPECT_EQ(zones.showZones(),
            u" 区间1：　０１  ０２  ０３  ０４  ０５  \r\n 区间2：　０６  ０７  ０８  ０９  １０  １１  \r\n"
            u" 区间3：　无号码\r\n 区间4：　无号码\r\n"_s);
}

TEST_F(ZonesTest, ClickPutsANumberInAndTakesItOut) {
  zones.clickNumber(3, 9);
  EXPECT_EQ(zoneText(workspace.store(), 3), u" 区间3：　０９  "_s);
  EXPECT_TRUE(zones.zonesChanged);
  zones.clickNumber(3, 9);
  EXPECT_EQ(zoneText(workspace.store(), 3), u" 区间3：　无号码"_s);
}

TEST_F(ZonesTest, ANumberWithoutRowChangesNoZone) {
  workspace.store().execute("test", "DELETE FROM 号码特性 WHERE 号码 = 9");
  const auto before = workspace.rows("SELECT * FROM 号码特性 ORDER BY 号码");
  zones.clickNumber(3, 9);
  EXPECT_EQ(workspace.rows("SELECT * FROM 号码特性 ORDER BY 号码"), before);
  EXPECT_FALSE(zones.zonesChanged);
}

TEST_F(ZonesTest, NumberInTwoZonesShowsInBothLines) {
  zones.clickNumber(4, 1);
  EXPECT_EQ(zoneMembers(workspace.store(), 1).front(), 1);
  EXPECT_EQ(zoneMembers(workspace.store(), 4), std::vector<int>{1});
}

TEST_F(ZonesTest, ZoneChangeLeavesTheAllowedCounts) {
  const auto before = workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID");
  zones.clickNumber(4, 1);
  zones.clear();
  EXPECT_EQ(workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID"), before);
}

TEST_F(ZonesTest, ClearingEmptiesAllAndSwitchesTheFiltersOff) {
  for (int code = 15; code <= 20; ++code)
    panel.clickSwitch(code, true);
  zones.clear();
  for (int k = 1; k <= 4; ++k)
    EXPECT_TRUE(zoneMembers(workspace.store(), k).empty());
  EXPECT_EQ(
      workspace.rows("SELECT 条件 FROM 过滤条件使用情况 WHERE 使用情况 = 1 AND 条件 BETWEEN 15 AND 20 ORDER BY 条件"),
      (QStringList{u"15"_s, u"20"_s}));
  EXPECT_TRUE(zones.zonesChanged);
}

TEST_F(ZonesTest, ClearingRemindsEachTime) {
  zones.clear();
  zones.clear();
  const QString reminder = u"请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。"_s;
  EXPECT_EQ(ports.boxTexts(), (QStringList{reminder, reminder}));
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
}

TEST_F(ZonesTest, TipShowsTheZone) {
  zones.showTip(3);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(ports.boxes[0].text, u" 区间3：　无号码"_s);
}

TEST_F(ZonesTest, ChangeIsFollowedByOneRecountOfTheWholeHistory) {
  workspace.addDraws(u"11031509 01 02 03 04 11\n11031510 01 02 03 04 05\n11031511 01 02 03 04 06"_s);
  QStringList calls;
  const auto recount = [&](Qihao first, Qihao last) { calls << u"%1 %2"_s.arg(first).arg(last); };
  zones.recountIfChanged(recount);
  EXPECT_TRUE(calls.isEmpty());
  zones.clickNumber(1, 1);
  zones.recountIfChanged(recount);
  zones.recountIfChanged(recount);
  EXPECT_EQ(calls, QStringList{u"11031509 11031511"_s});
}

TEST_F(ZonesTest, ZonesThatDoNotExistChangeNothing) {
  const auto before = workspace.rows("SELECT * FROM 号码特性 ORDER BY 号码");
  zones.clickNumber(0, 1);
  zones.clickNumber(5, 1);
  EXPECT_EQ(workspace.rows("SELECT * FROM 号码特性 ORDER BY 号码"), before);
  EXPECT_FALSE(zones.zonesChanged);
}

}  // namespace

}  // namespace elevenfive
