#include "model/folderlock.h"

#include <sys/stat.h>

#include <optional>
#include <utility>

#include "tests/model/datalife.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultof.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

using FolderLocks = DataLife;

/// Takes the right to write into a folder from everybody, for the length of a scope.
class ReadOnlyFolder final {
 public:
  explicit ReadOnlyFolder(const QString& folder) : folder_(QFile::encodeName(folder)) { set(0555); }
  ~ReadOnlyFolder() { set(0755); }
  ReadOnlyFolder(const ReadOnlyFolder&) = delete;
  ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

 private:
  void set(mode_t mode) const { EXPECT_EQ(chmod(folder_.constData(), mode), 0); }
  QByteArray folder_;
};

TEST_F(FolderLocks, AMissingFolderIsNamed) {
  const QString none = folder.filePath(u"none"_s);
  EXPECT_EQ(faultOf<Error>([&] { const FolderLock lock(none); }), u"找不到文件夹 %1。"_s.arg(none));
}

TEST_F(FolderLocks, ALockIsGoneWithItsObject) {
  {
    const FolderLock lock(folders.program);
    EXPECT_THROW(const FolderLock second(folders.program), AlreadyRunning);
  }
  EXPECT_NO_THROW(const FolderLock third(folders.program));
  EXPECT_FALSE(QFile::exists(folders.program + u"/elevenfive.lock"_s));
}

TEST_F(FolderLocks, ALockWhoseFileWasRemovedLeavesTheFileOfTheNextOne) {
  const QString file = folders.program + u"/elevenfive.lock"_s;
  std::optional<FolderLock> first(std::in_place, folders.program);
  ASSERT_TRUE(QFile::remove(file));
  const FolderLock second(folders.program);
  first.reset();
  EXPECT_TRUE(QFile::exists(file));
  EXPECT_THROW(const FolderLock third(folders.program), AlreadyRunning);
}

TEST_F(FolderLocks, TheInstanceOfAnotherUserOfTheSystemIsASecondInstance) {
  const mode_t mask = umask(077);
  const FolderLock held(folders.program);
  umask(mask);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  EXPECT_EQ(faultOf<Error>([&] { Workspace workspace(folders); }), u"程序正在运行,不允许同时打开多个!!!"_s);
  const ReadOnlyFolder readOnly(folders.program);
  EXPECT_THROW(const FolderLock second(folders.program), AlreadyRunning);
}

TEST_F(FolderLocks, ALockFileThatAnotherUserHasLeftLocksAgain) {
  const QString file = folders.program + u"/elevenfive.lock"_s;
  write(file, {});
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0444), 0);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  {
    const FolderLock lock(folders.program);
    EXPECT_THROW(const FolderLock second(folders.program), AlreadyRunning);
  }
  write(file, {});
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0444), 0);
  const ReadOnlyFolder readOnly(folders.program);
  EXPECT_EQ(faultOf<Error>([&] { const FolderLock lock(folders.program); }),
            u"无法在文件夹 %1 中写入文件。"_s.arg(folders.program));
}

TEST_F(FolderLocks, ALockFileThatMayNotBeReadIsNamed) {
  const QString file = folders.program + u"/elevenfive.lock"_s;
  write(file, {});
  ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0000), 0);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  EXPECT_EQ(faultOf<Error>([&] { const FolderLock lock(folders.program); }),
            u"文件 %1 属于其他用户，不能打开；请先关闭该用户的程序，或删除这个文件。"_s.arg(file));
}

TEST_F(FolderLocks, AFolderThatMayNotBeWrittenEndsTheStartWithOneSentence) {
  runWriting(7);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  const QString sentence = u"无法在文件夹 %1 中写入文件。"_s;
  for (const QString& closed : {folders.program, folders.temporary}) {
    const QByteArray pack = read(folders.packedFile());
    {
      const ReadOnlyFolder readOnly(closed);
      EXPECT_EQ(faultOf<Error>([&] { Workspace workspace(folders); }), sentence.arg(closed));
      EXPECT_EQ(faultOf<Error>([&] { Workspace::create(folders, true); }), sentence.arg(closed));
    }
    EXPECT_EQ(read(folders.packedFile()), pack);
    EXPECT_FALSE(QFile::exists(folders.workingFile()));
  }
  EXPECT_EQ(nextStart(), 7);
}

TEST_F(FolderLocks, AFolderThatMayNoLongerBeWrittenAtTheCloseKeepsTheWork) {
  runWriting(7);
  QDir(folders.bakFolder()).removeRecursively();
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  const QByteArray pack = read(folders.packedFile());
  Workspace workspace(folders, {&unflushed, {}});
  setValue(workspace.gConn, 8);
  {
    const ReadOnlyFolder readOnly(folders.program);
    EXPECT_EQ(faultOf<Error>([&] { workspace.close(); }),
              u"无法建立文件夹 %1。本次的改动没有写回数据文件，还保存在 %2 中。"_s.arg(folders.bakFolder(),
                                                                                       folders.workingFile()));
  }
  EXPECT_EQ(read(folders.packedFile()), pack);
  workspace.close();
  EXPECT_EQ(nextStart(), 8);
}

}  // namespace
}  // namespace elevenfive
