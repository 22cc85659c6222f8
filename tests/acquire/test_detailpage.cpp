#include "acquire/detailpage.h"

#include <gtest/gtest.h>

#include "acquire/catalogue.h"
#include "acquire/openurltext.h"
#include "acquire/sources.h"
#include "history/statuspanels.h"
#include "model/errors.h"
#include "tests/support/fakepageloader.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

constexpr int guangdong = 1;

const QString page = u"http://detail.test/gd/08118.html"_s;
const QString notFound = u"很抱歉，没有找到该期的开奖数据。请稍后再试。。。"_s;

struct Panel final : StatusPanels {
  QStringList texts;
  void setPanel(int number, const QString& text) override {
    EXPECT_EQ(number, runningPass);
    texts << text;
  }
};

class DetailPage : public ::testing::Test {
 protected:
  DetailPage() {
    Catalogue(data.store()).selectCaizong(guangdong);
    setSourceAddress(data.store(), detailPage.name.toString(), u"http://detail.test/{province}/"_s);
    web.pages[page].texts = QStringList{u"第08118期 奖池"_s};
  }

  void show(const QString& period) {
    ports.typed = {period};
    showDetailPage(data.store(), reader, {ports, ports, panel, [this](const QUrl& url) { opened << url.toString(); }});
  }

  TestWorkspace data;
  RecordingPorts ports;
  Panel panel;
  FakeWeb web;
  OpenUrlText reader{web.loaders(), 4};
  QStringList opened;
};

TEST_F(DetailPage, TheLastFiveCharactersOfTheAnswerNameThePage) {
  for (const QString& period : {u"2008118"_s, u"08118"_s, u" 2008118 "_s}) {
    opened.clear();
    show(period);
    EXPECT_EQ(opened, QStringList{page});
  }
  EXPECT_EQ(ports.inputs[0].prompt, u"请输入您要查询的期号（如:2008118）："_s);
  EXPECT_EQ(ports.inputs[0].title, u"输入要查询的期号"_s);
  EXPECT_EQ(ports.inputs[0].defaultText, QString());
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(panel.texts.mid(0, 2), (QStringList{u"正在读取 "_s + page + u" ……"_s, QString()}));
}

TEST_F(DetailPage, AnAnswerOfFewerCharactersCountsWhole) {
  EXPECT_EQ(detailUrl(u"http://detail.test/"_s, u"广东11选5"_s, u"118"_s), QUrl(u"http://detail.test/118.html"_s));
}

TEST_F(DetailPage, TheAddressIsPutInFrontAsItStandsOrBehindItsHost) {
  EXPECT_EQ(detailUrl(u"http://detail.test/draw-"_s, {}, u"08118"_s), QUrl(u"http://detail.test/draw-08118.html"_s));
  EXPECT_EQ(detailUrl(u"https://detail.test"_s, {}, u"08118"_s), QUrl(u"https://detail.test/08118.html"_s));
  EXPECT_EQ(detailUrl(u"detail.test/a/"_s, {}, u"08118"_s), QUrl(u"http://detail.test/a/08118.html"_s));
}

TEST_F(DetailPage, AnAddressThatEndsInAQuestionTakesThePeriodThere) {
  EXPECT_EQ(detailUrl(u"http://h.test?issue="_s, {}, u"08118"_s), QUrl(u"http://h.test?issue=08118.html"_s));
  EXPECT_EQ(detailUrl(u"h.test/draws?issue="_s, {}, u"08118"_s), QUrl(u"http://h.test/draws?issue=08118.html"_s));
  EXPECT_EQ(detailUrl(u"http://h.test#"_s, {}, u"08118"_s), QUrl(u"http://h.test#08118.html"_s));
}

TEST_F(DetailPage, AHostThatIsNamedAfterAnotherKindOfServerIsAskedForItsPage) {
  EXPECT_EQ(detailUrl(u"ftp.h.test"_s, {}, u"08118"_s), QUrl(u"http://ftp.h.test/08118.html"_s));
}

TEST_F(DetailPage, CancellingTheQuestionDoesNothing) {
  show(QString());
  show(u"  "_s);
  EXPECT_EQ(web.log, QStringList());
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(opened, QStringList());
  EXPECT_EQ(panel.texts, QStringList());
}

TEST_F(DetailPage, APageThatSpeaksOfNoPrizeIsNotShown) {
  web.pages[page].texts = QStringList{u"404"_s};
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{notFound});
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(opened, QStringList());
}

TEST_F(DetailPage, AControlThatCannotBeHadIsToldInItsOwnWords) {
  web.pages[page] = FakePage{{}, {}, -1, false, {}, u"读取网页的组件没有找到。"_s};
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"读取网页的组件没有找到。"_s});
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(opened, QStringList());
  EXPECT_EQ(panel.texts.last(), QString());
}

TEST_F(DetailPage, APageThatNeverComesIsToldLikeOneThatIsNotThere) {
  web.pages[page].afterMs = -1;
  web.pages[page].texts = QStringList{QString()};
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{notFound});
  EXPECT_EQ(panel.texts.last(), QString());
}

TEST_F(DetailPage, AGameWithoutAProvinceHasNoPage) {
  data.store().execute("test", "UPDATE 彩票类型 SET 使用 = 0");
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{notFound});
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(DetailPage, AnAddressThatWasNeverSetIsToldWithThePlaceToSetIt) {
  for (const QString& address : {QString(), u"http://detail.example/"_s}) {
    ports.boxes.clear();
    setSourceAddress(data.store(), detailPage.name.toString(), address);
    show(u"2008118"_s);
    EXPECT_EQ(ports.boxTexts(), QStringList{unsetDetailText()});
  }
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(DetailPage, AnAddressOfAnotherKindIsNotRead) {
  data.store().execute("test", "UPDATE 数据源 SET 地址 = 'file:///etc/'");
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{notFound});
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(DetailPage, AStopEndsItWithoutAWord) {
  web.pages[page].afterMs = -1;
  QTimer::singleShot(20, [this] { reader.requestStop(); });
  show(u"2008118"_s);
  EXPECT_EQ(ports.boxes.size(), 0U);
  EXPECT_EQ(opened, QStringList());
  EXPECT_EQ(panel.texts.last(), QString());
}

TEST_F(DetailPage, AFaultOfTheTableIsThrown) {
  data.store().execute("test", "DROP TABLE 数据源");
  EXPECT_THROW(show(u"2008118"_s), StoreError);
}

}  // namespace
}  // namespace elevenfive
