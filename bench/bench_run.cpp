// The expansion of all numbers and a run over its 462 rows, with the factory conditions and with everything in use, against the
// bare sqlite3 calls that read and write the same cells in one transaction a stage. Prints milliseconds and ratios, then the
// time of a full run by the number of rows.
//
//   bench_run [DRAWS]     draws in the history, default 100000
#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <stdexcept>
#include <vector>

#include "bench/baresqlite.h"
#include "bench/fullrun.h"
#include "bench/measure.h"
#include "engine/analysis.h"
#include "engine/matchfilter.h"
#include "engine/pipeline.h"
#include "engine/positionfilter.h"
#include "engine/reduction.h"
#include "engine/rundriver.h"
#include "model/workspace.h"

namespace {

using namespace elevenfive;
using namespace Qt::StringLiterals;

constexpr Qihao period = 90000000;
constexpr int rounds = 15;

/// The cells of a row that a stage may change.
struct Cells {
  int xuhao;
  int mark;
  int reduction;
  bool operator==(const Cells&) const = default;
};

using Snapshot = std::map<int, Cells>;

Snapshot snapshotOf(Store& store) {
  Snapshot rows;
  Statement read = store.query("bench", "SELECT ID, 序号, 过滤标记, 缩水标记 FROM 日志表 ORDER BY ID");
  while (read.next())
    rows[read.integer(0)] = {read.integer(1), read.integer(2), read.integer(3)};
  return rows;
}

/// The same cells as the operations write, by bare calls.
class Floor final {
 public:
  explicit Floor(const QString& path) : db_(path) {}

  void expand() {
    db_.run("BEGIN; DELETE FROM 日志表");
    const BareSqlite::Prepared insert = db_.prepared(
        "INSERT INTO 日志表 (ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记) VALUES (?, ?, ?, ?, ?, ?, ?, "
        "?, 0)");
    int id = 0;
    for (int a = 1; a <= 7; ++a)
      for (int b = a + 1; b <= 8; ++b)
        for (int c = b + 1; c <= 9; ++c)
          for (int d = c + 1; d <= 10; ++d)
            for (int e = d + 1; e <= 11; ++e) {
              ++id;
              step(insert, {id, id, period, a, b, c, d, e});
            }
    db_.run("COMMIT");
  }

  void clearMarks() {
    db_.run("BEGIN");
    const BareSqlite::Prepared clear =
        db_.prepared("UPDATE 日志表 SET 过滤标记 = 0, 缩水标记 = 0, 精选标记 = 0, 临时数据 = 0 WHERE ID = ?");
    for (const int id : readRows())
      step(clear, {id});
    db_.run("COMMIT");
  }

  /// A stage: reads the rows, writes what it writes to those that stay, marks the others and deletes them.
  void stage(const Snapshot& after) {
    db_.run("BEGIN");
    const BareSqlite::Prepared pass = db_.prepared("UPDATE 日志表 SET 过滤标记 = ?, 序号 = ? WHERE ID = ?");
    const BareSqlite::Prepared fail = db_.prepared("UPDATE 日志表 SET 过滤标记 = -1 WHERE ID = ?");
    for (const int id : readRows()) {
      if (const auto row = after.find(id); row != after.end())
        step(pass, {row->second.mark, row->second.xuhao, id});
      else
        step(fail, {id});
    }
    step(db_.prepared("DELETE FROM 日志表 WHERE 期号 = ? AND 过滤标记 < 0"), {period});
    db_.run("COMMIT");
  }

 private:
  std::vector<int> readRows() {
    const BareSqlite::Prepared read = db_.prepared(
        "SELECT ID, 序号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记 FROM 日志表"
        " WHERE 期号 = ? ORDER BY 序号, ID");
    sqlite3_bind_int(read.get(), 1, period);
    std::vector<int> ids;
    while (sqlite3_step(read.get()) == SQLITE_ROW) {
      for (int column = 1; column < 8; ++column)
        sum_ += sqlite3_column_int(read.get(), column);
      ids.push_back(sqlite3_column_int(read.get(), 0));
    }
    return ids;
  }

  static void step(const BareSqlite::Prepared& statement, std::initializer_list<int> values) {
    int index = 0;
    for (const int value : values)
      sqlite3_bind_int(statement.get(), ++index, value);
    BareSqlite::step(statement);
  }

  BareSqlite db_;
  long long sum_ = 0;  ///< of all cells read, so that reading is not optimised away
};

struct Bench {
  QTemporaryDir folder;
  Workspace::Folders folders{folder.path(), folder.path()};
  std::unique_ptr<Workspace> workspace;
  QuietRun quiet;
  RunPorts ports{quiet, quiet, quiet, quiet, quiet, quiet, quiet};
  std::unique_ptr<RunDriver> driver;

  explicit Bench(int draws) {
    Workspace::create(folders, false);
    workspace = std::make_unique<Workspace>(folders);
    driver = std::make_unique<RunDriver>(workspace->gConn, ports);
    addHistory(draws);
    driver->fillTiaojianValues(1, numberCount, 1);
  }

  [[nodiscard]] RunContext run() { return {workspace->gConn, ports, driver->state()}; }

  void addHistory(int draws) {
    std::mt19937 random(11);
    std::array<int, numberCount> numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    StoreTransaction transaction(workspace->gConn);
    Statement insert = workspace->gConn.query("bench",
                                              "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5)"
                                              " VALUES (?, 40000, ?, ?, ?, ?, ?)");
    for (int i = 0; i < draws; ++i) {
      std::shuffle(numbers.begin(), numbers.end(), random);
      std::sort(numbers.begin(), numbers.begin() + drawSize);
      insert.run(period - draws + i, numbers[0], numbers[1], numbers[2], numbers[3], numbers[4]);
    }
    transaction.commit();
  }

  /// What the rows are after each stage that changes any.
  std::vector<Snapshot> stagesOfARun() {
    std::vector<Snapshot> stages;
    Store& store = workspace->gConn;
    driver->deleteRizhi(0);
    driver->initXuanhao(period);
    driver->resetRizhiBiaoji(period);
    Snapshot last = snapshotOf(store);
    const auto note = [&] {
      if (Snapshot now = snapshotOf(store); now != last)
        stages.push_back(last = std::move(now));
    };
    for (const PipelineStage& stage : pipelineStages())
      for (int member = stage.firstMember; member <= stage.lastMember; ++member) {
        stage.run(run(), period, member);
        note();
      }
    filter_Dingwei(run(), period);
    note();
    filter_Lishi(run(), period);
    note();
    driver->loadTiaojianValues(3900, 3900);
    runSuoshui(run(), driver->state().tiaojianValue[0], period);
    note();
    return stages;
  }
};

/// Measures the operations and the floor in turn, so that both see the same machine.
void compare(Bench& bench, const char* name) {
  const std::vector<Snapshot> stages = bench.stagesOfARun();
  bench.driver->runGuolvSuoshui(period);  // the one-time warnings
  QTemporaryDir floorFolder;
  const QString floorPath = floorFolder.path() + u"/floor.db"_s;
  bench.workspace->gConn.execute("bench", "VACUUM INTO ?", floorPath);
  Floor floor(floorPath);
  Times ours;
  Times bare;
  for (int round = 0; round < rounds; ++round) {
    {
      const Stopwatch watch(ours);
      bench.driver->deleteRizhi(0);
      bench.driver->initXuanhao(period);
      bench.driver->runGuolvSuoshui(period);
    }
    const Stopwatch watch(bare);
    floor.expand();
    floor.clearMarks();
    for (const Snapshot& stage : stages)
      floor.stage(stage);
  }
  std::printf("%-20s %2zu stages   ours %7.2f ms (processor %7.2f)   floor %7.2f ms (%7.2f)   ratio %.2f (%.2f)\n",
              name, stages.size(), median(ours.wall), median(ours.processor), median(bare.wall), median(bare.processor),
              median(ours.wall) / median(bare.wall), median(ours.processor) / median(bare.processor));
}

/// A run with everything in use over the first rows of the expansion.
void measureGrowth(Bench& bench) {
  for (const int rows : {50, 100, 200, 462}) {
    Times times;
    for (int round = 0; round < rounds; ++round) {
      bench.driver->deleteRizhi(0);
      bench.driver->initXuanhao(period);
      bench.workspace->gConn.execute("bench", "DELETE FROM 日志表 WHERE 序号 > ?", rows);
      const Stopwatch watch(times);
      bench.driver->runGuolvSuoshui(period);
    }
    std::printf("full run over %3d rows %7.2f ms (processor %7.2f)   %.3f ms a row\n", rows, median(times.wall),
                median(times.processor), median(times.wall) / rows);
  }
}

/// 精选号码 over all combinations.
void measureRefine(Bench& bench) {
  Times times;
  for (int round = 0; round < rounds; ++round) {
    bench.driver->deleteRizhi(0);
    bench.driver->initXuanhao(period);
    const Stopwatch watch(times);
    analyseHaoma(bench.run(), period, 5);
  }
  std::printf("scoring of 462 rows     %7.2f ms (processor %7.2f)   (goal: under 20)\n", median(times.wall),
              median(times.processor));
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    Bench bench(argc > 1 ? std::max(100, std::atoi(argv[1])) : 100000);
    compare(bench, "factory conditions");  // goal: at most 3 times the floor, under 30 ms
    measureRefine(bench);
    useEverything(bench.workspace->gConn);
    compare(bench, "everything in use");  // goal: at most 3 times the floor, under 80 ms
    measureGrowth(bench);
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
  return 0;
}
