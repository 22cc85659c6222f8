#include "acquire/catalogue.h"

#include <gtest/gtest.h>

#include "acquire/sources.h"
#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class CatalogueTest : public ::testing::Test {
 protected:
  TestWorkspace w;
  Catalogue catalogue{w.store()};

  QString urlOf(int index) {
    catalogue.selectCaizong(index);
    return catalogue.getSourceUrl();
  }
};

TEST_F(CatalogueTest, ShowsTheTwentyNineGamesInOrderWithTheFirstSelected) {
  const std::vector<GameOption> games = catalogue.showCaizongList();
  ASSERT_EQ(games.size(), 29U);
  EXPECT_EQ(games[0].name, u"山东11选5(十一运夺金)"_s);
  EXPECT_EQ(games[2].name, u"多乐彩(江西11选5)"_s);
  EXPECT_EQ(games[28].name, u"北京11选5"_s);
  for (const GameOption& game : games)
    EXPECT_EQ(game.inUse, game.index == 0) << game.index;
}

TEST_F(CatalogueTest, SelectingMarksExactlyOneRow) {
  catalogue.selectCaizong(5);
  EXPECT_EQ(w.rows("SELECT 序号, 使用 FROM 彩票类型 WHERE 使用 <> 0"), QStringList{u"5 1"_s});
  EXPECT_EQ(catalogue.getLotteryName(), u"上海11选5"_s);
  EXPECT_TRUE(catalogue.updateAddress().endsWith(u"/?op=dcjb&num="_s));
}

TEST_F(CatalogueTest, ARowThatDoesNotExistIsRefusedAndTheSelectionStays) {
  EXPECT_THROW(catalogue.selectCaizong(29), MissingData);
  EXPECT_THROW(catalogue.selectCaizong(-1), MissingData);
  EXPECT_EQ(w.rows("SELECT 序号 FROM 彩票类型 WHERE 使用 > 0"), QStringList{u"0"_s});
}

TEST_F(CatalogueTest, ThePageHoldsTheLatestHundredDrawsOfTheProvince) {
  EXPECT_EQ(catalogue.getSourceUrl(), u"https://sd.results.example/?op=dcjb&num=100"_s);
}

TEST_F(CatalogueTest, WordsAreFoundAnywhereInTheName) {
  EXPECT_EQ(urlOf(2), u"https://jx.results.example/?op=dcjb&num=100"_s);    // 多乐彩(江西11选5)
  EXPECT_EQ(urlOf(26), u"https://nmg.results.example/?op=dcjb&num=100"_s);  // 内蒙古11选5
  EXPECT_EQ(urlOf(6), u"https://hlj.results.example/?op=dcjb&num=100"_s);   // 黑龙江11选5
}

TEST_F(CatalogueTest, HebeiHasThePageOfHubei) {
  const QString hubei = urlOf(11);
  EXPECT_FALSE(hubei.isEmpty());
  EXPECT_EQ(urlOf(23), hubei);
}

TEST_F(CatalogueTest, FiveProvincesHaveNoPageAndAllOthersHave) {
  QStringList without;
  for (const GameOption& game : catalogue.showCaizongList())
    if (urlOf(game.index).isEmpty())
      without << game.name;
  EXPECT_EQ(without, (QStringList{u"重庆11选5"_s, u"四川11选5"_s, u"河南11选5"_s, u"青海11选5"_s, u"西藏11选5"_s}));
}

TEST_F(CatalogueTest, WithNoGameInUseNameAndAddressAreEmpty) {
  w.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  EXPECT_EQ(catalogue.getLotteryName(), QString());
  EXPECT_EQ(catalogue.getSourceUrl(), QString());
}

TEST_F(CatalogueTest, TheFirstRowInUseCounts) {
  w.store().execute("test", "UPDATE 彩票类型 SET 使用 = 1 WHERE 序号 IN (4, 9)");
  w.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0 WHERE 序号 = 0");
  EXPECT_EQ(catalogue.getLotteryName(), u"江苏11选5"_s);
}

TEST_F(CatalogueTest, TheSitesAddressIsConfiguration) {
  setSourceAddress(w.store(), resultsSite.name.toString(), u"http://localhost:8080/{province}/"_s);
  EXPECT_EQ(catalogue.getSourceUrl(), u"http://localhost:8080/sd/?op=dcjb&num=100"_s);
  setSourceAddress(w.store(), resultsSite.name.toString(), u""_s);
  EXPECT_EQ(catalogue.getSourceUrl(), QString());
}

TEST_F(CatalogueTest, ChangingTheGameKeepsTheDraws) {
  w.addDraws(u"11031510 01 02 03 04 05"_s);
  catalogue.selectCaizong(5);
  EXPECT_EQ(w.rows("SELECT 期号 FROM 历史记录"), QStringList{u"11031510"_s});
}

}  // namespace
}  // namespace elevenfive
