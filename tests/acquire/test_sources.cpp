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
  const QString hostile = u"x'; DROP TABLE 数据源; --\""_s;
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
  EXPECT_NO_THROW(setSourceAddress(w.store(), u"开奖网站"_s, QString(200, u'a')));
  EXPECT_THROW(setSourceAddress(w.store(), u"开奖网站"_s, QString(201, u'a')), StoreError);
}

TEST(Sources, ExampleHostsAndEmptyAddressesWereNeverSet) {
  EXPECT_TRUE(isUnsetAddress(QString()));
  EXPECT_TRUE(isUnsetAddress(u" "_s));
  EXPECT_TRUE(isUnsetAddress(u"https://{province}.results.example"_s));
  EXPECT_TRUE(isUnsetAddress(u"https://gd.results.example/?op=dcjb&num=100"_s));
  EXPECT_FALSE(isUnsetAddress(u"https://{province}.results.org"_s));
  EXPECT_FALSE(isUnsetAddress(u"http://localhost:8080/{province}"_s));
  EXPECT_FALSE(isUnsetAddress(u"https://results.org/x.example"_s));
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
