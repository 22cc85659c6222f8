#include "acquire/pagerules.h"

#include <gtest/gtest.h>

#include "acquire/pagemessages.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QUrl asked(u"http://gd.site.test/?op=dcjb&num=100"_s);

bool fetched(const QString& address, FetchKind kind) {
  return mayFetch(asked, QUrl(address), kind);
}

bool goes(const QString& address, LeaveKind kind, bool top = true) {
  return mayGo(asked, QUrl(address), kind, top);
}

TEST(PageRules, OnlyWebAddressesAreLoaded) {
  EXPECT_TRUE(isWebAddress(asked));
  EXPECT_TRUE(isWebAddress(QUrl(u"https://a.test"_s)));
  for (const QString& address : {u"file:///etc/passwd"_s, u"javascript:1"_s, u"data:text/html,x"_s, u"ftp://a.test/"_s,
                                 u"chrome://version"_s, u"view-source:http://a.test"_s, u"a.test"_s, QString()})
    EXPECT_FALSE(isWebAddress(QUrl(address))) << address.toStdString();
}

TEST(PageRules, ThePageItselfComesFromItsOwnSite) {
  EXPECT_TRUE(fetched(u"http://gd.site.test/other"_s, FetchKind::document));
  EXPECT_TRUE(fetched(u"https://gd.site.test/"_s, FetchKind::document));
  EXPECT_FALSE(fetched(u"http://gd.site.test:8080/"_s, FetchKind::document));
  EXPECT_TRUE(fetched(u"http://www.site.test/gd"_s, FetchKind::document));
  EXPECT_TRUE(fetched(u"http://site.test/"_s, FetchKind::document));
  EXPECT_FALSE(fetched(u"http://othersite.test/"_s, FetchKind::document));
  EXPECT_FALSE(fetched(u"http://elsewhere.test/"_s, FetchKind::document));
}

TEST(PageRules, WhatWasAskedForSecurelyDoesNotTurnPlain) {
  EXPECT_FALSE(isSameHost(QUrl(u"https://a.test"_s), QUrl(u"http://a.test"_s)));
  EXPECT_FALSE(mayHoldPage(QUrl(u"https://gd.a.test"_s), QUrl(u"http://www.a.test"_s)));
  EXPECT_TRUE(mayHoldPage(QUrl(u"http://gd.a.test"_s), QUrl(u"https://www.a.test"_s)));
  EXPECT_FALSE(isSameHost(QUrl(u"http://a.test:81"_s), QUrl(u"https://a.test:82"_s)));
}

TEST(PageRules, ScriptsAndDataComeFromItsSite) {
  EXPECT_TRUE(fetched(u"http://static.site.test/table.js"_s, FetchKind::buildsText));
  EXPECT_TRUE(fetched(u"http://site.test/data"_s, FetchKind::buildsText));
  EXPECT_FALSE(fetched(u"http://counter.test/track.js"_s, FetchKind::buildsText));
  EXPECT_FALSE(fetched(u"http://site.test.evil.test/x.js"_s, FetchKind::buildsText));
  EXPECT_FALSE(fetched(u"file:///etc/passwd"_s, FetchKind::buildsText));
}

TEST(PageRules, NamesUnderACountrysSharedLabelsAreDifferentSites) {
  EXPECT_FALSE(isSameSite(QUrl(u"http://a.com.cn"_s), QUrl(u"http://b.com.cn"_s)));
  EXPECT_TRUE(isSameSite(QUrl(u"http://gd.a.com.cn"_s), QUrl(u"http://a.com.cn"_s)));
  EXPECT_FALSE(isSameSite(QUrl(u"http://127.0.0.1:80"_s), QUrl(u"http://10.0.0.1:80"_s)));
  EXPECT_FALSE(isSameSite(QUrl(u"http://127.0.0.1:80"_s), QUrl(u"http://127.0.0.1:81"_s)));
  EXPECT_FALSE(isSameSite(QUrl(u"http://localhost"_s), QUrl(u"http://intranet"_s)));
}

TEST(PageRules, PicturesAndDownloadsAreNotFetched) {
  EXPECT_FALSE(fetched(asked.toString(), FetchKind::other));
}

TEST(PageRules, AnAddressInNumbersIsASiteOfItsOwn) {
  const QUrl server(u"http://10.0.0.1:81/"_s);
  EXPECT_TRUE(mayHoldPage(server, QUrl(u"http://10.0.0.1:81/list"_s)));
  EXPECT_FALSE(mayHoldPage(server, QUrl(u"http://10.0.0.1:82/"_s)));
  EXPECT_FALSE(mayHoldPage(server, QUrl(u"http://10.0.0.2:81/"_s)));
}

TEST(PageRules, ThePageStaysOnItsSiteAndFollowsNoLink) {
  EXPECT_TRUE(goes(asked.toString(), LeaveKind::asked));
  EXPECT_TRUE(goes(u"http://gd.site.test/list"_s, LeaveKind::redirect));
  EXPECT_TRUE(goes(u"http://www.site.test/gd"_s, LeaveKind::redirect));
  EXPECT_FALSE(goes(u"http://elsewhere.test/"_s, LeaveKind::redirect));
  EXPECT_FALSE(goes(u"http://elsewhere.test/"_s, LeaveKind::script));
  EXPECT_FALSE(goes(u"file:///etc/passwd"_s, LeaveKind::script));
  EXPECT_FALSE(goes(u"about:blank"_s, LeaveKind::script));
  EXPECT_FALSE(goes(u"http://gd.site.test/list"_s, LeaveKind::person));
}

TEST(PageRules, AFrameStaysOnTheSite) {
  EXPECT_TRUE(goes(u"http://static.site.test/f.html"_s, LeaveKind::script, false));
  EXPECT_TRUE(goes(u"about:blank"_s, LeaveKind::script, false));
  EXPECT_FALSE(goes(u"http://ads.test/"_s, LeaveKind::script, false));
  EXPECT_FALSE(goes(u"file:///etc/passwd"_s, LeaveKind::script, false));
}

TEST(PageMessages, ARequestReadsBackAsWritten) {
  PageRequest load;
  load.address = asked;
  EXPECT_EQ(pageRequest(lineOf(load))->address, asked);
  PageRequest read;
  read.kind = PageRequest::Kind::read;
  read.part = PagePart::markup;
  read.id = 7;
  EXPECT_EQ(pageRequest(lineOf(read))->kind, PageRequest::Kind::read);
  EXPECT_EQ(pageRequest(lineOf(read))->part, PagePart::markup);
  EXPECT_EQ(pageRequest(lineOf(read))->id, 7);
}

TEST(PageMessages, WhatIsToldStaysOneLineAndReadsBack) {
  const QString text = u"a\nb\t\"\\\u2028广东"_s;
  const QByteArray line = lineOf(PageTold{PageTold::Kind::text, {}, text, 7});
  EXPECT_EQ(line.count('\n'), 1);
  EXPECT_EQ(pageTold(line)->text, text);
  EXPECT_EQ(pageTold(line)->id, 7);
  EXPECT_EQ(pageTold(lineOf(PageTold{PageTold::Kind::away, asked, {}, 0}))->address, asked);
}

TEST(PageMessages, AnyOtherLineReadsAsNothing) {
  for (const QByteArray& line :
       {QByteArray("{}"), QByteArray("x"), QByteArray("{\"tell\":\"other\"}"), QByteArray("[1]")}) {
    EXPECT_FALSE(pageTold(line));
    EXPECT_FALSE(pageRequest(line));
  }
}

TEST(PageRules, OnlyTheHostsOfThePagesSiteAreToBeFound) {
  EXPECT_EQ(hostRules(QUrl(u"http://gd.site.test/x"_s)),
            (QStringList{u"EXCLUDE site.test"_s, u"EXCLUDE *.site.test"_s}));
  EXPECT_EQ(hostRules(QUrl(u"http://gd.site.com.cn"_s)),
            (QStringList{u"EXCLUDE site.com.cn"_s, u"EXCLUDE *.site.com.cn"_s}));
  EXPECT_EQ(hostRules(QUrl(u"http://开奖.test/"_s)),
            (QStringList{u"EXCLUDE xn--1tsr5k.test"_s, u"EXCLUDE *.xn--1tsr5k.test"_s}));
}

TEST(PageRules, WhereAPageWasLedIsToldByItsHostItsPortOrItsKind) {
  const QUrl from(u"http://gd.site.test/x"_s);
  EXPECT_EQ(toldPlace(from, QUrl(u"https://other.test:8080/y"_s)), u"other.test"_s);
  EXPECT_EQ(toldPlace(from, QUrl(u"http://gd.site.test:8080/y"_s)), u"gd.site.test:8080"_s);
  EXPECT_EQ(toldPlace(from, QUrl(u"mailto:a@other.test"_s)), u"mailto"_s);
}

TEST(PageRules, OfAHostWithoutANameOnlyThePortOfThePageIsFound) {
  EXPECT_EQ(hostRules(QUrl(u"http://127.0.0.1:8080/"_s)), QStringList{u"MAP 127.0.0.1:8080 127.0.0.1:8080"_s});
  EXPECT_EQ(hostRules(QUrl(u"https://127.0.0.1/"_s)), QStringList{u"MAP 127.0.0.1:443 127.0.0.1:443"_s});
  EXPECT_EQ(hostRules(QUrl(u"http://[::1]/"_s)),
            (QStringList{u"MAP [::1]:80 [::1]:80"_s, u"MAP [::1]:443 [::1]:443"_s}));
}

}  // namespace
}  // namespace elevenfive
