// pack, unpack, and what a call leaves in the folders.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "model/folderlock.h"
#include "tests/cli/cliprocess.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

class PackCommands : public ::testing::Test {
 protected:
  QString file(const QString& name, const QByteArray& content) {
    QFile written(cli.path(name));
    written.open(QIODevice::WriteOnly);
    written.write(content);
    return written.fileName();
  }

  static QByteArray content(const QString& path) {
    QFile read(path);
    return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray("none");
  }

  CliProcess cli;
};

}  // namespace

TEST_F(PackCommands, PackJoinsTwoFilesBehindTheirLengths) {
  const auto outcome = cli.call({u"pack"_s, file(u"a"_s, "abc"), file(u"b"_s, "xy"), cli.path(u"pack"_s)});
  EXPECT_EQ(outcome.status, exitDone) << outcome.err.toStdString();
  EXPECT_EQ(outcome.out + outcome.err, QString());
  EXPECT_EQ(content(cli.path(u"pack"_s)), QByteArray::fromHex("0300000002000000") + "abcxy");
}

TEST_F(PackCommands, UnpackGivesBothFilesBack) {
  const QString pack = file(u"pack"_s, QByteArray::fromHex("0300000002000000") + "abcxy");
  EXPECT_EQ(cli.call({u"unpack"_s, pack, cli.path(u"second"_s), cli.path(u"first"_s)}).status, exitDone);
  EXPECT_EQ(content(cli.path(u"first"_s)), "abc");
  EXPECT_EQ(content(cli.path(u"second"_s)), "xy");
}

TEST_F(PackCommands, PacksThatLieLeaveTheOldFiles) {
  const QString first = file(u"first"_s, "old");
  const QString pack = file(u"pack"_s, QByteArray::fromHex("ffffffff02000000") + "abcxy");
  for (const QString& damaged : {pack, cli.path(u"none"_s)}) {
    const auto outcome = cli.call({u"unpack"_s, damaged, cli.path(u"second"_s), first});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_TRUE(outcome.err.startsWith(u"[critical] elevenfive 11选5: "_s)) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err.count(u'\n'), 1);
  }
  EXPECT_EQ(content(first), "old");
  EXPECT_EQ(cli.call({u"pack"_s, cli.path(u"none"_s), first, cli.path(u"p"_s)}).status, exitFailed);
  EXPECT_FALSE(QFile::exists(cli.path(u"p"_s)));
}

TEST_F(PackCommands, TheProgramsOwnFilesAreNoTargetsOfAnyExport) {
  cli.call({u"init"_s});
  const QString rows = file(u"rows"_s, "01 02 03 04 05\r\n");
  ASSERT_EQ(cli.call({u"rows"_s, u"import"_s, rows, u"11031510"_s, u"--format"_s, u"0"_s}).status, exitDone);
  const QString one = file(u"one"_s, "1");
  const QString pack = file(u"pack"_s, QByteArray::fromHex("0300000002000000") + "abcxy");
  for (const QString& name : {u"elevenfive.dat"_s, u"elevenfive.bak"_s, u"TJmode.tjmod"_s, u"Bak/elevenfive.dat"_s}) {
    const QString own = cli.path(name);
    const QByteArray before = content(own);
    QList<QStringList> calls{{u"unpack"_s, pack, cli.path(u"x"_s), own},
                             {u"unpack"_s, pack, own, cli.path(u"x"_s)},
                             {u"history"_s, u"export"_s, own},
                             {u"rows"_s, u"export"_s, own, u"11031510"_s},
                             {u"conditions"_s, u"export"_s, own}};
    if (name != u"elevenfive.dat"_s)  // pack makes packs
      calls << QStringList{u"pack"_s, one, one, own};
    for (const QStringList& words : calls) {
      const auto outcome = cli.call(words);
      EXPECT_EQ(outcome.status, exitFailed) << words.join(u' ').toStdString();
      EXPECT_TRUE(outcome.err.contains(u"文件 %1 是程序自己的文件，请换一个文件名。"_s.arg(own)))
          << words.join(u' ').toStdString() << outcome.err.toStdString();
    }
    if (name == u"TJmode.tjmod"_s) {  // which an export fills before it asks for a path
      EXPECT_TRUE(content(own).startsWith("SQLite format 3"));
    } else if (name != u"elevenfive.bak"_s) {  // which each start takes anew
      EXPECT_TRUE(content(own) == before) << name.toStdString();
    }
  }
  EXPECT_FALSE(QFile::exists(cli.path(u"x"_s)));
}

TEST_F(PackCommands, TheWorkingDatabaseInUseIsNoTargetOfABatchEither) {
  cli.call({u"init"_s});
  const QString pack = file(u"pack"_s, QByteArray::fromHex("0300000002000000") + "abcxy");
  const QString working = cli.path(u"Temp/elevenfive.dat"_s);  // as both folders of these calls are one
  const auto outcome = cli.batch(u"value 3900 7\nunpack \"%1\" \"%2\" \"%3\"\n"_s.arg(pack, cli.path(u"x"_s), working));
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_TRUE(outcome.err.endsWith(u"文件 %1 是程序自己的文件，请换一个文件名。\n"_s.arg(working)))
      << outcome.err.toStdString();
  EXPECT_EQ(cli.rows(u"SELECT VALUE FROM 过滤条件 WHERE ID = 3900"_s), u"7\n"_s);
}

TEST_F(PackCommands, WithoutAPackedDataFileNothingElseOfTheProgramsIsTakenForIt) {
  const QString one = file(u"one"_s, "1");
  const QString own = cli.path(u"TJmode.tjmod"_s);
  const auto outcome = cli.call({u"pack"_s, one, one, own});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_TRUE(outcome.err.contains(u"文件 %1 是程序自己的文件，请换一个文件名。"_s.arg(own)))
      << outcome.err.toStdString();
  EXPECT_FALSE(QFile::exists(own));
  EXPECT_EQ(cli.call({u"pack"_s, one, one, cli.path(u"./elevenfive.dat"_s)}).status, exitDone);
}

TEST_F(PackCommands, FilesBesideWithTheNamesOfScratchFilesStay) {
  const QString one = file(u"a"_s, "abc");
  const QString two = file(u"b"_s, "xy");
  const QString pack = cli.path(u"p"_s);
  for (const QString& name : {u"p.new"_s, u"o1.new"_s, u"o2.new"_s})
    file(name, "notes");
  EXPECT_EQ(cli.call({u"pack"_s, one, two, pack}).status, exitDone);
  EXPECT_EQ(cli.call({u"unpack"_s, pack, cli.path(u"o2"_s), cli.path(u"o1"_s)}).status, exitDone);
  for (const QString& name : {u"p.new"_s, u"o1.new"_s, u"o2.new"_s})
    EXPECT_EQ(content(cli.path(name)), "notes");
  EXPECT_EQ(content(cli.path(u"o1"_s)), "abc");
}

TEST_F(PackCommands, WhatWasUnpackedCanBePackedIntoTheDataFileAgain) {
  cli.call({u"init"_s});
  const QString pack = cli.path(u"elevenfive.dat"_s);
  const QByteArray before = content(pack);
  EXPECT_EQ(cli.call({u"unpack"_s, pack, cli.path(u"icon"_s), cli.path(u"database"_s)}).status, exitDone);
  EXPECT_EQ(cli.call({u"pack"_s, cli.path(u"database"_s), cli.path(u"icon"_s), pack}).status, exitDone);
  EXPECT_EQ(content(pack), before);
}

TEST_F(PackCommands, TheDataFileIsWrittenByNoPackWhileARunHasIt) {
  cli.call({u"init"_s});
  const QString pack = cli.path(u"elevenfive.dat"_s);
  const QString database = cli.path(u"database"_s);
  const QString icon = cli.path(u"icon"_s);
  ASSERT_EQ(cli.call({u"unpack"_s, pack, icon, database}).status, exitDone);
  {
    const QByteArray before = content(pack);
    const FolderLock window(cli.folder());
    const auto outcome = cli.call({u"pack"_s, database, icon, pack});
    EXPECT_EQ(outcome.status, exitFailed);
    EXPECT_TRUE(outcome.err.contains(u"程序正在运行,不允许同时打开多个!!!"_s)) << outcome.err.toStdString();
    EXPECT_EQ(content(pack), before);
  }
  // What the batch itself has changed is not written over the pack at its end.
  const QString lines = u"value 3900 7\npack '%1' '%2' '%3'\n"_s.arg(database, icon, pack);
  EXPECT_EQ(cli.call({u"batch"_s}, lines).status, exitDone);
  EXPECT_EQ(cli.rows(u"SELECT VALUE FROM 过滤条件 WHERE ID = 3900"_s), u"5\n"_s);
}

TEST_F(PackCommands, EmptyFileNamesAreNone) {
  const QString one = file(u"one"_s, "1");
  for (const QStringList& words :
       {QStringList{u"pack"_s, {}, one, cli.path(u"p"_s)}, QStringList{u"pack"_s, one, {}, cli.path(u"p"_s)},
        QStringList{u"pack"_s, one, one, {}}, QStringList{u"unpack"_s, {}, cli.path(u"a"_s), cli.path(u"b"_s)},
        QStringList{u"unpack"_s, one, {}, cli.path(u"b"_s)}, QStringList{u"unpack"_s, one, cli.path(u"a"_s), {}}})
    EXPECT_EQ(cli.call(words).status, exitUsage) << words.join(u' ').toStdString();
  EXPECT_FALSE(QFile::exists(cli.path(u"p"_s)));
}

TEST_F(PackCommands, ACallThatOnlyReadsLeavesThePackAsItIs) {
  cli.call({u"init"_s});
  const QByteArray before = content(cli.path(u"elevenfive.dat"_s));
  cli.call({u"rows"_s});
  EXPECT_EQ(content(cli.path(u"elevenfive.dat"_s)), before);
  cli.call({u"source"_s, u"set"_s, u"版本公告"_s, u"changed"_s});
  EXPECT_NE(content(cli.path(u"elevenfive.dat"_s)), before);
}

TEST_F(PackCommands, TheWorkingDatabaseStandsInTheTemporaryFolderOnlyDuringACall) {
  const QTemporaryDir temporary;
  const QStringList folders{u"--folder"_s, cli.folder(), u"--temp"_s, temporary.path()};
  CliProcess::callAsIs(folders + QStringList{u"init"_s});
  EXPECT_EQ(CliProcess::callAsIs(folders + QStringList{u"rows"_s}).status, exitDone);
  EXPECT_FALSE(QFile::exists(temporary.filePath(u"elevenfive.dat"_s)));
}

TEST_F(PackCommands, DataThatCannotBePutBackIsAFailure) {
  cli.call({u"init"_s});
  file(u"Bak.block"_s, {});
  QFile::remove(cli.path(u"Bak"_s));
  ASSERT_TRUE(QFile::rename(cli.path(u"Bak.block"_s), cli.path(u"Bak"_s)));  // a file where the folder must stand
  const auto outcome = cli.call({u"source"_s, u"set"_s, u"版本公告"_s, u"x"_s});
  EXPECT_EQ(outcome.status, exitFailed);
  EXPECT_TRUE(outcome.err.startsWith(u"[critical]"_s)) << outcome.err.toStdString();
}

}  // namespace elevenfive
