#include "model/datafile.h"

#include "tests/model/datalife.h"
#include "tests/support/faultof.h"
#include "tests/support/filesteps.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using DataFileLife = DataLife;

TEST_F(DataFileLife, TheBackupHoldsTheDatabaseOfTheLastStart) {
  runWriting(7);
  EXPECT_EQ(valueInFile(folders.backupFile()), 5);
  runWriting(8);
  EXPECT_EQ(valueInFile(folders.backupFile()), 7);
}

TEST_F(DataFileLife, WithoutThePackTheBackupIsUsed) {
  runWriting(7);
  runWriting(8);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  EXPECT_EQ(workspace.notices(), QStringList{u"找不到数据文件，已改用备份。"_s});
  workspace.close();
  EXPECT_EQ(nextStart(), 7);  // the pack is there again, though nothing was changed
}

TEST_F(DataFileLife, WithoutThePackAWorkingDatabaseThatIsStillThereGoesOn) {
  runWriting(7);
  crashWriting(8);
  QFile::remove(folders.packedFile());
  EXPECT_EQ(nextStart(), 8);
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(DataFileLife, GoingOnWithoutThePackIsToldAndCalledByItsName) {
  runWriting(7);
  crashWriting(8);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 8);
  EXPECT_EQ(workspace.notices(), QStringList{u"找不到数据文件，已改用上次没有保存的数据。"_s});
}

TEST_F(DataFileLife, WithNeitherPackNorBackupNothingStarts) {
  QFile::remove(folders.packedFile());
  EXPECT_EQ(startFault(), u"找不到数据文件，也没有备份，程序无法启动，请重新安装！"_s);
}

TEST_F(DataFileLife, AnInterruptedRunIsKeptInBakAndThePackIsUsed) {
  runWriting(7);
  crashWriting(8);
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  ASSERT_EQ(keptCopies().size(), 1);
  const QString copy = folders.bakFolder() + u'/' + keptCopies().first();
  EXPECT_EQ(valueInFile(copy), 8);
  EXPECT_EQ(workspace.notices(), QStringList{u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(copy)});
}

TEST_F(DataFileLife, AnInterruptedRunThatChangedNothingLeavesNoCopy) {
  runWriting(7);
  crash([](Store&) {});
  Workspace workspace(folders);
  EXPECT_EQ(keptCopies(), QStringList());
  EXPECT_EQ(workspace.notices(), QStringList());
}

TEST_F(DataFileLife, AnUnfinishedTransactionOfAnInterruptedRunIsUndoneInItsCopy) {
  runWriting(7);
  const QString working = folders.workingFile();
  const QString aside = folder.filePath(u"aside"_s);
  {
    FaultyFiles files;
    Workspace workspace(folders, {&files, {}});
    setValue(workspace.gConn, 8);
    workspace.gConn.executeScript("test", "PRAGMA cache_size = 1; BEGIN");
    setValue(workspace.gConn, 9);
    workspace.gConn.executeScript("test",
                                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
                                  "INSERT INTO 日志表 (序号, 期号) SELECT i, i FROM n");
    ASSERT_GT(QFileInfo(working + u"-journal"_s).size(), 0);
    ASSERT_TRUE(QFile::copy(working, aside) && QFile::copy(working + u"-journal"_s, aside + u"-journal"_s));
    workspace.gConn.executeScript("test", "ROLLBACK");
    files.failingStep = 0;
  }
  QFile::remove(working);
  QFile::remove(working + u"-journal"_s);
  ASSERT_TRUE(QFile::copy(aside, working) && QFile::copy(aside + u"-journal"_s, working + u"-journal"_s));
  EXPECT_EQ(nextStart(), 7);
  ASSERT_EQ(keptCopies().size(), 1);
  EXPECT_EQ(valueInFile(folders.bakFolder() + u'/' + keptCopies().first()), 8);
}

TEST_F(DataFileLife, TheOnlyCopyOfAnInterruptedRunStaysWhereNoBackupCanBeTaken) {
  runWriting(7);
  crashWriting(8);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  QFile::remove(folders.backupFile());
  ASSERT_TRUE(QDir().mkdir(folders.backupFile()));
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 8);
  const QStringList kept = QDir(folders.bakFolder()).entryList({u"elevenfive-*.bak"_s}, QDir::Files);
  ASSERT_EQ(kept.size(), 1);
  EXPECT_EQ(valueInFile(folders.bakFolder() + u'/' + kept.first()), 8);
}

TEST_F(DataFileLife, AWorkingDatabaseThatAnotherProgramHasIsNamedAndCanBePutBackLater) {
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  workspace.gConn.close();
  {
    const FileOfAnother held(folders.workingFile());
    EXPECT_EQ(faultOf<Error>([&] { workspace.close(); }),
              u"打开数据文件失败：数据文件正被其他程序使用（%1）。本次的改动没有写回数据文件，还保存在 %1 中。"_s.arg(
                  folders.workingFile()));
  }
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(DataFileLife, ACloseThatFailedCanBeTriedAgain) {
  FaultyFiles files;
  Workspace workspace(folders, {&files, {}});
  setValue(workspace.gConn, 8);
  files.writableBytes = 1000;
  try {
    workspace.close();
    FAIL() << "closed";
  } catch (const FileError& fault) {
    EXPECT_TRUE(fault.message().contains(u"磁盘空间已满。本次的改动没有写回数据文件，还保存在 "_s));
  }
  EXPECT_THROW(workspace.close(), FileError);
  files.writableBytes = FaultyFiles::never;
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(DataFileLife, PackToBakAndUnpackToTempSayWhetherTheyWorked) {
  DataFile data(folders, realFiles());
  EXPECT_FALSE(data.packToBak());  // no working database
  EXPECT_TRUE(data.unpackToTemp());
  EXPECT_TRUE(data.packToBak());
  EXPECT_EQ(read(folders.packInTransit()), read(folders.packedFile()));
  write(folders.packedFile(), "garbage");
  const QByteArray working = read(folders.workingFile());
  EXPECT_FALSE(data.unpackToTemp());
  EXPECT_EQ(read(folders.workingFile()), working);
}

TEST_F(DataFileLife, AFullDiskAtTheStartIsNotTakenForADamagedPack) {
  runWriting(7);
  FaultyFiles files;
  files.writableBytes = 1000;
  EXPECT_THROW(Workspace(folders, {&files, {}}), FileError);
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(DataFileLife, AnInterruptedRunThatCannotBeKeptIsNotReplaced) {
  runWriting(7);
  crashWriting(8);
  const QByteArray working = read(folders.workingFile());
  FaultyFiles files;
  files.writableBytes = 1000;
  EXPECT_THROW(Workspace(folders, {&files, {}}), FileError);
  EXPECT_EQ(read(folders.workingFile()), working);
}

TEST_F(DataFileLife, TheFileStepsOfAStartAndACloseComeInOrder) {
  FaultyFiles files;
  Workspace workspace(folders, {&files, {}});
  EXPECT_EQ(withoutWrites(files.log), unpackSteps() + compactionSteps());
  files.log.clear();
  setValue(workspace.gConn, 7);
  workspace.close();
  files.log.removeIf([](const QString& step) { return step.startsWith(u"write "_s); });
  EXPECT_EQ(files.log, QStringList{u"folder program/Bak"_s} + putBackSteps());
}

}  // namespace
}  // namespace elevenfive
