#include "model/datafile.h"

#include "model/compaction.h"
#include "tests/model/datalife.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultof.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class DataFileLife : public DataLife {
 protected:
  /// Writes other bytes over the middle of a file.
  static void spoil(const QString& path, qint64 offset, qint64 size) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(offset));
    ASSERT_EQ(file.write(QByteArray(size, '\xA5')), size);
  }
};

TEST_F(DataFileLife, TheBackupHoldsTheDatabaseOfTheLastStart) {
  runWriting(7);
  EXPECT_EQ(valueInFile(folders.backupFile()), 5);
  runWriting(8);
  EXPECT_EQ(valueInFile(folders.backupFile()), 7);
}

TEST_F(DataFileLife, TheBackupIsTakenBeforeCompaction) {
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

/// Another program that has a file to itself.
class FileOfAnother final {
 public:
  explicit FileOfAnother(const QString& path) : store_(path, StoreAccess::readWrite) {
    store_.executeScript("test", "BEGIN EXCLUSIVE");
  }

 private:
  Store store_;
};

TEST_F(DataFileLife, AValueThatItsColumnDoesNotTakeIsDamage) {
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

TEST_F(DataFileLife, ABitThatTurnedOverInATextShowsInTheTwinWhichIsKept) {
  {
    Workspace workspace(folders, {&unflushed, {}});
    workspace.gConn.execute("test", "INSERT INTO 用户表 (用户名, 密码) VALUES ('user', 'marked word')");
    workspace.close();
  }
  QByteArray pack = read(folders.packedFile());
  const qsizetype place = pack.indexOf("marked word");
  ASSERT_GT(place, 0);
  pack[place] = 'l';
  write(folders.packedFile(), pack);
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(workspace.notices(),
            QStringList{u"Bak 中的数据与数据文件不同，上次退出时可能没有写回，已保存为 %1。"_s.arg(pathOfCopy(0))});
  Store kept(pathOfCopy(0), StoreAccess::readOnly);
  EXPECT_EQ(kept.value("test", "SELECT count(*) FROM 用户表 WHERE 密码 = 'marked word'"), 1);
}

TEST_F(DataFileLife, AFileThatAnotherProgramHasIsNotTakenForDamaged) {
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

TEST_F(DataFileLife, AMissingFileAndOneOfAnotherKindAreDamaged) {
  EXPECT_THROW(checkDatabase(folder.filePath(u"none"_s), StoreKind::main), DamagedData);
  EXPECT_THROW(checkDatabase(folders.templateFile(), StoreKind::main), DamagedData);
  const QString rubbish = folder.filePath(u"rubbish"_s);
  write(rubbish, "no database");
  EXPECT_THROW(checkDatabase(rubbish, StoreKind::main), DamagedData);
}

TEST_F(DataFileLife, ABackupThatAnotherProgramHasLeavesTheDamagedPackInItsPlace) {
  runWriting(7);
  QFile::remove(folders.packInTransit());
  write(folders.packedFile(), "garbage");
  {
    const FileOfAnother held(folders.backupFile());
    EXPECT_EQ(startFault(), u"打开数据文件失败：数据文件正被其他程序使用（%1）。"_s.arg(folders.backupFile()));
  }
  EXPECT_EQ(read(folders.packedFile()), "garbage");
  EXPECT_EQ(nextStart(), 5);
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

TEST_F(DataFileLife, RubbishInThePlaceOfTheWorkingDatabaseGivesWayToThePack) {
  runWriting(7);
  write(folders.workingFile(), "no database at all");
  write(folders.workingFile() + u"-journal"_s, "no journal");
  EXPECT_EQ(nextStart(), 7);
  ASSERT_EQ(keptCopies().size(), 1);
  EXPECT_EQ(read(folders.bakFolder() + u'/' + keptCopies().first()), "no database at all");
}

TEST_F(DataFileLife, ADamagedPackStaysUnderAnotherNameAndTheBackupIsUsed) {
  runWriting(7);
  runWriting(8);
  const QByteArray whole = read(folders.packedFile());
  QByteArray flipped = whole;
  flipped.replace(8 + 4096 * 3, 4096, QByteArray(4096, '\xA5'));
  QByteArray lying = whole;
  lying.replace(0, 4, QByteArray(4, '\xFF'));
  for (const QByteArray& damaged :
       {QByteArray("garbage that is no pack"), QByteArray(), whole.left(5), whole.left(5000), flipped, lying}) {
    write(folders.packedFile(), damaged);
    {
      Workspace workspace(folders);
      EXPECT_EQ(valueOf(workspace.gConn), 7);
      bool told = false;
      for (const QString& notice : workspace.notices())
        told |= notice.startsWith(u"数据文件已损坏（"_s) && notice.contains(u"已改用备份；损坏的文件保留为 "_s);
      EXPECT_TRUE(told);
      workspace.close();
    }
    const QStringList names = programFiles(u"elevenfive.dat.damaged-*"_s);
    ASSERT_EQ(names.size(), 1);
    EXPECT_EQ(read(folders.program + u'/' + names.first()), damaged);
    QFile::remove(folders.program + u'/' + names.first());
    EXPECT_EQ(nextStart(), 7);
  }
}

TEST_F(DataFileLife, ADamagedPackInBakStaysUnderAnotherNameWhateverBecomesOfThePackedDataFile) {
  runWriting(7);
  runWriting(8);
  const QByteArray older = read(folders.packedFile());
  const auto asItIs = [] {};
  const auto older9 = [&] {
    runWriting(9);
    write(folders.packedFile(), older);
  };
  const auto missing = [&] { QFile::remove(folders.packedFile()); };
  const auto damaged = [&] { write(folders.packedFile(), "garbage"); };
  for (const std::function<void()>& change : {std::function<void()>(asItIs), std::function<void()>(older9),
                                              std::function<void()>(missing), std::function<void()>(damaged)}) {
    change();
    const QByteArray stray = read(folders.packInTransit()).chopped(1);
    write(folders.packInTransit(), stray);
    QStringList notices;
    {
      Workspace workspace(folders, {&unflushed, {}});
      notices = workspace.notices();
      workspace.close();
    }
    const QStringList names =
        QDir(folders.bakFolder()).entryList({u"elevenfive.dat.damaged-*"_s}, QDir::Files, QDir::Name);
    ASSERT_EQ(names.size(), 1);
    const QString kept = folders.bakFolder() + u'/' + names.first();
    EXPECT_EQ(read(kept), stray);
    EXPECT_TRUE(notices.contains(u"Bak 中的数据包已损坏，保留为 %1。"_s.arg(kept)));
    EXPECT_EQ(read(folders.packInTransit()), read(folders.packedFile()));
    QFile::remove(kept);
  }
}

TEST_F(DataFileLife, ADamagedPackWithoutABackupStaysAsItIsAndNothingStarts) {
  write(folders.packedFile(), "garbage");
  EXPECT_EQ(startFault(),
            u"数据文件已损坏（数据包 %1 不完整），没有可用的备份，程序无法启动。"_s.arg(folders.packedFile()));
  EXPECT_EQ(read(folders.packedFile()), "garbage");
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

TEST_F(DataFileLife, ADamagedPackAndADamagedBackupStayAsTheyAre) {
  runWriting(7);
  write(folders.packedFile(), "garbage");
  write(folders.backupFile(), "more garbage");
  EXPECT_TRUE(startFault().startsWith(u"数据文件已损坏（"_s));
  EXPECT_EQ(read(folders.packedFile()), "garbage");
  EXPECT_EQ(read(folders.backupFile()), "more garbage");
}

TEST_F(DataFileLife, ADamagedBackupIsNotStartedOn) {
  runWriting(7);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  spoil(folders.backupFile(), 4096, 4096);
  EXPECT_EQ(startFault(), u"找不到数据文件，备份文件已损坏，程序无法启动。"_s);
}

TEST_F(DataFileLife, ADamagedBackupIsNotWrittenOverWhereAnInterruptedRunGoesOn) {
  runWriting(7);
  crashWriting(8);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  write(folders.backupFile(), "garbage");
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 8);
  const QStringList kept = programFiles(u"elevenfive.bak.damaged-*"_s);
  ASSERT_EQ(kept.size(), 1);
  const QString path = folders.program + u'/' + kept.first();
  EXPECT_EQ(read(path), "garbage");
  EXPECT_EQ(workspace.notices(), (QStringList{u"找不到数据文件，已改用上次没有保存的数据。"_s,
                                              u"备份文件也已损坏，保留为 %1。"_s.arg(path)}));
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

TEST_F(DataFileLife, APackThatMayNotBeReadEndsTheStartWithNothingMoved) {
  runWriting(7);
  runWriting(8);
  const QStringList before = QDir(folders.bakFolder()).entryList(QDir::Files);
  ASSERT_TRUE(QFile::setPermissions(folders.packedFile(), {}));
  {
    const OrdinaryUser user(folder.path());
    if (!OrdinaryUser::isBound())
      GTEST_SKIP() << "root cannot become an ordinary user here";
    EXPECT_EQ(startFault(), u"无法打开文件 %1，请检查它的权限。上次启动时的数据还保存在 %2 中。"_s.arg(
                                folders.packedFile(), folders.backupFile()));
  }
  EXPECT_EQ(QDir(folders.bakFolder()).entryList(QDir::Files), before);
  ASSERT_TRUE(QFile::setPermissions(folders.packedFile(), QFile::ReadOwner | QFile::WriteOwner));
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(DataFileLife, APackThatIsNoPlainFileOrCannotBeReadToItsEndEndsTheStartWithNothingMoved) {
  runWriting(7);
  runWriting(8);
  const QByteArray pack = read(folders.packedFile());
  const QString backupNamed = u"上次启动时的数据还保存在 %1 中。"_s.arg(folders.backupFile());
  const auto check = [&](const QString& fault) {
    EXPECT_EQ(startFault(), fault.arg(folders.packedFile()) + backupNamed);
    EXPECT_EQ(read(folders.packInTransit()), pack);
    EXPECT_EQ(keptCopies(), QStringList());
  };
  QFile::remove(folders.packedFile());
  ASSERT_TRUE(QDir().mkdir(folders.packedFile()));
  check(u"无法打开文件 %1：它不是普通文件。"_s);
  ASSERT_TRUE(QDir().rmdir(folders.packedFile()));
  ASSERT_TRUE(QFile::link(u"/proc/self/mem"_s, folders.packedFile()));  // its first page is no memory
  check(u"无法读取文件 %1，请检查磁盘。"_s);
  QFile::remove(folders.packedFile());
  write(folders.packedFile(), pack);
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(DataFileLife, APackThatLacksATableIsNotStartedOn) {
  {
    Workspace workspace(folders);
    workspace.gConn.executeScript("test", "DROP TABLE 数据源");
    workspace.gConn.close();
    DataFile data(folders, realFiles());
    ASSERT_TRUE(data.packToBak());
    replaceByCopy(realFiles(), folders.packInTransit(), folders.packedFile());
    data.discard();
  }
  QFile::remove(folders.backupFile());
  EXPECT_EQ(startFault(), u"数据文件已损坏（数据文件不完整，缺少：数据源），没有可用的备份，程序无法启动。"_s);
}

TEST_F(DataFileLife, ADamagedWorkingDatabaseIsNeverPacked) {
  runWriting(7);
  const QByteArray before = read(folders.packedFile());
  {
    Workspace workspace(folders);
    setValue(workspace.gConn, 8);
    workspace.gConn.close();
    spoil(folders.workingFile(), 4096 * 3, 4096);
    EXPECT_EQ(faultOf<Error>([&] { workspace.close(); }),
              u"工作数据库 %1 已损坏（数据库已损坏），没有写回，原来的数据文件没有改动。"_s.arg(folders.workingFile()));
  }
  EXPECT_EQ(read(folders.packedFile()), before);
  EXPECT_EQ(read(folders.packInTransit()), before);
  EXPECT_EQ(nextStart(), 7);
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

TEST_F(DataFileLife, FromItsLimitOnTheCompactedDatabaseIsReplacedByTheBackup) {
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

TEST_F(DataFileLife, BelowTheLimitTheCompactedDatabaseIsUsed) {
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

TEST_F(DataFileLife, TheFileStepsOfAStartAndACloseComeInOrder) {
  FaultyFiles files;
  Workspace workspace(folders, {&files, {}});
  QStringList start = files.log;
  start.removeIf([](const QString& step) { return step.startsWith(u"write "_s) || step.startsWith(u"folder "_s); });
  EXPECT_EQ(start, (QStringList{
                       u"create temp/elevenfive.dat.new"_s,
                       u"create temp/elevenfive.ico.new"_s,
                       u"remove temp/elevenfive.dat-journal"_s,
                       u"remove temp/elevenfive.dat-wal"_s,
                       u"remove temp/elevenfive.dat-shm"_s,
                       u"rename temp/elevenfive.ico.new -> temp/elevenfive.ico"_s,
                       u"rename temp/elevenfive.dat.new -> temp/elevenfive.dat"_s,
                       u"create program/elevenfive.bak.new"_s,
                       u"flush program/elevenfive.bak.new"_s,
                       u"rename program/elevenfive.bak.new -> program/elevenfive.bak"_s,
                       u"flush folder program"_s,
                       u"remove temp/Temp_fu.mdb"_s,
                       u"rename temp/Temp_fu.mdb -> temp/elevenfive.dat"_s,
                   }));
  files.log.clear();
  setValue(workspace.gConn, 7);
  workspace.close();
  files.log.removeIf([](const QString& step) { return step.startsWith(u"write "_s); });
  EXPECT_EQ(files.log, (QStringList{
                           u"folder program/Bak"_s,
                           u"create Bak/elevenfive.dat.new"_s,
                           u"flush Bak/elevenfive.dat.new"_s,
                           u"rename Bak/elevenfive.dat.new -> Bak/elevenfive.dat"_s,
                           u"flush folder Bak"_s,
                           u"create program/elevenfive.dat.new"_s,
                           u"flush program/elevenfive.dat.new"_s,
                           u"rename program/elevenfive.dat.new -> program/elevenfive.dat"_s,
                           u"flush folder program"_s,
                           u"remove temp/elevenfive.dat"_s,
                           u"remove temp/elevenfive.dat-journal"_s,
                           u"remove temp/elevenfive.dat-wal"_s,
                           u"remove temp/elevenfive.dat-shm"_s,
                           u"remove temp/elevenfive.ico"_s,
                       }));
}

TEST_F(DataFileLife, ABackupThatCannotBeTakenIsToldAndTheStartGoesOn) {
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

TEST_F(DataFileLife, ACompactionThatFailsIsToldAndTheStartGoesOn) {
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

TEST_F(DataFileLife, ALargeDatabaseIsNotReplacedByABackupThatWasNotTaken) {
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

TEST_F(DataFileLife, CompactingAMissingFileDoesNothing) {
  const QString none = folder.filePath(u"none"_s);
  EXPECT_EQ(compactMainDb(none, true, folders), QString());
  EXPECT_FALSE(QFile::exists(none));
  EXPECT_FALSE(QFile::exists(folders.backupFile()));
}

TEST_F(DataFileLife, CompactingAUsersFileTakesNoBackupUnlessAsked) {
  const QString path = folder.filePath(u"user"_s);
  ASSERT_TRUE(QFile::copy(folders.templateFile(), path));
  EXPECT_EQ(compactUserDb(path, false, folders), QString());
  EXPECT_FALSE(QFile::exists(folders.backupFile()));
  EXPECT_NO_THROW(checkDatabase(path, StoreKind::conditionTemplate));
  EXPECT_EQ(compactUserDb(path, true, folders), QString());
  EXPECT_TRUE(QFile::exists(folders.backupFile()));
  EXPECT_EQ(QDir(folders.temporary).entryList(QDir::Files), QStringList());
}

TEST_F(DataFileLife, AUsersFileIsNotCompactedWithoutTheBackupThatWasAskedFor) {
  const QString path = folder.filePath(u"user"_s);
  ASSERT_TRUE(QFile::copy(folders.templateFile(), path));
  FaultyFiles disk;
  disk.failingText = u"create program/elevenfive.bak.new"_s;
  EXPECT_EQ(compactUserDb(path, true, folders, disk), u"无法完成一步：%1。"_s.arg(disk.failingText));
  EXPECT_EQ(disk.log, QStringList{u"remove program/elevenfive.bak.new"_s});
}

TEST_F(DataFileLife, AFaultInCompactionLeavesTheDatabase) {
  const QString path = folder.filePath(u"garbage"_s);
  write(path, "no database");
  EXPECT_NE(compactMainDb(path, false, folders), QString());
  EXPECT_EQ(read(path), "no database");
}

}  // namespace
}  // namespace elevenfive
