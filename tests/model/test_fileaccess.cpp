#include "model/fileaccess.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void noCheck(const QString&) {}

TEST(FileAccess, AReplacedFileIsWrittenBesideFlushedCheckedAndRenamed) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"data"_s);
  write(path, "old");
  FaultyFiles files;
  QByteArray seenByCheck;
  QByteArray standingMeanwhile;
  replaceFile(
      files, path, [](OutputFile& file) { file.write("new content", 11); },
      [&](const QString& fresh) {
        seenByCheck = read(fresh);
        standingMeanwhile = read(path);
      });
  EXPECT_EQ(seenByCheck, "new content");
  EXPECT_EQ(standingMeanwhile, "old");
  EXPECT_EQ(read(path), "new content");
  const QString name = path.section(u'/', -2);
  EXPECT_EQ(files.log, (QStringList{u"create "_s + name + u".new"_s, u"write "_s + name + u".new"_s,
                                    u"flush "_s + name + u".new"_s, u"rename "_s + name + u".new -> "_s + name,
                                    u"flush folder "_s + name.section(u'/', 0, 0)}));
}

TEST(FileAccess, AFailedCheckLeavesTheOldFileAndNoNewOne) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"data"_s);
  write(path, "old");
  EXPECT_THROW(replaceFile(
                   realFiles(), path, [](OutputFile& file) { file.write("new", 3); },
                   [](const QString&) { throw FileError(u"no"_s); }),
               FileError);
  EXPECT_EQ(read(path), "old");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"data"_s});
}

TEST(FileAccess, AFolderThatIsMissingIsNamed) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"none/data"_s);
  try {
    replaceFile(
        realFiles(), path, [](OutputFile&) {}, noCheck);
    FAIL() << "written";
  } catch (const FileError& fault) {
    EXPECT_EQ(fault.message(), u"无法写入文件 %1.new：文件夹不存在。"_s.arg(path));
  }
}

TEST(FileAccess, AFullDiskIsNamedAsTheReason) {
  if (!QFile::exists(u"/dev/full"_s))
    GTEST_SKIP() << "no /dev/full";
  try {
    const auto file = realFiles().create(u"/dev/full"_s);
    file->write("x", 1);
    FAIL() << "written";
  } catch (const FileError& fault) {
    EXPECT_EQ(fault.message(), u"无法写入文件 /dev/full：磁盘空间已满。"_s);
  }
}

/// Replaces what stands at a path by "new"; the sentence of the fault, or none.
QString replaceFault(const QString& path) {
  try {
    replaceFile(
        realFiles(), path, [](OutputFile& file) { file.write("new", 3); }, noCheck);
  } catch (const FileError& fault) {
    return fault.message();
  }
  return {};
}

TEST(FileAccess, ThroughALinkItsTargetIsReplaced) {
  const QTemporaryDir folder;
  const QString target = folder.filePath(u"elsewhere/target"_s);
  const QString second = folder.filePath(u"second"_s);
  const QString first = folder.filePath(u"first"_s);
  QDir(folder.path()).mkdir(u"elsewhere"_s);
  ASSERT_TRUE(QFile::link(u"elsewhere/target"_s, second));  // as seen from the link
  ASSERT_TRUE(QFile::link(second, first));
  EXPECT_EQ(replaceFault(first), QString());  // leads nowhere yet
  EXPECT_EQ(read(target), "new");
  write(target, "old");
  EXPECT_EQ(replaceFault(first), QString());
  EXPECT_EQ(read(target), "new");
  EXPECT_TRUE(QFileInfo(first).isSymLink() && QFileInfo(second).isSymLink());
  EXPECT_EQ(QDir(folder.filePath(u"elsewhere"_s)).entryList(QDir::Files), QStringList{u"target"_s});
}

TEST(FileAccess, ALinkToItselfOrIntoAMissingFolderIsAFault) {
  const QTemporaryDir folder;
  const QString ring = folder.filePath(u"ring"_s);
  const QString away = folder.filePath(u"away"_s);
  ASSERT_TRUE(QFile::link(ring, ring) && QFile::link(folder.filePath(u"none/file"_s), away));
  EXPECT_EQ(replaceFault(ring), u"无法写入文件 %1：链接没有尽头。"_s.arg(ring));
  EXPECT_EQ(replaceFault(away), u"无法写入文件 %1：文件夹不存在。"_s.arg(folder.filePath(u"none/file.new"_s)));
}

TEST(FileAccess, OnlyAPlainFileIsReplaced) {
  const QTemporaryDir folder;
  const QString pipe = folder.filePath(u"pipe"_s);
  const QString link = folder.filePath(u"link"_s);
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  ASSERT_TRUE(QFile::link(pipe, link));
  EXPECT_EQ(replaceFault(pipe), u"无法写入文件 %1：它不是普通文件。"_s.arg(pipe));
  EXPECT_EQ(replaceFault(link), u"无法写入文件 %1：它不是普通文件。"_s.arg(link));
  EXPECT_EQ(replaceFault(folder.path()), u"无法写入文件 %1：同名的文件夹已存在。"_s.arg(folder.path()));
  struct stat there {};
  ASSERT_EQ(stat(QFile::encodeName(pipe).constData(), &there), 0);
  EXPECT_TRUE(S_ISFIFO(there.st_mode));
  EXPECT_FALSE(QFile::exists(nameBeside(pipe)) || QFile::exists(nameBeside(link)));
}

TEST(FileAccess, AFileThatHasTheNameOfTheScratchFileStays) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"data"_s);
  const QString victim = folder.filePath(u"victim"_s);
  write(nameBeside(path), "notes");
  write(victim, "precious");
  ASSERT_TRUE(QFile::link(victim, path + u".2.new"_s));
  ASSERT_TRUE(QFile::link(folder.filePath(u"nowhere"_s), path + u".3.new"_s));
  EXPECT_EQ(replaceFault(path), QString());
  EXPECT_EQ(read(path), "new");
  EXPECT_FALSE(QFileInfo(path).isSymLink());
  EXPECT_EQ(read(nameBeside(path)), "notes");
  EXPECT_EQ(read(victim), "precious");
  EXPECT_FALSE(QFile::exists(folder.filePath(u"nowhere"_s)));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::System, QDir::Name),
            (QStringList{u"data"_s, u"data.2.new"_s, u"data.3.new"_s, u"data.new"_s, u"victim"_s}));
}

TEST(FileAccess, NothingIsWrittenThroughALinkThatTookTheScratchFilesName) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"data"_s);
  const QString victim = folder.filePath(u"victim"_s);
  write(victim, "precious");
  ASSERT_TRUE(QFile::link(victim, path));
  EXPECT_THROW(realFiles().create(path), FileError);
  EXPECT_EQ(read(victim), "precious");
}

TEST(FileAccess, AReplacedFileKeepsItsPermissions) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"data"_s);
  write(path, "old");
  for (const mode_t mode : {0600U, 0640U, 0444U}) {
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
    EXPECT_EQ(replaceFault(path), QString());
    struct stat there {};
    ASSERT_EQ(stat(QFile::encodeName(path).constData(), &there), 0);
    EXPECT_EQ(there.st_mode & 0777U, mode);
  }
}

TEST(FileAccess, RemovingAFileThatIsNotThereIsNoFault) {
  const QTemporaryDir folder;
  EXPECT_NO_THROW(realFiles().remove(folder.filePath(u"none"_s)));
}

TEST(FileAccess, ContentIsTheSameOnlyByteForByte) {
  const QTemporaryDir folder;
  const QString a = folder.filePath(u"a"_s);
  const QString b = folder.filePath(u"b"_s);
  const QByteArray large(3 * (1 << 20) + 7, 'x');
  write(a, large);
  write(b, large);
  EXPECT_TRUE(sameContent(a, b));
  write(b, QByteArray(large).replace(2 * (1 << 20), 1, "y"));
  EXPECT_FALSE(sameContent(a, b));
  write(b, large.chopped(1));
  EXPECT_FALSE(sameContent(a, b));
  EXPECT_FALSE(sameContent(a, folder.filePath(u"none"_s)));
  EXPECT_FALSE(sameContent(folder.filePath(u"none"_s), folder.filePath(u"none"_s)));
}

TEST(FileAccess, ACopyHoldsTheWholeFile) {
  const QTemporaryDir folder;
  const QByteArray content = QByteArray(2 * (1 << 20), 'a') + "end";
  write(folder.filePath(u"a"_s), content);
  replaceByCopy(realFiles(), folder.filePath(u"a"_s), folder.filePath(u"b"_s));
  EXPECT_EQ(read(folder.filePath(u"b"_s)), content);
}

}  // namespace
}  // namespace elevenfive
