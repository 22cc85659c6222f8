// What the person waits for in the window, from the click to the painted answer, each beside its goal and beside a floor
// that is measured in the same run: the same rows painted once more, the same run without a window, bare sqlite3 calls.
// Draws off screen where no platform is named.
//
//   bench_window [DRAWS [NAME]]     draws in the history, default 100000; the large grid has three times as many
//                                   NAME: start, scroll, entry, tabs, value, sets, run, import or large alone
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "bench/baresqlite.h"
#include "bench/eventgaps.h"
#include "bench/fullrun.h"
#include "bench/measure.h"
#include "bench/windowbench.h"
#include "bench/windowconditions.h"
#include "bench/windowstart.h"
#include "history/attributes.h"
#include "model/navigators.h"
#include "model/widgets/gridview.h"
#include "shell/widgets/theme.h"

namespace {

using namespace elevenfive;
using namespace Qt::StringLiterals;

constexpr int rounds = 15;
constexpr int largeFactor = 3;  ///< the large grid against the usual history

void measureScroll(Bench& bench, const char* name, double goal) {
  auto& grid = bench.the<GridView>(u"TDBGridHistory"_s);
  Times ours;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    grid.rows().refresh();  // no row is in memory
    grid.scrollToTop();
    bench.paints.finish();
    bench.time(ours, [&] { grid.scrollToBottom(); });
    bench.timePainting(floor, *grid.viewport());
  }
  report(name, ours, goal, "painting those rows again", floor);
}

void measureOpening(Bench& bench) {
  Times ours;
  Times floor;
  BareSqlite bare(bench.copy);
  for (int round = 0; round < rounds; ++round) {
    bench.the<QRadioButton>(u"OptionHistoryMode_0"_s).click();
    bench.paints.finish();
    bench.time(ours, [&] { bench.the<QRadioButton>(u"OptionHistoryMode_1"_s).click(); });
    const Stopwatch watch(floor);
    bare.sumOf("SELECT 期号 FROM 历史记录 ORDER BY 期号");
  }
  report("large grid opened", ours, 200, "bare sqlite3 reads the periods", floor);
}

void measureSearch(Bench& bench) {
  auto& field = bench.the<QLineEdit>(u"filter_和值"_s);
  Times ours;
  Times floor;
  BareSqlite bare(bench.copy);
  for (int round = 0; round < rounds; ++round) {
    click(bench.the<QPushButton>(u"CmmSousuo"_s));
    field.setText(u"2"_s);
    bench.the<QPushButton>(u"filterBegin"_s).setEnabled(true);
    bench.paints.finish();
    bench.time(ours, [&] { pressEnter(field); });
    {
      const Stopwatch watch(floor);
      bare.sumOf("SELECT 期号 FROM 历史记录 WHERE 和值 = 2 OR 和值 BETWEEN 20 AND 29 ORDER BY 期号");
    }
    click(bench.the<QPushButton>(u"cmdClearFilter"_s));
    bench.paints.finish();
  }
  report("large grid searched by a prefix", ours, 200, "bare sqlite3 finds the periods", floor);
}

void measureRun(Bench& bench) {
  Store& store = bench.workspace.gConn;
  const Qihao period = getNextQihao(store);
  useEverything(store);
  bench.window.selectTopTab(3);
  RunDriver& driver = bench.window.driver();
  driver.fillTiaojianValues(1, numberCount, 1);
  QuietRun quiet;
  RunDriver headless(store, {quiet, quiet, quiet, quiet, quiet, quiet, quiet});
  const auto expand = [&] {
    driver.deleteRizhi(0);
    driver.initXuanhao(period);
    bench.paints.finish();
  };
  Times ours;
  Times floor;
  for (int round = 0; round < rounds; ++round) {
    expand();
    bench.time(ours, [&] { click(bench.the<QPushButton>(u"cmmTouZhu_1"_s)); });
    expand();
    const Stopwatch watch(floor);
    headless.runGuolvSuoshui(period);
  }
  report("full run with progress", ours, 150, "the same without a window", floor);
}

/// One draw typed in; the floor inserts its row and copies the derived cells of the row before.
void measureEntry(Bench& bench) {
  bench.window.selectTopTab(1);
  bench.paints.finish();
  BareSqlite bare(bench.copy);
  QByteArrayList names{"温度值5", "温度值10"};
  for (const DerivedColumn& column : derivedColumns())
    names << column.name.toUtf8();
  const QByteArray cells = names.join(", ");
  const QByteArray insert =
      "BEGIN; INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成)"
      " SELECT max(期号) + 1, 46000.0, 1, 2, 3, 4, 5, 'Y' FROM 历史记录;"
      "UPDATE 历史记录 SET (" +
      cells + ") = (SELECT " + cells +
      " FROM 历史记录 ORDER BY 期号 DESC LIMIT 1 OFFSET 1) WHERE 期号 = (SELECT max(期号) FROM 历史记录); COMMIT";
  Times ours;
  Times floor;
  const int before = bench.the<GridView>(u"TDBGridHistory"_s).rows().rowCount();
  for (int round = 0; round < rounds; ++round) {
    for (int i = 1; i <= 5; ++i)
      bench.the<QLineEdit>(u"TextHistory_%1"_s.arg(i)).setText(QString::number(i + round % 7));
    bench.paints.finish();
    bench.time(ours, [&] { pressEnter(bench.the<QLineEdit>(u"TextHistory_5"_s)); });
    const Stopwatch watch(floor);
    bare.run(insert.constData());
  }
  if (bench.the<GridView>(u"TDBGridHistory"_s).rows().rowCount() != before + rounds)
    throw std::runtime_error("the draws are not in the grid");
  report("draw added, from Enter", ours, 20, "bare sqlite3 writes the row", floor);
}

/// The longest time between two turns of the event loop while the whole history is imported in the window.
void measureImport(Bench& bench, const QString& text) {
  bench.window.selectTopTab(1);
  bench.paints.finish();
  bench.person.file = text;
  QElapsedTimer wall;
  wall.start();
  const EventGaps gaps;
  click(bench.the<QPushButton>(u"newBtnHistory_99"_s));
  std::printf("import in the window %.0f ms, longest time without an event %.1f ms (processor %.1f)  goal 50\n",
              static_cast<double>(wall.nsecsElapsed()) / 1e6, gaps.longestByTheWall(), gaps.longestMilliseconds());
}

/// Measures one thing, or all where none is named.
void measure(int draws, const QString& only) {
  const auto wanted = [&](const QString& name) { return only.isEmpty() || only == name; };
  if (only != u"large"_s) {
    const Data data(draws);
    if (wanted(u"start"_s))
      measureStart(data.folders);
    Bench bench(data);
    if (wanted(u"scroll"_s))
      measureScroll(bench, "scroll to the end of the history", 50);
    if (wanted(u"entry"_s))
      measureEntry(bench);
    if (wanted(u"tabs"_s))
      measureConditionTabs(bench);
    if (wanted(u"value"_s))
      measureConditionClicks(bench);
    if (wanted(u"sets"_s))
      measureConditionSets(bench);
    if (wanted(u"run"_s))
      measureRun(bench);
    if (wanted(u"import"_s))
      measureImport(bench, data.text);
  }
  if (wanted(u"large"_s)) {
    const Data data(draws * largeFactor);
    Bench bench(data);
    measureOpening(bench);
    measureScroll(bench, "large grid scrolled to the end", 200);
    measureSearch(bench);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  try {
    if (const QStringList arguments = QApplication::arguments(); isStartProcess(arguments))
      return showStart(application, arguments);
    QApplication::setCursorFlashTime(0);  // a blinking cursor paints on its own
    applyTheme(application);
    measure(argc > 1 ? std::max(100, std::atoi(argv[1])) : 100000,
            argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString());
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
  return 0;
}
