#include "engine/valuefilters.h"

#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

class ValueFilters : public EngineTest {
 protected:
  using Filter = int (*)(const RunContext& run, Qihao period);

  /// Whether a row passes with only this figure allowed, and fails with all but this one.
  void expectFigure(Filter filter, int code, int firstId, int lastId, const QString& row, int figure) {
    SCOPED_TRACE(row.toStdString() + " " + std::to_string(code));
    use(code);
    for (const bool only : {true, false}) {
      sql("DELETE FROM 日志表");
      addRows(row);
      driver.fillTiaojianValues(firstId, lastId, only ? 0 : 1);
      setValue(firstId + figure, only ? 1 : 0);
      EXPECT_EQ(filter(run(), period), only ? 1 : 0);
      EXPECT_EQ(survivors().size(), only ? 1 : 0);
    }
  }

  /// The one line that a stage leaves.
  QString lineOf(Filter filter, int code, int firstId, int lastId) {
    ports.status.clear();
    sql("DELETE FROM 日志表");
    addRows(u"01 02 03 04 05"_s);
    use(code);
    allow(firstId, lastId);
    EXPECT_EQ(filter(run(), period), 1);
    return ports.status;
  }
};

TEST_F(ValueFilters, FiguresOfOneToFive) {
  const QString row = u"01 02 03 04 05"_s;
  expectFigure(filter_Hezhi, 1, 1000, 1170, row, 15);
  expectFigure(filter_QishuHezhi, 2, 2000, 2170, row, 9);
  expectFigure(filter_OushuHezhi, 3, 3000, 3170, row, 6);
  expectFigure(filter_TouHezhi, 43, 4080, 4099, row, 0);
  expectFigure(filter_WeiHezhi, 44, 4100, 4159, row, 15);
  expectFigure(filter_QishuGeshu, 10, 3640, 3649, row, 3);
  expectFigure(filter_OushuGeshu, 11, 3650, 3659, row, 2);
  expectFigure(filter_Kuadu, 4, 3300, 3340, row, 4);
  expectFigure(filter_JianjuMax, 5, 3400, 3440, row, 1);
  expectFigure(filter_Lianhao, 6, 3450, 3460, row, 6);
  expectFigure(filter_AC, 9, 3600, 3630, row, 0);
}

TEST_F(ValueFilters, FiguresOfSevenToEleven) {
  const QString row = u"07 08 09 10 11"_s;
  expectFigure(filter_Hezhi, 1, 1000, 1170, row, 45);
  expectFigure(filter_TouHezhi, 43, 4080, 4099, row, 2);
  expectFigure(filter_WeiHezhi, 44, 4100, 4159, row, 25);
  expectFigure(filter_Kuadu, 4, 3300, 3340, row, 4);
}

TEST_F(ValueFilters, AcCountsDifferentDifferences) {
  // Differences of 1, 3, 6, 10, 11: 2 5 9 10 3 7 8 4 5 1, so 1 to 5 and 7 to 10: nine, less 4.
  expectFigure(filter_AC, 9, 3600, 3630, u"01 03 06 10 11"_s, 5);
}

TEST_F(ValueFilters, SpanAndGapOfARowThatStandsInAnyOrder) {
  expectFigure(filter_Kuadu, 4, 3300, 3340, u"09 01 05 02 03"_s, 8);
  expectFigure(filter_JianjuMax, 5, 3400, 3440, u"09 01 05 02 03"_s, 4);
}

TEST_F(ValueFilters, LabelsStandAsTheyAre) {
  const QString end = u"过滤后余：１ 注"_s;
  EXPECT_EQ(lineOf(filter_Hezhi, 1, 1000, 1170), u"\r\n\r\n[ 和 值 ]"_s + end);
  EXPECT_EQ(lineOf(filter_QishuHezhi, 2, 2000, 2170), u"\r\n\r\n[奇数和值]"_s + end);
  EXPECT_EQ(lineOf(filter_OushuHezhi, 3, 3000, 3170), u"\r\n\r\n[偶数和值]"_s + end);
  EXPECT_EQ(lineOf(filter_TouHezhi, 43, 4080, 4099), u"\r\n\r\n[头数和值]"_s + end);
  EXPECT_EQ(lineOf(filter_WeiHezhi, 44, 4100, 4159), u"\r\n\r\n[尾数和值]"_s + end);
  EXPECT_EQ(lineOf(filter_QishuGeshu, 10, 3640, 3649), u"\r\n\r\n[奇数个数]"_s + end);
  EXPECT_EQ(lineOf(filter_OushuGeshu, 11, 3650, 3659), u"\r\n\r\n[偶数个数]"_s + end);
  EXPECT_EQ(lineOf(filter_Kuadu, 4, 3300, 3340), u"\r\n\r\n[ 跨 度 ]"_s + end);
  EXPECT_EQ(lineOf(filter_JianjuMax, 5, 3400, 3440), u"\r\n\r\n[最大间距]"_s + end);
  EXPECT_EQ(lineOf(filter_Lianhao, 6, 3450, 3460), u"\r\n\r\n[连号]"_s + end);
  EXPECT_EQ(lineOf(filter_AC, 9, 3600, 3630), u"\r\n\r\n[AC值]"_s + end);
}

TEST_F(ValueFilters, TheFactorySumsRefuseBothEnds) {
  use(1);
  allow(1019, 1040);
  // Sums 15, 19, 40, 41.
  addRows(u"01 02 03 04 05\n01 02 03 04 09\n05 07 08 09 11\n06 07 08 09 11"_s);
  EXPECT_EQ(filter_Hezhi(run(), period), 2);
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 09"_s, u"2: 05 07 08 09 11"_s}));
}

TEST_F(ValueFilters, EverySurvivorOfAllRowsHasTheOddSumThatWasAllowed) {
  use(2);
  int total = 0;
  for (int odd = 0; odd <= 35; ++odd) {
    sql("DELETE FROM 日志表");
    addAllRows();
    driver.fillTiaojianValues(2000, 2170, 0);
    setValue(2000 + odd, 1);
    total += filter_QishuHezhi(run(), period);
    for (const QString& row : numbers()) {
      int sum = 0;
      for (const int n : drawFrom(row))
        sum += n % 2 == 1 ? n : 0;
      EXPECT_EQ(sum, odd);
    }
  }
  EXPECT_EQ(total, 462);  // every row has one odd sum
}

}  // namespace elevenfive
