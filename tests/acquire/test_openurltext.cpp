#include "acquire/openurltext.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "tests/support/fakepageloader.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

const QUrl detail(u"http://detail.test/08118.html"_s);

class OpenUrlTextTest : public ::testing::Test {
 protected:
  FakePage& page() { return web.pages[detail.toString()]; }
  FakeWeb web;
  OpenUrlText reader{web.loaders(), 4};
};

TEST_F(OpenUrlTextTest, GivesTheTrimmedText) {
  page().texts = QStringList{u"\n  第08118期 奖池 \n"_s};
  EXPECT_EQ(reader.openUrlText(detail, true), u"第08118期 奖池"_s);
}

TEST_F(OpenUrlTextTest, GivesTheTrimmedMarkup) {
  page().texts = QStringList{u"x"_s};
  page().markup = u" <html></html>\n"_s;
  EXPECT_EQ(reader.openUrlText(detail, false), u"<html></html>"_s);
}

TEST_F(OpenUrlTextTest, APageThatNeverComesIsGivenUpAfter50Ticks) {
  page().afterMs = -1;
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(reader.openUrlText(detail, true), QString());
  EXPECT_GE(waited.elapsed(), 49 * 4);
  EXPECT_EQ(web.log.last(), u"stop"_s);
}

TEST_F(OpenUrlTextTest, AnEmptyBodyIsWaitedOn) {
  page().texts = QStringList{u" \n"_s, u" \n"_s};
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(reader.openUrlText(detail, true), QString());
  EXPECT_GE(waited.elapsed(), 49 * 4);
}

TEST_F(OpenUrlTextTest, AFramesDocumentDoesNotEndTheWait) {
  page().frameFirst = true;
  page().texts = QStringList{u"whole"_s};
  EXPECT_EQ(reader.openUrlText(detail, true), u"whole"_s);
  EXPECT_EQ(web.log.filter(u"text"_s).size(), 2);  // one look by the top-level document, one for the result
}

TEST_F(OpenUrlTextTest, TheControlIsMadeOnFirstUseAndKept) {
  EXPECT_EQ(web.log, QStringList());
  page().texts = QStringList{u"x"_s};
  reader.openUrlText(detail, true);
  reader.openUrlText(detail, true);
  EXPECT_EQ(web.log.count(u"made"_s), 1);
}

TEST_F(OpenUrlTextTest, AControlThatCannotBeHadIsNotWaitedFor) {
  page() = FakePage{{}, {}, -1, false, {}, u"missing"_s};
  OpenUrlText patient(web.loaders(), 200);
  QElapsedTimer waited;
  waited.start();
  EXPECT_EQ(patient.openUrlText(detail, true), QString());
  EXPECT_LT(waited.elapsed(), 49 * 200);
  EXPECT_EQ(patient.fault(), u"missing"_s);
}

TEST_F(OpenUrlTextTest, AFaultIsThatOfTheLastCall) {
  EXPECT_EQ(reader.fault(), QString());
  page() = FakePage{{}, {}, -1, false, {}, u"missing"_s};
  reader.openUrlText(detail, true);
  page() = FakePage{{u"x"_s}, {}, 0, false, {}, {}};
  EXPECT_EQ(reader.openUrlText(detail, true), u"x"_s);
  EXPECT_EQ(reader.fault(), QString());
}

TEST_F(OpenUrlTextTest, ACallDuringAnotherGivesNothing) {
  page().afterMs = 60;
  page().texts = QStringList{u"x"_s};
  QString inner = u"-"_s;
  QTimer::singleShot(10, [&] { inner = reader.openUrlText(detail, true); });
  EXPECT_EQ(reader.openUrlText(detail, true), u"x"_s);
  EXPECT_EQ(inner, QString());
}

}  // namespace
}  // namespace elevenfive
