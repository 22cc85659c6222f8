#include "acquire/sources.h"

#include <gtest/gtest.h>

#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(Sources, AFreshStoreHasFourRowsInOrder) {
  TestWorkspace w;
  QStringList names;
  for (const SourceRow& row : sourceRows(w.store()))
    names << row.name;
  EXPECT_EQ(names, (QStringList{u"开奖网站"_s, u"第二网站"_s, u"版本公告"_s, u"开奖详情"_s}));
}

TEST(Sources, AnAddressIsStoredWithoutTheBlanksAroundIt) {
  TestWorkspace w;
  setSourceAddress(w.store(), u"开奖网站"_s, u"  https://a.b/{province} "_s);
  EXPECT_EQ(sourceAddress(w.store(), resultsSite.name), u"https://a.b/{province}"_s);
  EXPECT_EQ(sourceAddress(w.store(), secondSite.name), u"https://{province}.second.example"_s);
}

TEST(Sources, AnAddressIsDataAndNeverPartOfAStatement) {
  TestWorkspace w;
  const QString hostile = u"http://x/';DROP/**/TABLE/**/数据源;--\""_s;
  setSourceAddress(w.store(), u"版本公告"_s, hostile);
  EXPECT_EQ(sourceAddress(w.store(), noticeServer.name), hostile);
  EXPECT_THROW(setSourceAddress(w.store(), hostile, u"a"_s), MissingData);
}

TEST(Sources, ANameWithoutARowIsRefusedAndNothingIsAdded) {
  TestWorkspace w;
  EXPECT_THROW(setSourceAddress(w.store(), u"别的"_s, u"a"_s), MissingData);
  EXPECT_EQ(sourceRows(w.store()).size(), 4U);
  EXPECT_EQ(sourceAddress(w.store(), u"别的"), QString());
}

TEST(Sources, AnAddressOf201CharactersIsRefused) {
  TestWorkspace w;
  EXPECT_NO_THROW(setSourceAddress(w.store(), u"开奖网站"_s, u"http://a/"_s + QString(191, u'a')));
  EXPECT_THROW(setSourceAddress(w.store(), u"开奖网站"_s, u"http://a/"_s + QString(192, u'a')), Error);
}

TEST(Sources, WhatIsNoAddressOfTheWebIsRefusedInASentence) {
  TestWorkspace w;
  const QString before = sourceAddress(w.store(), resultsSite.name);
  for (const QString& text :
       {u"http://"_s, u"http://a b"_s, u"http://127.0.0.1:99999"_s, u"file:///etc"_s, u"javascript:alert(1)"_s,
        u"http://a/\nb"_s, u"ftp://results.org"_s, u"two words"_s, u"file:/etc/x"_s, u"mailto:a@b.org"_s,
        u"user:pw@host/x"_s, u"http:/a.test"_s, u"?x=1"_s}) {
    try {
      setSourceAddress(w.store(), u"开奖网站"_s, text);
      ADD_FAILURE() << text.toStdString();
    } catch (const Error& fault) {
      EXPECT_EQ(fault.message(),
                u"“开奖网站”的地址不正确：要写成 http:// 或 https:// 开头的网址，不能有空格，最多 200 个字符。"_s);
    }
  }
  EXPECT_EQ(sourceAddress(w.store(), resultsSite.name), before);
  for (const QString& text : {QString(), u" http://a.test/ "_s, u"https://{province}.a.test:8443/x?y=1"_s,
                              u"{province}.a.test"_s, u"localhost:8080/x"_s, u"http://[::1]:80/"_s, u"ftp.a.test"_s})
    EXPECT_NO_THROW(setSourceAddress(w.store(), u"开奖网站"_s, text)) << text.toStdString();
}

TEST(Sources, AnAddressWithoutASchemeIsOneOfHttp) {
  EXPECT_EQ(sourceUrl(u" a.test/x "_s), QUrl(u"http://a.test/x"_s));
  EXPECT_EQ(sourceUrl(u"localhost:8080/x"_s), QUrl(u"http://localhost:8080/x"_s));
  EXPECT_EQ(sourceUrl(u"ftp.results.test"_s), QUrl(u"http://ftp.results.test"_s));
  EXPECT_EQ(sourceUrl(u"a.test/?next=http://b.test/"_s), QUrl(u"http://a.test/?next=http://b.test/"_s));
  EXPECT_EQ(sourceUrl(u"127.0.0.1"_s), QUrl(u"http://127.0.0.1"_s));
  EXPECT_EQ(sourceUrl(u"HTTPS://a.test"_s), QUrl(u"https://a.test"_s));
}

TEST(Sources, AnAddressOfAnotherKindStaysOne) {
  EXPECT_EQ(sourceUrl(u"mailto:a@b.org"_s), QUrl(u"mailto:a@b.org"_s));
  EXPECT_EQ(sourceUrl(u"file:/etc/x"_s), QUrl(u"file:/etc/x"_s));
  EXPECT_EQ(sourceUrl(u"ftp://a.test/x"_s), QUrl(u"ftp://a.test/x"_s));
  EXPECT_TRUE(sourceUrl(u"  "_s).isEmpty());
}

TEST(Sources, ExampleHostsAndEmptyAddressesWereNeverSet) {
  EXPECT_TRUE(isUnsetAddress(QString()));
  EXPECT_TRUE(isUnsetAddress(u" "_s));
  EXPECT_TRUE(isUnsetAddress(u"https://{province}.results.example"_s));
  EXPECT_TRUE(isUnsetAddress(u"gd.results.example"_s));
  EXPECT_TRUE(isUnsetAddress(u" {province}.results.example:8080/x"_s));
  EXPECT_TRUE(isUnsetAddress(u"https://gd.results.example/?op=dcjb&num=100"_s));
  EXPECT_FALSE(isUnsetAddress(u"https://{province}.results.org"_s));
  EXPECT_FALSE(isUnsetAddress(u"http://localhost:8080/{province}"_s));
  EXPECT_FALSE(isUnsetAddress(u"https://results.org/x.example"_s));
  EXPECT_FALSE(isUnsetAddress(u"results.org/x.example"_s));
}

TEST(Sources, TheLastWordFoundCounts) {
  EXPECT_EQ(provinceOf(u"广东11选5"), u"gd"_s);
  EXPECT_EQ(provinceOf(u"广东与甘肃"), u"gs"_s);
  EXPECT_EQ(provinceOf(u"甘肃与广东"), u"gs"_s);  // the order of the words, not of the name
  EXPECT_EQ(provinceOf(u"重庆11选5"), QString());
  EXPECT_EQ(provinceOf(u""), QString());
}

TEST(Sources, ThereAreTwentyFourWords) {
  EXPECT_EQ(provinceWords().size(), 24U);
}

}  // namespace
}  // namespace elevenfive
