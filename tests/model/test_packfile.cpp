#include "model/packfile.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <sys/stat.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "model/errors.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class PackFile : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  QString file1 = folder.filePath(u"one"_s);
  QString file2 = folder.filePath(u"two"_s);
  QString pack = folder.filePath(u"pack"_s);

  static void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  QStringList names() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
};

QByteArray bytes(const char* hex) {
  return QByteArray::fromHex(hex);
}

TEST_F(PackFile, HoldsTwoLengthsAndTwoPayloadsWithoutPadding) {
  write(file1, "ABC");
  write(file2, "de");
  ASSERT_TRUE(packFiles(file1, file2, pack));
  EXPECT_EQ(read(pack).toHex(), bytes("0300000002000000").append("ABCde").toHex());
}

TEST_F(PackFile, LengthsAreLittleEndian) {
  write(file1, QByteArray(0x010203, 'x'));
  write(file2, "");
  ASSERT_TRUE(packFiles(file1, file2, pack));
  EXPECT_EQ(read(pack).left(8).toHex(), "0302010000000000");
}

TEST_F(PackFile, UnpacksTheFirstPayloadIntoTheThirdArgument) {
  write(pack, bytes("0300000002000000").append("ABCde"));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "ABC");
  EXPECT_EQ(read(file2), "de");
}

TEST_F(PackFile, WithoutASecondPayloadTheSecondFileIsEmpty) {
  write(pack, bytes("0300000000000000").append("ABC"));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "ABC");
  EXPECT_EQ(read(file2), "");
}

TEST_F(PackFile, WithoutAFirstPayloadTheFirstFileIsEmpty) {
  write(file1, "old");
  write(pack, bytes("0000000002000000").append("de"));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "");
  EXPECT_EQ(read(file2), "de");
}

TEST_F(PackFile, WhatStandsBehindThePayloadsIsNotRead) {
  write(pack, bytes("0100000001000000").append("Adrest of a longer pack"));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "A");
  EXPECT_EQ(read(file2), "d");
}

TEST_F(PackFile, ALongerPackIsReplacedAsAWhole) {
  write(pack, QByteArray(1000, 'z'));
  write(file1, "A");
  write(file2, "d");
  ASSERT_TRUE(packFiles(file1, file2, pack));
  EXPECT_EQ(read(pack), bytes("0100000001000000").append("Ad"));
}

TEST_F(PackFile, AMissingPackLeavesTheFilesThatStandThere) {
  write(file1, "old one");
  write(file2, "old two");
  EXPECT_FALSE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "old one");
  EXPECT_EQ(read(file2), "old two");
}

TEST_F(PackFile, AFolderInThePlaceOfThePackLeavesTheFiles) {
  ASSERT_TRUE(QDir().mkdir(pack));
  write(file1, "old");
  EXPECT_FALSE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(file1), "old");
}

TEST_F(PackFile, AFolderInThePlaceOfOneFileLeavesTheOther) {
  write(pack, bytes("0300000002000000").append("ABCde"));
  const QString taken = folder.filePath(u"taken"_s);
  QDir(folder.path()).mkdir(u"taken"_s);
  write(file1, "old one");
  write(file2, "old two");
  EXPECT_FALSE(unpackFiles(pack, file2, taken));
  EXPECT_FALSE(unpackFiles(pack, taken, file1));
  EXPECT_EQ(read(file1), "old one");
  EXPECT_EQ(read(file2), "old two");
  EXPECT_EQ(names(), (QStringList{u"one"_s, u"pack"_s, u"two"_s}));
}

TEST_F(PackFile, APipeIsNeitherReadNorReplaced) {
  write(file1, "ABC");
  write(file2, "de");
  const QString pipe = folder.filePath(u"pipe"_s);
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  EXPECT_FALSE(packFiles(file1, file2, pipe));
  EXPECT_FALSE(packFiles(pipe, file2, pack));
  EXPECT_FALSE(unpackFiles(pipe, file2, file1));
  EXPECT_EQ(read(file1), "ABC");
  EXPECT_FALSE(QFileInfo(pipe).isFile());
}

TEST_F(PackFile, UnpackingGoesThroughALinkAndKeepsItsFilesPermissions) {
  write(pack, bytes("0300000002000000").append("ABCde"));
  const QString real = folder.filePath(u"real"_s);
  write(real, "old");
  ASSERT_EQ(chmod(QFile::encodeName(real).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(real, file1));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  EXPECT_EQ(read(real), "ABC");
  EXPECT_TRUE(QFileInfo(file1).isSymLink());
  EXPECT_EQ(QFileInfo(real).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(PackFile, LengthsBeyondTheFileAreRefusedAndNothingChanges) {
  for (const char* header : {"0400000000000000", "0300000001000000", "ffffffff00000000", "00000000ffffffff",
                             "ffffffffffffffff", "03000000fdffffff", "0000008000000080"}) {
    write(pack, bytes(header).append("ABC"));
    write(file1, "old one");
    write(file2, "old two");
    EXPECT_FALSE(unpackFiles(pack, file2, file1)) << header;
    EXPECT_EQ(read(file1), "old one") << header;
    EXPECT_EQ(read(file2), "old two") << header;
  }
  EXPECT_EQ(names(), (QStringList{u"one"_s, u"pack"_s, u"two"_s}));
}

TEST_F(PackFile, APackCutOffAnywhereIsRefused) {
  const QByteArray whole = bytes("0300000002000000").append("ABCde");
  for (qsizetype size = 0; size < whole.size(); ++size) {
    write(pack, whole.left(size));
    EXPECT_FALSE(unpackFiles(pack, file2, file1)) << size;
    EXPECT_FALSE(QFile::exists(file1)) << size;
    EXPECT_FALSE(QFile::exists(file2)) << size;
  }
}

TEST_F(PackFile, AFileOfFourGigabytesDoesNotFit) {
  QFile large(file1);
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  ASSERT_TRUE(large.resize(qint64{1} << 32));  // a hole: no bytes on the disk
  large.close();
  write(file2, "de");
  write(pack, "old pack");
  EXPECT_FALSE(packFiles(file1, file2, pack));
  EXPECT_EQ(read(pack), "old pack");
}

TEST_F(PackFile, AMissingFileIsNotPacked) {
  write(file1, "ABC");
  write(pack, "old pack");
  EXPECT_FALSE(packFiles(file1, file2, pack));
  EXPECT_FALSE(packFiles(file2, file1, pack));
  EXPECT_EQ(read(pack), "old pack");
}

TEST_F(PackFile, ThePackCannotBeOneOfItsOwnFiles) {
  write(file1, "ABC");
  write(file2, "de");
  EXPECT_FALSE(packFiles(file1, file2, file1));
  EXPECT_FALSE(packFiles(file1, file2, folder.filePath(u"./two"_s)));
  EXPECT_EQ(read(file1), "ABC");
  EXPECT_EQ(read(file2), "de");

  write(pack, bytes("0100000001000000").append("Ad"));
  EXPECT_FALSE(unpackFiles(pack, file2, pack));
  EXPECT_FALSE(unpackFiles(pack, file1, file1));
  EXPECT_EQ(read(pack), bytes("0100000001000000").append("Ad"));
}

TEST_F(PackFile, AFullDiskAtAnyByteLeavesTheOldPackAndNothingBeside) {
  write(file1, "ABCDEFG");
  write(file2, "hijk");
  write(pack, "old pack");
  const qint64 size = 8 + 7 + 4;
  for (qint64 n = 0; n < size; ++n) {
    FaultyFiles files;
    files.writableBytes = n;
    EXPECT_FALSE(packFiles(file1, file2, pack, files)) << n;
    EXPECT_EQ(read(pack), "old pack") << n;
    EXPECT_EQ(names(), (QStringList{u"one"_s, u"pack"_s, u"two"_s})) << n;
  }
  FaultyFiles files;
  files.writableBytes = size;
  EXPECT_TRUE(packFiles(file1, file2, pack, files));
}

TEST_F(PackFile, AFullDiskWhileUnpackingLeavesTheOldFiles) {
  write(pack, bytes("0300000002000000").append("ABCde"));
  write(file1, "old one");
  write(file2, "old two");
  for (qint64 n = 0; n < 5; ++n) {
    FaultyFiles files;
    files.writableBytes = n;
    EXPECT_FALSE(unpackFiles(pack, file2, file1, files)) << n;
    EXPECT_EQ(read(file1), "old one") << n;
    EXPECT_EQ(read(file2), "old two") << n;
  }
}

TEST_F(PackFile, EachFailingStepOfUnpackingLeavesTheFirstFileAndAllButTheLastTheSecond) {
  write(pack, bytes("0300000002000000").append("ABCde"));
  constexpr qint64 lastStep = 5;  // two files made, two written, two renamed
  for (qint64 n = 0; n <= lastStep; ++n) {
    write(file1, "old one");
    write(file2, "old two");
    FaultyFiles files;
    files.failingStep = n;
    EXPECT_FALSE(unpackFiles(pack, file2, file1, files)) << n;
    EXPECT_EQ(read(file1), "old one") << n;
    EXPECT_EQ(read(file2), n < lastStep ? "old two" : "de") << n;
  }
  FaultyFiles files;
  files.failingStep = lastStep + 1;
  EXPECT_TRUE(unpackFiles(pack, file2, file1, files));
  EXPECT_EQ(read(file1), "ABC");
}

TEST_F(PackFile, FilesBesideWithTheNamesOfScratchFilesStay) {
  const QStringList mine{file1 + u".new"_s, file2 + u".new"_s, pack + u".new"_s};
  write(file1, "ABC");
  write(file2, "de");
  for (const QString& path : mine)
    write(path, "notes");
  ASSERT_TRUE(packFiles(file1, file2, pack));
  ASSERT_TRUE(unpackFiles(pack, file2, file1));
  for (const QString& path : mine)
    EXPECT_EQ(read(path), "notes");
  EXPECT_EQ(names().size(), 6);
}

TEST_F(PackFile, EachFailingStepLeavesEitherTheOldPackOrTheNewOne) {
  write(file1, "ABC");
  write(file2, "de");
  const QByteArray whole = bytes("0300000002000000").append("ABCde");
  for (qint64 n = 0; n < 6; ++n) {  // create, three writes, flush, rename
    write(pack, "old pack");
    FaultyFiles files;
    files.failingStep = n;
    EXPECT_FALSE(packFiles(file1, file2, pack, files)) << n;
    EXPECT_EQ(read(pack), "old pack") << n;
  }
  FaultyFiles files;
  files.failingStep = 6;  // the folder cannot be flushed: the new pack stands, but may not last
  EXPECT_FALSE(packFiles(file1, file2, pack, files));
  EXPECT_EQ(read(pack), whole);
}

TEST_F(PackFile, ThePackIsFlushedBeforeItTakesItsName) {
  write(file1, "ABC");
  write(file2, "de");
  FaultyFiles files;
  ASSERT_TRUE(packFiles(file1, file2, pack, files));
  ASSERT_EQ(files.log.size(), 7);
  EXPECT_TRUE(files.log[4].startsWith(u"flush "_s) && files.log[4].endsWith(u"/pack.new"_s));
  EXPECT_TRUE(files.log[5].startsWith(u"rename "_s) && files.log[5].endsWith(u"/pack"_s));
}

TEST_F(PackFile, AnyTwoFilesComeBackAsTheyWere) {
  EXPECT_TRUE(rc::check("unpacking undoes packing", [&](const std::string& one, const std::string& two) {
    const QByteArray first = QByteArray::fromStdString(one);
    const QByteArray second = QByteArray::fromStdString(two);
    write(file1, first);
    write(file2, second);
    RC_ASSERT(packFiles(file1, file2, pack));
    RC_ASSERT(packHolds(pack, file1));
    write(file1, "other");
    RC_ASSERT(!packHolds(pack, file1));
    write(file2, "other");
    RC_ASSERT(unpackFiles(pack, file2, file1));
    RC_ASSERT(read(file1) == first);
    RC_ASSERT(read(file2) == second);
  }));
}

}  // namespace
}  // namespace elevenfive
