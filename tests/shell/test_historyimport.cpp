// The import of a history text in the window: it answers throughout, it can be stopped, and files that hold no draws harm
// nothing.
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <random>

#include "bench/eventgaps.h"
#include "tests/shell/mainwindowtest.h"
#include "tests/support/slowness.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr double longestWait = 50 * slowness;  ///< milliseconds that a click may go unseen

/// Tells when a widget is hidden.
class HideWatch final : public QObject {
 public:
  explicit HideWatch(QWidget& widget) { widget.installEventFilter(this); }
  double hiddenAt = 0;  ///< processor time

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Hide)
      hiddenAt = processorMilliseconds();
    return QObject::eventFilter(watched, event);
  }
};

class HistoryImportTest : public MainWindowTest {
 protected:
  /// That many draws of ascending periods from 11000000 on; their sums are 15 and 20 in turn.
  static QByteArray draws(int count) {
    QByteArray text;
    for (int i = 0; i < count; ++i)
      text += QByteArray::number(11000000 + i) + (i % 2 == 0 ? " 01 02 03 04 05\r\n" : " 02 03 04 05 06\r\n");
    return text;
  }

  /// Clicks the stop button of the running import once that many lines are done.
  void stopAfter(int lines) {
    QObject::connect(&poll_, &QTimer::timeout, window.get(), [this, lines] {
      auto& stop = the<QPushButton>(u"CmmDaoruStop"_s);
      if (!stop.isVisible() || the<QLabel>(u"Label_jindu_0"_s).text().toInt() < lines)
        return;
      poll_.stop();
      EXPECT_FALSE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
      clickedAt = processorMilliseconds();
      click(stop);
    });
    poll_.start(0);
  }

  void expectUsable() {
    QApplication::processEvents();  // a bar goes with the next turn
    EXPECT_TRUE(the<QWidget>(u"FrameHkaijian"_s).isEnabled());
    EXPECT_TRUE(the<QWidget>(u"FrameHistoryMode"_s).isEnabled());
    EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
    EXPECT_TRUE(window->menuBar()->isEnabled());
    EXPECT_FALSE(the<QPushButton>(u"CmmDaoruStop"_s).isVisible());
    EXPECT_FALSE(the<QProgressBar>(u"ProgressBar_Lines"_s).isVisible());
    EXPECT_FALSE(the<QProgressBar>(u"ProgressBar_TuBiao"_s).isVisible());
  }

  /// Opens the window over one draw and imports a file of these bytes, the draw kept.
  void importBesideADraw(const QByteArray& bytes) {
    data.addDraws(u"11031510 01 02 03 04 05"_s);
    open();
    ports.answers = {Answer::no};
    importLines(bytes);
  }

  int count(const char* sql) { return data.store().value("test", sql).value_or(-1); }

  double clickedAt = 0;  ///< processor time of the click on the stop button

 private:
  QTimer poll_;
};

TEST_F(HistoryImportTest, AStopIsSeenAtOnceAndKeepsTheDrawsReadSoFar) {
  open();
  chooseFileOf(draws(100000));
  stopAfter(5000);
  const HideWatch stopButton(the<QPushButton>(u"CmmDaoruStop"_s));
  const EventGaps gaps;
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  ASSERT_GT(clickedAt, 0);
  EXPECT_LT(gaps.longestMilliseconds() + stopButton.hiddenAt - clickedAt, longestWait);

  const int stored = count("SELECT count(*) FROM 历史记录");
  EXPECT_GE(stored, 5000);
  EXPECT_LT(stored, 100000);
  EXPECT_EQ(count("SELECT max(期号) FROM 历史记录"), 11000000 + stored - 1);  // no line was left out
  EXPECT_EQ(historyRows().rowCount(), stored);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  EXPECT_EQ(the<QLineEdit>(u"TextHistory_0"_s).text(), QString::number(11000000 + stored));
  expectUsable();
}

TEST_F(HistoryImportTest, AfterAStopTheDrawsReadSoFarAreDerivedButTheOldest) {
  open();
  chooseFileOf(draws(100000));
  stopAfter(200);
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  const int stored = count("SELECT count(*) FROM 历史记录");
  ASSERT_GE(stored, 200);
  ASSERT_LT(stored, 100000);
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录 WHERE 和值 IS NULL"), QStringList{u"11000000"_s});
  EXPECT_EQ(count("SELECT count(*) FROM 历史记录 WHERE 和值 = 号码1 + 号码2 + 号码3 + 号码4 + 号码5"), stored - 1);
  EXPECT_EQ(count("SELECT count(*) FROM 历史记录 WHERE 重叠号 = 4"), stored - 1);
  EXPECT_EQ(data.rows("SELECT 期号 FROM 历史记录 WHERE 温度值5 IS NULL"), QStringList{u"11000000"_s});
  // Of the five draws before this one two hold 1 and all hold 2 to 5, of the ten draws five and ten.
  EXPECT_EQ(data.rows("SELECT 温度值5, 温度值10 FROM 历史记录 WHERE 期号 = 11000060"), QStringList{u"22 45"_s});
}

TEST_F(HistoryImportTest, TheWindowWorksOnAfterAStoppedImport) {
  open();
  chooseFileOf(draws(100000));
  stopAfter(200);
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  const int stored = historyRows().rowCount();
  ASSERT_LT(stored, 100000);
  typeDraw(u"12000001"_s, {u"7"_s, u"8"_s, u"9"_s, u"10"_s, u"11"_s});
  click(the<QPushButton>(u"cmmUpdateHistory_0"_s));
  EXPECT_EQ(historyRows().rowCount(), stored + 1);

  ports.boxes.clear();  // the wish to stop is spent: another import runs to its end
  ports.answers = {Answer::yes};
  importLines(draws(300));
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"原有的历史数据是否要清空？"_s, u"导入完成!"_s}));
  EXPECT_EQ(historyRows().rowCount(), 300);
  expectUsable();
}

/// 50 MB of which three lines are draws: remarks of usual length, and one line that no editor would make.
QByteArray longText() {
  constexpr qsizetype size = 50'000'000;
  QByteArray text("11031510 01 02 03 04 05\r\n");
  const QByteArray remark = "# 11031599 " + QByteArray(489, '-') + "\r\n";
  while (text.size() < size / 2)
    text += remark;
  text += "11031511 02 03 04 05 06\r\n";
  text += QByteArray(size / 2 - 1000, '7') + "\r\n";
  while (text.size() < size)
    text += remark;
  text += "11031512 07 08 09 10 11\r\n";
  return text;
}

TEST_F(HistoryImportTest, TheWindowAnswersThroughoutAnImportOfFiftyMegabytes) {
  open();
  chooseFileOf(longText());
  const EventGaps gaps;
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  EXPECT_LT(gaps.longestMilliseconds(), longestWait);
  EXPECT_GT(gaps.turns(), 2);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成!"_s});
  EXPECT_EQ(data.rows("SELECT 期号, 和值 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"11031510 -"_s, u"11031511 20"_s, u"11031512 45"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510 11031511 11031512"_s);
  expectUsable();
}

TEST_F(HistoryImportTest, AWishToCloseFromTheClearingWaitsBehindTheFileDialog) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  const QString clears = u"原有的历史数据是否要清空？"_s;
  const QString leaves = u"确认要退出吗？"_s;
  boxes.onShow = [&] {
    boxes.onShow = nullptr;
    EXPECT_FALSE(window->close());
  };
  files.onOpen = [&] {
    QApplication::processEvents();
    EXPECT_EQ(ports.boxTexts(), QStringList{clears});
  };
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  QApplication::processEvents();
  EXPECT_EQ(ports.boxTexts(), (QStringList{clears, leaves}));
}

TEST_F(HistoryImportTest, AnEmptyFileSaysThatThereIsNoData) {
  importBesideADraw({});
  EXPECT_EQ(ports.log, (QStringList{u"question [] 原有的历史数据是否要清空？"_s, u"plain [] 没有数据，无法导入！"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
  expectUsable();
}

TEST_F(HistoryImportTest, ABinaryFileBringsNoDraws) {
  std::mt19937 random(11);
  QByteArray bytes(1'000'000, Qt::Uninitialized);
  for (char& byte : bytes)
    byte = static_cast<char>(random());
  importBesideADraw(bytes);
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"原有的历史数据是否要清空？"_s, u"导入完成!"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
  expectUsable();
}

TEST_F(HistoryImportTest, AMissingFileIsOneWithoutData) {
  data.addDraws(u"11031510 01 02 03 04 05"_s);
  open();
  ports.answers = {Answer::no};
  files.paths = {data.folders.program + u"/none.txt"_s};
  click(the<QPushButton>(u"newBtnHistory_99"_s));
  EXPECT_EQ(ports.log, (QStringList{u"question [] 原有的历史数据是否要清空？"_s, u"plain [] 没有数据，无法导入！"_s}));
  EXPECT_EQ(shownPeriods(), u"11031510"_s);
  expectUsable();
}

}  // namespace

}  // namespace elevenfive
