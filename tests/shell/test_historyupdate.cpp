// Draws from the web in the window: from the button to the panel that follows.
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTabBar>
#include <algorithm>

#include "acquire/webupdate.h"
#include "tests/shell/webwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

const QString completed = u"下载完成！(如果没有取得最新的数据请过几分钟后重试，多试几次即可。)"_s;

class HistoryUpdateTest : public WebWindowTest {
 protected:
  QPushButton& button(int index) { return the<QPushButton>(u"cmmUpdateHistory_%1"_s.arg(index)); }
  QString panel(int index) { return the<QLabel>(u"StatusBar_%1"_s.arg(index)).text(); }

  /// Does something once the window waits for the page.
  void whileWaiting(const std::function<void()>& look, int ms = 60) { QTimer::singleShot(ms, window.get(), look); }
};

TEST_F(HistoryUpdateTest, TheButtonsBearTheirCaptionsAndTips) {
  openWindow();
  EXPECT_EQ(button(1).text(), u"今日开奖"_s);
  EXPECT_EQ(button(1).toolTip(), u"下载当天开奖数据并导入。"_s);
  EXPECT_EQ(button(2).text(), u"历史数据"_s);
  EXPECT_EQ(button(2).toolTip(), u"下载最近一周开奖数据并导入。"_s);
}

TEST_F(HistoryUpdateTest, NoControlIsMadeBeforeAButtonIsClicked) {
  openWindow();
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(HistoryUpdateTest, AClickBringsTheDrawsIntoThePanel) {
  for (const int index : {1, 2}) {
    data.store().execute("test", "DELETE FROM 历史记录");
    ports.boxes.clear();
    openWindow();
    QString gridAtBox;
    boxes.onShow = [&] { gridAtBox = shownPeriods(); };
    click(button(index));
    EXPECT_EQ(ports.boxTexts(), QStringList{completed});
    EXPECT_EQ(gridAtBox, u"110315011 110315012"_s);
    EXPECT_EQ(shownPeriods(), u"110315011 110315012"_s);
    EXPECT_EQ(data.rows("SELECT 和值 FROM 历史记录 ORDER BY 期号"), (QStringList{u"15"_s, u"18"_s}));
    EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), u"110315013"_s);
    EXPECT_TRUE(panel(3).contains(u"※※※  110315013 期 于 "_s));
    EXPECT_EQ(panel(2), QString());
    EXPECT_TRUE(button(index).isEnabled());
    EXPECT_TRUE(button(index).hasFocus());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !the<QWidget>(u"ProgressBar_TuBiao"_s).isVisible(); }));
  }
}

TEST_F(HistoryUpdateTest, TheMenuEntryDoesTheSameOnTheFirstPage) {
  openWindow();
  the<QTabBar>(u"TabStrip_Top"_s).setCurrentIndex(1);
  triggerMenu(u"mnu_AutoUpdate"_s);
  EXPECT_EQ(the<QTabBar>(u"TabStrip_Top"_s).currentIndex(), 0);
  EXPECT_EQ(shownPeriods(), u"110315011 110315012"_s);
}

TEST_F(HistoryUpdateTest, WhileThePageIsWaitedForNothingElseCanStart) {
  web.pages[page].afterMs = 500;
  openWindow();
  QStringList enabled;
  QString pulse;
  bool painted = false;
  whileWaiting(
      [&] {
        for (const QString& name :
             {u"cmmUpdateHistory_0"_s, u"cmmUpdateHistory_1"_s, u"cmmUpdateHistory_2"_s, u"newBtnHistory_3"_s,
              u"newBtnHistory_7"_s, u"newBtnHistory_99"_s, u"cmm_Daocu"_s, u"cmm_scls"_s, u"CmmSousuo"_s})
          if (the<QPushButton>(name).isEnabled())
            enabled << name;
        click(button(1));
        window->updateHistory();
        pulse = panel(2);
        painted = window->grab().width() > 0;
      },
      350);
  click(button(2));
  EXPECT_EQ(enabled, QStringList());
  EXPECT_EQ(pulse, u"》》》》》   数据下载中   《《《《《"_s);
  EXPECT_TRUE(painted);
  EXPECT_EQ(web.log.filter(u"navigate"_s).size(), 1);
}

TEST_F(HistoryUpdateTest, AWishToCloseEndsTheWaitAndThenClosesTheWindow) {
  web.pages[page].afterMs = -1;
  openWindow();
  QElapsedTimer waited;
  waited.start();
  whileWaiting([&] { window->close(); });
  click(button(1));
  EXPECT_LT(waited.elapsed(), 3000);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要退出吗？"_s});
}

TEST_F(HistoryUpdateTest, AnUpdateThatWasStoppedOffersThePeriodBehindWhatItHasStored) {
  QString rows = u"广东11选5\n"_s;
  for (int i = 0; i < 50'000; ++i)
    rows += u"%1\t02\t01\t03\t04\t08\t03-15 17:50\n"_s.arg(11000001 + i);
  web.pages[page].texts = QStringList{rows};
  openWindow();
  ports.answers = {Answer::no};
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (panel(2).contains(u"正在下载"_s)) {
      look.stop();
      window->close();
    }
  });
  look.start(0);
  click(button(1));
  QCoreApplication::processEvents();
  ASSERT_TRUE(window->isVisible());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要退出吗？"_s});
  const int stored = historyRows().rowCount();
  ASSERT_GT(stored, 0);
  ASSERT_LT(stored, 50'000);
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), data.rows("SELECT max(期号) + 1 FROM 历史记录").join(QString()));
}

TEST_F(HistoryUpdateTest, AnAddressThatWasNeverSetIsToldWithoutALoad) {
  setSourceAddress(data.store(), resultsSite.name.toString(), u"http://{province}.results.example"_s);
  openWindow();
  click(button(1));
  EXPECT_EQ(ports.boxTexts(), QStringList{unsetAddressText()});
  EXPECT_EQ(web.log, QStringList());
}

TEST_F(HistoryUpdateTest, APageWithoutDrawsTellsItsLinesInTheStatusBar) {
  web.pages[page].texts = QStringList{u"广东11选5\n维护中"_s};
  openWindow();
  click(button(1));
  EXPECT_EQ(panel(2), u"网页共 2 行，其中 0 行符合开奖记录的格式。"_s);
}

TEST_F(HistoryUpdateTest, AFaultOfTheTableBringsTheButtonsBack) {
  openWindow();
  data.store().execute("test", "DROP TABLE 彩票类型");
  click(button(1));
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(button(1).isEnabled());
}

TEST_F(HistoryUpdateTest, TheWindowKeepsItsWidthThroughAnUpdateBesideASearch) {
  openWindow();
  click(the<QPushButton>(u"CmmSousuo"_s));
  const int width = window->width();
  int during = 0;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] { during = std::max(during, window->width()); });
  look.start(1);
  web.pages[page].afterMs = 200;
  click(button(1));
  EXPECT_EQ(during, width);
  EXPECT_TRUE(the<QPushButton>(u"cmm_kjqk"_s).isVisible());
}

TEST_F(HistoryUpdateTest, TheRangeThatIsShownStaysAndASearchGivesWayToTheNewDraws) {
  QString lines;
  for (int i = 0; i < 120; ++i)
    lines += u"%1 01 02 03 04 06\n"_s.arg(110101000 + i);
  data.addDraws(lines);
  openWindow();
  click(the<QRadioButton>(u"OptionHistoryMode_0"_s));
  click(the<QPushButton>(u"CmmSousuo"_s));
  auto& field = the<QLineEdit>(u"filter_期号"_s);
  field.setFocus();
  QTest::keyClicks(&field, u"110101005"_s);
  click(the<QPushButton>(u"filterBegin"_s));
  ASSERT_EQ(shownPeriods(), u"110101005"_s);
  click(button(1));
  EXPECT_TRUE(field.isVisible());  // to search on among the new draws
  EXPECT_TRUE(the<QRadioButton>(u"OptionHistoryMode_0"_s).isChecked());
  EXPECT_EQ(historyRows().rowCount(), 100);
  EXPECT_TRUE(shownPeriods().endsWith(u" 110315011 110315012"_s));
}

/// Takes what would go to the person's browser.
class Browser final : public QObject {
  Q_OBJECT

 public:
  Browser() { QDesktopServices::setUrlHandler(u"http"_s, this, "show"); }
  ~Browser() override { QDesktopServices::unsetUrlHandler(u"http"_s); }
  QStringList shown;
  QString folder;  ///< where it was begun
  Q_SLOT void show(const QUrl& address) {
    shown << address.toString();
    folder = QDir::currentPath();
  }
};

TEST_F(HistoryUpdateTest, TheDetailsOfADrawOpenInTheBrowserAndNothingElseCanStartMeanwhile) {
  const QString details = u"http://detail.test/08118.html"_s;
  setSourceAddress(data.store(), detailPage.name.toString(), u"http://detail.test/"_s);
  web.pages[details].texts = QStringList{u"奖池"_s};
  web.pages[details].afterMs = 200;
  openWindow();
  const Browser browser;
  const QString folder = QDir::currentPath();
  ASSERT_NE(QDir(folder), QDir(data.workspace().folders().program));
  ports.typed = {u"2008118"_s};
  auto& asked = the<QPushButton>(u"cmm_kjqk"_s);
  EXPECT_EQ(asked.text(), u"详细开奖情况查询"_s);
  bool enabled = true;
  QString told;
  whileWaiting([&] {
    enabled = asked.isEnabled() || button(1).isEnabled();
    told = panel(2);
  });
  click(asked);
  EXPECT_EQ(browser.shown, QStringList{details});
  EXPECT_EQ(QDir(browser.folder), QDir(data.workspace().folders().program));
  EXPECT_EQ(QDir::currentPath(), folder);
  EXPECT_FALSE(enabled);
  EXPECT_EQ(told, u"正在读取 "_s + details + u" ……"_s);
  EXPECT_EQ(panel(2), QString());
  EXPECT_TRUE(asked.isEnabled());
  EXPECT_TRUE(asked.hasFocus());
}

TEST_F(HistoryUpdateTest, WithoutABrowserTheAddressOfTheDetailsIsTold) {
  const QString details = u"http://detail.test/08118.html"_s;
  setSourceAddress(data.store(), detailPage.name.toString(), u"http://detail.test/"_s);
  web.pages[details].texts = QStringList{u"奖池"_s};
  openWindow();
  QObject nobody;
  QDesktopServices::setUrlHandler(u"http"_s, &nobody, "absent");
  const auto unset = qScopeGuard([] { QDesktopServices::unsetUrlHandler(u"http"_s); });
  ports.typed = {u"2008118"_s};
  click(the<QPushButton>(u"cmm_kjqk"_s));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"无法打开浏览器，请自行打开下面的网页：\r\n"_s + details});
}

TEST_F(HistoryUpdateTest, AWishToCloseEndsTheReadingOfTheDetails) {
  setSourceAddress(data.store(), detailPage.name.toString(), u"http://detail.test/"_s);
  web.other.afterMs = -1;
  openWindow();
  ports.typed = {u"2008118"_s};
  QElapsedTimer waited;
  waited.start();
  whileWaiting([&] { window->close(); });
  click(the<QPushButton>(u"cmm_kjqk"_s));
  EXPECT_LT(waited.elapsed(), 3000);
  QCoreApplication::processEvents();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"确认要退出吗？"_s});
}

}  // namespace

}  // namespace elevenfive

#include "test_historyupdate.moc"
