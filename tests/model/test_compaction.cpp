#include "model/compaction.h"

#include "tests/model/datalife.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using Compaction = DataLife;

TEST_F(Compaction, AValueThatItsColumnDoesNotTakeIsDamage) {
  for (const char* sql :
       {"INSERT INTO 日志表 (过滤标记) VALUES (40000)", "INSERT INTO 历史记录 (期号, 号码4) VALUES (11031501, -119)",
        "INSERT INTO 用户表 (用户名) VALUES (replace(hex(zeroblob(26)), '0', 'a'))"}) {
    const QString path = folder.filePath(u"database"_s);
    QFile::remove(path);
    ASSERT_TRUE(unpackFiles(folders.packedFile(), folder.filePath(u"icon"_s), path));
    EXPECT_NO_THROW(checkDatabase(path, StoreKind::main));
    {
      Store store(path, StoreAccess::readWrite);
      store.executeScript("test", "PRAGMA ignore_check_constraints = ON");
      ASSERT_EQ(store.execute("test", sql), 1) << sql;
    }
    EXPECT_THROW(checkDatabase(path, StoreKind::main), DamagedData) << sql;
    EXPECT_NO_THROW(checkDatabase(path, StoreKind::main, CheckDepth::pages)) << sql;
  }
}

TEST_F(Compaction, AFileThatAnotherProgramHasIsNotTakenForDamaged) {
  const QString path = folder.filePath(u"user"_s);
  ASSERT_TRUE(QFile::copy(folders.templateFile(), path));
  const FileOfAnother held(path);
  try {
    checkDatabase(path, StoreKind::conditionTemplate);
    FAIL() << "taken for sound";
  } catch (const StoreError& fault) {
    EXPECT_EQ(fault.message(), u"打开数据文件失败：数据文件正被其他程序使用（%1）。"_s.arg(path));
  }
}

TEST_F(Compaction, AMissingFileAndOneOfAnotherKindAreDamaged) {
  EXPECT_THROW(checkDatabase(folder.filePath(u"none"_s), StoreKind::main), DamagedData);
  EXPECT_THROW(checkDatabase(folders.templateFile(), StoreKind::main), DamagedData);
  const QString rubbish = folder.filePath(u"rubbish"_s);
  write(rubbish, "no database");
  EXPECT_THROW(checkDatabase(rubbish, StoreKind::main), DamagedData);
}

TEST_F(Compaction, CompactingAMissingFileDoesNothing) {
  const QString none = folder.filePath(u"none"_s);
  EXPECT_EQ(compactMainDb(none, true, folders), QString());
  EXPECT_FALSE(QFile::exists(none));
  EXPECT_FALSE(QFile::exists(folders.backupFile()));
}

TEST_F(Compaction, CompactingAUsersFileTakesNoBackupUnlessAsked) {
  const QString path = folder.filePath(u"user"_s);
  ASSERT_TRUE(QFile::copy(folders.templateFile(), path));
  EXPECT_EQ(compactUserDb(path, false, folders), QString());
  EXPECT_FALSE(QFile::exists(folders.backupFile()));
  EXPECT_NO_THROW(checkDatabase(path, StoreKind::conditionTemplate));
  EXPECT_EQ(compactUserDb(path, true, folders), QString());
  EXPECT_TRUE(QFile::exists(folders.backupFile()));
  EXPECT_EQ(QDir(folders.temporary).entryList(QDir::Files), QStringList());
}

TEST_F(Compaction, AUsersFileIsNotCompactedWithoutTheBackupThatWasAskedFor) {
  const QString path = folder.filePath(u"user"_s);
  ASSERT_TRUE(QFile::copy(folders.templateFile(), path));
  FaultyFiles disk;
  disk.failingText = u"create program/elevenfive.bak.new"_s;
  EXPECT_EQ(compactUserDb(path, true, folders, disk), u"无法完成一步：%1。"_s.arg(disk.failingText));
  EXPECT_EQ(disk.log, QStringList{u"remove program/elevenfive.bak.new"_s});
}

TEST_F(Compaction, AFaultInCompactionLeavesTheDatabase) {
  const QString path = folder.filePath(u"garbage"_s);
  write(path, "no database");
  EXPECT_NE(compactMainDb(path, false, folders), QString());
  EXPECT_EQ(read(path), "no database");
}

TEST_F(Compaction, TheBackupIsTakenBeforeCompaction) {
  {
    Workspace workspace(folders);
    workspace.gConn.executeScript("test",
                                  "CREATE TABLE filler (b BLOB); INSERT INTO filler VALUES (zeroblob(300000)); "
                                  "DELETE FROM filler;");
    workspace.close();
  }
  Workspace workspace(folders);
  EXPECT_GT(QFileInfo(folders.backupFile()).size(), QFileInfo(folders.workingFile()).size() + 250000);
}

TEST_F(Compaction, FromItsLimitOnTheCompactedDatabaseIsReplacedByTheBackup) {
  {
    Workspace workspace(folders);
    workspace.gConn.executeScript("test",
                                  "CREATE TABLE filler (b BLOB); INSERT INTO filler VALUES (zeroblob(51685169)); "
                                  "INSERT INTO filler VALUES (zeroblob(100000)); "
                                  "DELETE FROM filler WHERE length(b) = 100000;");
    workspace.close();
  }
  Workspace workspace(folders);
  workspace.gConn.close();
  EXPECT_TRUE(sameContent(folders.workingFile(), folders.backupFile()));
}

TEST_F(Compaction, BelowTheLimitTheCompactedDatabaseIsUsed) {
  {
    Workspace workspace(folders);
    workspace.gConn.executeScript("test",
                                  "CREATE TABLE filler (b BLOB); INSERT INTO filler VALUES (zeroblob(100000)); "
                                  "DELETE FROM filler;");
    workspace.close();
  }
  Workspace workspace(folders);
  workspace.gConn.close();
  EXPECT_FALSE(sameContent(folders.workingFile(), folders.backupFile()));
}

TEST_F(Compaction, ABackupThatCannotBeTakenIsToldAndTheStartGoesOn) {
  runWriting(7);
  const QString step = u"create program/elevenfive.bak.new"_s;
  FaultyFiles disk;
  disk.failingText = step;
  const QByteArray backup = read(folders.backupFile());
  Workspace workspace(folders, {&disk, {}});
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  EXPECT_EQ(workspace.notices(), QStringList{u"无法完成一步：%1。"_s.arg(step)});
  EXPECT_EQ(read(folders.backupFile()), backup);
  EXPECT_TRUE(disk.log.contains(u"rename temp/Temp_fu.mdb -> temp/elevenfive.dat"_s));  // compacted none the less
}

TEST_F(Compaction, ACompactionThatFailsIsToldAndTheStartGoesOn) {
  runWriting(7);
  for (const QString& step : {u"remove temp/Temp_fu.mdb"_s, u"rename temp/Temp_fu.mdb -> temp/elevenfive.dat"_s}) {
    FaultyFiles disk;
    disk.failingText = step;
    Workspace workspace(folders, {&disk, {}});
    EXPECT_EQ(valueOf(workspace.gConn), 7);
    EXPECT_EQ(workspace.notices(), QStringList{u"无法完成一步：%1。"_s.arg(step)});
    EXPECT_EQ(valueInFile(folders.backupFile()), 7);
    EXPECT_FALSE(QFile::exists(folders.mainScratch()));
  }
}

TEST_F(Compaction, ALargeDatabaseIsNotReplacedByABackupThatWasNotTaken) {
  {
    Workspace workspace(folders, {&unflushed, {}});
    setValue(workspace.gConn, 7);
    workspace.gConn.executeScript("test",
                                  "CREATE TABLE filler (b BLOB); INSERT INTO filler VALUES (zeroblob(51685169));");
    workspace.close();
  }
  ASSERT_EQ(valueInFile(folders.backupFile()), 5);
  FaultyFiles disk;
  disk.failingText = u"create program/elevenfive.bak.new"_s;
  Workspace workspace(folders, {&disk, {}});
  EXPECT_EQ(workspace.notices(), QStringList{u"无法完成一步：create program/elevenfive.bak.new。"_s});
  EXPECT_EQ(valueOf(workspace.gConn), 7);
}

}  // namespace
}  // namespace elevenfive
