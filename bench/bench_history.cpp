// Import of a long synthetic history with derivation and temperatures, against the bare sqlite3 calls that insert and update
// the same cells; and adding one draw at the end. Prints milliseconds, ratios, the longest time between two yields and the
// peak of memory.
//
//   bench_history [DRAWS]     default 100000
#include <sqlite3.h>
#include <sys/resource.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <random>
#include <stdexcept>

#include "history/attributes.h"
#include "history/historytable.h"
#include "history/textfiles.h"
#include "model/navigators.h"
#include "model/schema.h"

namespace {

using namespace elevenfive;
using namespace Qt::StringLiterals;

struct Quiet final : Boxes, Progress, Events, LineProgress, StatusPanels {
  QElapsedTimer sinceStart;
  std::vector<qint64> phaseEnds;  ///< of the lines and of the derivation
  QElapsedTimer sinceYield;
  qint64 longestStall = 0;

  Answer show(const Box&) override { return Answer::yes; }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool visible) override {
    if (!visible)
      phaseEnds.push_back(sinceStart.nsecsElapsed());
  }
  void show(int) override {}
  void setDone(int) override {}
  void hide() override { phaseEnds.push_back(sinceStart.nsecsElapsed()); }
  [[nodiscard]] bool stopRequested() const override { return false; }
  void setPanel(int, const QString&) override {}
  void yield() override {
    if (sinceYield.isValid())
      longestStall = std::max(longestStall, sinceYield.nsecsElapsed());
    sinceYield.start();
  }
};

/// Random draws, ten a day from 2007 on, as an export writes them.
void writeHistory(const QString& path, int draws) {
  std::mt19937 random(20070101);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    throw std::runtime_error("cannot write the synthetic history");
  QDate date(2007, 1, 1);
  std::array<int, numberCount> numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  for (int i = 0; i < draws; ++i) {
    if (i % 10 == 0 && i > 0)
      date = date.addDays(1);
    std::shuffle(numbers.begin(), numbers.end(), random);
    QByteArray line = date.toString(u"yyMMdd"_s).toLatin1() + (i % 10 < 9 ? "0" : "") + QByteArray::number(i % 10 + 1);
    for (std::size_t n = 0; n < drawSize; ++n)
      line += (numbers[n] < 10 ? " 0" : " ") + QByteArray::number(numbers[n]);
    file.write(line + "\r\n");
  }
}

sqlite3_stmt* prepared(sqlite3* db, const QByteArray& sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
    throw std::runtime_error(sqlite3_errmsg(db));
  return statement;
}

void step(sqlite3_stmt* statement) {
  if (sqlite3_step(statement) != SQLITE_DONE)
    throw std::runtime_error("the floor's statement failed");
  sqlite3_reset(statement);
}

/// Inserts the eight cells of a stored draw and updates its derived ones, with one transaction each. The values come from
/// the store that the import has filled, read beforehand.
double floorMilliseconds(const QString& filled, const QString& path) {
  QByteArrayList names{"温度值5", "温度值10"};
  for (const DerivedColumn& column : derivedColumns())
    names << column.name.toUtf8();
  struct Cell {
    bool isText;
    int number;
    QByteArray text;
  };
  std::vector<std::array<int, 6>> draws;
  std::vector<std::vector<Cell>> derived;
  sqlite3* source = nullptr;
  sqlite3_open(filled.toUtf8().constData(), &source);
  sqlite3_stmt* read = prepared(
      source, "SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, " + names.join(", ") + " FROM 历史记录 ORDER BY 期号");
  const int columns = sqlite3_column_count(read);
  while (sqlite3_step(read) == SQLITE_ROW) {
    auto& draw = draws.emplace_back();
    for (int c = 0; c < 6; ++c)
      draw[static_cast<std::size_t>(c)] = sqlite3_column_int(read, c);
    auto& cells = derived.emplace_back();
    for (int c = 6; c < columns; ++c) {
      const bool isText = sqlite3_column_type(read, c) == SQLITE_TEXT;
      cells.push_back(
          {isText, isText ? 0 : sqlite3_column_int(read, c),
           isText ? QByteArray(reinterpret_cast<const char*>(sqlite3_column_text(read, c))) : QByteArray()});
    }
  }
  sqlite3_finalize(read);
  sqlite3_close(source);

  QElapsedTimer timer;
  timer.start();
  sqlite3* db = nullptr;
  sqlite3_open(path.toUtf8().constData(), &db);
  sqlite3_exec(db, "PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = OFF; PRAGMA cache_size = -16000; BEGIN",
               nullptr, nullptr, nullptr);
  sqlite3_stmt* insert = prepared(db,
                                  "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成)"
                                  " VALUES (?, ?, ?, ?, ?, ?, ?, 'Y')");
  for (const auto& draw : draws) {
    sqlite3_bind_int(insert, 1, draw[0]);
    sqlite3_bind_double(insert, 2, 46000.0);
    for (int c = 1; c < 6; ++c)
      sqlite3_bind_int(insert, c + 2, draw[static_cast<std::size_t>(c)]);
    step(insert);
  }
  sqlite3_finalize(insert);
  sqlite3_exec(db, "COMMIT; BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* update = prepared(db, "UPDATE 历史记录 SET " + names.join(" = ?, ") + " = ? WHERE 期号 = ?");
  for (std::size_t r = 1; r < draws.size(); ++r) {
    int parameter = 0;
    for (const Cell& cell : derived[r]) {
      if (cell.isText)
        sqlite3_bind_text(update, ++parameter, cell.text.constData(), static_cast<int>(cell.text.size()),
                          SQLITE_STATIC);
      else
        sqlite3_bind_int(update, ++parameter, cell.number);
    }
    sqlite3_bind_int(update, ++parameter, draws[r][0]);
    step(update);
  }
  sqlite3_finalize(update);
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double milliseconds(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void measure(int draws) {
  const QTemporaryDir folder;
  const QString text = folder.filePath(u"history.txt"_s);
  const QString full = folder.filePath(u"full.db"_s);
  const QString bare = folder.filePath(u"bare.db"_s);
  writeHistory(text, draws);
  createSchema(*std::make_unique<Store>(bare, StoreAccess::create), StoreKind::main);

  Quiet ports;
  QElapsedTimer timer;
  double imported = 0;
  double added = 0;
  {
    Store store(full, StoreAccess::create);
    createSchema(store, StoreKind::main);
    ports.sinceStart.start();
    timer.start();
    importHistoryText(store, text, true, {ports, ports, ports, ports, &ports});
    imported = milliseconds(timer);
    timer.start();
    addHistoryRecord(store, getNextQihao(store), QDate::currentDate(), {1, 2, 3, 4, 5}, true, ports);
    added = milliseconds(timer);
  }
  const double peak = peakMegabytes();  // the floor below keeps all cells in memory
  const double floor = floorMilliseconds(full, bare);
  std::printf("import of %d draws with derivation  %9.1f ms\n", draws, imported);
  qint64 begun = 0;
  const char* const phases[] = {"lines", "derivation"};
  for (std::size_t i = 0; i < std::size(phases) && i < ports.phaseEnds.size(); ++i) {
    std::printf("  of it %-32s  %9.1f ms\n", phases[i], static_cast<double>(ports.phaseEnds[i] - begun) / 1e6);
    begun = ports.phaseEnds[i];
  }
  std::printf("bare sqlite3, the same cells            %9.1f ms   ratio %.2f (goal: at most 2)\n", floor,
              imported / floor);
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
