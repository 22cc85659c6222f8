// The window over real pages: from the button through the page process to the panel that follows, and the form of the
// addresses over servers that answer and servers that do not.
#include <signal.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QTabBar>
#include <QTimer>

#include "acquire/widgets/sourcesform.h"
#include "tests/shell/mainwindowtest.h"
#include "tests/support/slowness.h"
#include "tests/web/webtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int guangdong = 1;

const QStringList twoRows{u"11031512 02 01 03 04 08"_s, u"11031511 05 01 02 03 04"_s};

/// All that could start other work on the history page.
const QStringList commands{u"cmmUpdateHistory_0"_s, u"cmmUpdateHistory_1"_s, u"cmmUpdateHistory_2"_s,
                           u"newBtnHistory_3"_s,    u"newBtnHistory_7"_s,    u"newBtnHistory_99"_s,
                           u"cmm_Daocu"_s,          u"cmm_scls"_s,           u"CmmSousuo"_s};

class RealWindow : public MainWindowTest {
 protected:
  void SetUp() override {
    if (!engineRuns() && geteuid() != 0)
      GTEST_SKIP() << "the engine does not run for this user: its sandbox lacks rights";
    ASSERT_TRUE(engineRuns());
    Catalogue(data.store()).selectCaizong(guangdong);
    setSourceAddress(data.store(), resultsSite.name.toString(), server.url({}));
    openBeside(loaders());
  }

  PageLoaderFactory loaders() {
    return [this] {
      auto made = std::make_unique<ProcessLoader>();
      pageControl = made.get();
      return made;
    };
  }

  QPushButton& button(int index) { return the<QPushButton>(u"cmmUpdateHistory_%1"_s.arg(index)); }
  QString panel(int index) { return the<QLabel>(u"StatusBar_%1"_s.arg(index)).text(); }

  /// Those of the commands that are enabled as told.
  QStringList commandsThatAre(bool enabled) {
    QStringList names;
    for (const QString& name : commands)
      if (the<QPushButton>(name).isEnabled() == enabled)
        names << name;
    return names;
  }

  void giveDraws(int afterMs = 0) {
    HttpReply reply = pageReply(tablePage(twoRows).toUtf8());
    reply.beforeHead = std::chrono::milliseconds(afterMs);
    server.answer("/", reply);
  }

  void giveNoAnswer() {
    HttpReply reply;
    reply.ending = HttpEnding::silent;
    server.answer("/", reply);
  }

  /// The draws of giveDraws are in, with their columns, and everything on the screen follows.
  void expectDraws() {
    EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
    EXPECT_EQ(data.rows("SELECT 期号, 号码1, 号码5, 和值, 跨度 FROM 历史记录 ORDER BY 期号"),
              (QStringList{u"110315011 1 5 15 4"_s, u"110315012 1 8 18 7"_s}));
    EXPECT_EQ(shownPeriods(), u"110315011 110315012"_s);
    EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"110315013"_s);
    EXPECT_TRUE(panel(3).contains(u"※※※  110315013 期 于 "_s));
    EXPECT_EQ(panel(2), QString());
    expectFree();
  }

  /// Everything can be begun again and no page works on.
  void expectFree() {
    EXPECT_EQ(commandsThatAre(false), QStringList());
    EXPECT_EQ(pageControl->processId(), 0);
  }

  HttpServer server;
  ProcessLoader* pageControl = nullptr;
};

TEST_F(RealWindow, EachOfTheTwoButtonsBringsTheDrawsIntoThePanel) {
  giveDraws(700);
  for (const int index : {1, 2}) {
    data.store().execute("test", "DELETE FROM 历史记录");
    ports.boxes.clear();
    QStringList enabled = commands;
    QStringList pulses;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
      enabled = commandsThatAre(true);
      pulses << panel(2);
    });
    look.start(50);
    click(button(index));
    look.stop();
    EXPECT_EQ(enabled, QStringList());
    EXPECT_TRUE(pulses.contains(u"》》》》》   数据下载中   《《《《《"_s));
    EXPECT_TRUE(pulses.contains(u"》》》》》 数据下载中 《《《《《"_s));
    expectDraws();
    EXPECT_TRUE(button(index).hasFocus());
  }
}

TEST_F(RealWindow, TheSecondUpdateOfARunReadsTheSiteAgain) {
  server.answer("/", pageReply(tablePage({u"11031511 01 02 03 04 05"_s}).toUtf8()));
  click(button(1));
  EXPECT_EQ(shownPeriods(), u"110315011"_s);
  ports.boxes.clear();
  giveDraws();
  click(button(2));
  expectDraws();
}

class HungWindow : public RealWindow, public ::testing::WithParamInterface<QString> {
 protected:
  /// Presses the button and looks at the window once it has waited for a second and a half.
  void pressAndLook(const std::function<void()>& look) {
    if (GetParam().isEmpty())
      giveNoAnswer();
    else
      server.answer("/", pageReply(GetParam().toUtf8()));
    QTimer::singleShot(1500, window.get(), look);
    click(button(1));
  }
};

TEST_P(HungWindow, TheWindowLivesUntilAWishToCloseEndsTheWait) {
  ports.answers = {Answer::no};
  int turns = 0;
  QTimer turn;
  QObject::connect(&turn, &QTimer::timeout, [&turns] { ++turns; });
  turn.start(20);
  bool shown = false;
  pressAndLook([&] {
    the<QTabBar>(u"TabStrip_Top"_s).setCurrentIndex(2);
    shown = the<QPlainTextEdit>(u"TextChaoZuoTip"_s).isVisible() && window->grab().width() > 0;
    window->close();
  });
  EXPECT_GT(turns, 20);
  EXPECT_TRUE(shown);
  QCoreApplication::processEvents();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要退出吗？"_s});
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录"), QStringList());
  expectFree();
  ports.boxes.clear();
  giveDraws();
  click(button(2));
  expectDraws();
}

TEST_P(HungWindow, AYesToTheCloseEndsTheWindowAndThePage) {
  qint64 process = 0;
  QElapsedTimer closing;
  pressAndLook([&] {
    process = pageControl->processId();
    closing.start();
    window->close();
  });
  EXPECT_LT(closing.elapsed(), 1000 * slowness);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  ASSERT_GT(process, 0);
  EXPECT_FALSE(QFile::exists(u"/proc/%1"_s.arg(process)));
}

INSTANTIATE_TEST_SUITE_P(Pages, HungWindow,
                         ::testing::Values(QString(), QStringLiteral("11选5<script>for(;;)alert(1)</script>")));

TEST_F(RealWindow, APageProcessThatIsEndedIsToldAndTheNextPressWorks) {
  giveNoAnswer();
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [this] {
    if (!askedOf(server).isEmpty() && pageControl->processId() > 0)
      ::kill(static_cast<pid_t>(pageControl->processId()), SIGKILL);
  });
  watch.start(50);
  click(button(1));
  watch.stop();
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(ports.boxes[0].title, failedUpdateTitle.toString());
  EXPECT_EQ(ports.boxes[0].text, u"读取网页的组件意外结束，没有读到网页。"_s);
  EXPECT_EQ(panel(2), QString());
  expectFree();
  ports.boxes.clear();
  giveDraws();
  click(button(1));
  expectDraws();
}

TEST_F(RealWindow, APageThatIsLedOffItsSiteIsToldInTheStatusBar) {
  HttpServer elsewhere;
  server.answer("/", redirectTo(elsewhere.url(u"/"_s)));
  click(button(1));
  EXPECT_EQ(ports.boxTexts(), QStringList());
  EXPECT_EQ(panel(2), u"网页被转到其它网站（127.0.0.1:%1），没有读取。"_s.arg(elsewhere.port()));
  EXPECT_EQ(askedOf(elsewhere), QStringList());
  expectFree();
}

class RealSources : public RealWindow {
 protected:
  void SetUp() override {
    RealWindow::SetUp();
    constexpr int fiftyTicksMs = 1500;
    form = std::make_unique<SourcesForm>(data.store(), boxes, loaders(), window.get(),
                                         SourcesTimes{fiftyTicksMs / OpenUrlText::ticks, 1000});
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
  }

  QString verdict() { return control<QLabel>(*form, u"Label_ceshi"_s).text(); }
  QPushButton& test(int index) { return control<QPushButton>(*form, u"cmm_ceshi_%1"_s.arg(index)); }

  /// The whole verdict on the results site, once the second half of it has come.
  QString tested() {
    click(test(0));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !verdict().endsWith(u"没有内容。"_s); }, 10'000));
    return verdict();
  }

  std::unique_ptr<SourcesForm> form;
};

const QString noText = u"“开奖网站”：网页打不开，或者没有内容。"_s;

TEST_F(RealSources, ASoundPageIsToldWithItsLength) {
  giveDraws();
  EXPECT_TRUE(tested().startsWith(u"“开奖网站”：网页可以打开，共 "_s));
}

TEST_F(RealSources, AnEmptyPageIsToldWithTheServersAnswer) {
  server.answer("/", pageReply(""));
  const QString text = tested();
  EXPECT_TRUE(text.startsWith(noText + u"服务器有答复（HTTP 200，"_s)) << text.toStdString();
  EXPECT_TRUE(text.endsWith(u" 秒）。"_s));
}

TEST_F(RealSources, ARefusalIsToldWithItsNumber) {
  HttpReply reply = pageReply("");
  reply.status = 403;
  server.answer("/", reply);
  EXPECT_EQ(tested(), noText + u"服务器有答复，但没有给出网页（HTTP 403）。"_s);
}

TEST_F(RealSources, APageThatIsLedOffItsSiteIsTold) {
  HttpServer elsewhere;
  server.answer("/", redirectTo(elsewhere.url(u"/"_s)));
  EXPECT_EQ(tested(), noText + u"服务器把网页转到其它网站（127.0.0.1:%1），没有读取。"_s.arg(elsewhere.port()));
  EXPECT_EQ(askedOf(elsewhere), QStringList());
}

TEST_F(RealSources, AServerThatIsNotThereIsTold) {
  control<QLineEdit>(*form, u"Text_dizhi_0"_s).setText(u"http://127.0.0.1:9"_s);
  EXPECT_EQ(tested(), noText + u"服务器 127.0.0.1 拒绝连接。"_s);
}

TEST_F(RealSources, AServerThatHangsIsToldAndTheFormLives) {
  giveNoAnswer();
  QString during;
  bool enabled = true;
  int turns = 0;
  QTimer turn;
  QObject::connect(&turn, &QTimer::timeout, [&] {
    if (++turns == 20) {
      during = verdict();
      enabled = test(1).isEnabled();
    }
  });
  turn.start(20);
  EXPECT_EQ(tested(), noText + u"服务器 127.0.0.1 在 1 秒内没有答复。"_s);
  EXPECT_EQ(during, u"正在读取 %1 ……"_s.arg(server.url(u"/?op=dcjb&num=100"_s)));
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(test(1).isEnabled());
  EXPECT_EQ(pageControl->processId(), 0);
}

TEST_F(RealSources, AScriptThatNeverEndsIsToldWithTheServersAnswer) {
  server.answer("/", pageReply("11选5<script>for(;;){}</script>"));
  EXPECT_TRUE(tested().startsWith(noText + u"服务器有答复（HTTP 200，"_s));
  EXPECT_EQ(pageControl->processId(), 0);
}

TEST_F(RealSources, AFormThatIsClosedMeanwhileAsksNoServerAnyMore) {
  giveNoAnswer();
  QElapsedTimer waited;
  QTimer::singleShot(700, form.get(), [&] {
    waited.start();
    form->reject();
  });
  click(test(0));
  EXPECT_LT(waited.elapsed(), 900);  // a server that gives no answer would be waited for a second more
  EXPECT_FALSE(form->isVisible());
  QTest::qWait(200);
  EXPECT_EQ(askedOf(server), QStringList{u"/"_s});
}

}  // namespace

}  // namespace elevenfive
