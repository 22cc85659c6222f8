#include "acquire/contentrange.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "acquire/downloaderror.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

TEST(ContentRange, TellsTheLastByteAndTheWholeSize) {
  const ContentRange range = readContentRange(u"bytes 20480-40960/40961");
  EXPECT_EQ(range.rangeEnd, 40960);
  EXPECT_EQ(range.totalSize, 40961);
}

TEST(ContentRange, SizesBeyond32BitsAreRead) {
  const ContentRange range = readContentRange(u"bytes 0-20480/5368709120");
  EXPECT_EQ(range.rangeEnd, 20480);
  EXPECT_EQ(range.totalSize, 5368709120);
}

TEST(ContentRange, WithoutADashTheWholeTextIsRead) {
  const ContentRange range = readContentRange(u"7/9");
  EXPECT_EQ(range.rangeEnd, 7);
  EXPECT_EQ(range.totalSize, 9);
}

TEST(ContentRange, BlanksAroundANumberDoNotMatter) {
  const ContentRange range = readContentRange(u"bytes 0 - 8 / 9 ");
  EXPECT_EQ(range.rangeEnd, 8);
  EXPECT_EQ(range.totalSize, 9);
}

TEST(ContentRange, NothingIsGuessed) {
  for (const QStringView header : std::initializer_list<QStringView>{
           u"", u"bytes 0-8", u"bytes 0-/9", u"bytes 0-8/", u"bytes 0-8/*", u"bytes */9", u"bytes 0-8/9/10",
           u"bytes 0-x/9", u"bytes 0--8/9", u"bytes 0-+8/9", u"bytes 0-8/9 bytes", u"bytes 0-8/9.5", u"bytes 0-８/９",
           u"bytes 0-8/9223372036854775808", u"-", u"/", u"-/"})
    EXPECT_THROW(readContentRange(header), DownloadError) << header.toString().toStdString();
}

TEST(ContentRange, TheFaultShowsNoMoreThanTheBeginningOfTheHeader) {
  try {
    readContentRange(QString(100000, u'x'));
    FAIL() << "no fault";
  } catch (const DownloadError& fault) {
    EXPECT_TRUE(fault.message().contains(QString(60, u'x')));
    EXPECT_LT(fault.message().size(), 150);
  }
}

TEST(ContentRange, WhateverASoundServerWritesIsReadBack) {
  EXPECT_TRUE(rc::check("any two sizes", [] {
    const auto end = *rc::gen::inRange<qint64>(0, qint64{1} << 50);
    const auto total = *rc::gen::inRange<qint64>(0, qint64{1} << 50);
    const ContentRange range = readContentRange(u"bytes 0-%1/%2"_s.arg(QString::number(end), QString::number(total)));
    RC_ASSERT(range.rangeEnd == end);
    RC_ASSERT(range.totalSize == total);
  }));
}

}  // namespace
}  // namespace elevenfive
