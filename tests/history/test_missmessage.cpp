#include "history/missmessage.h"

#include <gtest/gtest.h>

#include "history/miss.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(MissMessage, TellsAllFiguresOfANumberThatCameThreeTimes) {
  MissFigures figures;
  figures.longest = 41;
  figures.average = 2;
  figures.current = 7;
  figures.hits = 3;
  figures.lastGap = 5;
  EXPECT_EQ(missMessage(4, 11031510, figures),
            u"号码 04 (截止 11031510 期)\r\n_____________________\r\n\r\n总共开出：3 期 \r\n\r\n历史遗漏最大值：41 期"
            "\r\n\r\n历史遗漏平均值：2 期\r\n\r\n最近一次的遗漏值：5 期\r\n\r\n第11031510期遗漏值：7 期"_s);
}

TEST(MissMessage, TellsOnlyTheHitsOfANumberThatCameTwice) {
  MissFigures figures;
  figures.longest = 41;
  figures.hits = 2;
  EXPECT_EQ(missMessage(11, 2147483647, figures), u"(号码 11 (截止 2147483647 期))  总共开出：2 期"_s);
}

TEST(MissMessage, OfANumberThatNeverCameTellsZeroHits) {
  EXPECT_EQ(missMessage(1, 5, MissFigures{}), u"(号码 01 (截止 5 期))  总共开出：0 期"_s);
}

}  // namespace
}  // namespace elevenfive
