#include "model/workspace.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <string>

#include "model/errors.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

template <typename Call>
std::string faultOf(Call&& call) {
  try {
    call();
  } catch (const Error& fault) {
    return fault.message().toStdString();
  }
  return "no fault";
}

/// All files of a folder with their bytes.
QMap<QString, QByteArray> contentOf(const QString& folder) {
  QMap<QString, QByteArray> content;
  for (const QString& name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
    QFile file(folder + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    content[name] = file.readAll();
  }
  return content;
}

class WorkspaceFolder : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  Workspace::Folders folders{folder.path(), folder.path()};
};

TEST_F(WorkspaceFolder, CreatingMakesDataFileAndTemplateAndNothingElse) {
  EXPECT_FALSE(Workspace::exists(folders));
  Workspace::create(folders, false);
  EXPECT_TRUE(Workspace::exists(folders));
  EXPECT_EQ(contentOf(folder.path()).keys(), (QStringList{u"TJmode.tjmod"_s, u"elevenfive.dat"_s}));
}

TEST_F(WorkspaceFolder, CreatingMakesAMissingFolder) {
  folders.program = folder.filePath(u"新/文件夹"_s);
  Workspace::create(folders, false);
  EXPECT_TRUE(Workspace::exists(folders));
}

TEST_F(WorkspaceFolder, CreatingRefusesWhereADataFileStandsAndTouchesNothing) {
  Workspace::create(folders, false);
  const auto before = contentOf(folder.path());
  EXPECT_EQ(faultOf([&] { Workspace::create(folders, false); }),
            u"文件夹 %1 中已有数据文件，没有改动。"_s.arg(folder.path()).toStdString());
  EXPECT_EQ(contentOf(folder.path()), before);
}

TEST_F(WorkspaceFolder, ForcedCreatingBringsTheDefaultRowsBack) {
  Workspace::create(folders, false);
  {
    Workspace workspace(folders);
    workspace.gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 9");
  }
  Workspace::create(folders, true);
  Workspace workspace(folders);
  EXPECT_EQ(workspace.gConn.value("test", "SELECT COUNT(*) FROM 过滤条件 WHERE VALUE = 9"), 0);
}

TEST_F(WorkspaceFolder, CreatingReplacesALeftoverOfACreationThatWasCutOff) {
  QFile leftover(folder.filePath(u"elevenfive.dat.new"_s));
  ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
  leftover.write("half");
  leftover.close();
  Workspace::create(folders, false);
  EXPECT_NO_THROW(const Workspace workspace(folders));
  EXPECT_FALSE(leftover.exists());
}

TEST_F(WorkspaceFolder, ForcedCreatingLeavesNoJournalThatCouldBePlayedBackIntoTheNewFile) {
  Workspace::create(folders, false);
  QFile journal(folder.filePath(u"elevenfive.dat-journal"_s));
  ASSERT_TRUE(journal.open(QIODevice::WriteOnly));
  journal.write(QByteArray(4096, 'j'));
  journal.close();
  Workspace::create(folders, true);
  EXPECT_FALSE(journal.exists());
}

TEST_F(WorkspaceFolder, CreatingWhereAFileStandsInTheFoldersPlaceIsAFault) {
  QFile file(folder.filePath(u"x"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  folders.program = folder.filePath(u"x"_s);
  EXPECT_THROW(Workspace::create(folders, false), FileError);
}

TEST_F(WorkspaceFolder, OpeningAMissingFolderNamesItAndMakesNothing) {
  folders.program = folder.filePath(u"缺"_s);
  EXPECT_EQ(faultOf([&] { const Workspace workspace(folders); }),
            u"找不到程序文件夹 %1。"_s.arg(folders.program).toStdString());
  EXPECT_FALSE(QDir(folders.program).exists());
}

TEST_F(WorkspaceFolder, OpeningAFolderWithoutADataFileIsAFaultAndMakesNone) {
  EXPECT_THROW(const Workspace workspace(folders), StoreError);
  EXPECT_TRUE(contentOf(folder.path()).isEmpty());
}

TEST_F(WorkspaceFolder, ASecondInstanceIsRefusedWithItsSentence) {
  Workspace::create(folders, false);
  const Workspace first(folders);
  EXPECT_THROW(const Workspace second(folders), AlreadyRunning);
  EXPECT_EQ(faultOf([&] { const Workspace second(folders); }), "程序正在运行,不允许同时打开多个!!!");
}

TEST_F(WorkspaceFolder, ASecondInstanceTouchesNothing) {
  Workspace::create(folders, false);
  Workspace first(folders);
  first.gConn.execute("test", "UPDATE 过滤条件 SET VALUE = 9 WHERE ID = 1");
  const auto before = contentOf(folder.path());
  EXPECT_THROW(const Workspace second(folders), AlreadyRunning);
  EXPECT_THROW(Workspace::create(folders, true), AlreadyRunning);
  EXPECT_EQ(contentOf(folder.path()), before);
  EXPECT_EQ(first.gConn.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 1"), 9);
}

TEST_F(WorkspaceFolder, OpensAgainAfterTheFirstInstanceHasClosed) {
  Workspace::create(folders, false);
  { const Workspace first(folders); }
  EXPECT_NO_THROW(const Workspace second(folders));
}

TEST_F(WorkspaceFolder, OpensAgainAfterAnOpeningThatFailed) {
  EXPECT_THROW(const Workspace workspace(folders), StoreError);
  Workspace::create(folders, false);
  EXPECT_NO_THROW(const Workspace workspace(folders));
}

TEST_F(WorkspaceFolder, TwoFoldersAreTwoInstances) {
  const QTemporaryDir other;
  const Workspace::Folders otherFolders{other.path(), other.path()};
  Workspace::create(folders, false);
  Workspace::create(otherFolders, false);
  const Workspace first(folders);
  EXPECT_NO_THROW(const Workspace second(otherFolders));
}

TEST_F(WorkspaceFolder, ADataFileThatLacksATableIsRefusedByItsName) {
  Workspace::create(folders, false);
  {
    Workspace workspace(folders);
    workspace.gConn.execute("test", "DROP TABLE 概率表");
  }
  EXPECT_EQ(faultOf([&] { const Workspace workspace(folders); }), "数据文件不完整，缺少：概率表。");
}

TEST_F(WorkspaceFolder, ADataFileThatLacksAColumnIsRefusedByItsName) {
  Workspace::create(folders, false);
  {
    Workspace workspace(folders);
    workspace.gConn.execute("test", "ALTER TABLE 历史记录 DROP COLUMN 间距七");
  }
  EXPECT_EQ(faultOf([&] { const Workspace workspace(folders); }), "数据文件不完整，缺少：历史记录.间距七。");
}

TEST_F(WorkspaceFolder, ReadsTheUserModeAtOpening) {
  Workspace::create(folders, false);
  {
    Workspace workspace(folders);
    EXPECT_EQ(workspace.gUserMode, 0);
    workspace.gConn.execute("test", "UPDATE 用户模式 SET 模式 = 2");
  }
  EXPECT_EQ(Workspace(folders).gUserMode, 2);
}

TEST(Workspace, DefaultRowsSurviveClosingAndOpening) {
  TestWorkspace w;
  const char* conditions = "SELECT ID, VALUE FROM 过滤条件 ORDER BY ID";
  const char* attributes = "SELECT * FROM 号码特性 ORDER BY \"INDEX\"";
  const QStringList conditionsBefore = w.rows(conditions);
  const QStringList attributesBefore = w.rows(attributes);
  EXPECT_EQ(conditionsBefore.size(), 1280);
  EXPECT_EQ(attributesBefore.size(), 11);
  w.reopen();
  EXPECT_EQ(w.rows(conditions), conditionsBefore);
  EXPECT_EQ(w.rows(attributes), attributesBefore);
}

TEST(Workspace, WhatWasWrittenSurvivesClosingAndOpening) {
  TestWorkspace w;
  w.addDraws(u"11031510 01 02 03 04 05"_s);
  w.reopen();
  EXPECT_EQ(w.rows("SELECT 期号, 号码5 FROM 历史记录"), QStringList{u"11031510 5"_s});
}

}  // namespace
}  // namespace elevenfive
