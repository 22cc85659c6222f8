// The data file when the disk fails or the process is ended: the next start finds the state before or the state after.
//
// ELEVENFIVE_KILLS=300 test_model     ends as many processes, and fills the disk at as many places, where a few seconds' worth
//                                     is the default
#include <unistd.h>

#include <QElapsedTimer>
#include <QProcess>
#include <random>

#include "tests/model/datalife.h"
#include "tests/support/kills.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using DataFileFaults = DataLife;

/// Start, change, close with files that fail; true where all of it worked.
bool tryRun(const Workspace::Folders& folders, FaultyFiles& files, int value) {
  try {
    Workspace workspace(folders, {&files, {}});
    workspace.gConn.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value);
    workspace.close();
    return true;
  } catch (const Error& fault) {
    EXPECT_TRUE(fault.message().endsWith(u'。')) << fault.what();
    return false;
  }
}

TEST_F(DataFileFaults, WhicheverStepFailsTheStateIsTheOneBeforeOrTheOneAfter) {
  int before = 100;
  runWriting(before);
  qint64 step = 0;
  for (bool done = false; !done; ++step) {
    FaultyFiles files;
    files.failingStep = step;
    const int after = before + 1;
    done = tryRun(folders, files, after) && files.steps <= step;
    const int found = nextStart();
    EXPECT_TRUE(found == before || found == after) << "step " << step << " found " << found;
    before = found;
  }
  EXPECT_GT(step, 30);
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

TEST_F(DataFileFaults, WheneverTheDiskFillsTheStateIsTheOneBeforeOrTheOneAfter) {
  int before = 100;
  runWriting(before);
  // Each round writes five copies of the data; the places where it stops go through all of them, headers included.
  const qint64 size = QFileInfo(folders.packedFile()).size();
  std::vector<qint64> places{0, 1, 7, 8, 9, size - 1, size};
  const int asked = qEnvironmentVariableIntValue("ELEVENFIVE_KILLS");
  const qint64 step = asked > 0 ? 6 * size / asked : size / 11;
  for (qint64 place = 4099; place < 6 * size; place += step)
    places.push_back(place);
  for (const qint64 place : places) {
    FaultyFiles files;
    files.writableBytes = place;
    const int after = before + 1;
    const bool done = tryRun(folders, files, after);
    const int found = nextStart();
    EXPECT_EQ(found, done ? after : before) << "after " << place << " bytes";
    before = found;
  }
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

TEST_F(DataFileFaults, WhicheverStepTheProcessEndsAtTheStateIsTheOneBeforeOrTheOneAfter) {
  int before = 100;
  runWriting(before);
  qint64 step = 0;
  for (bool done = false; !done; ++step) {
    const int after = before + 1;
    done = endsBeforeStep(step, [&](FaultyFiles& files) { return tryRun(folders, files, after); });
    const int found = nextStart();
    EXPECT_TRUE(found == before || found == after) << "step " << step << " found " << found;
    if (done) {
      EXPECT_EQ(found, after);
    }
    before = found;
  }
  EXPECT_GT(step, 30);
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

class ForcedCreate : public DataLife {
 protected:
  static constexpr int fresh = 5;  ///< what new data holds

  /// New data over what stands; true where it was made.
  bool tryCreate(FaultyFiles& files) const {
    try {
      Workspace::create(folders, true, files);
      return true;
    } catch (const Error& fault) {
      EXPECT_TRUE(fault.message().endsWith(u'。')) << fault.what();
      return false;
    }
  }

  /// After a create over data of this value, whole or not, the next start goes on with one of the two, and the former value is
  /// in its hands or kept in Bak.
  void inspect(int former, qint64 step) const {
    const int found = nextStart();
    EXPECT_TRUE(found == former || found == fresh) << "step " << step << " found " << found;
    EXPECT_TRUE(found == former || keptValues().contains(former)) << "step " << step;
  }
};

TEST_F(ForcedCreate, WhicheverStepFailsTheFormerDataAreKept) {
  qint64 step = 0;
  for (bool done = false; !done; ++step) {
    const int former = 100 + static_cast<int>(step);
    runWriting(former);
    FaultyFiles files;
    files.failingStep = step;
    done = tryCreate(files) && files.steps <= step;
    inspect(former, step);
    if (done) {
      EXPECT_EQ(nextStart(), fresh);
    }
  }
  EXPECT_GT(step, 15);
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

TEST_F(ForcedCreate, WhicheverStepTheProcessEndsAtTheFormerDataAreKept) {
  qint64 step = 0;
  for (bool done = false; !done; ++step) {
    const int former = 100 + static_cast<int>(step);
    runWriting(former);
    done = endsBeforeStep(step, [&](FaultyFiles& files) { return tryCreate(files); });
    inspect(former, step);
  }
  EXPECT_GT(step, 15);
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

/// What a worker printed, by its key; -1 where it did not come so far.
int printed(const QByteArray& output, const char* key) {
  for (const QByteArray& line : output.split('\n'))
    if (line.startsWith(key))
      return line.mid(qstrlen(key) + 1).toInt();
  return -1;
}

TEST_F(DataFileFaults, EndedAtAnyInstantTheNextStartFindsTheStateBeforeOrTheOneAfter) {
  Kills kills(20, 60, 15);
  std::mt19937 random(20261121);
  int before = 5;     // what the packed data file was last known to hold
  int attempted = 5;  // what the last worker wrote, where it came so far
  int whole = 20;     // ms that a whole run takes, followed as it goes
  for (int round = 0; kills.wanted(); ++round) {
    QProcess worker;
    QElapsedTimer run;
    run.start();
    worker.start(QStringLiteral(WORKER_DATAFILE), {folders.program, folders.temporary});
    ASSERT_TRUE(worker.waitForStarted());
    const bool letFinish = round % 10 == 0;
    if (!letFinish) {
      const int wait = std::uniform_int_distribution<int>(0, whole * 1100)(random);  // us
      ::usleep(static_cast<useconds_t>(wait));
      worker.kill();
    }
    ASSERT_TRUE(worker.waitForFinished());
    const QByteArray output = worker.readAllStandardOutput();
    if (worker.exitStatus() == QProcess::NormalExit) {
      ASSERT_EQ(worker.exitCode(), 0) << worker.readAllStandardError().toStdString();
      whole = static_cast<int>(std::max<qint64>(run.elapsed(), 2));
    } else {
      kills.add();
    }
    const int found = printed(output, "found");
    if (found >= 0) {
      ASSERT_TRUE(found == before || found == attempted) << "round " << round << " found " << found;
      before = found;
      attempted = found + 1;  // it may have got there before it could say so
    }
    if (output.contains("done"))
      before = attempted;
  }
  EXPECT_TRUE(kills.wereEnough());
  const int last = nextStart();
  EXPECT_TRUE(last == before || last == attempted) << last;
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
  EXPECT_LE(keptCopies().size(), 3);
  EXPECT_EQ(QDir(folders.bakFolder()).entryList({u"elevenfive-*.new"_s}, QDir::Files), QStringList());
  Workspace workspace(folders);
  Statement rows = workspace.gConn.query("test", "SELECT DISTINCT VALUE FROM 过滤条件 WHERE ID BETWEEN 3900 AND 4040");
  ASSERT_TRUE(rows.next());
  EXPECT_EQ(rows.integer(0), last);
  EXPECT_FALSE(rows.next());
}

TEST_F(DataFileFaults, OfTwoThatStartInTheSameMomentOneWinsAndTheOtherTouchesNothing) {
  for (int round = 0; round < 20; ++round) {
    QProcess first;
    QProcess second;
    const QStringList arguments{folders.program, folders.temporary, u"hold"_s};
    first.start(QStringLiteral(WORKER_DATAFILE), arguments);
    second.start(QStringLiteral(WORKER_DATAFILE), arguments);
    ASSERT_TRUE(first.waitForStarted() && second.waitForStarted());
    QProcess* loser = nullptr;
    QElapsedTimer clock;
    clock.start();
    while (loser == nullptr && clock.elapsed() < 10000) {
      if (first.waitForFinished(5))
        loser = &first;
      else if (second.waitForFinished(5))
        loser = &second;
    }
    ASSERT_NE(loser, nullptr) << "both run";
    QProcess& winner = loser == &first ? second : first;
    EXPECT_EQ(loser->exitCode(), 3);
    EXPECT_EQ(QString::fromUtf8(loser->readAllStandardError()), u"程序正在运行,不允许同时打开多个!!!\n"_s);
    winner.closeWriteChannel();
    ASSERT_TRUE(winner.waitForFinished());
    EXPECT_EQ(winner.exitCode(), 0) << winner.readAllStandardError().toStdString();
  }
  EXPECT_EQ(nextStart(), 5);
}

TEST_F(DataFileFaults, AProcessThatWasEndedLeavesNoLock) {
  QProcess worker;
  worker.start(QStringLiteral(WORKER_DATAFILE), {folders.program, folders.temporary, u"hold"_s});
  ASSERT_TRUE(worker.waitForReadyRead());
  EXPECT_THROW(Workspace workspace(folders), AlreadyRunning);
  worker.kill();
  ASSERT_TRUE(worker.waitForFinished());
  EXPECT_EQ(nextStart(), 5);
}

}  // namespace
}  // namespace elevenfive
