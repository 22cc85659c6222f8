#include "engine/countfilters.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class CountFilters : public EngineTest {
 protected:
  /// Numbers that a column of 号码特性 holds; all others it does not.
  void setMembers(const char* column, const char* numbers) {
    sql(("UPDATE 号码特性 SET " + std::string(column) + " = 0").c_str());
    sql(("UPDATE 号码特性 SET " + std::string(column) + " = 1 WHERE 号码 IN (" + numbers + ")").c_str());
  }

  /// 01 to 05 hold no big number, 02 to 06 one, ... 06 to 10 five.
  void addLadder() {
    addRows(u"01 02 03 04 05\n02 03 04 05 06\n03 04 05 06 07\n04 05 06 07 08\n05 06 07 08 09\n06 07 08 09 10"_s);
  }
};

TEST_F(CountFilters, BigNumbersAreSixAndAbove) {
  use(12);
  allow(3660, 3661);
  addLadder();
  EXPECT_EQ(filter_Daxiao(run(), period), 2);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"02 03 04 05 06"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[大数个数]过滤后余：２ 注"_s);
}

TEST_F(CountFilters, SmallNumbersAreWhatTheBigColumnDoesNotHold) {
  sql("UPDATE 号码特性 SET 小数 = 1");  // not read
  use(13);
  allow(3675, 3675);
  addLadder();
  EXPECT_EQ(filter_Xiaoshu(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
  EXPECT_EQ(ports.status, u"\r\n\r\n[小数个数]过滤后余：１ 注"_s);
}

TEST_F(CountFilters, BigAndSmallOfARowAddUpToFive) {
  use(12);
  use(13);
  for (int big = 0; big <= 5; ++big) {
    sql("DELETE FROM 日志表");
    addLadder();
    driver.fillTiaojianValues(3660, 3679, 0);
    setValue(3660 + big, 1);
    setValue(3675 - big, 1);
    EXPECT_EQ(filter_Daxiao(run(), period), 1);
    EXPECT_EQ(filter_Xiaoshu(run(), period), 1);
  }
}

TEST_F(CountFilters, HighTailsAreFiveToNine) {
  use(14);
  allow(3685, 3685);
  addRows(u"05 06 07 08 09\n06 07 08 09 10"_s);
  EXPECT_EQ(filter_GaoWei(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"05 06 07 08 09"_s});
  EXPECT_EQ(ports.status, u"\r\n\r\n[高尾码个数]过滤后余：１ 注"_s);
}

TEST_F(CountFilters, LowTailsAreWhatTheHighColumnDoesNotHold) {
  sql("UPDATE 号码特性 SET 低尾码 = 0");  // not read
  use(15);
  allow(3695, 3695);
  addRows(u"01 02 03 10 11\n01 02 03 05 11"_s);
  EXPECT_EQ(filter_DiWei(run(), period), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 10 11"_s});
  EXPECT_EQ(ports.status, u"\r\n\r\n[低尾码个数]过滤后余：１ 注"_s);
}

TEST_F(CountFilters, EachZoneHasItsOwnCodeValuesAndLabel) {
  addRows(u"01 02 03 06 07"_s);
  for (int k = 1; k <= zoneCount; ++k) {
    setMembers(("区间" + std::to_string(k)).c_str(), "1, 2, 6");
    use(15 + k);
    setValue(3700 + 10 * (k - 1) + 3, 1);
    ports.status.clear();
    EXPECT_EQ(filter_Qujian(run(), period, k), 1) << k;
    EXPECT_EQ(ports.status, u"\r\n\r\n[区间%1]过滤后余：１ 注"_s.arg(k));
    use(15 + k, 0);
    driver.fillTiaojianValues(3700, 3739, 0);
  }
}

TEST_F(CountFilters, TheEmptyFourthZonePassesOnZero) {
  use(19);
  setValue(3730, 1);
  addRows(u"01 02 03 06 07\n07 08 09 10 11"_s);
  EXPECT_EQ(filter_Qujian(run(), period, 4), 2);
}

TEST_F(CountFilters, EachGroupHasItsOwnCodeAndValuesAndBearsItsAlias) {
  addRows(u"01 02 03 06 07"_s);
  for (int k = 1; k <= groupCount; ++k) {
    setMembers(("自定义组" + std::to_string(k)).c_str(), "3, 6, 7, 11");
    const int code = k <= 10 ? 19 + k : 40 + k;
    const int first = k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11);
    use(code);
    setValue(first + 3, 1);
    workspace.store().execute("test", "UPDATE 自定义别名 SET 别名 = ? WHERE 序号 = ?", u"热号%1"_s.arg(k), k);
    ports.status.clear();
    EXPECT_EQ(filter_Zidingyi(run(), period, k), 1) << k;
    EXPECT_EQ(ports.status, u"\r\n\r\n[热号%1]过滤后余：１ 注"_s.arg(k));
    use(code, 0);
    setValue(first + 3, 0);
  }
}

TEST_F(CountFilters, GroupElevenDoesNotListenToThePositionSwitches) {
  addRows(u"01 02 03 06 07"_s);
  use(30);
  EXPECT_EQ(filter_Zidingyi(run(), period, 11), 0);
  EXPECT_EQ(ports.status, QString());
  use(51);
  EXPECT_EQ(filter_Zidingyi(run(), period, 11), 0);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(CountFilters, AGroupWithoutMembersPassesOrFailsAllOnZero) {
  addRows(u"01 02 03 06 07\n07 08 09 10 11"_s);
  use(20);
  setValue(3800, 1);
  EXPECT_EQ(filter_Zidingyi(run(), period, 1), 2);
  setValue(3800, 0);
  EXPECT_EQ(filter_Zidingyi(run(), period, 1), 0);
  EXPECT_TRUE(survivors().isEmpty());
}

TEST_F(CountFilters, AMissingAliasGivesAnEmptyLabel) {
  sql("DELETE FROM 自定义别名 WHERE 序号 = 1");
  use(20);
  setValue(3800, 1);
  addRows(u"01 02 03 06 07"_s);
  filter_Zidingyi(run(), period, 1);
  EXPECT_EQ(ports.status, u"\r\n\r\n[]过滤后余：１ 注"_s);
}

TEST_F(CountFilters, ZonesAndGroupsDoNothingAfterAStop) {
  use(16);
  use(20);
  addRows(u"01 02 03 06 07"_s);
  driver.cmm_stop_Click();
  EXPECT_EQ(filter_Qujian(run(), period, 1), 0);
  EXPECT_EQ(filter_Zidingyi(run(), period, 1), 0);
  EXPECT_EQ(survivors().size(), 1);
  EXPECT_EQ(ports.status, QString());
}

TEST_F(CountFilters, AChangedZoneTakesEffectOnTheNextRun) {
  setMembers("区间1", "1, 2, 3, 4, 5");
  use(16);
  allow(3704, 3705);
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(numbers(), (QStringList{u"01 02 03 04 05"_s, u"01 02 03 04 06"_s}));
  setMembers("区间1", "2, 3, 4, 5");
  driver.runGuolvSuoshui(period);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
}

}  // namespace elevenfive
