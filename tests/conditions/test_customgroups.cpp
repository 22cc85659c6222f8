#include "conditions/customgroups.h"

#include <gtest/gtest.h>

#include "conditions/conditionpanel.h"
#include "conditions/conditionrows.h"
#include "engine/runstate.h"
#include "model/errors.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class Groups : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  ConditionPanel panel{workspace.store()};
  CustomGroups groups{workspace.store(), panel, ports, ports};

  QString members(int k) {
    return workspace.rows(u"SELECT 号码 FROM 号码特性 WHERE 自定义组%1 = 1 ORDER BY 号码"_s.arg(k).toUtf8().constData())
        .join(u' ');
  }

  QString allowed(int first, int last) {
    return workspace
        .rows(u"SELECT ID FROM 过滤条件 WHERE VALUE > 0 AND ID BETWEEN %1 AND %2 ORDER BY ID"_s.arg(first)
                  .arg(last)
                  .toUtf8()
                  .constData())
        .join(u' ');
  }

  QString line(int k) { return groups.fillZdyList().value(k - 1); }
};

TEST_F(Groups, ButtonPutsANumberInAndTakesItOut) {
  groups.clickMember(3, 1);
  groups.clickMember(3, 11);
  EXPECT_EQ(members(3), u"1 11"_s);
  EXPECT_EQ(members(4), QString());
  groups.clickMember(3, 1);
  EXPECT_EQ(members(3), u"11"_s);
}

TEST_F(Groups, CountsOfTheFirstTenAndOfTheOthersStandInTheirBlocks) {
  for (int k = 1; k <= 20; ++k)
    groups.clearZdyGroup(k);
  groups.clickCount(1, 0, true);
  groups.clickCount(10, 5, true);
  groups.clickCount(11, 0, true);
  groups.clickCount(20, 5, true);
  EXPECT_EQ(allowed(3800, 3899), u"3800 3895"_s);
  EXPECT_EQ(allowed(4500, 4599), u"4500 4595"_s);
}

TEST_F(Groups, SelectingACountSwitchesTheGroupOn) {
  groups.clickMember(12, 4);
  groups.clickCount(12, 2, true);
  EXPECT_EQ(conditionUse(workspace.store(), 52), 1);
  EXPECT_TRUE(groups.showZdyGroup(12).used);
}

TEST_F(Groups, UnselectingTheLastCountDisablesAndUnticksTheBox) {
  groups.clickMember(1, 4);
  groups.clickCount(1, 2, true);
  groups.clickCount(1, 3, true);
  groups.clickCount(1, 2, false);
  EXPECT_TRUE(groups.showZdyGroup(1).used);
  groups.clickCount(1, 3, false);
  EXPECT_FALSE(groups.showZdyGroup(1).used);
  EXPECT_FALSE(groups.showZdyGroup(1).useEnabled);
  EXPECT_EQ(conditionUse(workspace.store(), 20), 0);
}

TEST_F(Groups, BoxOfAGroupThatLostItsLastCountOpensWithACountOrAnotherGroup) {
  groups.clickMember(1, 4);
  groups.clickCount(1, 2, true);
  groups.clickCount(1, 2, false);
  EXPECT_FALSE(groups.showZdyGroup(1).useEnabled);
  groups.clickCount(1, 0, true);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
  groups.clickMember(1, 4);  // with its last number go its counts
  EXPECT_FALSE(groups.showZdyGroup(1).useEnabled);
  EXPECT_TRUE(groups.showZdyGroup(2).useEnabled);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
}

TEST_F(Groups, BoxOfAGroupWithoutCountsCanBeTicked) {
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
  groups.clickMember(1, 4);
  EXPECT_EQ(allowed(3800, 3809), QString());
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
}

TEST_F(Groups, SelectingManyCountsWritesWhatTheClicksWould) {
  groups.clickMember(2, 9);  // the factory set allows 2 and 4 of this group
  groups.selectCounts(2, {true, true, false, false, true, false});
  EXPECT_EQ(allowed(3810, 3819), u"3810 3811 3814"_s);
  EXPECT_EQ(conditionUse(workspace.store(), 21), 1);
  groups.selectCounts(2, std::vector<bool>(6, false));
  EXPECT_EQ(allowed(3810, 3819), QString());
  EXPECT_EQ(conditionUse(workspace.store(), 21), 0);
}

TEST_F(Groups, SelectingTheCountsThatStandSwitchesTheGroupOnAndSelectingNoneSwitchesItOff) {
  groups.clickMember(2, 9);  // the factory set allows 2 and 4 of this group, and does not use it
  groups.selectCounts(2, {false, false, true, false, true, false});
  EXPECT_EQ(allowed(3810, 3819), u"3812 3814"_s);
  EXPECT_EQ(conditionUse(workspace.store(), 21), 1);
  groups.clickMember(1, 9);  // no count of this group is allowed
  groups.clickUse(1, true);
  groups.selectCounts(1, std::vector<bool>(6, false));
  EXPECT_EQ(conditionUse(workspace.store(), 20), 0);
}

TEST_F(Groups, BoxOfAGroupThatLostItsLastCountOpensWithANewNumber) {
  groups.clickMember(1, 4);
  groups.clickMember(1, 5);
  groups.clickCount(1, 2, true);
  groups.clickCount(1, 2, false);
  EXPECT_FALSE(groups.showZdyGroup(1).useEnabled);
  groups.clickMember(1, 5);  // taken out
  EXPECT_FALSE(groups.showZdyGroup(1).useEnabled);
  groups.clickMember(1, 6);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
}

TEST_F(Groups, BoxOfAGroupThatLostItsLastCountOpensWithACommonGroupAndWithClearing) {
  const auto close = [&] {
    groups.clickMember(1, 4);
    groups.clickCount(1, 2, true);
    groups.clickCount(1, 2, false);
    return !groups.showZdyGroup(1).useEnabled;
  };
  ASSERT_TRUE(close());
  groups.chooseCommon(1, u"奇数号码"_s);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
  ASSERT_TRUE(close());
  groups.clearZdyGroup(1);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
  ASSERT_TRUE(close());
  groups.clearAll();
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
}

TEST_F(Groups, AClickThatIsTakenBackLeavesTheBoxAsItWas) {
  groups.clickMember(1, 4);
  groups.clickCount(1, 2, true);
  workspace.store().execute("test",
                            "CREATE TEMP TRIGGER full BEFORE UPDATE ON 过滤条件使用情况 WHEN OLD.条件 = 20 BEGIN "
                            "SELECT RAISE(ABORT, 'disk full'); END");
  EXPECT_THROW(groups.clickMember(1, 4), Error);  // its last number, its counts, then its switch
  EXPECT_EQ(members(1), u"4"_s);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
  EXPECT_THROW(groups.selectCounts(1, std::vector<bool>(6, false)), Error);
  EXPECT_TRUE(groups.showZdyGroup(1).useEnabled);
}

TEST_F(Groups, CountsAreReadThroughTheBufferOfTheRun) {
  groups.clickMember(12, 4);
  groups.clickCount(12, 2, true);
  groups.clickMember(3, 5);  // not in use: its counts are not told
  RunState run;
  run.tiaojianValue.fill(7);
  EXPECT_EQ(zdyCountsText(workspace.store(), 12, &run), u" 允许开出个数（２个）"_s);
  EXPECT_EQ(std::vector<int>(run.tiaojianValue.begin(), run.tiaojianValue.begin() + 11),
            (std::vector<int>{0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 7}));
  run.tiaojianValue.fill(7);
  zdyLines(workspace.store(), &run);
  EXPECT_EQ(run.tiaojianValue[2], 1);
  EXPECT_EQ(run.tiaojianValue[3], 0);
  groups.clickUse(12, false);
  run.tiaojianValue.fill(7);
  zdyLines(workspace.store(), &run);
  EXPECT_EQ(run.tiaojianValue[2], 7);
}

TEST_F(Groups, AFaultAmongManyCountsTakesThemAllBack) {
  workspace.store().execute("test",
                            "CREATE TEMP TRIGGER full BEFORE UPDATE ON 过滤条件 WHEN OLD.ID = 3813 BEGIN SELECT "
                            "RAISE(ABORT, 'disk full'); END");
  EXPECT_THROW(groups.selectCounts(2, std::vector<bool>(6, true)), Error);
  EXPECT_EQ(allowed(3810, 3819), u"3812 3814"_s);
  EXPECT_EQ(conditionUse(workspace.store(), 21), 0);
}

TEST_F(Groups, LosingTheLastMemberDropsCountsAndSwitch) {
  groups.clickMember(11, 7);
  groups.clickCount(11, 1, true);
  groups.clickMember(11, 7);
  EXPECT_EQ(allowed(4500, 4509), QString());
  EXPECT_EQ(conditionUse(workspace.store(), 51), 0);
  EXPECT_FALSE(groups.showZdyGroup(11).countsEnabled);
}

TEST_F(Groups, LosingTheLastMemberOfAGroupWithoutCountsLeavesItsSwitchAndItsBox) {
  groups.clickMember(1, 5);
  groups.clickUse(1, true);
  groups.clickMember(1, 5);
  EXPECT_EQ(conditionUse(workspace.store(), 20), 1);
  EXPECT_EQ(line(1), u"自定义组1 ——（ 无 号 码 ）"_s);
  groups.clickMember(5, 9);  // in and out again; the factory set allows no count of this group
  groups.clickMember(5, 9);
  EXPECT_TRUE(groups.showZdyGroup(5).useEnabled);
}

TEST_F(Groups, StateShowsMembersAndCounts) {
  EXPECT_FALSE(groups.showZdyGroup(2).countsEnabled);
  groups.clickMember(2, 9);
  const auto state = groups.showZdyGroup(2);  // the factory set allows 2 and 4 of this group
  EXPECT_TRUE(state.members[9]);
  EXPECT_FALSE(state.members[8]);
  EXPECT_TRUE(state.countsEnabled);
  EXPECT_EQ(state.counts, (std::vector<bool>{false, false, true, false, true, false}));
  EXPECT_FALSE(state.used);
  EXPECT_TRUE(state.useEnabled);
}

TEST_F(Groups, LineOfAGroupNotInUse) {
  EXPECT_EQ(line(1), u"自定义组1 ——　未 使 用 "_s);
  EXPECT_EQ(line(20), u"自定义组20 ——　未 使 用 "_s);
  EXPECT_EQ(groups.fillZdyList().size(), 20);
}

TEST_F(Groups, LineOfAGroupInUse) {
  groups.clickMember(1, 1);
  groups.clickMember(1, 11);
  groups.clickCount(1, 0, true);
  groups.clickCount(1, 2, true);
  EXPECT_EQ(line(1), u"自定义组1 ——　号码：（０１,１１） 允许开出个数（０个,２个）"_s);
}

TEST_F(Groups, GroupWithMembersButWithoutCountsSaysSo) {
  groups.clickMember(1, 5);
  groups.clickUse(1, true);
  EXPECT_EQ(line(1), u"自定义组1 ——　号码：（０５）（条 件 未 设 置）"_s);
}

TEST_F(Groups, EmptyGroupInUseHasNoNumbers) {
  groups.clickCount(1, 1, true);
  EXPECT_EQ(zdyMembersText(workspace.store(), 1), u"（ 无 号 码 ）"_s);
  EXPECT_EQ(line(1), u"自定义组1 ——（ 无 号 码 ）"_s);
  EXPECT_EQ(zdyCountsText(workspace.store(), 1), u" 允许开出个数（１个）"_s);
}

TEST_F(Groups, GroupInUseThatACommonGroupEmptiesHasNoNumbers) {
  groups.clickMember(2, 11);  // the factory set allows 2 and 4 of this group
  groups.clickUse(2, true);
  EXPECT_EQ(line(2), u"自定义组2 ——　号码：（１１） 允许开出个数（２个,４个）"_s);
  EXPECT_TRUE(groups.chooseCommon(2, u"1期斜码"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"无法提取上期开奖号码！"_s});
  EXPECT_EQ(line(2), u"1期斜码 ——（ 无 号 码 ）"_s);
  EXPECT_EQ(conditionUse(workspace.store(), 21), 1);
}

TEST_F(Groups, BoxWritesItsSwitch) {
  groups.clickUse(10, true);
  groups.clickUse(11, true);
  EXPECT_EQ(conditionUse(workspace.store(), 29), 1);
  EXPECT_EQ(conditionUse(workspace.store(), 51), 1);
  groups.clickUse(10, false);
  EXPECT_EQ(conditionUse(workspace.store(), 29), 0);
}

TEST_F(Groups, WhileThePanelIsFilledNothingIsWritten) {
  panel.loadingPanel = true;
  groups.clickMember(1, 1);
  groups.clickCount(1, 1, true);
  groups.clickUse(1, true);
  EXPECT_EQ(members(1), QString());
  EXPECT_EQ(allowed(3800, 3809), QString());
  EXPECT_EQ(conditionUse(workspace.store(), 20), 0);
}

/// All that the groups consist of.
class GroupsWithoutRows : public Groups {
 protected:
  QStringList all() {
    return workspace.rows("SELECT * FROM 号码特性 ORDER BY 号码") +
           workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID") +
           workspace.rows("SELECT * FROM 过滤条件使用情况 ORDER BY 条件") +
           workspace.rows("SELECT * FROM 自定义别名 ORDER BY 序号");
  }
};

TEST_F(GroupsWithoutRows, ANumberWithoutRowLeavesTheGroupAsItWas) {
  groups.clickUse(2, true);  // the factory set allows 2 and 4 of this group, which has no numbers
  workspace.store().execute("test", "DELETE FROM 号码特性 WHERE 号码 = 9");
  const QStringList before = all();
  groups.clickMember(2, 9);
  EXPECT_EQ(all(), before);
  EXPECT_TRUE(groups.showZdyGroup(2).useEnabled);
}

TEST_F(GroupsWithoutRows, ACountWithoutRowLeavesTheGroupAsItWas) {
  groups.clickMember(1, 4);
  groups.clickUse(1, true);  // in use, though no count is allowed
  workspace.store().execute("test", "DELETE FROM 过滤条件 WHERE ID = 3803");
  const QStringList before = all();
  groups.clickCount(1, 3, true);
  EXPECT_EQ(all(), before);
  groups.selectCounts(1, {false, false, false, true, false, false});
  EXPECT_EQ(all(), before);
  groups.selectCounts(1, {true, false, false, true, false, false});  // the row that is there takes its count
  EXPECT_EQ(allowed(3800, 3809), u"3800"_s);
}

TEST_F(GroupsWithoutRows, ANameWithoutRowLeavesEveryName) {
  workspace.store().execute("test", "DELETE FROM 自定义别名 WHERE 序号 = 3");
  const QStringList before = all();
  ports.typed = {u"热号"_s};
  groups.rename(3);
  EXPECT_EQ(all(), before);
  EXPECT_EQ(groups.getZdyAlias(3), QString());
}

TEST_F(Groups, GroupsThatDoNotExistChangeNothing) {
  const auto before = workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID");
  for (const int k : {-1, 0, 21}) {
    groups.clickMember(k, 1);
    groups.clickCount(k, 1, true);
    groups.clickUse(k, true);
    groups.clearZdyGroup(k);
    EXPECT_FALSE(groups.chooseCommon(k, u"奇数号码"_s));
  }
  groups.clickCount(1, 6, true);
  groups.clickCount(1, -1, true);
  EXPECT_EQ(workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID"), before);
}

TEST_F(Groups, RenamingAsksAndConfirms) {
  ports.typed = {u"热号"_s};
  EXPECT_TRUE(groups.rename(3));
  ASSERT_EQ(ports.inputs.size(), 1U);
  EXPECT_EQ(ports.inputs[0].title, u"修改为容易识别的名称"_s);
  EXPECT_EQ(ports.inputs[0].prompt, u"【 自定义组3 】 名称修改为："_s);
  EXPECT_EQ(ports.inputs[0].defaultText, u"自定义组3"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"名称已修改完成！"_s});
  EXPECT_EQ(line(3), u"热号 ——　未 使 用 "_s);
}

TEST_F(Groups, TheNewNameShowsBeforeItsBox) {
  ports.typed = {u"热号"_s, QString()};
  QStringList shown;
  const auto show = [&] { shown << line(3) << QString::number(ports.boxes.size()); };
  EXPECT_TRUE(groups.rename(3, show));
  EXPECT_EQ(shown, (QStringList{u"热号 ——　未 使 用 "_s, u"0"_s}));
  EXPECT_FALSE(groups.rename(3, show));
  EXPECT_EQ(shown.size(), 2);
}

TEST_F(Groups, EmptyNameChangesNothing) {
  ports.typed = {QString()};
  EXPECT_FALSE(groups.rename(3));
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(groups.getZdyAlias(3), u"自定义组3"_s);
}

TEST_F(Groups, NameOfFiftyOneCharactersIsRefused) {
  groups.setZdyAlias(3, QString(50, u'名'));
  EXPECT_EQ(groups.getZdyAlias(3), QString(50, u'名'));
  EXPECT_THROW(groups.setZdyAlias(3, QString(51, u'长')), Error);
  EXPECT_EQ(groups.getZdyAlias(3), QString(50, u'名'));
}

TEST_F(Groups, NameWithLineBreaksOrControlCharactersIsRefused) {
  for (const QString& name :
       {u"a\nb"_s, u"a\rb"_s, u"a\tb"_s, u"\x01"_s, u"a\u0085"_s, u"\u2028"_s, u"\u2029x"_s, u"\x7F"_s}) {
    EXPECT_THROW(groups.setZdyAlias(3, name), Error);
    EXPECT_EQ(groups.getZdyAlias(3), u"自定义组3"_s);
  }
}

TEST_F(Groups, NameMayHoldQuotes) {
  const QString name = u"'; DROP TABLE 自定义别名; --\"“"_s;
  groups.setZdyAlias(3, name);
  EXPECT_EQ(groups.getZdyAlias(3), name);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 自定义别名"), QStringList{u"20"_s});
}

TEST_F(Groups, NameOfAGroupWithoutRowIsEmpty) {
  EXPECT_EQ(groups.getZdyAlias(21), QString());
}

TEST_F(Groups, ClearingTakesMembersNameCountsAndSwitch) {
  groups.clickMember(2, 9);
  groups.clickCount(2, 2, true);
  groups.setZdyAlias(2, u"热号"_s);
  groups.clickMember(4, 9);
  groups.clearZdyGroup(2);
  EXPECT_EQ(members(2), QString());
  EXPECT_EQ(groups.getZdyAlias(2), u"自定义组2"_s);
  EXPECT_EQ(allowed(3810, 3819), QString());
  EXPECT_EQ(conditionUse(workspace.store(), 21), 0);
  EXPECT_EQ(members(4), u"9"_s);
  EXPECT_EQ(allowed(3820, 3829), u"3822 3823"_s);
}

TEST_F(Groups, ClearingAllLeavesNoGroup) {
  groups.clickMember(20, 9);
  groups.clickCount(20, 2, true);
  groups.clearAll();
  EXPECT_EQ(allowed(3800, 3899), QString());
  EXPECT_EQ(allowed(4500, 4599), QString());
  EXPECT_EQ(members(20), QString());
}

TEST_F(Groups, CommonGroupReplacesMembersAndGivesItsName) {
  groups.clickMember(2, 11);
  EXPECT_TRUE(groups.chooseCommon(2, u"除3余0(0路)"_s));
  EXPECT_EQ(members(2), u"3 6 9"_s);
  EXPECT_EQ(groups.getZdyAlias(2), u"除3余0(0路)"_s);
  EXPECT_EQ(allowed(3810, 3819), u"3812 3814"_s);
  EXPECT_EQ(conditionUse(workspace.store(), 21), 0);
  EXPECT_TRUE(groups.chooseCommon(2, u"１_尾"_s));
  EXPECT_EQ(members(2), u"1 11"_s);
  EXPECT_EQ(groups.getZdyAlias(2), u"１_尾"_s);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(Groups, RuleLineAndUnknownEntriesAreNoGroup) {
  groups.clickMember(2, 11);
  for (const QString& entry : {u"-------"_s, u"常用分组"_s, QString()})
    EXPECT_FALSE(groups.chooseCommon(2, entry)) << entry.toStdString();
  EXPECT_EQ(members(2), u"11"_s);
  EXPECT_EQ(groups.getZdyAlias(2), u"自定义组2"_s);
}

TEST_F(Groups, GroupOfAMissingDrawIsEmptiedAfterItsMessage) {
  workspace.addDraws(u"11031510 01 02 03 04 05"_s);
  groups.clickMember(2, 11);
  EXPECT_TRUE(groups.chooseCommon(2, u"11031511期新码(中码)"_s));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::information);
  EXPECT_EQ(ports.boxes[0].text, u"无法提取最近2期的开奖号码！"_s);
  EXPECT_EQ(members(2), QString());
  EXPECT_EQ(groups.getZdyAlias(2), u"11031511期新码(中码)"_s);
}

TEST(GroupCaptions, NameTheGroup) {
  EXPECT_EQ(zdyColumn(20), u"自定义组20"_s);
  EXPECT_EQ(zdySwitchCaption(1), u"使用“自定义组1”过滤"_s);
  EXPECT_EQ(zdyCountItems().size(), 6);
}

}  // namespace

}  // namespace elevenfive
