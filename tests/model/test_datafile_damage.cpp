// Starts and closes over files that are damaged, or that cannot be read.
#include "model/datafile.h"

#include <sys/stat.h>

#include "tests/model/datalife.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultof.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using DamagedFiles = DataLife;

TEST_F(DamagedFiles, ABitThatTurnedOverInATextShowsInTheTwinWhichIsKept) {
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

TEST_F(DamagedFiles, RubbishInThePlaceOfTheWorkingDatabaseGivesWayToThePack) {
  runWriting(7);
  write(folders.workingFile(), "no database at all");
  write(folders.workingFile() + u"-journal"_s, "no journal");
  EXPECT_EQ(nextStart(), 7);
  ASSERT_EQ(keptCopies().size(), 1);
  EXPECT_EQ(read(folders.bakFolder() + u'/' + keptCopies().first()), "no database at all");
}

TEST_F(DamagedFiles, ADamagedPackStaysUnderAnotherNameAndTheBackupIsUsed) {
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

TEST_F(DamagedFiles, ADamagedPackInBakStaysUnderAnotherNameWhateverBecomesOfThePackedDataFile) {
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

TEST_F(DamagedFiles, ADamagedPackWithoutABackupStaysAsItIsAndNothingStarts) {
  write(folders.packedFile(), "garbage");
  EXPECT_EQ(startFault(),
            u"数据文件已损坏（数据包 %1 不完整），没有可用的备份，程序无法启动。"_s.arg(folders.packedFile()));
  EXPECT_EQ(read(folders.packedFile()), "garbage");
  EXPECT_EQ(programFiles(u"*.damaged*"_s), QStringList());
}

TEST_F(DamagedFiles, ADamagedPackAndADamagedBackupStayAsTheyAre) {
  runWriting(7);
  write(folders.packedFile(), "garbage");
  write(folders.backupFile(), "more garbage");
  EXPECT_TRUE(startFault().startsWith(u"数据文件已损坏（"_s));
  EXPECT_EQ(read(folders.packedFile()), "garbage");
  EXPECT_EQ(read(folders.backupFile()), "more garbage");
}

TEST_F(DamagedFiles, ABackupThatAnotherProgramHasLeavesTheDamagedPackInItsPlace) {
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

TEST_F(DamagedFiles, ADamagedBackupIsNotStartedOn) {
  runWriting(7);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  spoil(folders.backupFile(), 4096, 4096);
  EXPECT_EQ(startFault(), u"找不到数据文件，备份文件已损坏，程序无法启动。"_s);
}

TEST_F(DamagedFiles, ADamagedBackupIsNotWrittenOverWhereAnInterruptedRunGoesOn) {
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

TEST_F(DamagedFiles, APackThatMayNotBeReadEndsTheStartWithNothingMoved) {
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

TEST_F(DamagedFiles, APackThatIsNoPlainFileOrCannotBeReadToItsEndEndsTheStartWithNothingMoved) {
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

TEST_F(DamagedFiles, APackInBakThatCannotBeReadIsToldAndMovesNothing) {
  runWriting(7);
  const QByteArray pack = read(folders.packedFile());
  QFile::remove(folders.packInTransit());
  ASSERT_TRUE(QFile::link(u"/proc/self/mem"_s, folders.packInTransit()));
  EXPECT_EQ(startFault(), u"无法读取文件 %1，请检查磁盘。"_s.arg(folders.packInTransit()));
  EXPECT_EQ(read(folders.packedFile()), pack);
  EXPECT_EQ(keptCopies(), QStringList());
  QFile::remove(folders.packInTransit());
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(DamagedFiles, APipeInThePlaceOfThePackInBakIsNotWaitedFor) {
  runWriting(7);
  QFile::remove(folders.packInTransit());
  ASSERT_EQ(::mkfifo(folders.packInTransit().toLocal8Bit().constData(), 0600), 0);
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(DamagedFiles, APackThatLacksATableIsNotStartedOn) {
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

TEST_F(DamagedFiles, ADamagedWorkingDatabaseIsNeverPacked) {
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

}  // namespace
}  // namespace elevenfive
