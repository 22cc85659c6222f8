// A process that ends while accounts are made, saved and changed: the next one finds each user's conditions as they were
// before or as they were to be.
//
// ELEVENFIVE_KILLS=300 test_shell     ends as many processes at random instants, where a few dozen are the default
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <optional>
#include <random>

#include "model/compaction.h"
#include "model/errors.h"
#include "shell/users.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/kills.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class KilledUsers : public ::testing::Test {
 protected:
  KilledUsers() {
    Workspace::create(folders, false, quick);
    Workspace workspace(folders, {&quick, {}});
    RecordingPorts ports;
    Users users(workspace, ports, quick);
    EXPECT_TRUE(users.cmdOK(u"甲"_s, {}));
    setValue(workspace, before);
    EXPECT_TRUE(users.saveUserFile(u"甲"_s));
    workspace.close();
  }

  static void setValue(Workspace& workspace, int value) {
    workspace.gConn.execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value);
  }
  static int valueOf(Store& store) {
    return store.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1);
  }
  /// The value in a user's file, which must be sound; none where it is missing.
  static std::optional<int> valueIn(const QString& path, const std::string& where) {
    if (!QFile::exists(path))
      return std::nullopt;
    EXPECT_NO_THROW(checkDatabase(path, StoreKind::conditionTemplate)) << where;
    Store store(path, StoreAccess::readOnly);
    return valueOf(store);
  }
  QString fileOf(const QString& name) const { return folders.program + u'/' + name + u".uVorex"_s; }

  /// A session of two users: the first one's value changes, the second one's account is made, an idle one goes.
  void session(FileAccess& files, int value) {
    RecordingPorts ports;
    Workspace workspace(folders, {&files, {}});
    Users users(workspace, ports, files);
    workspace.gConn.execute("test", "INSERT OR REPLACE INTO 用户表 VALUES ('旧', '', 40000)");
    if (!users.cmdOK(u"甲"_s, {}))
      ::_exit(2);
    setValue(workspace, value);
    users.saveUserFile(u"甲"_s);
    if (!users.cmdOK(u"乙"_s, {}))
      ::_exit(3);
    setValue(workspace, value);
    users.saveUserFile(u"乙"_s);
    workspace.close();
  }

  /// What the next process finds; the second user's account goes, so that the next session makes it again.
  void inspect(int value, const std::string& where) {
    RecordingPorts ports;
    Workspace workspace(folders, {&quick, {}});
    Users users(workspace, ports, quick);
    ASSERT_TRUE(users.cmdOK(u"甲"_s, {})) << where;
    EXPECT_EQ(ports.boxTexts(), QStringList()) << where;  // the account and its file are there
    const int found = valueOf(workspace.gConn);
    EXPECT_TRUE(found == before || found == value) << where << " found " << found;
    before = found;
    inspectSecond(value, workspace.gConn.execute("test", "DELETE FROM 用户表 WHERE 用户名 = '乙'") > 0, where);
    workspace.close();
    EXPECT_EQ(QDir(folders.program).entryList({u"*.damaged*"_s}), QStringList()) << where;
  }

  /// The second user's file of before is untouched or stands aside whole; a new one begins with the defaults and ends with
  /// the value, which it has for certain where the account has come into the data file.
  void inspectSecond(int value, bool hasAccount, const std::string& where) {
    const std::optional<int> found = valueIn(fileOf(u"乙"_s), where);
    const QStringList aside = QDir(folders.program).entryList({u"*.old-*"_s});
    if (hasAccount) {
      EXPECT_EQ(found, value) << where;
    }
    ASSERT_LE(aside.size(), 1) << where;
    if (aside.isEmpty()) {
      EXPECT_TRUE(found == secondBefore || (!secondBefore && (found == fresh || found == value)))
          << where << " found " << found.value_or(-1);
    } else {
      const QString path = folders.program + u'/' + aside.first();
      EXPECT_EQ(valueIn(path, where), secondBefore) << where;
      EXPECT_TRUE(!found || found == fresh || found == value) << where << " found " << *found;
      QFile::remove(path);
    }
    secondBefore = found;
  }

  QTemporaryDir folder;
  UnflushedFiles quick;
  Workspace::Folders folders{folder.filePath(u"program"_s), folder.filePath(u"temp"_s)};
  static constexpr int fresh = 5;   ///< what a new account begins with
  int before = 1;                   ///< what the first user is known to have
  std::optional<int> secondBefore;  ///< what the second user's file is known to hold
};

TEST_F(KilledUsers, WhicheverStepAProcessEndsAtBothUsersFilesAreWhole) {
  int step = 0;
  for (bool done = false; !done; ++step) {
    const int value = before + 1;
    done = endsBeforeStep(step, [&](FaultyFiles& files) {
      session(files, value);
      return true;
    });
    inspect(value, "step " + std::to_string(step));
    if (HasFatalFailure())
      return;
  }
  EXPECT_GT(step, 60);
}

TEST_F(KilledUsers, EndedAtAnyInstantBothUsersFilesAreWhole) {
  Kills kills(15, 40, 10);
  std::mt19937 random(static_cast<unsigned>(20261121 + kills.asked()));
  int whole = 0;  // ms that a session takes which is not disturbed
  for (int round = 0; kills.wanted(); ++round) {
    const int value = before + 1;
    QElapsedTimer run;
    run.start();
    const pid_t child = ::fork();
    if (child == 0) {
      session(quick, value);
      ::_exit(0);
    }
    ASSERT_GT(child, 0);
    if (round % 8 != 0) {
      ::usleep(static_cast<useconds_t>(std::uniform_int_distribution<int>(0, whole * 1050)(random)));
      ::kill(child, SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status)) {
      ASSERT_EQ(WEXITSTATUS(status), 0);
      if (round % 8 == 0)
        whole = static_cast<int>(run.elapsed());
    } else {
      kills.add();
    }
    inspect(value, "round " + std::to_string(round));
    if (HasFatalFailure())
      return;
  }
  EXPECT_TRUE(kills.wereEnough());
}

}  // namespace
}  // namespace elevenfive
