// The window program as a process: ended by SIGKILL at random instants of its start, its use and its close, started twice in
// one moment, and on a damaged data file. The companion looks at what is left.
//
// ELEVENFIVE_KILLS=300 test_windowprocess     as many rounds, where a few seconds' worth is the default
#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <random>

#include "model/workspace.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/kills.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

constexpr int firstPeriod = 11031510;

class WindowProcess : public ::testing::Test {
 protected:
  WindowProcess() {
    QDir(folder.path()).mkpath(u"tmp"_s);
    QDir(folder.path()).mkpath(u"program"_s);
    // The program keeps its data beside itself: a second name of it gives it a folder of its own.
    const QByteArray built = QFile::encodeName(QStringLiteral(WINDOW_PROGRAM));
    const bool linked = ::link(built.constData(), QFile::encodeName(program).constData()) == 0;
    EXPECT_TRUE(linked || QFile::copy(QStringLiteral(WINDOW_PROGRAM), program));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(DRIVER_PLUGINS));
    environment.insert(u"QT_LOGGING_RULES"_s, u"*=false"_s);
    environment.insert(u"TMPDIR"_s, folder.filePath(u"tmp"_s));
    environment.insert(u"HOME"_s, folder.path());
    environment.insert(u"XDG_DATA_HOME"_s, folder.filePath(u"data"_s));
  }

  /// A data file with one draw and the mode chosen, so that no form of the first run comes.
  void makeData() {
    Workspace::create(folders, false, quick);
    Workspace workspace(folders, {&quick, {}});
    workspace.gConn.execute("test", "UPDATE 用户模式 SET 模式 = 1");
    workspace.gConn.execute("test",
                            "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5)"
                            " VALUES (?, 40000, 1, 2, 3, 4, 5)",
                            firstPeriod);
    workspace.close();
  }

  void start(QProcess& process, const QString& driver) {
    QProcessEnvironment its = environment;
    its.insert(u"QT_QPA_GENERIC_PLUGINS"_s, driver);
    process.setProcessEnvironment(its);
    process.start(program, {});
    ASSERT_TRUE(process.waitForStarted());
  }

  /// What the companion finds.
  QString inspect(const QString& sql) const {
    QProcess companion;
    companion.start(QStringLiteral(COMPANION),
                    {u"--folder"_s, folders.program, u"--temp"_s, folders.temporary, u"sql"_s, sql});
    EXPECT_TRUE(companion.waitForFinished());
    EXPECT_EQ(companion.exitCode(), 0) << companion.readAllStandardError().toStdString();
    return QString::fromUtf8(companion.readAllStandardOutput()).section(u'\n', 1).trimmed();
  }

  QStringList damaged() const { return QDir(folders.program).entryList({u"*.damaged-*"_s}); }

  QTemporaryDir folder;
  UnflushedFiles quick;
  QString program = folder.filePath(u"program/elevenfive"_s);
  Workspace::Folders folders{folder.filePath(u"program"_s), folder.filePath(u"temp"_s)};
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

/// The number behind a word at the start of a line; -1 where no such line is there.
int numberBehind(const QByteArray& output, const char* word) {
  for (const QByteArray& line : output.split('\n'))
    if (line.startsWith(word))
      return line.mid(qstrlen(word) + 1).toInt();
  return -1;
}

TEST_F(WindowProcess, EndedAtAnyInstantItFindsTheStateBeforeOrTheOneAfter) {
  makeData();
  Kills kills(3, 35, 8);
  std::mt19937 random(static_cast<unsigned>(20261121 + kills.asked()));
  int before = firstPeriod + 1;  // the next period as it was last known to be on the disk
  int after = before;            // and as the last process would have left it
  int whole = 0;                 // ms that a run takes which is not disturbed, followed as it goes
  for (int round = 0; kills.wanted(); ++round) {
    QProcess window;
    QElapsedTimer run;
    run.start();
    start(window, u"windowdriver"_s);
    const bool disturbed = round % 8 != 0;
    if (disturbed) {
      ::usleep(static_cast<useconds_t>(std::uniform_int_distribution<int>(0, whole * 1050)(random)));
      window.kill();
    }
    ASSERT_TRUE(window.waitForFinished());
    const QByteArray output = window.readAllStandardOutput();
    if (window.exitStatus() == QProcess::NormalExit) {
      ASSERT_EQ(window.exitCode(), 0) << window.readAllStandardError().toStdString();
      whole = static_cast<int>(run.elapsed());
    } else {
      kills.add();
    }
    if (const int found = numberBehind(output, "period"); found >= 0) {
      ASSERT_TRUE(found == before || found == after) << "round " << round << " found " << found << output.toStdString();
      before = found;
      after = found + 1;
    }
    if (window.exitStatus() == QProcess::NormalExit) {
      ASSERT_EQ(numberBehind(output, "stored"), after - 1);
      before = after;
    }
  }
  EXPECT_TRUE(kills.wereEnough());
  const int last = inspect(u"SELECT max(期号) + 1 FROM 历史记录"_s).toInt();
  EXPECT_TRUE(last == before || last == after) << last;
  EXPECT_EQ(inspect(u"SELECT count(*) FROM 历史记录 WHERE 号码5 = 5"_s).toInt(), last - firstPeriod);
  EXPECT_EQ(damaged(), QStringList());
  EXPECT_LE(QDir(folders.bakFolder()).entryList({u"elevenfive-*.bak"_s}).size(), 3);
}

/// Waits until one of two has ended and the other is up; the one that is up, or null.
QProcess* winnerOf(QProcess& first, QProcess& second) {
  QElapsedTimer clock;
  clock.start();
  QProcess* winner = nullptr;
  while (winner == nullptr && clock.elapsed() < 20000) {
    if (first.waitForFinished(5))
      winner = &second;
    else if (second.waitForFinished(5))
      winner = &first;
  }
  while (winner != nullptr && !winner->peek(1000).contains("up\n") && clock.elapsed() < 20000)
    if (!winner->waitForReadyRead(50) && winner->state() != QProcess::Running)
      return nullptr;
  return winner;
}

TEST_F(WindowProcess, OfTwoThatStartInTheSameMomentOneComesUpAndTheOtherSaysItsBox) {
  makeData();
  for (int round = 0; round < 2; ++round) {
    QProcess first;
    QProcess second;
    start(first, u"windowdriver:hold"_s);
    start(second, u"windowdriver:hold"_s);
    QProcess* winner = winnerOf(first, second);
    ASSERT_NE(winner, nullptr);
    QProcess& loser = winner == &first ? second : first;
    EXPECT_EQ(loser.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(QString::fromUtf8(loser.readAllStandardOutput()), u"box 程序正在运行,不允许同时打开多个!!!\n"_s);
    EXPECT_EQ(winner->state(), QProcess::Running);
    winner->kill();
    ASSERT_TRUE(winner->waitForFinished());
  }
  EXPECT_EQ(inspect(u"SELECT count(*) FROM 历史记录"_s), u"1"_s);
}

TEST_F(WindowProcess, OfTwoFirstStartsInTheSameMomentOneComesUp) {
  QProcess first;
  QProcess second;
  start(first, u"windowdriver:hold"_s);
  start(second, u"windowdriver:hold"_s);
  QElapsedTimer clock;
  clock.start();
  QProcess* loser = nullptr;
  while (loser == nullptr && clock.elapsed() < 20000)
    loser = first.waitForFinished(5) ? &first : second.waitForFinished(5) ? &second : nullptr;
  ASSERT_NE(loser, nullptr);
  QProcess& winner = loser == &first ? second : first;
  EXPECT_EQ(QString::fromUtf8(loser->readAllStandardOutput()), u"box 程序正在运行,不允许同时打开多个!!!\n"_s);
  EXPECT_FALSE(winner.waitForFinished(500));  // it asks for the user mode
  EXPECT_TRUE(Workspace::exists(folders));
  winner.kill();
  ASSERT_TRUE(winner.waitForFinished());
}

TEST_F(WindowProcess, ADamagedDataFileIsToldAndTheBackupIsUsed) {
  makeData();
  {
    Workspace workspace(folders, {&quick, {}});  // leaves the draw in the backup
    workspace.gConn.execute("test", "DELETE FROM 历史记录");
    workspace.close();
  }
  QFile::remove(folders.packInTransit());
  QFile pack(folders.packedFile());
  ASSERT_TRUE(pack.resize(1000));
  QProcess window;
  start(window, u"windowdriver"_s);
  ASSERT_TRUE(window.waitForFinished());
  EXPECT_EQ(window.exitCode(), 0);
  const QByteArray output = window.readAllStandardOutput();
  EXPECT_TRUE(QString::fromUtf8(output).startsWith(u"box 数据文件已损坏（"_s)) << output.toStdString();
  EXPECT_EQ(numberBehind(output, "period"), firstPeriod + 1);
  ASSERT_EQ(damaged().size(), 1);
  EXPECT_EQ(QFileInfo(folders.program + u'/' + damaged().first()).size(), 1000);
  EXPECT_EQ(inspect(u"SELECT count(*) FROM 历史记录"_s), u"2"_s);
}

}  // namespace
}  // namespace elevenfive
