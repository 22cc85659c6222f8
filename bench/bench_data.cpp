// The life of the data file on a long history: unpacking, compaction with its backup, packing, the whole start as far as a
// window needs it, and the whole close. Beside each stands its floor in the same run: copying the same bytes with fsync, as often
// as the operation must bring them to the disk.
//
//   bench_data [DRAWS]     default 100000
#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <stdexcept>

#include "bench/measure.h"
#include "history/derivation.h"
#include "model/compaction.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/packfile.h"
#include "shell/startup.h"

namespace {

using namespace elevenfive;
using namespace Qt::StringLiterals;

constexpr int rounds = 9;
constexpr double goal = 500;  // ms
constexpr Qihao firstPeriod = 10000001;

struct Quiet final : Boxes, Events {
  Answer show(const Box& box) override {
    if (box.kind == BoxKind::critical)
      throw std::runtime_error(box.text.toStdString());
    return Answer::yes;
  }
  void yield() override {}
};

/// What the window reads before it can be used, without the window.
class HeadlessScreens final : public Screens {
 public:
  long long read = 0;  ///< so that nothing is optimised away

  void showSplash() override {}
  void setHelpFile(const QString&) override {}
  void bindHistory(Workspace& workspace) override {
    workspace_ = &workspace;
    Statement periods = workspace.gConn.query("bench", "SELECT 期号 FROM 历史记录 ORDER BY 期号");
    while (periods.next())
      read += periods.integer(0);
  }
  void loadBallImages(const std::vector<BallColors>& colors) override { read += static_cast<long long>(colors.size()); }
  void loadMissBallImages() override {}
  void layoutHistoryGrid() override {}
  void initMainPanels() override { read += getNextQihao(workspace_->gConn); }
  void showMainForm() override {}
  bool askUserMode(int& gUserMode) override { return gUserMode > 0; }
  void showUserMenu(bool) override {}
  LogOn logOn(Users&) override { return LogOn::done; }
  void setUserCaption(const Users&) override {}
  void showChartMode() override {}
  void chooseGame() override {}
  void fillZdyGroups() override {}
  void unload(const QString&) override {}
  void releaseData() override {}

 private:
  Workspace* workspace_ = nullptr;
};

/// Draws with all their derived columns.
void fillHistory(Store& store, int draws) {
  std::mt19937 random(11);
  std::array<int, numberCount> numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  {
    StoreTransaction transaction(store);
    Statement insert = store.query("bench",
                                   "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成)"
                                   " VALUES (?, 40000, ?, ?, ?, ?, ?, 'Y')");
    for (int i = 0; i < draws; ++i) {
      std::shuffle(numbers.begin(), numbers.end(), random);
      std::sort(numbers.begin(), numbers.begin() + drawSize);
      insert.run(firstPeriod + i, numbers[0], numbers[1], numbers[2], numbers[3], numbers[4]);
    }
    transaction.commit();
  }
  Quiet quiet;
  calcHistoryAttr(store, firstPeriod, firstPeriod + draws - 1, nullptr, quiet);
}

/// Copies a file and waits for the disk.
void copyFlushed(const QString& from, const QString& to) {
  const auto file = realFiles().create(to);
  appendFile(*file, from);
  file->flush();
  file->close();
}

void demand(bool done, const char* what) {
  if (!done)
    throw std::runtime_error(what);
}

class Bench final {
 public:
  explicit Bench(int draws) {
    Workspace::create(folders_, false);
    {
      Workspace workspace(folders_);
      fillHistory(workspace.gConn, draws);
      workspace.gConn.execute("bench", "UPDATE 用户模式 SET 模式 = 1");
      workspace.close();
    }
    demand(unpackFiles(folders_.packedFile(), icon_, database_), "cannot unpack");
    std::printf("%d draws, a database of %.1f MB\n", draws, static_cast<double>(QFileInfo(database_).size()) / 1e6);
  }

  void measureSteps() {
    Times unpack;
    Times pack;
    Times compact;
    Times check;
    Times copy;
    for (int round = 0; round < rounds; ++round) {
      {
        const Stopwatch watch(copy);
        copyFlushed(database_, place(u"copy"_s));
      }
      {
        const Stopwatch watch(unpack);
        demand(unpackFiles(folders_.packedFile(), icon_, database_), "cannot unpack");
      }
      {
        const Stopwatch watch(check);
        checkDatabase(database_, StoreKind::main);
      }
      {
        const Stopwatch watch(compact);
        demand(compactMainDb(database_, true, folders_).isEmpty(), "cannot compact");
      }
      const Stopwatch watch(pack);
      demand(packFiles(database_, icon_, place(u"pack"_s)), "cannot pack");
    }
    report("unpackFiles", unpack, goal, "copy with fsync", copy);
    report("checking the database", check, goal, "copy with fsync", copy);
    report("compactMainDb with backup", compact, goal, "copy with fsync", copy);
    report("packFiles", pack, goal, "copy with fsync", copy);
  }

  void measureWhole() {
    Times start;
    Times close;
    Times once;
    Times twice;
    Quiet quiet;
    HeadlessScreens screens;
    for (int round = 0; round < rounds; ++round) {
      {
        const Stopwatch watch(once);
        copyFlushed(database_, place(u"copy"_s));
      }
      {
        const Stopwatch watch(twice);
        copyFlushed(database_, place(u"copy"_s));
        copyFlushed(database_, place(u"pack"_s));
      }
      Startup startup(folders_, quiet, screens);
      {
        const Stopwatch watch(start);
        demand(startup.start(), "the start failed");
      }
      startup.workspace().gConn.execute("bench", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", round);
      const Stopwatch watch(close);
      demand(startup.close(true), "the close failed");
    }
    report("whole start", start, goal, "one copy with fsync", once);
    report("whole close", close, goal, "two copies with fsync", twice);
  }

 private:
  QString place(const QString& name) const { return folder_.filePath(name); }

  QTemporaryDir folder_;
  DataFolders folders_{folder_.filePath(u"program"_s), folder_.filePath(u"temp"_s)};
  QString database_ = folder_.filePath(u"database"_s);
  QString icon_ = folder_.filePath(u"icon"_s);
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  try {
    Bench bench(argc > 1 ? std::max(100, std::atoi(argv[1])) : 100000);
    bench.measureSteps();
    bench.measureWhole();
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
  return 0;
}
