// The stop button cmm_stop, clicked while rows are at work: a run and a scoring end softly, what was done so far stays, and
// the panel is usable again.
#include <QProgressBar>
#include <QTimer>

#include "model/store.h"
#include "model/texts.h"
#include "tests/shell/mainwindowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// All combinations of five numbers in the order of the expansion, "1 2 3 4 5" each, of which `chosen` is true.
QStringList combinationsWhere(const std::function<bool(const Draw&)>& chosen) {
  QStringList found;
  for (int a = 1; a <= 7; ++a)
    for (int b = a + 1; b <= 8; ++b)
      for (int c = b + 1; c <= 9; ++c)
        for (int d = c + 1; d <= 10; ++d)
          for (int e = d + 1; e <= 11; ++e)
            if (chosen({a, b, c, d, e}))
              found << u"%1 %2 %3 %4 %5"_s.arg(a).arg(b).arg(c).arg(d).arg(e);
  return found;
}

bool hasOnePairOfNeighbours(const Draw& draw) {
  int pairs = 0;
  for (std::size_t i = 1; i < draw.size(); ++i)
    pairs += draw[i] == draw[i - 1] + 1 ? 1 : 0;
  return pairs == 1;
}

class RunStopsTest : public MainWindowTest {
 protected:
  /// The window on its run panel with all 462 combinations expanded and only these conditions in use.
  void openExpanded(const char* conditionsInUse) {
    data.addDraws(u"11031511 01 02 03 04 05"_s);
    data.store().executeScript("test",
                               "UPDATE 历史数据过滤 SET 使用状态 = 0;"
                               "UPDATE 过滤条件使用情况 SET 使用情况 = 0;");
    data.store().executeScript("test", conditionsInUse);
    open();
    window->selectTopTab(3);
    ports.typed = {u"11031512"_s};
    clickRun(0);
    ports.boxes.clear();
  }

  /// Every write of this column of a candidate takes a while from now on, so that many turns of the event loop fall into
  /// the pass that writes it. Zeros, which only clear the marks, go fast.
  void slowDown(const QString& column) {
    data.store().executeScript("test",
                               u"CREATE TEMP TRIGGER slow AFTER UPDATE OF %1 ON 日志表 WHEN NEW.%1 > 0 BEGIN "
                               "SELECT count(*) FROM 过滤条件, 号码特性, (VALUES (1), (2)); END"_s.arg(column)
                                   .toStdString());
  }

  void endSlowness() { data.store().executeScript("test", "DROP TRIGGER slow"); }

  /// Clicks the stop button while the status text ends so, once the bar tells that some rows are done.
  void stopAtEnding(const QString& ending) {
    QObject::connect(&poll_, &QTimer::timeout, window.get(), [this, ending] {
      auto& stop = the<QPushButton>(u"cmm_stop"_s);
      constexpr int someRows = 60;  // of 462; the first that passes is the 36th
      if (!stop.isEnabled() || !status().endsWith(ending) ||
          the<QProgressBar>(u"ProgressBar_TouZu"_s).value() < someRows)
        return;
      poll_.stop();
      EXPECT_FALSE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
      click(stop);
      stopClicked = true;
    });
    poll_.start(0);
  }

  void expectUsable() {
    QApplication::processEvents();  // the bar goes with the next turn
    EXPECT_TRUE(the<QWidget>(u"Pic_subTouZhu"_s).isEnabled());
    EXPECT_FALSE(the<QPushButton>(u"cmm_stop"_s).isEnabled());
    EXPECT_FALSE(the<QWidget>(u"ProgressBar_TouZu"_s).isVisible());
  }

  bool stopClicked = false;
  const QString expanded = u"初始化选号完成!共 ４６２ 注！\n\n\n"_s;
  const QString begun = u"\n\n过滤缩水之前共：４６２注．"_s;

 private:
  QTimer poll_;
};

/// 连号 with one pair of neighbours, and AC值 with what no combination has.
constexpr const char* lianhaoAndAc =
    "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 IN (6, 9);"
    "UPDATE 过滤条件 SET VALUE = (ID = 3451) WHERE ID BETWEEN 3450 AND 3460;"
    "UPDATE 过滤条件 SET VALUE = 0 WHERE ID BETWEEN 3600 AND 3630;";

TEST_F(RunStopsTest, AStoppedRunWithAToleranceKeepsTheRowsThatHadPassedByThen) {
  openExpanded(lianhaoAndAc);
  slowDown(u"过滤标记"_s);
  stopAtEnding(u"[连号]过滤正在进行中．．．"_s);
  ports.typed = {u"11031512"_s, u"1"_s};
  clickRun(1);
  ASSERT_TRUE(stopClicked);

  // The rows reached and passed hold one pass of the two conditions, which the tolerance lets stay; the others hold none.
  const QStringList passing = combinationsWhere(hasOnePairOfNeighbours);
  const qsizetype left = gridRows().size();
  ASSERT_GT(left, 0);
  ASSERT_LT(left, passing.size());
  for (qsizetype i = 0; i < left; ++i)
    EXPECT_EQ(gridRows()[i], u"%1 11031512 %2"_s.arg(i + 1).arg(passing[i]));
  EXPECT_EQ(data.rows("SELECT DISTINCT 过滤标记 FROM 日志表"), QStringList{u"1"_s});
  EXPECT_EQ(data.rows("SELECT count(*) FROM 日志表"), QStringList{QString::number(left)});
  EXPECT_EQ(status(), expanded + u"\n\n正读取数据[１１０３１５１２期]．．．"_s + begun +
                          u"\n\n[连号]过滤正在进行中．．．\n\n用户中止,当前记录余："_s +
                          toQuanjiaoDigits(static_cast<int>(left)) + u" 注"_s);
  EXPECT_TRUE(ports.boxes.empty());
  expectUsable();
}

TEST_F(RunStopsTest, AStoppedRunWithoutToleranceDropsTheRowsThatHadFailedByThenAndARepeatFinishesIt) {
  openExpanded(
      "UPDATE 过滤条件使用情况 SET 使用情况 = 1 WHERE 条件 = 6;"
      "UPDATE 过滤条件 SET VALUE = (ID = 3451) WHERE ID BETWEEN 3450 AND 3460;");
  slowDown(u"过滤标记"_s);
  stopAtEnding(u"[连号]过滤正在进行中．．．"_s);
  ports.typed = {u"11031512"_s, u"0"_s};
  clickRun(1);
  ASSERT_TRUE(stopClicked);
  const QStringList passing = combinationsWhere(hasOnePairOfNeighbours);
  const auto numbers = [&](const char* where) {
    return data.rows(
        (std::string("SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 WHERE ") + where + " ORDER BY ID").c_str());
  };
  const QStringList passed = numbers("过滤标记 = 1");
  const QStringList unreached = numbers("过滤标记 = 0");
  ASSERT_FALSE(passed.isEmpty());
  ASSERT_FALSE(unreached.isEmpty());
  EXPECT_EQ(passed, passing.mid(0, passed.size()));
  const QStringList all = combinationsWhere([](const Draw&) { return true; });
  EXPECT_EQ(unreached, all.mid(all.size() - unreached.size()));
  const int left = static_cast<int>(passed.size() + unreached.size());
  EXPECT_EQ(gridRows().size(), left);
  EXPECT_TRUE(status().endsWith(u"\n\n[连号]过滤正在进行中．．．\n\n用户中止,当前记录余："_s + toQuanjiaoDigits(left) +
                                u" 注"_s))
      << status().toStdString();
  expectUsable();

  endSlowness();
  ports.typed = {u"11031512"_s, u"0"_s};
  clickRun(1);
  EXPECT_EQ(numbers("过滤标记 = 1"), passing);
  EXPECT_EQ(gridRows().size(), passing.size());
}

/// No condition in use: a run only sets the marks and scores back.
constexpr const char* nothing = "";

TEST_F(RunStopsTest, AStoppedScoringOfFreshRowsKeepsRowsThatWereNotReached) {
  openExpanded(nothing);
  slowDown(u"临时数据"_s);
  stopAtEnding(u"[ 号码分析 ]分析正在进行中．．．"_s);
  ports.typed = {u"11031512"_s, u"5"_s};
  clickRun(2);
  ASSERT_TRUE(stopClicked);

  // A row without a score stands before every scored one, and is not deleted either.
  EXPECT_EQ(data.rows("SELECT count(*) FROM 日志表 WHERE 临时数据 = 999"), QStringList{u"5"_s});
  EXPECT_EQ(data.rows("SELECT DISTINCT ifnull(临时数据, 0) FROM 日志表 ORDER BY 1"), (QStringList{u"0"_s, u"999"_s}));
  const QStringList all = combinationsWhere([](const Draw&) { return true; });
  const QStringList rows = data.rows("SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表 ORDER BY ID");
  ASSERT_LT(rows.size(), all.size());
  EXPECT_EQ(rows, all.mid(all.size() - rows.size()));
  EXPECT_EQ(gridRows().size(), rows.size());
  EXPECT_EQ(status(), expanded + u"\n\n[ 号码分析 ]分析正在进行中．．．"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"精选号码完成！"_s});
  expectUsable();
}

TEST_F(RunStopsTest, AStoppedScoringAfterARunKeepsTheFirstRowsThatWereNotReached) {
  openExpanded(nothing);
  ports.typed = {u"11031512"_s, u"0"_s};
  clickRun(1);  // every score is 0 now
  const QString before = status();
  slowDown(u"临时数据"_s);
  stopAtEnding(u"[ 号码分析 ]分析正在进行中．．．"_s);
  ports.typed = {u"11031512"_s, u"5"_s};
  clickRun(2);
  ASSERT_TRUE(stopClicked);

  const QStringList all = combinationsWhere([](const Draw&) { return true; });
  const QStringList rows = gridRows();
  ASSERT_EQ(rows.size(), 5);
  const int first = rows.front().section(u' ', 0, 0).toInt();
  EXPECT_GT(first, 1);
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(rows[i], u"%1 11031512 %2"_s.arg(first + i).arg(all[first + i - 1]));
  EXPECT_EQ(data.rows("SELECT 临时数据 FROM 日志表"), (QStringList{u"999"_s, u"999"_s, u"999"_s, u"999"_s, u"999"_s}));
  EXPECT_EQ(status(), before + u"\n\n[ 号码分析 ]分析正在进行中．．．"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"精选号码完成！"_s});
  expectUsable();
}

TEST_F(RunStopsTest, AScoringAfterAStoppedOneRunsToItsEnd) {
  openExpanded(nothing);
  slowDown(u"临时数据"_s);
  stopAtEnding(u"[ 号码分析 ]分析正在进行中．．．"_s);
  ports.typed = {u"11031512"_s, u"400"_s};
  clickRun(2);
  ASSERT_TRUE(stopClicked);
  endSlowness();
  ports.typed = {u"11031512"_s, u"3"_s};
  clickRun(2);
  EXPECT_EQ(gridRows().size(), 3);
  EXPECT_TRUE(status().endsWith(u"\n\n[ 号码分析 ] 完 成 "_s)) << status().toStdString();
  expectUsable();
}

}  // namespace

}  // namespace elevenfive
