#include "engine/positionfilter.h"

#include "model/errors.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class PositionFilter : public EngineTest {
 protected:
  void allowAt(int place, const char* numbers) {
    use(29 + place);
    const std::string column = "第" + std::to_string(place) + "位";
    sql(("UPDATE 号码特性 SET " + column + " = (号码 IN (" + numbers + "))").c_str());
  }
};

TEST_F(PositionFilter, ColumnsAreNamedByPlace) {
  EXPECT_EQ(positionColumn(1), u"第1位"_s);
  EXPECT_EQ(positionColumn(7), u"第7位"_s);
}

TEST_F(PositionFilter, WithoutAPlaceInUseNothingIsSaid) {
  addRows(u"01 02 03 04 05"_s);
  use(35);
  use(36);
  EXPECT_EQ(filter_Dingwei(run(), period), 0);
  EXPECT_EQ(ports.status, QString());
  EXPECT_EQ(survivors().size(), 1);
}

TEST_F(PositionFilter, ARowMayMissAsManyPlacesAsTheToleranceSays) {
  allowAt(1, "1");
  allowAt(3, "3");
  setValue(3901, 1);
  addRows(u"01 02 03 04 05\n01 02 04 05 06\n02 03 04 05 06\n02 03 05 06 07"_s);
  EXPECT_EQ(filter_Dingwei(run(), period), 2);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 02 04 05 06"_s}));
  EXPECT_EQ(ports.status, u"\r\n\r\n[号码定位,容错值=１]过滤后余：２ 注"_s);
}

TEST_F(PositionFilter, AToleranceOfAllPlacesIsToldAndRemovesNothing) {
  allowAt(1, "1");
  allowAt(3, "3");
  setValue(3901, 2);
  addRows(u"07 08 09 10 11"_s);
  EXPECT_EQ(filter_Dingwei(run(), period), 0);
  EXPECT_EQ(ports.status, u"\r\n\r\n[号码定位,容错值=２] <容错值太大无法过滤掉号码.>"_s);
  EXPECT_EQ(survivors().size(), 1);
  EXPECT_EQ(ports.yields, 0);
}

TEST_F(PositionFilter, APlaceWithoutANumberIsMissedByAll) {
  allowAt(2, "NULL");
  addRows(u"01 02 03 04 05\n07 08 09 10 11"_s);
  EXPECT_EQ(filter_Dingwei(run(), period), 0);
  EXPECT_TRUE(survivors().isEmpty());
  EXPECT_EQ(ports.status, u"\r\n\r\n[号码定位,容错值=０]过滤后余：０ 注"_s);
}

TEST_F(PositionFilter, TheMarkIsSetToOneAndTheRunsToleranceHasNoPart) {
  driver.state().rongcuoValue = 3;
  allowAt(5, "5");
  addRows(u"01 02 03 04 05\n07 08 09 10 11"_s);
  sql("UPDATE 日志表 SET 过滤标记 = 8");
  EXPECT_EQ(filter_Dingwei(run(), period), 1);
  EXPECT_EQ(marks(), QStringList{u"1"_s});
}

TEST_F(PositionFilter, ThePlaceIsThatOfTheRowNotOfTheOrder) {
  allowAt(1, "9");
  addRows(u"09 01 02 03 04"_s);
  EXPECT_EQ(filter_Dingwei(run(), period), 1);
}

TEST_F(PositionFilter, NoRowsNoLine) {
  allowAt(1, "1");
  EXPECT_EQ(filter_Dingwei(run(), period), 0);
  EXPECT_EQ(ports.status, QString());
}

TEST_F(PositionFilter, AStopKeepsTheRunningLineAndTheRowsNotReached) {
  allowAt(1, "1");
  addRows(u"02 03 04 05 06\n03 04 05 06 07"_s);
  stopAtYield(1);
  EXPECT_EQ(filter_Dingwei(run(), period), 0);
  EXPECT_EQ(survivors(), QStringList{u"2: 03 04 05 06 07"_s});
  EXPECT_EQ(statusLines(), QStringList{u"[号码定位]过滤正在进行中．．．"_s});
}

TEST_F(PositionFilter, ABadNumberEndsThePass) {
  allowAt(1, "1");
  addRows(u"02 03 04 05 06\n03 04 05 06 200"_s);
  EXPECT_THROW(filter_Dingwei(run(), period), NumberFault);
  EXPECT_EQ(survivors().size(), 2);
}

}  // namespace elevenfive
