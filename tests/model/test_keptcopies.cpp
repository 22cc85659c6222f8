#include "model/keptcopies.h"

#include "tests/model/datalife.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class KeptCopiesLife : public DataLife {
 protected:
  /// Takes everything that a start could use, so that only the pack in Bak holds the value.
  void loseAllButThePackInBak(int value) const {
    runWriting(value);
    QFile::remove(folders.packedFile());
    QFile::remove(folders.backupFile());
  }

  QString advice(qsizetype index) const {
    return u"以前的数据保存在 %1 中，把它复制为 %2 就能继续使用。"_s.arg(pathOfCopy(index), folders.backupFile());
  }

  void keepFile(const QByteArray& content) {
    const QString path = folder.filePath(u"work"_s);
    write(path, content);
    copies.keep(path);
  }

  QList<QByteArray> contents() const {
    QList<QByteArray> all;
    for (const QString& path : copies.list())
      all << read(path);
    return all;
  }

  KeptCopies copies{folders.bakFolder(), unflushed};
};

TEST_F(KeptCopiesLife, WithoutThePackTheNewestPackInBakIsNotLostEither) {
  runWriting(7);
  runWriting(8);
  QFile::remove(folders.packedFile());
  runWriting(9);
  ASSERT_EQ(keptCopies().size(), 1);
  EXPECT_EQ(valueInFile(folders.bakFolder() + u'/' + keptCopies().first()), 8);
}

TEST_F(KeptCopiesLife, OfThePackInBakAndInterruptedWorkTheWorkIsTheNewerCopy) {
  strayPack(7);
  crashWriting(8);  // its start keeps the 7
  QFile::remove(folders.bakFolder() + u'/' + keptCopies().first());
  ASSERT_EQ(keptCopies(), QStringList());
  const QByteArray working = read(folders.workingFile());
  QFile::remove(folders.workingFile());
  strayPack(6);
  write(folders.workingFile(), working);
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(keptValues(), (QList<int>{6, 8}));
}

TEST_F(KeptCopiesLife, APackThatStayedInBakIsKeptOnce) {
  strayPack(7);
  {
    Workspace workspace(folders);
    ASSERT_EQ(keptValues(), QList<int>{7});
    EXPECT_EQ(workspace.notices(),
              QStringList{u"Bak 中的数据与数据文件不同，上次退出时可能没有写回，已保存为 %1。"_s.arg(pathOfCopy(0))});
  }
  for (const int value : {11, 12, 13})
    crashWriting(value);
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(keptValues(), (QList<int>{11, 12, 13}));
  Workspace workspace(folders);
  EXPECT_EQ(workspace.notices(), QStringList());
  EXPECT_EQ(keptValues(), (QList<int>{11, 12, 13}));
}

TEST_F(KeptCopiesLife, WhatACopyThatWasCutOffLeftIsRemoved) {
  runWriting(7);
  const QString half = folders.bakFolder() + u"/elevenfive-0001-20261121-100000.bak.new"_s;
  write(half, "half a copy");
  EXPECT_EQ(nextStart(), 7);
  EXPECT_FALSE(QFile::exists(half));
}

TEST_F(KeptCopiesLife, OnlyTheNewestThreeInterruptedRunsStay) {
  for (const int value : {11, 12, 13, 14, 15})
    crashWriting(value);
  EXPECT_EQ(nextStart(), 5);
  QList<int> values;
  for (const QString& name : keptCopies())
    values << valueInFile(folders.bakFolder() + u'/' + name);
  EXPECT_EQ(values, (QList<int>{13, 14, 15}));
}

TEST_F(KeptCopiesLife, WhatProcessesThatWereEndedLeftHalfDoneIsRemovedAndNothingElse) {
  runWriting(7);
  QDir().mkpath(folders.temporary);
  const QStringList ours{folders.packedFile() + u".new"_s,
                         folders.backupFile() + u".new"_s,
                         folders.templateFile() + u".new"_s,
                         folders.program + u"/甲.uVorex.new"_s,
                         folders.packInTransit() + u".new"_s,
                         folders.workingFile() + u".new"_s,
                         folders.sideFile() + u".new"_s,
                         folders.temporary + u"/Temp_user.uVorex-journal"_s,
                         folders.mainScratch()};
  const QStringList others{folders.program + u"/notes.new"_s, folders.program + u"/甲.uVorex"_s,
                           folders.temporary + u"/Temp.txt"_s};
  for (const QString& path : ours + others)
    write(path, "half");
  EXPECT_EQ(nextStart(), 7);
  for (const QString& path : ours)
    EXPECT_FALSE(QFile::exists(path)) << path.toStdString();
  for (const QString& path : others)
    EXPECT_EQ(read(path), "half") << path.toStdString();
}

TEST_F(KeptCopiesLife, OfEqualWorkTheLastTimeCounts) {
  for (const char* content : {"a", "b", "c", "a"})
    keepFile(content);
  EXPECT_EQ(contents(), (QList<QByteArray>{"b", "c", "a"}));
  keepFile("d");
  copies.prune();
  EXPECT_EQ(contents(), (QList<QByteArray>{"c", "a", "d"}));
}

TEST_F(KeptCopiesLife, WhatIsTheNewestCopyAlreadyStaysUnderItsName) {
  keepFile("a");
  keepFile("b");
  const QStringList before = copies.list();
  keepFile("b");
  EXPECT_EQ(copies.list(), before);
}

TEST_F(KeptCopiesLife, AJournalGoesWithItsCopyToTheNewNumber) {
  keepFile("a");
  write(copies.list().first() + u"-journal"_s, "journal of a");
  keepFile("b");
  keepFile("a");
  ASSERT_EQ(contents(), (QList<QByteArray>{"b", "a"}));
  EXPECT_EQ(read(copies.list().last() + u"-journal"_s), "journal of a");
  EXPECT_EQ(QDir(folders.bakFolder()).entryList({u"*-journal"_s}, QDir::Files).size(), 1);
}

TEST_F(KeptCopiesLife, InterruptedWorkThatEqualsAnOlderCopyIsToldAndIsTheNewest) {
  runWriting(7);
  crashWriting(8);
  const QByteArray working = read(folders.workingFile());
  crashWriting(9);
  EXPECT_EQ(nextStart(), 7);
  ASSERT_EQ(keptValues(), (QList<int>{8, 9}));
  write(folders.workingFile(), working);
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(keptValues(), (QList<int>{9, 8}));
  EXPECT_EQ(workspace.notices(), QStringList{u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(pathOfCopy(1))});
}

TEST_F(KeptCopiesLife, InterruptedWorkIsToldByTheStartThatReplacedItAlsoWhereThatFails) {
  runWriting(7);
  crashWriting(8);
  const Workspace::Options failing{&unflushed, {}, [] { throw FileError(u"no room"_s); }};
  EXPECT_THROW(Workspace(folders, failing), FileError);
  ASSERT_EQ(keptValues(), QList<int>{8});
  EXPECT_EQ(*failing.notices, QStringList{u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(pathOfCopy(0))});
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(workspace.notices(), QStringList());
}

TEST_F(KeptCopiesLife, InterruptedWorkThatStillStandsIsToldByTheStartThatReplacesIt) {
  runWriting(7);
  crashWriting(8);
  FaultyFiles files;
  files.failingText = u"create temp/elevenfive.dat.new"_s;
  const Workspace::Options failing{&files, {}};
  EXPECT_THROW(Workspace(folders, failing), FileError);
  EXPECT_EQ(*failing.notices, QStringList());
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(workspace.notices(), QStringList{u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(pathOfCopy(0))});
}

TEST_F(KeptCopiesLife, TheCopyThatARefusedStartNamesIsNamedOnce) {
  loseAllButThePackInBak(7);
  const Workspace::Options refused{&unflushed, {}};
  EXPECT_THROW(Workspace(folders, refused), StoreError);
  ASSERT_EQ(keptValues(), QList<int>{7});
  EXPECT_EQ(*refused.notices, QStringList());
}

TEST_F(KeptCopiesLife, ACloseThatWasCutOffBehindItsPackIsToldOnce) {
  runWriting(7);
  FaultyFiles files;
  {
    Workspace workspace(folders, {&files, {}});
    setValue(workspace.gConn, 8);
    files.failingText = u"create program/elevenfive.dat.new"_s;
    EXPECT_THROW(workspace.close(), FileError);
    files.failingStep = 0;
  }
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  EXPECT_EQ(keptValues(), QList<int>{8});
  EXPECT_EQ(workspace.notices(), QStringList{u"上次没有正常退出，当时没有保存的数据留在 %1。"_s.arg(pathOfCopy(0))});
}

TEST_F(KeptCopiesLife, WithoutPackAndBackupEachStartNamesTheCopyOfThePackInBak) {
  loseAllButThePackInBak(7);
  for (int start = 0; start < 3; ++start) {
    const QString fault = startFault();
    EXPECT_EQ(fault, u"找不到数据文件，也没有备份，程序无法启动。"_s + advice(0));
    EXPECT_EQ(keptValues(), QList<int>{7});
  }
}

TEST_F(KeptCopiesLife, TheCopyThatIsNamedGoesOnWhenItIsMadeTheBackup) {
  loseAllButThePackInBak(7);
  ASSERT_NE(startFault(), u"no fault"_s);
  ASSERT_TRUE(QFile::copy(pathOfCopy(0), folders.backupFile()));
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  EXPECT_EQ(workspace.notices(), QStringList{u"找不到数据文件，已改用备份。"_s});
}

TEST_F(KeptCopiesLife, ADamagedPackOrBackupWithoutAnotherNamesTheCopyToo) {
  runWriting(7);
  QFile::remove(folders.backupFile());
  write(folders.packedFile(), "garbage");
  const QString reason =
      u"数据文件已损坏（数据包 %1 不完整），没有可用的备份，程序无法启动。"_s.arg(folders.packedFile());
  QString fault = startFault();
  EXPECT_EQ(fault, reason + advice(0));
  QFile::remove(folders.packedFile());
  write(folders.backupFile(), "more garbage");
  fault = startFault();
  EXPECT_EQ(fault, u"找不到数据文件，备份文件已损坏，程序无法启动。"_s + advice(0));
}

TEST_F(KeptCopiesLife, OfTheCopiesTheNewestSoundOneIsNamed) {
  loseAllButThePackInBak(7);
  write(folders.workingFile(), "what an interrupted run left is no database");
  const QString fault = startFault();
  EXPECT_EQ(fault, u"找不到数据文件，也没有备份，程序无法启动。"_s + advice(0));
  ASSERT_EQ(keptCopies().size(), 2);
  EXPECT_EQ(valueInFile(pathOfCopy(0)), 7);
}

TEST_F(KeptCopiesLife, CreateRefusesAFolderWhoseOnlyDataIsACopyInBak) {
  loseAllButThePackInBak(7);
  ASSERT_NE(startFault(), u"no fault"_s);
  ASSERT_FALSE(QFile::exists(folders.packInTransit()));
  EXPECT_THROW(Workspace::create(folders, false, unflushed), FileError);
  EXPECT_FALSE(Workspace::exists(folders));
  Workspace::create(folders, true, unflushed);
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(keptValues(), QList<int>{7});
}

TEST_F(KeptCopiesLife, ThePackInBakOfADamagedPackIsNotCalledALostClose) {
  runWriting(7);
  runWriting(8);
  write(folders.packedFile(), "garbage");
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(valueOf(workspace.gConn), 7);
  ASSERT_EQ(workspace.notices().size(), 2);
  EXPECT_TRUE(workspace.notices()[0].startsWith(u"数据文件已损坏（"_s));
  EXPECT_EQ(workspace.notices()[1], u"上次退出时的数据已保存为 %1。"_s.arg(pathOfCopy(0)));
  EXPECT_EQ(keptValues(), QList<int>{8});
}

TEST_F(KeptCopiesLife, ThePackInBakOfAMissingPackIsToldBehindTheBackup) {
  runWriting(7);
  runWriting(8);
  QFile::remove(folders.packedFile());
  Workspace workspace(folders, {&unflushed, {}});
  EXPECT_EQ(workspace.notices(),
            (QStringList{u"找不到数据文件，已改用备份。"_s, u"上次退出时的数据已保存为 %1。"_s.arg(pathOfCopy(0))}));
}

TEST_F(KeptCopiesLife, AfterARunThatChangedNothingThePackInBakIsThePackedDataFileAgain) {
  strayPack(7);
  const QByteArray pack = read(folders.packedFile());
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(read(folders.packedFile()), pack);
  EXPECT_EQ(read(folders.packInTransit()), pack);
  write(folders.packInTransit(), "not sound");
  EXPECT_EQ(nextStart(), 5);
  EXPECT_EQ(read(folders.packInTransit()), pack);
}

TEST_F(KeptCopiesLife, ThePackInBakOfAnUnchangedRunIsNoReasonToFail) {
  FaultyFiles files;
  files.failingText = u"create Bak/elevenfive.dat.new"_s;
  Workspace workspace(folders, {&files, {}});
  EXPECT_NO_THROW(workspace.close());
  EXPECT_FALSE(QFile::exists(folders.packInTransit()));
  EXPECT_FALSE(QFile::exists(folders.workingFile()));
}

}  // namespace
}  // namespace elevenfive
