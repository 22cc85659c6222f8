#include "conditions/quicksetup.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <map>
#include <set>

#include "conditions/pendingaction.h"
#include "conditions/rangegroups.h"
#include "tests/conditions/slowranges.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class Quick : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  QuickSetup quick{workspace.store(), ports};
  std::vector<QuickSetup::Row> form = quick.rows();

  /// Leaves a single row on the form, ticked or not, with a text.
  void only(int number, const QString& text, bool used) {
    form = {quick.rows().at(static_cast<std::size_t>(number))};
    form[0].text = text;
    form[0].used = used;
  }

  QString allowed(int first, int last) {
    return workspace
        .rows(u"SELECT ID FROM 过滤条件 WHERE VALUE > 0 AND ID BETWEEN %1 AND %2 ORDER BY ID"_s.arg(first)
                  .arg(last)
                  .toUtf8()
                  .constData())
        .join(u' ');
  }

  QStringList conditions() { return workspace.rows("SELECT * FROM 过滤条件 ORDER BY ID"); }
};

TEST_F(Quick, FormShowsTwentyTwoRows) {
  ASSERT_EQ(form.size(), 22U);
  EXPECT_EQ(form[0].name, u"和值"_s);
  EXPECT_EQ(form[0].text, u"[19-40]"_s);
  EXPECT_TRUE(form[0].used);
  EXPECT_EQ(form[0].tab, 2);
  EXPECT_EQ(form[0].tip, u"和值，直接在文本框里修改然后提交就可以了。"_s);
  EXPECT_EQ(form[6].text, u"[5-14]"_s);
  EXPECT_EQ(form[21].name, u"区间4"_s);
  EXPECT_EQ(form[21].text, u"[0]"_s);
  EXPECT_FALSE(form[21].used);
}

TEST_F(Quick, RangeTextHasPlainDigitsAndTheWindowOfTheRow) {
  EXPECT_EQ(quick.quickRangeText(0), u"[19-40]"_s);
  EXPECT_EQ(quick.quickRangeText(22), QString());
  quick.setValueRange(1, 4180, -1);  // the first row of the next block, the last of this window
  EXPECT_EQ(quick.quickRangeText(8), u"[3-16] , [20]"_s);
}

TEST_F(Quick, ValueRangeIsABlockOrASingleRow) {
  quick.setValueRange(0, 1000, 1170);
  quick.setValueRange(1, 1001, 1002);
  quick.setValueRange(1, 1005, -1);
  quick.setValueRange(1, 1007, 0);
  EXPECT_EQ(allowed(1000, 1170), u"1001 1002 1005 1007"_s);
}

TEST_F(Quick, ClickOnABoxWritesTheCodeAndNamesTheTab) {
  EXPECT_EQ(quick.clickUse(form[3], true), 18);
  EXPECT_EQ(quick.getQuickUse(43), 1);
  EXPECT_TRUE(form[3].used);
  QuickSetup::Row unknown;
  unknown.code = 999;
  EXPECT_EQ(quick.clickUse(unknown, true), std::nullopt);
  EXPECT_FALSE(quick.setQuickUse(999, 1));
}

TEST_F(Quick, GroupsWithAndWithoutCommasWriteTheSameRows) {
  only(0, u"[20-21],[23],[46-47]"_s, true);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(allowed(1000, 1170), u"1020 1021 1023 1046 1047"_s);
  const QStringList first = conditions();
  only(0, u"[20-21][23][46-47]"_s, true);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(conditions(), first);
  EXPECT_EQ(form[0].text, u"[20-21],[23],[46-47]"_s);
}

TEST_F(Quick, ExamplesOfTheHelpMeanWhatItSays) {
  const auto idsOf = [](int first, int last, const std::set<int>& without) {
    QStringList ids;
    for (int id = first; id <= last; ++id)
      if (!without.contains(id))
        ids << QString::number(id);
    return ids.join(u' ');
  };
  const std::pair<QString, QString> examples[] = {
      {u"[20-39],[41-44],[46-60]"_s, idsOf(1020, 1060, {1040, 1045})},
      {u"[20-39][41-44][46-60]"_s, idsOf(1020, 1060, {1040, 1045})},
      {u"[8]"_s, u"1008"_s},
      {u"[1],[2],[3],[4],[5]"_s, u"1001 1002 1003 1004 1005"_s},
      {u"[1-5]"_s, u"1001 1002 1003 1004 1005"_s},
      {u"[20-60]"_s, idsOf(1020, 1060, {})},
  };
  for (const auto& [text, ids] : examples) {
    only(0, text, true);
    EXPECT_TRUE(quick.submit(form));
    EXPECT_EQ(allowed(1000, 1170), ids) << text.toStdString();
  }
}

TEST_F(Quick, TextThatTheFormShowsCanBeSubmittedAsItStands) {
  const QStringList before = conditions();
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(conditions(), before);
}

TEST_F(Quick, BareRangeGetsItsBrackets) {
  only(0, u"20-39"_s, true);
  quick.submit(form);
  EXPECT_EQ(form[0].text, u"[20-39]"_s);
}

TEST_F(Quick, LastValueOfAWindowIsTakenAndTheNextIgnored) {
  only(18, u"[5]"_s, true);
  quick.submit(form);
  EXPECT_EQ(allowed(3700, 3739), u"3705 3710 3711 3712 3713 3714 3720 3721 3722 3723 3724 3730"_s);
  only(18, u"[6]"_s, true);
  EXPECT_EQ(allowed(3700, 3709), u"3705"_s);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(allowed(3700, 3709), QString());
}

TEST_F(Quick, RangeBeyondTheWindowIsCutToIt) {
  only(6, u"[1-99]"_s, true);
  quick.submit(form);
  EXPECT_EQ(allowed(3300, 3340), u"3301 3302 3303 3304 3305 3306 3307 3308 3309 3310 3311 3312 3313 3314"_s);
}

TEST_F(Quick, StartAboveItsEndSelectsNothing) {
  only(6, u"[9-3]"_s, true);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(allowed(3300, 3340), QString());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"条件设置完成！"_s});
}

TEST_F(Quick, WideFormsCountAsPlainOnes) {
  only(6, u"【1－5】"_s, true);
  quick.submit(form);
  EXPECT_EQ(allowed(3300, 3340), u"3301 3302 3303 3304 3305"_s);
}

TEST_F(Quick, UntickedRowAddsToWhatStands) {
  only(6, u"[1]"_s, false);
  quick.submit(form);
  EXPECT_EQ(allowed(3300, 3308), u"3301 3305 3306 3307 3308"_s);
}

TEST_F(Quick, EmptyTextOfATickedRowIsReported) {
  const QStringList before = conditions();
  only(6, u"  "_s, true);
  EXPECT_FALSE(quick.submit(form));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(ports.boxes[0].text, u"出错！未设置[跨度]的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)"_s);
  EXPECT_EQ(conditions(), before);
}

TEST_F(Quick, EmptyTextOfAnUntickedRowAllowsZero) {
  only(6, QString(), false);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(form[0].text, u"[]"_s);
  EXPECT_EQ(allowed(3300, 3304), u"3300"_s);
}

TEST_F(Quick, IllegalCharacterStopsAllRows) {
  const QStringList before = conditions();
  form[0].text = u"[1-5]"_s;
  form[7].text = u"[a]"_s;
  form[9].text = QString();
  form[12].text = u"５"_s;
  EXPECT_FALSE(quick.submit(form));
  EXPECT_EQ(
      ports.boxTexts(),
      (QStringList{
          u"出错！你设置的[最大间距]的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]或者[5]是合法的)"_s,
          u"出错！未设置[温度值10]的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)"_s,
          u"出错！你设置的[大数个数]的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]或者[5]是合法的)"_s,
      }));
  EXPECT_EQ(conditions(), before);
  EXPECT_EQ(form[12].text, u"[５]"_s);
}

TEST_F(Quick, SuccessIsTold) {
  only(6, u"[5]"_s, true);
  quick.submit(form);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::information);
  EXPECT_EQ(ports.boxes[0].text, u"条件设置完成！"_s);
}

TEST_F(Quick, WindowsOfTheTemperaturesMeetInOneRow) {
  // 温度值5 reaches to 4180, the row of value 0 of 温度值10, which the later row then clears.
  form[8].text = u"[20]"_s;
  form[9].text = u"[7]"_s;
  quick.submit(form);
  EXPECT_EQ(allowed(4160, 4210), u"4187"_s);
  only(8, u"[20]"_s, true);
  quick.submit(form);
  EXPECT_EQ(allowed(4160, 4210), u"4180 4187"_s);
}

TEST_F(Quick, TextOfTenThousandCharactersIsRead) {
  QString text;
  while (text.size() < 10000)
    text += u"[1][3-4],"_s;
  only(18, text, true);
  EXPECT_TRUE(quick.submit(form));
  EXPECT_EQ(allowed(3700, 3709), u"3701 3703 3704"_s);
}

TEST_F(Quick, RowsFollowAnyTextByTheWindowRule) {
  only(18, QString(), true);
  EXPECT_TRUE(rc::check("rows 0 to 5 of a zone", [this] {
    const auto groups = *rc::gen::container<std::vector<std::pair<int, int>>>(
        rc::gen::pair(rc::gen::inRange(0, 9), rc::gen::inRange(0, 9)));
    RC_PRE(!groups.empty());
    QString text;
    std::set<int> expected;
    for (const auto& [first, last] : groups) {
      const bool single = first == last;
      text += single ? u"[%1]"_s.arg(first) : u"[%1-%2]"_s.arg(first).arg(last);
      for (int v = 0; v <= 5; ++v)
        if (v >= first && v <= last)
          expected.insert(v);
    }
    form[0].text = text;
    RC_ASSERT(quick.submit(form));
    QStringList ids;
    for (const int v : expected)
      ids << QString::number(3700 + v);
    RC_ASSERT((allowed(3700, 3709) == ids.join(u' ')));
  }));
}

/// The values of all rows by ID.
std::map<int, int> valuesOf(Store& store) {
  std::map<int, int> values;
  Statement query = store.query("test", "SELECT ID, VALUE FROM 过滤条件");
  while (query.next())
    values[query.integer(0)] = query.integer(1);
  return values;
}

/// What a submitted form leaves of the values, each row read slowly; a row that is refused leaves everything as it was.
std::map<int, int> expectedValues(std::map<int, int> values, const std::vector<QuickSetup::Row>& form) {
  for (const QuickSetup::Row& row : form)
    if (row.used && slowClean(row.text).size() < 3)
      return values;
  for (const QuickSetup::Row& row : form)
    for (auto& [id, value] : values) {
      if (id < row.first || id > row.last)
        continue;
      if (row.used)
        value = 0;
      for (const RangeGroup& group : slowGroups(slowClean(row.text)))
        if (id - row.first >= group.first && id - row.first <= group.last.value_or(group.first))
          value = 1;
    }
  return values;
}

TEST_F(Quick, TheWholeFormFollowsASecondReadingOfItsTexts) {
  const QStringList pieces{u"["_s, u"]"_s,  u"-"_s,  u","_s,   u"【"_s,  u"】"_s,  u"－"_s,    u"[]"_s,      u"0"_s,
                           u"5"_s, u"12"_s, u"65"_s, u"200"_s, u"][ "_s, u"[3]"_s, u"[1-9]"_s, u"[20-200]"_s};
  EXPECT_TRUE(rc::check("22 rows, ticked or not", [&, this] {
    for (QuickSetup::Row& row : form) {
      row.used = *rc::gen::arbitrary<bool>();
      row.text = *rc::gen::inRange(0, 40) == 0 ? QString() : u"7"_s;
      for (const int piece : *rc::gen::resize(
               8, rc::gen::container<std::vector<int>>(rc::gen::inRange(0, static_cast<int>(pieces.size())))))
        row.text += pieces[piece];
    }
    const std::map<int, int> expected = expectedValues(valuesOf(workspace.store()), form);
    quick.submit(form);
    RC_ASSERT(valuesOf(workspace.store()) == expected);
  }));
}

TEST(PendingActions, HaveSixteenCodesInOrder) {
  int code = 0;
  for (const PendingAction& action : pendingActions)
    EXPECT_EQ(action.code, ++code);
  EXPECT_EQ(code, 16);
  EXPECT_EQ(pendingActionOf(0), nullptr);
  EXPECT_EQ(pendingActionOf(17), nullptr);
}

TEST(PendingActions, LeadToTheirTabs) {
  const std::pair<int, int> tabs[] = {{4, 7},  {5, 17},  {6, 16},  {7, 18},  {8, 17},
                                      {9, 19}, {10, 20}, {11, 23}, {12, 22}, {15, 15}};
  for (const auto& [code, tab] : tabs) {
    EXPECT_EQ(pendingActionOf(code)->target, PendingTarget::tab) << code;
    EXPECT_EQ(pendingActionOf(code)->tab, tab) << code;
  }
  EXPECT_EQ(pendingActionOf(8)->caption.toString(), u"间距九..."_s);
  EXPECT_EQ(pendingActionOf(3)->target, PendingTarget::restoreDefaults);
}

}  // namespace

}  // namespace elevenfive
