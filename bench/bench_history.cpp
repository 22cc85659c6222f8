// Import of a long synthetic history with derivation and temperatures, against the bare sqlite3 calls that insert and update
// the same cells; and what is done with it afterwards. Prints milliseconds of processor time, which other programs on the
// machine disturb least, the ratio, the longest time between two yields (by the clock on the wall) and the peak of memory.
//
//   bench_history [DRAWS]     default 100000
#include <sys/resource.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "bench/baresqlite.h"
#include "bench/measure.h"
#include "bench/synthetichistory.h"
#include "history/attributes.h"
#include "history/historytable.h"
#include "history/miss.h"
#include "history/search.h"
#include "history/textfiles.h"
#include "model/navigators.h"
#include "model/schema.h"

namespace {

using namespace elevenfive;
using namespace Qt::StringLiterals;

constexpr int mostForTheFloor = 300000;  ///< it keeps all cells in memory

/// Measures processor time.
class ProcessorTimer final {
 public:
  void start() { begun_ = processorMilliseconds(); }
  [[nodiscard]] double milliseconds() const { return processorMilliseconds() - begun_; }

 private:
  double begun_ = processorMilliseconds();
};

struct Quiet final : Boxes, Progress, Events, LineProgress, StatusPanels {
  ProcessorTimer sinceStart;
  std::vector<double> phaseEnds;  ///< of the lines and of the derivation
  QElapsedTimer sinceYield;
  qint64 longestStall = 0;

  Answer show(const Box&) override { return Answer::yes; }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool visible) override {
    if (!visible)
      phaseEnds.push_back(sinceStart.milliseconds());
  }
  void show(int) override {}
  void setDone(int) override {}
  void hide() override { phaseEnds.push_back(sinceStart.milliseconds()); }
  [[nodiscard]] bool stopRequested() const override { return false; }
  void setPanel(int, const QString&) override {}
  void yield() override {
    if (sinceYield.isValid())
      longestStall = std::max(longestStall, sinceYield.nsecsElapsed());
    sinceYield.start();
  }
};

struct Cell {
  bool isText;
  int number;
  QByteArray text;
};

/// The draws of a store and their derived cells, in the order of their periods.
struct StoredCells {
  std::vector<std::array<int, 6>> draws;
  std::vector<std::vector<Cell>> derived;
};

StoredCells readCells(const QString& path, const QByteArrayList& derivedNames) {
  BareSqlite source(path);
  const BareSqlite::Prepared prepared = source.prepared("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, " +
                                                        derivedNames.join(", ") + " FROM 历史记录 ORDER BY 期号");
  sqlite3_stmt* read = prepared.get();
  const int columns = sqlite3_column_count(read);
  StoredCells stored;
  while (sqlite3_step(read) == SQLITE_ROW) {
    auto& draw = stored.draws.emplace_back();
    for (int c = 0; c < 6; ++c)
      draw[static_cast<std::size_t>(c)] = sqlite3_column_int(read, c);
    auto& cells = stored.derived.emplace_back();
    for (int c = 6; c < columns; ++c) {
      const bool isText = sqlite3_column_type(read, c) == SQLITE_TEXT;
      cells.push_back(
          {isText, isText ? 0 : sqlite3_column_int(read, c),
           isText ? QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(read, c))) : QByteArray()});
    }
  }
  return stored;
}

void insertDraws(BareSqlite& db, const StoredCells& stored) {
  const BareSqlite::Prepared insert = db.prepared(
      "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成)"
      " VALUES (?, ?, ?, ?, ?, ?, ?, 'Y')");
  for (const auto& draw : stored.draws) {
    sqlite3_bind_int(insert.get(), 1, draw[0]);
    sqlite3_bind_double(insert.get(), 2, 46000.0);
    for (int c = 1; c < 6; ++c)
      sqlite3_bind_int(insert.get(), c + 2, draw[static_cast<std::size_t>(c)]);
    BareSqlite::step(insert);
  }
}

void updateDerived(BareSqlite& db, const StoredCells& stored, const QByteArrayList& derivedNames) {
  const BareSqlite::Prepared update =
      db.prepared("UPDATE 历史记录 SET " + derivedNames.join(" = ?, ") + " = ? WHERE 期号 = ?");
  for (std::size_t r = 1; r < stored.draws.size(); ++r) {
    int parameter = 0;
    for (const Cell& cell : stored.derived[r]) {
      if (cell.isText)
        sqlite3_bind_text(update.get(), ++parameter, cell.text.constData(), static_cast<int>(cell.text.size()),
                          SQLITE_STATIC);
      else
        sqlite3_bind_int(update.get(), ++parameter, cell.number);
    }
    sqlite3_bind_int(update.get(), ++parameter, stored.draws[r][0]);
    BareSqlite::step(update);
  }
}

/// Inserts the eight cells of a stored draw and updates its derived ones, with one transaction each. The values come from
/// the store that the import has filled, read beforehand.
double floorMilliseconds(const QString& filled, const QString& path) {
  QByteArrayList names{"温度值5", "温度值10"};
  for (const DerivedColumn& column : derivedColumns())
    names << column.name.toUtf8();
  const StoredCells stored = readCells(filled, names);

  const ProcessorTimer timer;
  BareSqlite db(path);
  db.run("BEGIN");
  insertDraws(db, stored);
  db.run("COMMIT; BEGIN");
  updateDerived(db, stored, names);
  db.run("COMMIT");
  return timer.milliseconds();
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void measure(int draws) {
  const QTemporaryDir folder;
  const QString text = folder.filePath(u"history.txt"_s);
  const QString full = folder.filePath(u"full.db"_s);
  const QString bare = folder.filePath(u"bare.db"_s);
  writeHistory(text, draws);
  createSchema(*std::make_unique<Store>(bare, StoreAccess::create), StoreKind::main);

  Quiet ports;
  ProcessorTimer timer;
  double imported = 0;
  double added = 0;
  {
    Store store(full, StoreAccess::create);
    createSchema(store, StoreKind::main);
    ports.sinceStart.start();
    timer.start();
    importHistoryText(store, text, true, {ports, ports, ports, ports, &ports});
    imported = timer.milliseconds();
    timer.start();
    addHistoryRecord(store, getNextQihao(store), QDate::currentDate(), {1, 2, 3, 4, 5}, true);
    added = timer.milliseconds();
  }
  const auto timed = [&](auto&& work) {
    timer.start();
    work();
    return timer.milliseconds();
  };
  {
    Store store(full, StoreAccess::readWrite);
    YilouNow yilouNow{};
    const auto miss = [&] { calcYilou(store, getLastQihao(store), true, yilouNow, nullptr, ports); };
    std::printf("miss figures of the newest period, first %9.1f ms   (goal: under 300)\n", timed(miss));
    std::printf("miss figures of the newest period, again %9.1f ms   (goal: under 300)\n", timed(miss));
    const FilterSql filter = buildFilterSql({{u"和值"_s, u"2"_s}, {u"号码1"_s, u"01"_s}, {u"连号"_s, u"2+"_s}});
    std::printf("search by three prefixes                 %9.1f ms   (goal: under 200 over 300000 draws)\n",
                timed([&] { static_cast<void>(searchHistory(store, filter)); }));
  }
  const double peak = peakMegabytes();
  std::printf("import of %d draws with derivation  %9.1f ms\n", draws, imported);
  double begun = 0;
  const char* const phases[] = {"lines", "derivation"};
  for (std::size_t i = 0; i < std::size(phases) && i < ports.phaseEnds.size(); ++i) {
    std::printf("  of it %-32s  %9.1f ms\n", phases[i], ports.phaseEnds[i] - begun);
    begun = ports.phaseEnds[i];
  }
  if (draws <= mostForTheFloor) {
    const double floor = floorMilliseconds(full, bare);
    std::printf("bare sqlite3, the same cells            %9.1f ms   ratio %.2f (goal: at most 2)\n", floor,
                imported / floor);
  }
  std::printf("longest time without a yield            %9.1f ms   (goal: at most 50)\n",
              static_cast<double>(ports.longestStall) / 1e6);
  std::printf("one draw added at the end               %9.1f ms   (goal: under 20)\n", added);
  std::printf("peak of memory                          %9.1f MB   (goal: under 150)\n", peak);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  try {
    measure(argc > 1 ? std::max(1, std::atoi(argv[1])) : 100000);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
  return 0;
}
