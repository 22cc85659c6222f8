// What the store does with files that are none, that may not be written, and with a disk that is full.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <string>

#include "model/compaction.h"
#include "model/errors.h"
#include "model/schema.h"
#include "model/store.h"
#include "tests/support/diskfaults.h"
#include "tests/support/sharedpages.h"
#include "tests/support/slowness.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

template <typename Call>
std::string faultOf(Call&& call) {
  try {
    call();
  } catch (const Error& fault) {
    return fault.message().toStdString();
  }
  return "no fault";
}

class StoreFiles : public ::testing::Test {
 protected:
  QString path(const QString& name) { return folder.filePath(name); }

  QString write(const QString& name, const QByteArray& bytes) {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path(name);
  }

  QString createTemplate(const QString& name) {
    Store store(path(name), StoreAccess::create);
    createSchema(store, StoreKind::conditionTemplate);
    return path(name);
  }

  static QByteArray bytesOf(const QString& file) {
    QFile f(file);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly));
    return f.readAll();
  }

  static std::string openingFault(const QString& file, StoreAccess access = StoreAccess::readWrite) {
    return faultOf([&] { const Store store(file, access); });
  }

  static std::string sentence(const QString& reason, const QString& file) {
    return u"打开数据文件失败：%1（%2）。"_s.arg(reason, file).toStdString();
  }

  QTemporaryDir folder;
};

TEST_F(StoreFiles, AMissingFileIsNotMadeByOpening) {
  EXPECT_EQ(openingFault(path(u"缺.dat"_s)), sentence(u"找不到文件"_s, path(u"缺.dat"_s)));
  EXPECT_EQ(openingFault(path(u"缺.dat"_s), StoreAccess::readOnly), sentence(u"找不到文件"_s, path(u"缺.dat"_s)));
  EXPECT_FALSE(QFile::exists(path(u"缺.dat"_s)));
}

TEST_F(StoreFiles, AFolderIsNoFile) {
  EXPECT_EQ(openingFault(folder.path()), sentence(u"找不到文件"_s, folder.path()));
  EXPECT_EQ(openingFault(folder.path(), StoreAccess::create),
            sentence(u"文件无法打开，或无法在它的文件夹中写入"_s, folder.path()));
}

TEST_F(StoreFiles, NothingIsMadeInAMissingFolder) {
  const QString file = path(u"缺/新.dat"_s);
  EXPECT_EQ(openingFault(file, StoreAccess::create), sentence(u"文件无法打开，或无法在它的文件夹中写入"_s, file));
}

TEST_F(StoreFiles, BinaryGarbageIsNoDatabaseAndStaysAsItIs) {
  QByteArray garbage;
  for (int i = 0; i < 20000; ++i)
    garbage += static_cast<char>((i * 7919) >> 3);
  const QString file = write(u"乱.dat"_s, garbage);
  for (const StoreAccess access : {StoreAccess::readOnly, StoreAccess::readWrite, StoreAccess::create})
    EXPECT_EQ(openingFault(file, access), sentence(u"文件不是有效的数据库"_s, file));
  EXPECT_EQ(bytesOf(file), garbage);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"乱.dat"_s});
}

TEST_F(StoreFiles, AFewBytesOfTextAreNoDatabase) {
  const QString file = write(u"文.dat"_s, "11031510 01 02 03 04 05\r\n");
  EXPECT_EQ(openingFault(file), sentence(u"文件不是有效的数据库"_s, file));
}

TEST_F(StoreFiles, ADatabaseThatIsCutOffIsDamaged) {
  const QByteArray whole = bytesOf(createTemplate(u"整.dat"_s));
  const QString file = write(u"断.dat"_s, whole.first(whole.size() / 2));
  EXPECT_EQ(openingFault(file), sentence(u"数据库已损坏"_s, file));
}

TEST_F(StoreFiles, ASchemaWithoutAnEndIsDamaged) {
  // The second row of a schema costs most where it is long and its statement breaks off at its end.
  const std::string longRow =
      "CREATE TABLE a(b); PRAGMA writable_schema = ON; UPDATE sqlite_master SET sql = 'CREATE TABLE a(b CHECK(b IN (' "
      "|| "
      "replace(hex(zeroblob(7000)), '00', '1,') || '1))!'";
  for (const std::string& script : {std::string("CREATE TABLE a(b)"), longRow}) {
    QFile::remove(path(u"小.dat"_s));
    makeSmallPages(path(u"小.dat"_s), script);
    const QString file = write(u"无尽.dat"_s, withSharedPages(bytesOf(path(u"小.dat"_s)), 1));
    for (const StoreAccess access : {StoreAccess::readOnly, StoreAccess::readWrite}) {
      QElapsedTimer timer;
      timer.start();
      EXPECT_EQ(openingFault(file, access), sentence(u"数据库已损坏"_s, file));
      EXPECT_LT(timer.elapsed(), 5000 * slowness);
    }
    EXPECT_THROW(checkDatabase(file, StoreKind::main), DamagedData);
  }
}

TEST_F(StoreFiles, ATableWithoutAnEndIsDamaged) {
  const QString honest = path(u"小.dat"_s);
  {
    Store store(honest, StoreAccess::create);
    store.executeScript("test", smallestPages);
    createSchema(store, StoreKind::conditionTemplate);
    store.executeScript("test", "DELETE FROM 过滤条件");
  }
  const int root =
      *Store(honest, StoreAccess::readOnly).value("test", "SELECT rootpage FROM sqlite_master WHERE name = '过滤条件'");
  const QString file = write(u"无尽.dat"_s, withSharedPages(bytesOf(honest), root));
  EXPECT_NO_THROW(checkDatabase(honest, StoreKind::conditionTemplate));
  EXPECT_THROW(checkDatabase(file, StoreKind::conditionTemplate), DamagedData);
}

TEST_F(StoreFiles, AnEmptyFileOpensButLacksEveryTable) {
  Store store(write(u"空.dat"_s, {}), StoreAccess::readWrite);
  EXPECT_EQ(faultOf([&] { checkSchema(store, StoreKind::conditionTemplate); }),
            "数据文件不完整，缺少：过滤条件、过滤条件使用情况、号码特性、历史数据过滤。");
}

TEST_F(StoreFiles, AReadOnlyStoreRefusesEveryWrite) {
  Store store(createTemplate(u"模.dat"_s), StoreAccess::readOnly);
  EXPECT_EQ(faultOf([&] { store.execute("写入条件", "UPDATE 过滤条件 SET VALUE = 0"); }),
            "写入条件失败：数据文件是只读的。");
  EXPECT_EQ(faultOf([&] { store.execute("建立数据表", "CREATE TABLE x (a) "); }), "建立数据表失败：数据文件是只读的。");
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 过滤条件"), 1280);
}

TEST_F(StoreFiles, AFileThatAnotherProgramWritesIsBusy) {
  const QString file = createTemplate(u"忙.dat"_s);
  Store other(file, StoreAccess::readWrite);
  Store store(file, StoreAccess::readWrite);
  store.executeScript("test", "PRAGMA busy_timeout = 0");
  other.executeScript("test", "BEGIN EXCLUSIVE");
  EXPECT_EQ(faultOf([&] { store.execute("写入条件", "UPDATE 过滤条件 SET VALUE = 0"); }),
            "写入条件失败：数据文件正被其他程序使用。");
  other.executeScript("test", "COMMIT");
  EXPECT_EQ(store.execute("写入条件", "UPDATE 过滤条件 SET VALUE = 0"), 1280);
}

TEST_F(StoreFiles, AFileWithoutTheRightToWriteIsRefusedForWritingOnly) {
  const QString file = createTemplate(u"只读.dat"_s);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  ASSERT_EQ(chmod(file.toLocal8Bit().constData(), 0444), 0);
  EXPECT_EQ(openingFault(file), sentence(u"数据文件是只读的"_s, file));
  Store store(file, StoreAccess::readOnly);
  EXPECT_NO_THROW(checkSchema(store, StoreKind::conditionTemplate));
}

TEST_F(StoreFiles, AFileThatMayNotBeReadIsRefused) {
  const QString file = createTemplate(u"秘.dat"_s);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  ASSERT_EQ(chmod(file.toLocal8Bit().constData(), 0), 0);
  EXPECT_EQ(openingFault(file), sentence(u"文件无法打开，或无法在它的文件夹中写入"_s, file));
}

TEST_F(StoreFiles, InAFolderWithoutTheRightToWriteNothingIsHalfWritten) {
  const QString file = createTemplate(u"夹.dat"_s);
  QFile::remove(file + u"-journal"_s);  // one that stands there already could be written
  const QByteArray before = bytesOf(file);
  const OrdinaryUser user(folder.path());
  if (!OrdinaryUser::isBound())
    GTEST_SKIP() << "root cannot become an ordinary user here";
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0555), 0);
  Store store(file, StoreAccess::readWrite);  // the file itself may be written, but no journal beside it
  const std::string fault = faultOf([&] { store.execute("写入条件", "UPDATE 过滤条件 SET VALUE = 0"); });
  const std::string made = openingFault(path(u"新.dat"_s), StoreAccess::create);
  ASSERT_EQ(chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
  EXPECT_EQ(fault, "写入条件失败：数据文件的文件夹不允许写入。");
  EXPECT_EQ(made, sentence(u"文件无法打开，或无法在它的文件夹中写入"_s, path(u"新.dat"_s)));
  EXPECT_EQ(bytesOf(file), before);
}

// A full disk.

class FullDisk : public StoreFiles {
 protected:
  FullDisk() : store(createTemplate(u"满.dat"_s), StoreAccess::readWrite) {
    store.execute("test", "CREATE TABLE t (a INTEGER PRIMARY KEY, c TEXT) STRICT");
    store.execute("test", "INSERT INTO t VALUES (1, 'before')");
  }

  /// Leaves room for some pages more.
  void fill() {
    const int pages = store.value("test", "PRAGMA page_count").value_or(0);
    store.executeScript("test", "PRAGMA max_page_count = " + std::to_string(pages + 3));
  }
  void makeRoom() { store.executeScript("test", "PRAGMA max_page_count = 1000000"); }

  /// Writes rows until the disk is full.
  void writeUntilFull(OnFault onFault) {
    const StoreTransaction transaction(store, onFault);
    Statement insert = store.query("写入记录", "INSERT INTO t VALUES (?, ?)");
    for (int row = 2; row < 1000; ++row)
      insert.run(row, QString(500, u'号'));
  }

  void expectWhole() {
    EXPECT_FALSE(store.inTransaction());
    Statement check = store.query("test", "PRAGMA integrity_check");
    ASSERT_TRUE(check.next());
    EXPECT_EQ(check.text(0), u"ok"_s);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM 过滤条件"), 1280);
    EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t WHERE a = 1 AND c = 'before'"), 1);
  }

  Store store;
};

TEST_F(FullDisk, IsSaidInPlainWords) {
  fill();
  EXPECT_EQ(faultOf([&] { writeUntilFull(OnFault::undo); }), "写入记录失败：磁盘空间已满。");
}

TEST_F(FullDisk, LeavesNothingHalfWritten) {
  fill();
  EXPECT_THROW(writeUntilFull(OnFault::undo), StoreError);
  expectWhole();
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t"), 1);
}

TEST_F(FullDisk, UndoesTheWholePassAlsoWhereItsRowsWereToBeKept) {
  fill();
  EXPECT_THROW(writeUntilFull(OnFault::keep), StoreError);
  expectWhole();
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t"), 1);
}

TEST_F(FullDisk, KeepsTheRowsThatWereCommittedBefore) {
  fill();
  {
    StoreTransaction transaction(store);
    store.execute("写入记录", "INSERT INTO t VALUES (2, 'kept')");
    transaction.commit();
  }
  EXPECT_THROW(store.execute("写入记录", "INSERT INTO t VALUES (3, ?)", QString(50'000, u'号')), StoreError);
  expectWhole();
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t"), 2);
}

TEST_F(FullDisk, IsNotTakenForDoneByACommitBehindIt) {
  fill();
  StoreTransaction transaction(store);
  try {
    for (int row = 2; row < 1000; ++row)
      store.execute("写入记录", "INSERT INTO t VALUES (?, ?)", row, QString(500, u'号'));
    FAIL() << "the disk is not full";
  } catch (const StoreError&) {
  }
  EXPECT_EQ(faultOf([&] { transaction.commit(); }), "保存数据失败：前面的写入出错，已全部撤销。");
}

TEST_F(FullDisk, TheStoreWorksOnWhenThereIsRoomAgain) {
  fill();
  EXPECT_THROW(writeUntilFull(OnFault::undo), StoreError);
  makeRoom();
  EXPECT_NO_THROW(writeUntilFull(OnFault::undo));
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t"), 999);
}

class FailingDisk : public FullDisk, public ::testing::WithParamInterface<OnFault> {};

TEST_P(FailingDisk, ACommitThatCannotBeWrittenIsToldAndUndone) {
  std::string fault;
  {
    const FilesNoLargerThan limit(QFile(store.path()).size());
    fault = faultOf([&] {
      StoreTransaction transaction(store, GetParam());
      Statement insert = store.query("写入记录", "INSERT INTO t VALUES (?, ?)");
      for (int row = 2; row < 200; ++row)  // stays in the cache until the commit
        insert.run(row, QString(500, u'号'));
      transaction.commit();
    });
  }
  EXPECT_EQ(fault, "保存数据失败：读写磁盘出错。");
  expectWhole();
  EXPECT_EQ(store.value("test", "SELECT COUNT(*) FROM t"), 1);
  Store again(store.path(), StoreAccess::readOnly);
  EXPECT_EQ(again.value("test", "SELECT COUNT(*) FROM t"), 1);
}

INSTANTIATE_TEST_SUITE_P(UndoOrKeep, FailingDisk, ::testing::Values(OnFault::undo, OnFault::keep));

TEST_F(FullDisk, AStoreThatCannotBeMadeWholeIsNotMadeAtAll) {
  Store fresh(path(u"新.dat"_s), StoreAccess::create);
  fresh.executeScript("test", "PRAGMA max_page_count = 10");
  EXPECT_THROW(createSchema(fresh, StoreKind::main), StoreError);
  EXPECT_EQ(fresh.value("test", "SELECT COUNT(*) FROM sqlite_master"), 0);
}

}  // namespace
}  // namespace elevenfive
