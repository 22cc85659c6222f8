// Which folders a workspace takes, and what becomes of a run whose temporary folder goes.
#include <sys/stat.h>

#include <QStandardPaths>

#include "model/texts.h"
#include "tests/model/datalife.h"
#include "tests/support/diskfaults.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class WorkspaceFolders : public DataLife {
 protected:
  void SetUp() override { QDir(folder.path()).mkpath(executables); }

  /// Removes it and lets nobody make it anew.
  void loseTemporaryFolder() const {
    ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
    write(folders.temporary, "a file where the folder must stand");
  }

  QString executables = folder.filePath(u"bin"_s);
  QString ofTheUser = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
};

TEST_F(WorkspaceFolders, AFolderOfExecutablesThatCanBeWrittenHoldsTheData) {
  EXPECT_EQ(Workspace::programFolder(executables), executables);
}

TEST_F(WorkspaceFolders, BesideAnInstallationTheDataIsTheUsersOwn) {
  const Workspace::Folders shipped = Workspace::shippedFolders(executables);
  QDir().mkpath(shipped.program);
  write(shipped.packedFile(), "shipped");
  EXPECT_EQ(Workspace::programFolder(executables), ofTheUser);
}

TEST_F(WorkspaceFolders, AFolderOfExecutablesThatCannotBeWrittenLeavesTheDataToTheUsersOwn) {
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  ASSERT_EQ(chmod(QFile::encodeName(executables).constData(), 0555), 0);
  EXPECT_EQ(Workspace::programFolder(executables), ofTheUser);
  EXPECT_EQ(Workspace::programFolder(folder.filePath(u"no such folder"_s)), ofTheUser);
  ASSERT_EQ(chmod(QFile::encodeName(executables).constData(), 0755), 0);
}

TEST_F(WorkspaceFolders, APackedDataFileBesideTheExecutablesIsTakenWhateverElseStands) {
  const Workspace::Folders shipped = Workspace::shippedFolders(executables);
  QDir().mkpath(shipped.program);
  write(shipped.packedFile(), "shipped");
  write(executables + u"/elevenfive.dat"_s, "beside");
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  ASSERT_EQ(chmod(QFile::encodeName(executables).constData(), 0555), 0);
  EXPECT_EQ(Workspace::programFolder(executables), executables);
  ASSERT_EQ(chmod(QFile::encodeName(executables).constData(), 0755), 0);
}

TEST_F(WorkspaceFolders, ATemporaryFolderOfTheSystemThatIsNotThereIsNamed) {
  const QByteArray before = qgetenv("TMPDIR");
  const bool wasSet = qEnvironmentVariableIsSet("TMPDIR");
  const QString none = folder.filePath(u"nowhere"_s);
  qputenv("TMPDIR", none.toLocal8Bit());
  try {
    const Workspace workspace({folders.program, getTempDir()});
    ADD_FAILURE() << "opened";
  } catch (const FileError& fault) {
    EXPECT_EQ(fault.message(), u"系统的临时文件夹 %1 不存在，请检查环境变量 TMPDIR。"_s.arg(none));
  }
  wasSet ? qputenv("TMPDIR", before) : qunsetenv("TMPDIR");
}

TEST_F(WorkspaceFolders, WorkWhoseTemporaryFolderWasRemovedIsStillPutBack) {
  runWriting(7);
  {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, 8);
    ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
    workspace.close();
  }
  EXPECT_EQ(nextStart(), 8);
  EXPECT_EQ(keptCopies(), QStringList());
}

TEST_F(WorkspaceFolders, WorkWhoseFileAloneWasRemovedIsStillPutBack) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  ASSERT_TRUE(QFile::remove(folders.workingFile()));
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceFolders, AnotherInstanceInTheRemovedFolderKeepsItsDataAndTheWorkWaits) {
  const Workspace::Folders other{folder.filePath(u"other"_s), folders.temporary};
  Workspace::create(other, false, unflushed);
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  {
    Workspace second(other, {&unflushed, {}});
    setValue(second.gConn, 9);
    try {
      workspace.close();
      FAIL() << "closed over the other's database";
    } catch (const FileError& fault) {
      EXPECT_EQ(fault.message(),
                u"程序正在运行,不允许同时打开多个!!!工作数据库 %1 在运行中被删除，本次的改动已保存为 %2。"_s.arg(
                    folders.workingFile(), pathOfCopy(0)));
    }
    EXPECT_EQ(keptValues(), QList<int>{8});
    second.close();
  }
  workspace.close();
  EXPECT_EQ(keptCopies(), QStringList());  // put back after all
  EXPECT_EQ(nextStart(), 8);
  Workspace second(other, {&unflushed, {}});
  EXPECT_EQ(valueOf(second.gConn), 9);
}

TEST_F(WorkspaceFolders, WhatACrashedInstanceLeftInTheRemovedFolderIsKept) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  QDir().mkpath(folders.temporary);
  write(folders.workingFile(), "of another");
  workspace.close();
  ASSERT_EQ(keptCopies().size(), 1);
  EXPECT_EQ(read(pathOfCopy(0)), "of another");
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceFolders, WorkThatCannotBeWrittenAnewCanBeTriedAgain) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  loseTemporaryFolder();
  EXPECT_THROW(workspace.close(), FileError);
  EXPECT_THROW(workspace.close(), FileError);
  EXPECT_EQ(keptValues(), QList<int>{8});  // one copy, however often
  ASSERT_TRUE(QFile::remove(folders.temporary));
  workspace.close();
  EXPECT_EQ(keptCopies(), QStringList());
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceFolders, WorkThatIsNeverWrittenAnewLiesInBak) {
  {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, 8);
    loseTemporaryFolder();
  }
  EXPECT_EQ(keptValues(), QList<int>{8});
  EXPECT_EQ(QDir(folders.bakFolder()).entryList({u"*.new"_s}, QDir::Files), QStringList());
}

TEST_F(WorkspaceFolders, WorkThatCanBeWrittenNowhereIsToldAsNotSaved) {
  FaultyFiles disk;
  Workspace workspace(folders, {&disk, {}});
  setValue(workspace.gConn, 8);
  loseTemporaryFolder();
  disk.failingStep = disk.steps;
  try {
    workspace.close();
    FAIL() << "closed";
  } catch (const FileError& fault) {
    EXPECT_TRUE(
        fault.message().endsWith(u"工作数据库 %1 在运行中被删除，本次的改动还没有保存。"_s.arg(folders.workingFile())));
  }
  disk.failingStep = FaultyFiles::never;
  ASSERT_TRUE(QFile::remove(folders.temporary));
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceFolders, LeavingKeepsWorkWhoseFileAloneWasRemoved) {
  runWriting(7);
  {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, 8);
    ASSERT_TRUE(QFile::remove(folders.workingFile()));
    workspace.leave();
  }
  EXPECT_EQ(nextStart(), 7);
  EXPECT_EQ(keptValues(), QList<int>{8});
}

TEST_F(WorkspaceFolders, LeavingKeepsWorkWhoseTemporaryFolderWasRemoved) {
  runWriting(7);
  {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, 8);
    ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
    workspace.leave();
  }
  EXPECT_EQ(nextStart(), 7);
  EXPECT_EQ(keptValues(), QList<int>{8});
}

TEST_F(WorkspaceFolders, LeavingPutsWorkThatHasNoPlaceAnyMoreIntoBak) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  loseTemporaryFolder();
  workspace.leave();
  EXPECT_EQ(keptValues(), QList<int>{8});
}

TEST_F(WorkspaceFolders, OnceTheFileIsRemovedAChangeIsRefusedWithWhatToDo) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  ASSERT_TRUE(QFile::remove(folders.workingFile()));
  try {
    setValue(workspace.gConn, 9);
    FAIL() << "changed";
  } catch (const StoreError& fault) {
    EXPECT_EQ(fault.message(), u"test失败：数据文件在运行中被删除或移动，请退出程序，以前的改动会保存。"_s);
  }
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceFolders, NobodyElseMayEnterATemporaryFolderThatIsMade) {
  const auto mode = [&] { return QFileInfo(folders.temporary).permissions() & QFile::Permissions(0x0FFF); };
  const QFile::Permissions own = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(mode(), own);
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  ASSERT_TRUE(QDir(folders.bakFolder()).removeRecursively());
  write(folders.bakFolder(), "no pack passes through here");
  EXPECT_THROW(workspace.close(), FileError);
  EXPECT_EQ(mode(), own);
}

}  // namespace
}  // namespace elevenfive
