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
                u"程序正在运行,不允许同时打开多个!!!工作数据库 %1 在运行中被删除，本次的改动还没有保存。"_s.arg(
                    folders.workingFile()));
    }
    second.close();
  }
  workspace.close();
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
  ASSERT_TRUE(QDir(folders.temporary).removeRecursively());
  write(folders.temporary, "a file where the folder must stand");
  EXPECT_THROW(workspace.close(), FileError);
  EXPECT_THROW(workspace.close(), FileError);
  ASSERT_TRUE(QFile::remove(folders.temporary));
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

}  // namespace
}  // namespace elevenfive
