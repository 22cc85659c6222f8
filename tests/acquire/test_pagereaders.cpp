#include "acquire/pagereaders.h"

#include <gtest/gtest.h>

#include "tests/support/fakepageloader.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QUrl sitePage(u"http://results.test/chart.asp?siteid=2"_s);

class SiteListTest : public ::testing::Test {
 protected:
  FakePage& page() { return web.pages[sitePage.toString()]; }
  FakeWeb web;
  SiteList list{web.loaders(), sitePage, 100};
};

TEST_F(SiteListTest, ALineGivesItsNumberAndItsName) {
  EXPECT_EQ(list.getSiteList(u"<DD><A href=\"/chart.asp?siteid=2\" >\"广东11选5</A></DD>\r\n<p>other</p>"_s), 1);
  EXPECT_EQ(list.sites()[0].number, 2);
  EXPECT_EQ(list.sites()[0].name, u"广东"_s);  // behind "2&&"
}

TEST_F(SiteListTest, TheNameBeginsWithTheSecondCharacterBehindTheMark) {
  list.getSiteList(u"siteid=14\"x山 东11选5</A></DD>"_s);
  EXPECT_EQ(list.sites()[0].number, 14);
  EXPECT_EQ(list.sites()[0].name, u"山东"_s);
}

TEST_F(SiteListTest, ALineWithoutAQuoteHasNoName) {
  list.getSiteList(u"SITEID=7>江西"_s);
  EXPECT_EQ(list.sites()[0].number, 7);
  EXPECT_EQ(list.sites()[0].name, QString());
}

TEST_F(SiteListTest, ThereAreAtMost25Sites) {
  QString text;
  for (int i = 1; i <= 30; ++i)
    text += u"siteid=%1\"xa\r\n"_s.arg(i);
  EXPECT_EQ(list.getSiteList(text), 25);
  EXPECT_EQ(list.sites().back().number, 25);
}

TEST_F(SiteListTest, WithoutATextTheStretchOfThePageIsReadAndLoadedOnce) {
  page().markup =
      u"siteid=1\"xa\n"_s + QString(1987, u'.') + u"\nsiteid=2\"xb\n"_s + QString(2987, u'.') + u"\nsiteid=3\"xc\n"_s;
  EXPECT_EQ(list.getSiteList({}), 1);
  EXPECT_EQ(list.sites()[0].number, 2);
  EXPECT_EQ(list.getSiteList({}), 1);
  EXPECT_EQ(web.log.filter(u"navigate"_s).size(), 1);
}

TEST_F(SiteListTest, APageThatNeverComesGivesNoSites) {
  page().afterMs = -1;
  EXPECT_EQ(list.getSiteList({}), 0);
}

const QUrl listUrl(u"http://second.test/list.html?x=1"_s);
const QDate march(2011, 3, 5);

TEST(DayPageUrl, IsMadeOfWhatStandsBeforeTheDate) {
  const QString markup =
      u"2011-03-05 <b>选择期号</b><SELECT><option value=\"/a/d110305.html\">2011-03-05</option></SELECT>"_s;
  EXPECT_EQ(dayPageUrl(march, listUrl, markup), u"http://second.test/syxw/syxwlssj/d110305.html"_s);
}

TEST(DayPageUrl, IsEmptyWhereTheDayOrItsStretchIsMissing) {
  EXPECT_EQ(dayPageUrl(march, listUrl, u"选择期号 <option value=\"/a/d1.html\">2011-03-06</select>"_s), QString());
  EXPECT_EQ(dayPageUrl(march, listUrl, u"<option value=\"/a/d110305.html\">2011-03-05</select>"_s), QString());
  EXPECT_EQ(dayPageUrl(march, listUrl, u"选择期号 <option value=\"/a/d110305.html\">2011-03-05"_s), QString());
}

TEST(DayPageUrl, NeedsTheDateAbovePlace15) {
  // 选择期号 takes places 1 to 4; the date stands at place 15, then at 16.
  EXPECT_EQ(dayPageUrl(march, listUrl, u"选择期号aaaa/d1.bb2011-03-05</select>"_s), QString());
  EXPECT_EQ(dayPageUrl(march, listUrl, u"选择期号aaaaa/d1.bb2011-03-05</select>"_s),
            u"http://second.test/syxw/syxwlssj/d1.html"_s);
  EXPECT_EQ(dayPageUrl(march, listUrl, u"选择期号aaaaaa/.d1bb2011-03-05</select>"_s),
            QString());  // nothing before the dot
}

TEST(DayPageUrl, LoadsTheListPage) {
  FakeWeb web;
  web.pages[listUrl.toString()].markup = u"选择期号aaaaa/d1.bb2011-03-05</select>"_s;
  FakePageLoader page(web);
  EXPECT_EQ(getDayPageUrl(page, march, listUrl), u"http://second.test/syxw/syxwlssj/d1.html"_s);
}

TEST(QihaoWidth, IsToldByTheFirstPeriodCell) {
  EXPECT_EQ(getQihaoWidth(u"<td class=\"Chart-Bg-Qh\">110315</td>"_s), 6);
  EXPECT_EQ(getQihaoWidth(u"<td class=\"chart-bg-qh\">1103151001</td>"_s), 10);
}

TEST(QihaoWidth, IsEightWhereNothingFits) {
  EXPECT_EQ(getQihaoWidth(QString()), 8);
  EXPECT_EQ(getQihaoWidth(u"chart-bg-qh>11031<"_s), 8);
  EXPECT_EQ(getQihaoWidth(u"chart-bg-qh>11031510011<"_s), 8);
  EXPECT_EQ(getQihaoWidth(u"chart-bg-qh>1103x5<"_s), 8);
  EXPECT_EQ(getQihaoWidth(u"chart-bg-qh>110315"_s), 8);
  EXPECT_EQ(getQihaoWidth(u"chart-bg-qh"_s), 8);
}

TEST(DigitsOnly, TurnsRunsOfOtherCharactersIntoOneMark) {
  EXPECT_EQ(getDigitsOnly(u"第110315期 2011/03/15: 01, 02"_s), u"#110315#2011/03/15#01#02"_s);
  EXPECT_EQ(getDigitsOnly({}), QString());
}

TEST(DrawAfterMark, ReadsDateAndNumbersAtTheirPlaces) {
  MarkedDraw draw;
  const QString text = getDigitsOnly(u"期 110314 2011/03/14 x 第110315期 2011/03/15: 01 02 13 04 11 完"_s);
  EXPECT_TRUE(getDrawAfterMark(110315, text, draw));
  EXPECT_EQ(draw.date, u"2011/03/15"_s);
  EXPECT_EQ(draw.numbers, (std::array<int, 5>{1, 2, 1, 4, 11}));  // 13 modulo 12
}

TEST(DrawAfterMark, SaysWhereTheMarkIsMissing) {
  MarkedDraw draw;
  EXPECT_FALSE(getDrawAfterMark(110315, u"110315#2011/03/15"_s, draw));
  EXPECT_TRUE(getDrawAfterMark(110315, u"#110315"_s, draw));
  EXPECT_EQ(draw.numbers, (std::array<int, 5>{}));
}

TEST(SiteListPage, StandsOnTheResultsSiteOfTheGame) {
  EXPECT_EQ(siteListUrl(u"http://{province}.results.test/"_s, u"广东11选5"_s),
            QUrl(u"http://gd.results.test/chart.asp?siteid=2"_s));
  EXPECT_EQ(siteListUrl(u"http://{province}.results.test"_s, u"重庆11选5"_s), QUrl());
  EXPECT_EQ(siteListUrl(QString(), u"广东11选5"_s), QUrl());
}

}  // namespace
}  // namespace elevenfive
