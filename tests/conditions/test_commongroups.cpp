#include "conditions/commongroups.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <set>

#include "model/store.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The members as text; the message where there is one; "-" where the entry is no group.
QString shown(Store& store, const QString& entry) {
  const auto group = commonGroup(store, entry);
  if (!group)
    return u"-"_s;
  QStringList numbers;
  for (int n = 1; n <= numberCount; ++n)
    if (group->members[static_cast<std::size_t>(n)])
      numbers << QString::number(n);
  return numbers.join(u' ') + group->message;
}

class CommonGroups : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  QString of(const QString& entry) { return shown(workspace.store(), entry); }
};

TEST(CommonGroupEntries, StandInTheirBlocks) {
  EXPECT_EQ(
      commonGroupEntries(11031511).join(u'|'),
      u"奇数号码|偶数号码|-------|11031511期旧码(复码)|11031511期斜码|11031511期孤码|11031511期新码(中码)|"
      u"11031511期跳码(隔码)|11031511期旧码尾数|-------|除3余0(0路)|除3余1(1路)|除3余2(2路)|-------|０_尾|１_尾|２_尾|"
      u"３_尾|４_尾|５_尾|６_尾|７_尾|８_尾|９_尾|-------|除4余0|除4余1|除4余2|除4余3|-------|除5余0|除5余1|除5余2|"
      u"除5余3|"
      u"除5余4|-------|除6余0|除6余1|除6余2|除6余3|除6余4|除6余5"_s);
}

TEST(CommonGroupEntries, AreMeantByTheirTextWithAnyPeriodInFront) {
  const QStringList entries = commonGroupEntries(11031511);
  for (const QString& text : {u"期斜码"_s, u"1期斜码"_s, u"11031511期斜码"_s})
    EXPECT_EQ(entryMeant(entries, text), u"11031511期斜码"_s) << text.toStdString();
  EXPECT_EQ(entryMeant(entries, u"除6余5"_s), u"除6余5"_s);
  for (const QString& text : {u"除7余0"_s, u"1除6余5"_s, u"1_尾"_s, u"x期斜码"_s, u"期斜"_s, u""_s})
    EXPECT_EQ(entryMeant(entries, text), std::nullopt) << text.toStdString();
}

TEST_F(CommonGroups, OddAndEven) {
  EXPECT_EQ(of(u"奇数号码"_s), u"1 3 5 7 9 11"_s);
  EXPECT_EQ(of(u"偶数号码"_s), u"2 4 6 8 10"_s);
}

TEST_F(CommonGroups, Remainders) {
  EXPECT_EQ(of(u"除3余0(0路)"_s), u"3 6 9"_s);
  EXPECT_EQ(of(u"除3余1(1路)"_s), u"1 4 7 10"_s);
  EXPECT_EQ(of(u"除3余2(2路)"_s), u"2 5 8 11"_s);
  EXPECT_EQ(of(u"除4余0"_s), u"4 8"_s);
  EXPECT_EQ(of(u"除4余1"_s), u"1 5 9"_s);
  EXPECT_EQ(of(u"除4余2"_s), u"2 6 10"_s);
  EXPECT_EQ(of(u"除4余3"_s), u"3 7 11"_s);
  EXPECT_EQ(of(u"除5余0"_s), u"5 10"_s);
  EXPECT_EQ(of(u"除5余1"_s), u"1 6 11"_s);
  EXPECT_EQ(of(u"除5余2"_s), u"2 7"_s);
  EXPECT_EQ(of(u"除5余3"_s), u"3 8"_s);
  EXPECT_EQ(of(u"除5余4"_s), u"4 9"_s);
  EXPECT_EQ(of(u"除6余0"_s), u"6"_s);
  EXPECT_EQ(of(u"除6余1"_s), u"1 7"_s);
  EXPECT_EQ(of(u"除6余2"_s), u"2 8"_s);
  EXPECT_EQ(of(u"除6余3"_s), u"3 9"_s);
  EXPECT_EQ(of(u"除6余4"_s), u"4 10"_s);
  EXPECT_EQ(of(u"除6余5"_s), u"5 11"_s);
}

TEST_F(CommonGroups, Tails) {
  EXPECT_EQ(of(u"０_尾"_s), u"10"_s);
  EXPECT_EQ(of(u"１_尾"_s), u"1 11"_s);
  EXPECT_EQ(of(u"２_尾"_s), u"2"_s);
  EXPECT_EQ(of(u"３_尾"_s), u"3"_s);
  EXPECT_EQ(of(u"４_尾"_s), u"4"_s);
  EXPECT_EQ(of(u"５_尾"_s), u"5"_s);
  EXPECT_EQ(of(u"６_尾"_s), u"6"_s);
  EXPECT_EQ(of(u"７_尾"_s), u"7"_s);
  EXPECT_EQ(of(u"８_尾"_s), u"8"_s);
  EXPECT_EQ(of(u"9_尾"_s), u"9"_s);
}

TEST_F(CommonGroups, OfAStretchOfNeighbours) {
  workspace.addDraws(u"11031509 01 02 03 04 11\n11031510 01 02 03 04 05"_s);
  EXPECT_EQ(of(u"11031511期旧码(复码)"_s), u"1 2 3 4 5"_s);
  EXPECT_EQ(of(u"11031511期斜码"_s), u"6"_s);
  EXPECT_EQ(of(u"11031511期孤码"_s), u"7 8 9 10 11"_s);
  EXPECT_EQ(of(u"11031511期新码(中码)"_s), u"6 7 8 9 10"_s);
  EXPECT_EQ(of(u"11031511期跳码(隔码)"_s), u"1 2 3 4 11"_s);
  EXPECT_EQ(of(u"11031511期旧码尾数"_s), u"1 2 3 4 5 11"_s);
}

TEST_F(CommonGroups, NeighboursBelowOneAndAboveElevenAreDropped) {
  workspace.addDraws(u"11031510 01 05 06 07 11"_s);
  EXPECT_EQ(of(u"期斜码"_s), u"2 4 8 10"_s);
  EXPECT_EQ(of(u"期孤码"_s), u"3 9"_s);
}

TEST_F(CommonGroups, WithoutHistoryTheDrawRulesSaySo) {
  EXPECT_EQ(of(u"1期旧码(复码)"_s), u"无法提取上期开奖号码！"_s);
  EXPECT_EQ(of(u"1期斜码"_s), u"无法提取上期开奖号码！"_s);
  EXPECT_EQ(of(u"1期孤码"_s), u"无法提取上期开奖号码！"_s);
  EXPECT_EQ(of(u"1期旧码尾数"_s), u"无法提取上期开奖号码！"_s);
  EXPECT_EQ(of(u"1期新码(中码)"_s), u"无法提取最近2期的开奖号码！"_s);
  EXPECT_EQ(of(u"1期跳码(隔码)"_s), u"无法提取上上期开奖号码！"_s);
}

TEST_F(CommonGroups, WithOneDrawTheRulesOfTwoDrawsSaySo) {
  workspace.addDraws(u"11031510 01 05 06 07 11"_s);
  EXPECT_EQ(of(u"期新码(中码)"_s), u"无法提取最近2期的开奖号码！"_s);
  EXPECT_EQ(of(u"期跳码(隔码)"_s), u"无法提取上上期开奖号码！"_s);
}

TEST_F(CommonGroups, OtherTextsAreNoGroup) {
  for (const QString& entry : {u"-------"_s, u"常用分组"_s, QString(), u"除"_s, u"除0余0"_s, u"除x余y"_s, u"_尾"_s})
    EXPECT_EQ(of(entry), u"-"_s) << entry.toStdString();
}

/// Five different numbers, ascending.
Draw anyDraw() {
  const auto numbers = *rc::gen::unique<std::vector<int>>(5, rc::gen::inRange(1, numberCount + 1));
  Draw draw{};
  std::copy(numbers.begin(), numbers.end(), draw.begin());
  std::sort(draw.begin(), draw.end());
  return draw;
}

TEST_F(CommonGroups, FollowTheirDefinitionsOnAnyDraws) {
  Statement insert = workspace.store().query(
      "test", "INSERT OR REPLACE INTO 历史记录 (期号, 号码1, 号码2, 号码3, 号码4, 号码5) VALUES (?, ?, ?, ?, ?, ?)");
  EXPECT_TRUE(rc::check("sets of numbers", [&] {
    const Draw last = anyDraw();
    const Draw before = anyDraw();
    insert.run(11031509, before[0], before[1], before[2], before[3], before[4]);
    insert.run(11031510, last[0], last[1], last[2], last[3], last[4]);
    const std::set<int> old(last.begin(), last.end());
    const std::set<int> older(before.begin(), before.end());
    std::set<int> around;
    std::set<int> tails;
    for (const int n : old) {
      around.insert({n - 1, n + 1});
      tails.insert({n, n % 10, n % 10 + 10});
    }
    QStringList expected[6];
    for (int n = 1; n <= numberCount; ++n) {
      const QString text = QString::number(n);
      if (around.contains(n) && !old.contains(n))
        expected[0] << text;
      if (!around.contains(n) && !old.contains(n))
        expected[1] << text;
      if (!old.contains(n) && !older.contains(n))
        expected[2] << text;
      if (older.contains(n))
        expected[3] << text;
      if (tails.contains(n))
        expected[4] << text;
      if (old.contains(n))
        expected[5] << text;
    }
    RC_ASSERT((of(u"期斜码"_s) == expected[0].join(u' ')));
    RC_ASSERT((of(u"期孤码"_s) == expected[1].join(u' ')));
    RC_ASSERT((of(u"期新码(中码)"_s) == expected[2].join(u' ')));
    RC_ASSERT((of(u"期跳码(隔码)"_s) == expected[3].join(u' ')));
    RC_ASSERT((of(u"期旧码尾数"_s) == expected[4].join(u' ')));
    RC_ASSERT((of(u"期旧码(复码)"_s) == expected[5].join(u' ')));
  }));
}

}  // namespace

}  // namespace elevenfive
