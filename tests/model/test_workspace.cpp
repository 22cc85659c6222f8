#include "model/workspace.h"

#include "model/compaction.h"
#include "model/sideicon.h"
#include "tests/model/datalife.h"
#include "tests/support/faultof.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using WorkspaceLife = DataLife;

TEST_F(WorkspaceLife, AFreshFolderHoldsThePackWithItsIconAndTheTemplate) {
  EXPECT_EQ(programFiles(), (QStringList{u"TJmode.tjmod"_s, u"elevenfive.dat"_s}));
  QFile pack(folders.packedFile());
  ASSERT_TRUE(pack.open(QIODevice::ReadOnly));
  const auto lengths = readPackLengths(pack);
  ASSERT_TRUE(lengths);
  EXPECT_EQ(lengths->second, 4286U);
  EXPECT_EQ(pack.size(), 8 + qint64{lengths->first} + 4286);
  EXPECT_NO_THROW(checkDatabase(folders.templateFile(), StoreKind::conditionTemplate));
}

TEST_F(WorkspaceLife, TheIconIsOnePictureOf32PointsIn32Bits) {
  const QByteArray icon = sideIcon();
  EXPECT_EQ(icon.size(), 4286);
  EXPECT_EQ(icon.left(14).toHex(), "0000010001002020000001002000");
}

TEST_F(WorkspaceLife, WhatARunChangedIsThereAtTheNextStart) {
  runWriting(7);
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(WorkspaceLife, AfterACloseThePackInBakEqualsThePackedDataFile) {
  runWriting(7);
  EXPECT_EQ(read(folders.packInTransit()), read(folders.packedFile()));
  EXPECT_GT(read(folders.packedFile()).size(), 4286);
}

TEST_F(WorkspaceLife, AfterACloseNothingStaysInTheTemporaryFolder) {
  runWriting(7);
  EXPECT_EQ(QDir(folders.temporary).entryList(QDir::Files), QStringList());
}

TEST_F(WorkspaceLife, ARunThatChangesNothingLeavesThePackedDataFileAlone) {
  const QByteArray before = read(folders.packedFile());
  {
    Workspace workspace(folders);
    EXPECT_EQ(valueOf(workspace.gConn), 5);
    EXPECT_FALSE(workspace.hasChanged());
    workspace.close();
  }
  EXPECT_EQ(read(folders.packedFile()), before);
  EXPECT_EQ(read(folders.packInTransit()), before);
}

TEST_F(WorkspaceLife, ClosingTwiceIsClosingOnce) {
  Workspace workspace(folders);
  setValue(workspace.gConn, 7);
  workspace.close();
  EXPECT_NO_THROW(workspace.close());
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(WorkspaceLife, ASecondInstanceIsRefusedAndTouchesNothing) {
  Workspace first(folders);
  setValue(first.gConn, 7);
  const QByteArray working = read(folders.workingFile());
  const QByteArray backup = read(folders.backupFile());
  EXPECT_EQ(faultOf<Error>([&] { Workspace second(folders); }), u"程序正在运行,不允许同时打开多个!!!"_s);
  EXPECT_THROW(Workspace second(folders), AlreadyRunning);
  EXPECT_EQ(read(folders.workingFile()), working);
  EXPECT_EQ(read(folders.backupFile()), backup);
  setValue(first.gConn, 8);
  first.close();
  EXPECT_EQ(nextStart(), 8);
}

TEST_F(WorkspaceLife, TwoProgramFoldersCannotWorkInOneTemporaryFolder) {
  const Workspace::Folders other{folder.filePath(u"other"_s), folders.temporary};
  Workspace::create(other, false);
  Workspace first(folders);
  EXPECT_THROW(Workspace second(other), AlreadyRunning);
  first.close();
  EXPECT_NO_THROW(Workspace second(other));
}

TEST_F(WorkspaceLife, OneFolderCanServeForBoth) {
  const Workspace::Folders same{folder.filePath(u"same"_s), folder.filePath(u"same"_s)};
  Workspace::create(same, false);
  {
    Workspace workspace(same);
    setValue(workspace.gConn, 7);
    workspace.close();
  }
  Workspace workspace(same);
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  EXPECT_NE(workspace.folders().temporary, same.program);
}

TEST_F(WorkspaceLife, AProgramFolderThatIsMissingIsNamed) {
  const Workspace::Folders none{folder.filePath(u"none"_s), folders.temporary};
  EXPECT_EQ(faultOf<Error>([&] { Workspace workspace(none); }), u"找不到程序文件夹 %1。"_s.arg(none.program));
}

TEST_F(WorkspaceLife, CreateRefusesAFolderThatHasAPackedDataFile) {
  const QByteArray before = read(folders.packedFile());
  EXPECT_EQ(faultOf<Error>([&] { Workspace::create(folders, false); }),
            u"文件夹 %1 中已有数据文件，没有改动。"_s.arg(folders.program));
  EXPECT_EQ(read(folders.packedFile()), before);
}

TEST_F(WorkspaceLife, AForcedCreateBeginsAnewAndKeepsTheOldDataInBak) {
  runWriting(7);
  Workspace::create(folders, true);
  EXPECT_EQ(keptValues(), (QList<int>{5, 7}));  // the backup's and the pack's
  Workspace workspace(folders);
  EXPECT_EQ(valueOf(workspace.gConn), 5);
  EXPECT_EQ(workspace.notices(), QStringList());
}

TEST_F(WorkspaceLife, CreateRefusesAFolderWhosePackIsGoneButNotItsWork) {
  runWriting(7);
  QFile::remove(folders.packedFile());
  const QByteArray inBak = read(folders.packInTransit());
  const QString refusal = u"文件夹 %1 中没有数据文件，但还有以前的备份，没有改动。"_s.arg(folders.program);
  EXPECT_EQ(faultOf<Error>([&] { Workspace::create(folders, false); }), refusal);
  EXPECT_EQ(read(folders.packInTransit()), inBak);
  QFile::remove(folders.packInTransit());
  EXPECT_EQ(faultOf<Error>([&] { Workspace::create(folders, false); }), refusal);  // for the backup alone
  EXPECT_FALSE(Workspace::exists(folders));
}

TEST_F(WorkspaceLife, AForcedCreateKeepsThePackInBakAndTheBackupWhereThePackIsGone) {
  runWriting(7);
  runWriting(8);
  QFile::remove(folders.packedFile());
  Workspace::create(folders, true);
  EXPECT_EQ(keptValues(), (QList<int>{7, 8}));
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(keptValues(), (QList<int>{7, 8}));
}

TEST_F(WorkspaceLife, AForcedCreateKeepsADamagedPackUnderAnotherName) {
  runWriting(7);
  const QByteArray cut = read(folders.packedFile()).left(5000);
  write(folders.packedFile(), cut);
  Workspace::create(folders, true);
  const QStringList damaged = programFiles(u"elevenfive.dat.damaged-*"_s);
  ASSERT_EQ(damaged.size(), 1);
  EXPECT_EQ(read(folders.program + u'/' + damaged.first()), cut);
  EXPECT_EQ(keptValues(), (QList<int>{5, 7}));  // the backup's, and that of the whole pack in Bak
  EXPECT_EQ(nextStart(), 5);
}

TEST_F(WorkspaceLife, AForcedCreateKeepsAPackInBakThatNeverReachedItsPlace) {
  runWriting(7);
  const QByteArray old = read(folders.packedFile());
  runWriting(8);
  write(folders.packedFile(), old);  // as where the last copy of the close failed
  Workspace::create(folders, true);
  EXPECT_EQ(keptValues(), (QList<int>{7, 8}));  // the backup holds what the old pack holds
  EXPECT_EQ(read(folders.packInTransit()), read(folders.packedFile()));
}

TEST_F(WorkspaceLife, WithoutATemporaryFolderTheReasonIsSaid) {
  const Workspace::Folders none{folders.program, {}};
  const QString reason =
      u"系统的临时文件夹 %1 中不能建立本程序的文件夹：同名的文件已存在，或属于其他用户。"_s.arg(QDir::tempPath());
  EXPECT_EQ(faultOf<Error>([&] { Workspace workspace(none); }), reason);
  EXPECT_EQ(faultOf<Error>([&] { Workspace::create(none, true); }), reason);
}

TEST_F(WorkspaceLife, CreateIsRefusedWhileAnInstanceRuns) {
  Workspace first(folders);
  EXPECT_THROW(Workspace::create(folders, true), AlreadyRunning);
}

TEST_F(WorkspaceLife, InstallFillsAnEmptyFolderOnly) {
  const Workspace::Folders fresh{folder.filePath(u"fresh"_s), folder.filePath(u"fresh temp"_s)};
  Workspace::install(fresh);
  EXPECT_TRUE(Workspace::exists(fresh));

  QFile::remove(folders.packedFile());  // its template still stands
  Workspace::install(folders);
  EXPECT_FALSE(Workspace::exists(folders));
}

TEST_F(WorkspaceLife, InstallCopiesTheShippedFilesAndNeverChangesThem) {
  const Workspace::Folders shipped = folders;
  const QByteArray pack = read(shipped.packedFile());
  const QByteArray conditions = read(shipped.templateFile());
  const Workspace::Folders fresh{folder.filePath(u"of a user/data"_s), folder.filePath(u"fresh temp"_s)};
  Workspace::install(fresh, shipped, unflushed);
  EXPECT_EQ(read(fresh.packedFile()), pack);
  EXPECT_EQ(read(fresh.templateFile()), conditions);
  EXPECT_EQ(QDir(fresh.program).entryList(QDir::Files | QDir::Hidden, QDir::Name),
            (QStringList{u"TJmode.tjmod"_s, u"elevenfive.dat"_s}));
  {
    Workspace workspace(fresh, {&unflushed, {}});
    setValue(workspace.gConn, 8);
    workspace.close();
  }
  Workspace::install(fresh, shipped, unflushed);
  EXPECT_NE(read(fresh.packedFile()), pack);
  EXPECT_EQ(read(shipped.packedFile()), pack);
  EXPECT_EQ(read(shipped.templateFile()), conditions);
}

TEST_F(WorkspaceLife, RowsThatAreAlwaysThereComeBackWhereTheyWereLost) {
  {
    Workspace workspace(folders, {&unflushed, {}});
    workspace.gConn.executeScript(
        "test",
        "DELETE FROM 用户模式; DELETE FROM 用户表; DELETE FROM 历史数据过滤; DELETE FROM 自定义别名 WHERE 序号 = 3;"
        "UPDATE 自定义别名 SET 别名 = '热号' WHERE 序号 = 4; DELETE FROM 数据源 WHERE 名称 = '开奖网站';"
        "UPDATE 数据源 SET 地址 = 'http://a.test/' WHERE 名称 = '开奖详情';");
    workspace.close();
  }
  for (int start = 0; start < 2; ++start) {
    Workspace workspace(folders, {&unflushed, {}});
    Store& store = workspace.gConn;
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 用户模式 WHERE 模式 = 0"), 1);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 用户表 WHERE 用户名 = '临时用户' AND 密码 = ''"), 1);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 历史数据过滤 WHERE 最小值 = 5 AND 匹配值 = 4"), 1);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 自定义别名"), 20);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 自定义别名 WHERE 别名 = '自定义组3' OR 别名 = '热号'"), 2);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 数据源"), 4);
    EXPECT_EQ(store.value("test",
                          "SELECT COUNT(*) FROM 数据源 WHERE (名称 = '开奖网站' AND 地址 LIKE '%results.example') "
                          "OR (名称 = '开奖详情' AND 地址 = 'http://a.test/')"),
              2);
    EXPECT_EQ(workspace.hasChanged(), start == 0);
    workspace.close();
  }
}

TEST_F(WorkspaceLife, InstallPutsALostTemplateBackAndTouchesNothingElse) {
  runWriting(7);
  QFile::remove(folders.templateFile());
  FaultyFiles broken;
  broken.failingStep = 0;
  EXPECT_NO_THROW(Workspace::install(folders, {folder.filePath(u"none"_s), {}}, broken));
  EXPECT_FALSE(QFile::exists(folders.templateFile()));
  const QByteArray pack = read(folders.packedFile());
  Workspace::install(folders, {folder.filePath(u"none"_s), {}}, unflushed);
  EXPECT_NO_THROW(checkDatabase(folders.templateFile(), StoreKind::conditionTemplate));
  EXPECT_EQ(read(folders.packedFile()), pack);
  const QByteArray filled = read(folders.templateFile()) + "changed";
  write(folders.templateFile(), filled);
  Workspace::install(folders, {folder.filePath(u"none"_s), {}}, unflushed);
  EXPECT_EQ(read(folders.templateFile()), filled);
}

TEST_F(WorkspaceLife, AnInstallThatWasCutOffAtAnyStepIsFinishedByTheNextOne) {
  const Workspace::Folders none{folder.filePath(u"none"_s), {}};
  for (const Workspace::Folders& shipped : {folders, none}) {
    qint64 step = 0;
    for (bool done = false; !done; ++step) {
      const QTemporaryDir place;
      const Workspace::Folders fresh{place.filePath(u"program"_s), place.filePath(u"temp"_s)};
      FaultyFiles files;
      files.failingStep = step;
      try {
        Workspace::install(fresh, shipped, files);
        done = files.steps <= step;
      } catch (const FileError&) {
        // A step that failed; whatever it left is what the next one finds.
      }
      Workspace::install(fresh, shipped, unflushed);
      Workspace workspace(fresh, {&unflushed, {}});
      EXPECT_EQ(valueOf(workspace.gConn), 5) << "step " << step;
      EXPECT_EQ(workspace.notices(), QStringList());
      EXPECT_NO_THROW(checkDatabase(fresh.templateFile(), StoreKind::conditionTemplate)) << "step " << step;
      EXPECT_FALSE(QFile::exists(fresh.program + u"/elevenfive.installing"_s));
    }
    EXPECT_GT(step, 10);
  }
}

TEST_F(WorkspaceLife, FinishingAnInstallNeverTouchesAPackedDataFileThatStands) {
  runWriting(7);
  write(folders.program + u"/elevenfive.installing"_s, "");
  QFile::remove(folders.templateFile());
  Workspace::install(folders, {folder.filePath(u"none"_s), {}}, unflushed);
  EXPECT_EQ(nextStart(), 7);
  EXPECT_NO_THROW(checkDatabase(folders.templateFile(), StoreKind::conditionTemplate));
}

TEST_F(WorkspaceLife, AnInstallWaitsForNobodyAndSaysThatAnInstanceRuns) {
  const Workspace::Folders fresh{folder.filePath(u"fresh"_s), folder.filePath(u"fresh temp"_s)};
  realFiles().makeFolder(fresh.program);
  const FolderLock held(fresh.program);
  EXPECT_THROW(Workspace::install(fresh, folders, unflushed), AlreadyRunning);
  EXPECT_FALSE(Workspace::exists(fresh));
}

TEST_F(WorkspaceLife, AnObjectThatGoesWithoutACloseStillPutsItsChangesBack) {
  {
    Workspace workspace(folders);
    setValue(workspace.gConn, 7);
  }
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(WorkspaceLife, AnAbandonedRunLeavesThePackedDataFileAndNoCopy) {
  runWriting(7);
  {
    Workspace workspace(folders);
    setValue(workspace.gConn, 8);
    workspace.abandon();
  }
  EXPECT_EQ(nextStart(), 7);
  EXPECT_EQ(keptCopies(), QStringList());
}

TEST_F(WorkspaceLife, LeavingARunThatChangedNothingLeavesNothingBehind) {
  runWriting(7);
  const QByteArray pack = read(folders.packedFile());
  {
    Workspace workspace(folders);
    workspace.leave();
    EXPECT_EQ(QDir(folders.temporary).entryList(QDir::Files), QStringList());
  }
  EXPECT_EQ(read(folders.packedFile()), pack);
  EXPECT_EQ(nextStart(), 7);
  EXPECT_EQ(keptCopies(), QStringList());
}

TEST_F(WorkspaceLife, LeavingAChangedRunLeavesItsDatabaseToTheNextStart) {
  runWriting(7);
  {
    Workspace workspace(folders);
    setValue(workspace.gConn, 8);
    workspace.leave();
    workspace.leave();
    EXPECT_EQ(QDir(folders.temporary).entryList({u"elevenfive.dat"_s}), QStringList{u"elevenfive.dat"_s});
    EXPECT_NO_THROW(const FolderLock free(folders.program));
    EXPECT_NO_THROW(const FolderLock free(folders.temporary));
  }
  EXPECT_EQ(nextStart(), 7);
  EXPECT_EQ(keptValues(), QList<int>{8});
}

TEST_F(WorkspaceLife, LeavingAStartOnTheBackupLeavesTheDatabaseThatIsNowhereElse) {
  runWriting(7);
  runWriting(8);
  ASSERT_EQ(valueInFile(folders.backupFile()), 7);
  QFile::remove(folders.packedFile());
  QFile::remove(folders.packInTransit());
  {
    Workspace workspace(folders);
    workspace.leave();
  }
  ASSERT_TRUE(QFile::exists(folders.workingFile()));
  QFile::remove(folders.backupFile());
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(WorkspaceLife, TheUserModeIsReadAtTheStart) {
  {
    Workspace workspace(folders);
    EXPECT_EQ(workspace.gUserMode, 0);
    workspace.gConn.execute("test", "UPDATE 用户模式 SET 模式 = 2");
    workspace.close();
  }
  EXPECT_EQ(Workspace(folders).gUserMode, 2);
}

TEST_F(WorkspaceLife, TheCallAfterUnpackingSeesTheWorkingDatabaseButNoBackupYet) {
  bool seen = false;
  Workspace::Options options;
  options.unpacked = [&] {
    seen = true;
    EXPECT_TRUE(QFile::exists(folders.workingFile()));
    EXPECT_FALSE(QFile::exists(folders.backupFile()));
  };
  Workspace workspace(folders, options);
  EXPECT_TRUE(seen);
  EXPECT_TRUE(QFile::exists(folders.backupFile()));
}

TEST_F(WorkspaceLife, ABackupIsInThePlaceOfALostPackBetweenTheTwoCalls) {
  { Workspace workspace(folders); }  // its start takes the backup
  ASSERT_TRUE(QFile::remove(folders.packedFile()));
  QStringList calls;
  Workspace::Options options;
  options.unpacked = [&] {
    calls << u"unpacked"_s;
    EXPECT_FALSE(QFile::exists(folders.workingFile()));
  };
  options.restored = [&] {
    calls << u"restored"_s;
    EXPECT_TRUE(QFile::exists(folders.workingFile()));
  };
  Workspace workspace(folders, options);
  EXPECT_EQ(calls, QStringList({u"unpacked"_s, u"restored"_s}));
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

TEST_F(WorkspaceFolder, CreatingWhereAFileStandsInTheFoldersPlaceIsAFault) {
  QFile file(folder.filePath(u"x"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  folders.program = folder.filePath(u"x"_s);
  EXPECT_THROW(Workspace::create(folders, false), FileError);
}

TEST_F(WorkspaceFolder, OpeningAFolderWithoutADataFileIsAFaultAndMakesNone) {
  EXPECT_THROW(const Workspace workspace(folders), StoreError);
  EXPECT_TRUE(contentOf(folder.path()).isEmpty());
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
