#include "engine/patternfilters.h"

#include "engine/pipeline.h"
#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class PatternFilters : public EngineTest {
 protected:
  using Filter = int (*)(const RunContext& run, Qihao period);

  /// Whether the row's form has this code: it passes with only this one allowed.
  bool hasForm(Filter filter, int code, int firstId, int lastId, const QString& row, int form) {
    sql("DELETE FROM 日志表");
    addRows(row);
    use(code);
    driver.fillTiaojianValues(firstId, lastId, 0);
    setValue(firstId + form, 1);
    return filter(run(), period) == 1;
  }
};

TEST_F(PatternFilters, TailForms) {
  const auto form = [&](const QString& row, int code) { return hasForm(filter_WeiXingshi, 37, 4000, 4009, row, code); };
  EXPECT_TRUE(form(u"01 02 03 04 05"_s, 0));
  EXPECT_TRUE(form(u"01 02 03 11 10"_s, 1));  // tails 1 2 3 1 0
  EXPECT_TRUE(form(u"01 11 02 03 04"_s, 1));
  EXPECT_FALSE(form(u"01 02 03 04 11"_s, 0));
}

TEST_F(PatternFilters, HeadFormsHaveCodesOfTheirOwn) {
  const auto form = [&](const QString& row, int code) { return hasForm(filter_TouXingshi, 42, 4070, 4079, row, code); };
  EXPECT_TRUE(form(u"01 02 03 04 05"_s, 2));
  EXPECT_TRUE(form(u"01 02 03 10 11"_s, 0));
  EXPECT_TRUE(form(u"01 02 03 04 11"_s, 1));
}

TEST_F(PatternFilters, SpacingBySeven) {
  // Residues of number minus 1 by seven: 1 and 8 share 0, 2 and 9 share 1, 3 and 10 share 2.
  const auto form = [&](const QString& row, int code) { return hasForm(filter_Jianju7, 39, 4020, 4029, row, code); };
  EXPECT_TRUE(form(u"01 02 03 04 05"_s, 0));
  EXPECT_TRUE(form(u"01 02 03 04 08"_s, 1));
  EXPECT_TRUE(form(u"01 02 03 08 09"_s, 2));
}

TEST_F(PatternFilters, SpacingByNine) {
  // 1 and 10 share 0, 2 and 11 share 1.
  const auto form = [&](const QString& row, int code) { return hasForm(filter_Jianju9, 38, 4010, 4019, row, code); };
  EXPECT_TRUE(form(u"01 02 03 04 10"_s, 1));
  EXPECT_TRUE(form(u"01 02 03 10 11"_s, 2));
}

TEST_F(PatternFilters, SpacingByElevenAndTwelveKeepsAllNumbersApart) {
  EXPECT_TRUE(hasForm(filter_Jianju11, 40, 4030, 4040, u"01 02 03 10 11"_s, 0));
  EXPECT_TRUE(hasForm(filter_Jianju12, 41, 4050, 4069, u"01 02 03 10 11"_s, 0));
}

TEST_F(PatternFilters, LargerClassesOfAChangedTableHaveTheOtherCodes) {
  // All numbers up to 3 in one class beside 尾8, so the row falls 3,1,1; up to 4: 4,1; with 8 too: 5.
  sql("UPDATE 号码特性 SET 尾1 = 0, 尾2 = 0, 尾3 = 0, 尾4 = 0, 尾8 = 0");
  sql("UPDATE 号码特性 SET 尾0 = (号码 <= 3)");
  sql("UPDATE 号码特性 SET 尾4 = (号码 = 4), 尾8 = (号码 = 8)");
  const auto form = [&](int code) { return hasForm(filter_WeiXingshi, 37, 4000, 4009, u"01 02 03 04 08"_s, code); };
  EXPECT_TRUE(form(3));
  sql("UPDATE 号码特性 SET 尾4 = (号码 = 4 OR 号码 = 8), 尾8 = 0");
  EXPECT_TRUE(form(4));
  sql("UPDATE 号码特性 SET 尾0 = (号码 <= 4), 尾4 = (号码 = 8)");
  EXPECT_TRUE(form(5));
  sql("UPDATE 号码特性 SET 尾0 = 1, 尾4 = 0, 尾5 = 0, 尾6 = 0, 尾7 = 0, 尾9 = 0");
  EXPECT_TRUE(form(6));
}

TEST_F(PatternFilters, ATableWithoutClassesEndsTheStageClearly) {
  sql("UPDATE 号码特性 SET 尾0=0, 尾1=0, 尾2=0, 尾3=0, 尾4=0, 尾5=0, 尾6=0, 尾7=0, 尾8=0, 尾9=0");
  use(37);
  allow(4000, 4009);
  addRows(u"01 02 03 04 05"_s);
  EXPECT_THROW(filter_WeiXingshi(run(), period), NumberFault);
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(PatternFilters, RowsBeyondTheLastCodeAreNeverRead) {
  use(37);
  allow(4007, 4009);
  addRows(u"01 02 03 04 05\n01 02 03 10 11"_s);
  EXPECT_EQ(filter_WeiXingshi(run(), period), 0);
}

TEST_F(PatternFilters, TheSpacingStagesAreNoPartOfARun) {
  addRows(u"01 02 03 04 05"_s);
  for (int code = 38; code <= 41; ++code)
    use(code);  // in use, and no form allowed
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(survivors().size(), 1);
  EXPECT_FALSE(ports.status.contains(u"间距"_s));
}

TEST_F(PatternFilters, LabelsStandAsTheyAre) {
  addRows(u"01 02 03 04 05"_s);
  for (const int code : {37, 38, 39, 40, 41, 42})
    use(code);
  allow(4000, 4079);
  for (const Filter filter :
       {filter_WeiXingshi, filter_TouXingshi, filter_Jianju9, filter_Jianju7, filter_Jianju11, filter_Jianju12})
    EXPECT_EQ(filter(run(), period), 1);
  EXPECT_EQ(statusLines(), (QStringList{u"[尾数形式]过滤后余：１ 注"_s, u"[头数形式]过滤后余：１ 注"_s,
                                        u"[间距九]过滤后余：１ 注"_s, u"[间距七]过滤后余：１ 注"_s,
                                        u"[间距十一]过滤后余：１ 注"_s, u"[间距十二]过滤后余：１ 注"_s}));
}

}  // namespace elevenfive
