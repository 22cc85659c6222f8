#include "history/statusline.h"

#include <gtest/gtest.h>

#include "tests/history/historytools.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(StatusLine, TellsTheNextPeriodAndToday) {
  EXPECT_EQ(nextQihaoText(19111142, QDate(2019, 11, 12), QDate(2019, 11, 11)),
            u"     ※※※  19111142 期 于 2019-11-12 开奖     今天是： 2019-11-11  ※※※     "_s);
}

TEST(StatusLine, AHistoryIsCompleteUpToTheDayOfTheNextDraw) {
  const QDate today(2019, 11, 11);
  EXPECT_EQ(historyStateText(today, today), u"  ☆☆☆  历史记录： 已更新！  ☆☆☆  "_s);
  EXPECT_EQ(historyStateText(today.addDays(1), today), u"  ☆☆☆  历史记录： 已更新！  ☆☆☆  "_s);
  EXPECT_EQ(historyStateText(today.addDays(-1), today),
            u" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  "_s);
}

TEST(StatusLine, FollowsTheNewestPeriod) {
  TestWorkspace workspace;
  RecordingPanels panels;
  workspace.addDraws(u"19111141 01 02 03 04 05"_s);
  updateStatusLine(workspace.store(), panels, QDate(2019, 11, 11));
  EXPECT_EQ(panels.log, (QStringList{u"3:     ※※※  19111142 期 于 2019-11-11 开奖     今天是： 2019-11-11  ※※※     "_s,
                                     u"1:  ☆☆☆  历史记录： 已更新！  ☆☆☆  "_s}));
}

TEST(StatusLine, OfAnEmptyHistoryNamesPeriodZero) {
  TestWorkspace workspace;
  RecordingPanels panels;
  updateStatusLine(workspace.store(), panels, QDate(2019, 11, 11));
  EXPECT_TRUE(panels.log.first().startsWith(u"3:     ※※※  0 期 于 "_s));
}

}  // namespace
}  // namespace elevenfive
