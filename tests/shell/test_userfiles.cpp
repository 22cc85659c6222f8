#include "shell/userfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "model/compaction.h"
#include "model/errors.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/sharedpages.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class UserFilesTest : public ::testing::Test {
 protected:
  TestWorkspace w;
  FaultyFiles disk;
  Workspace::Folders folders = w.workspace().folders();
  UserFiles files{w.store(), folders, disk};

  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  static void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  void setValue(int value) { w.store().execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value); }
  int value() { return w.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1); }
  QStringList userFiles() const { return QDir(folders.program).entryList({u"*.uVorex*"_s}, QDir::Files, QDir::Name); }
};

TEST(UserFileName, OrdinaryNamesAreFileNames) {
  for (const QString& name : {u"a"_s, u"张三"_s, u"John Smith"_s, u"o'Brien"_s, u"a.b"_s, u"COM"_s, u"COM10"_s,
                              u"console"_s, QString(50, u'名')})
    EXPECT_TRUE(isUserFileName(name)) << name.toStdString();
}

TEST(UserFileName, NamesThatWouldLeaveTheFolderAreNone) {
  for (const QString& name : {u""_s, u"."_s, u".."_s, u"../x"_s, u"a/b"_s, u"a\\b"_s, u"/etc"_s, u"C:"_s, u"..\\x"_s})
    EXPECT_FALSE(isUserFileName(name)) << name.toStdString();
}

TEST(UserFileName, ReservedCharactersAndNamesAreNone) {
  for (const QString& name :
       {u"a*"_s,   u"a?"_s,           u"\"a"_s,      u"<a"_s,  u"a>"_s,  u"a|b"_s,          u"a\nb"_s,
        u"a\tb"_s, u"a"_s + QChar(0), u"a\u202Eb"_s, u"con"_s, u"NUL"_s, u"nul.txt"_s,      u"Com1"_s,
        u"lpt9"_s, u".hidden"_s,      u"end."_s,     u" a"_s,  u"a "_s,  QString(51, u'名')})
    EXPECT_FALSE(isUserFileName(name)) << name.toStdString();
}

TEST_F(UserFilesTest, AFileBringsBackAllFourTables) {
  setValue(3);
  w.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 4 WHERE 条件 = 75");
  w.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 1 WHERE 号码 = 7");
  w.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 1, 最小值 = 2, 最大值 = 3, 匹配值 = 4");
  ASSERT_TRUE(files.save(u"张三"_s));
  setValue(9);
  w.store().execute("test", "UPDATE 过滤条件使用情况 SET 使用情况 = 0");
  w.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 0");
  w.store().execute("test", "UPDATE 历史数据过滤 SET 使用状态 = 0, 最小值 = 0, 最大值 = 0, 匹配值 = 0");
  ASSERT_TRUE(files.load(u"张三"_s));
  EXPECT_EQ(value(), 3);
  EXPECT_EQ(w.rows("SELECT 条件, 使用情况 FROM 过滤条件使用情况 WHERE 使用情况 = 4"), QStringList{u"75 4"_s});
  EXPECT_EQ(w.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1"), QStringList{u"7"_s});
  EXPECT_EQ(w.rows("SELECT * FROM 历史数据过滤"), QStringList{u"1 2 3 4"_s});
}

TEST_F(UserFilesTest, AFileIsACompleteDatabaseOfTheTemplatesTables) {
  ASSERT_TRUE(files.save(u"a"_s));
  EXPECT_NO_THROW(checkDatabase(files.path(u"a"_s), StoreKind::conditionTemplate));
  EXPECT_EQ(userFiles(), QStringList{u"a.uVorex"_s});
}

TEST_F(UserFilesTest, AFileIsTheTemplateByteForByte) {
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  EXPECT_EQ(read(files.path(u"a"_s)), read(folders.templateFile()));
  setValue(9);
  ASSERT_TRUE(QFile::remove(files.path(u"a"_s)) && QFile::copy(folders.templateFile(), files.path(u"a"_s)));
  ASSERT_TRUE(files.load(u"a"_s));
  EXPECT_EQ(value(), 3);
}

TEST_F(UserFilesTest, WhatTheTemplateHeldBeforeDoesNotGetIntoTheNextFile) {
  w.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 1");
  ASSERT_TRUE(files.save(u"a"_s));
  w.store().execute("test", "UPDATE 号码特性 SET 自定义组1 = 0");
  setValue(4);
  ASSERT_TRUE(files.save(u"b"_s));
  setValue(9);
  ASSERT_TRUE(files.load(u"b"_s));
  EXPECT_EQ(value(), 4);
  EXPECT_EQ(w.rows("SELECT SUM(自定义组1) FROM 号码特性"), QStringList{u"0"_s});
}

TEST_F(UserFilesTest, ATemplateWithARowTooManyMakesNoFile) {
  {
    Store store(folders.templateFile(), StoreAccess::readWrite);
    store.execute("test", "INSERT INTO 过滤条件 VALUES (99999, 0)");
  }
  EXPECT_FALSE(files.save(u"a"_s));
  EXPECT_EQ(userFiles(), QStringList());
}

TEST_F(UserFilesTest, AFaultInTheDatabasesOwnRowsBlamesNeitherTheFileNorTheTemplate) {
  ASSERT_TRUE(files.save(u"a"_s));
  w.store().execute("test", "DELETE FROM 过滤条件 WHERE ID = 1");
  EXPECT_THROW(files.save(u"a"_s), StoreError);
  EXPECT_THROW(files.load(u"a"_s), StoreError);
  EXPECT_EQ(userFiles(), QStringList{u"a.uVorex"_s});
}

TEST_F(UserFilesTest, WithoutTheTemplateNothingIsSaved) {
  QFile::remove(folders.templateFile());
  EXPECT_FALSE(files.save(u"a"_s));
  EXPECT_EQ(userFiles(), QStringList());
}

TEST_F(UserFilesTest, AMissingFileChangesNothing) {
  setValue(3);
  EXPECT_FALSE(files.load(u"nobody"_s));
  EXPECT_FALSE(files.load(u""_s));
  EXPECT_EQ(value(), 3);
}

TEST_F(UserFilesTest, ADamagedFileChangesNothingAndStaysUnderAnotherName) {
  setValue(3);
  write(files.path(u"a"_s), "no database");
  EXPECT_FALSE(files.load(u"a"_s));
  EXPECT_EQ(value(), 3);
  ASSERT_EQ(userFiles().size(), 1);
  EXPECT_TRUE(userFiles().first().startsWith(u"a.uVorex.damaged-"_s));
  EXPECT_EQ(read(folders.program + u'/' + userFiles().first()), "no database");
}

TEST_F(UserFilesTest, AFileThatCanNeverBeReadToItsEndIsDamaged) {
  const QString honest = folders.program + u"/honest"_s;
  makeSmallPages(honest, "CREATE TABLE 过滤条件 (ID INTEGER, VALUE INTEGER); INSERT INTO 过滤条件 VALUES (1, 7);");
  setValue(3);
  for (const int root : {1, 2}) {  // the schema's and the table's
    write(files.path(u"a"_s), withSharedPages(read(honest), root));
    EXPECT_FALSE(files.load(u"a"_s));
    EXPECT_EQ(value(), 3);
    EXPECT_FALSE(QFile::exists(files.path(u"a"_s)));
  }
}

TEST_F(UserFilesTest, AFileWithAnEmptyTableChangesNothing) {
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  {
    Store store(files.path(u"a"_s), StoreAccess::readWrite);
    store.execute("test", "DELETE FROM 历史数据过滤");  // the last of the four
  }
  setValue(9);
  EXPECT_FALSE(files.load(u"a"_s));
  EXPECT_EQ(value(), 9);
}

TEST_F(UserFilesTest, AFileWithARowLessOrMoreInAnyTableIsDamaged) {
  for (const char* change : {"DELETE FROM 过滤条件 WHERE ID = 1", "DELETE FROM 过滤条件使用情况 WHERE 条件 = 1",
                             "DELETE FROM 号码特性 WHERE 号码 = 11", "DELETE FROM 历史数据过滤",
                             "INSERT INTO 过滤条件 VALUES (9998, 0)", "INSERT INTO 历史数据过滤 VALUES (0, 0, 0, 0)"}) {
    setValue(3);
    ASSERT_TRUE(files.save(u"a"_s));
    {
      Store store(files.path(u"a"_s), StoreAccess::readWrite);
      ASSERT_EQ(store.execute("test", change), 1) << change;
    }
    setValue(9);
    EXPECT_FALSE(files.load(u"a"_s)) << change;
    EXPECT_EQ(value(), 9) << change;
    EXPECT_FALSE(QFile::exists(files.path(u"a"_s))) << change;
  }
}

TEST_F(UserFilesTest, AValueThatTheDatabaseCannotHoldIsDamage) {
  ASSERT_TRUE(files.save(u"a"_s));
  {
    Store store(files.path(u"a"_s), StoreAccess::readWrite);
    store.executeScript(
        "test",
        "DROP TABLE 号码特性; CREATE TABLE 号码特性 AS SELECT * FROM 历史数据过滤; DROP TABLE 历史数据过滤;"
        "CREATE TABLE 历史数据过滤 (使用状态 INT, 最小值 INT, 最大值 INT, 匹配值 INT);");
  }
  EXPECT_FALSE(files.load(u"a"_s));  // tables of another shape
  ASSERT_TRUE(files.save(u"a"_s));
  {
    Store store(files.path(u"a"_s), StoreAccess::readWrite);
    store.executeScript(
        "test",
        "DROP TABLE 历史数据过滤; CREATE TABLE 历史数据过滤 (使用状态 INT, 最小值 INT, 最大值 INT, 匹配值 INT);"
        "INSERT INTO 历史数据过滤 VALUES (0, 0, 5000000000, 0);");
  }
  setValue(9);
  EXPECT_FALSE(files.load(u"a"_s));
  EXPECT_EQ(value(), 9);
  EXPECT_EQ(userFiles().filter(u"damaged"_s).size(), 2);
}

TEST_F(UserFilesTest, ADiskThatFailsUnderTheDatabaseLeavesTheGoodFile) {
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  setValue(9);
  {
    const FilesNoLargerThan nothing(100);
    EXPECT_THROW(files.load(u"a"_s), StoreError);
  }
  EXPECT_EQ(value(), 9);
  EXPECT_EQ(userFiles(), QStringList{u"a.uVorex"_s});
  ASSERT_TRUE(files.load(u"a"_s));
  EXPECT_EQ(value(), 3);
}

TEST_F(UserFilesTest, AFileThatAnotherProgramHasStaysWhereItIs) {
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  setValue(9);
  {
    Store other(files.path(u"a"_s), StoreAccess::readWrite);
    other.executeScript("test", "BEGIN EXCLUSIVE");
    EXPECT_THROW(files.load(u"a"_s), StoreError);
  }
  EXPECT_EQ(value(), 9);
  EXPECT_EQ(userFiles(), QStringList{u"a.uVorex"_s});
  ASSERT_TRUE(files.load(u"a"_s));
  EXPECT_EQ(value(), 3);
}

TEST_F(UserFilesTest, WheneverTheDiskFillsTheOldFileOrTheNewOneStands) {
  const qint64 size = QFileInfo(folders.templateFile()).size();
  std::vector<qint64> places{0, 1, size - 1, size, size + 1, 2 * size - 1, 2 * size};
  for (qint64 place = 4099; place < 4 * size; place += size / 13)
    places.push_back(place);
  int failed = 0;
  for (const qint64 place : places) {
    disk.writableBytes = FaultyFiles::never;
    setValue(3);
    ASSERT_TRUE(files.save(u"a"_s));
    setValue(4);
    disk.writableBytes = place;
    bool done = false;
    try {
      done = files.save(u"a"_s);
    } catch (const FileError&) {
      ++failed;
    }
    setValue(0);
    ASSERT_TRUE(files.load(u"a"_s)) << place;
    EXPECT_EQ(value(), done ? 4 : 3) << place;
    EXPECT_EQ(userFiles(), QStringList{u"a.uVorex"_s}) << place;
  }
  EXPECT_GT(failed, 20);
}

TEST_F(UserFilesTest, AFileInTheWayOfANewOneIsSetAside) {
  EXPECT_EQ(files.setAside(u"a"_s), QString());
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  const QByteArray before = read(files.path(u"a"_s));
  const QString first = files.setAside(u"a"_s);
  EXPECT_TRUE(first.startsWith(files.path(u"a"_s) + u".old-"_s));
  EXPECT_EQ(read(first), before);
  EXPECT_FALSE(QFile::exists(files.path(u"a"_s)));
  ASSERT_TRUE(files.save(u"a"_s));
  EXPECT_NE(files.setAside(u"a"_s), first);
}

TEST_F(UserFilesTest, WhicheverStepFailsTheOldFileOrTheNewOneStands) {
  setValue(3);
  ASSERT_TRUE(files.save(u"a"_s));
  int steps = 0;
  for (bool done = false; !done; ++steps) {
    setValue(3);
    disk.failingStep = FaultyFiles::never;
    ASSERT_TRUE(files.save(u"a"_s));
    setValue(4);
    disk.steps = 0;
    disk.failingStep = steps;
    try {
      done = files.save(u"a"_s);
    } catch (const FileError&) {
    }
    disk.failingStep = FaultyFiles::never;
    setValue(0);
    ASSERT_TRUE(files.load(u"a"_s)) << steps;
    EXPECT_TRUE(value() == 3 || value() == 4) << steps;
    EXPECT_EQ(userFiles().filter(u"damaged"_s), QStringList()) << steps;
    EXPECT_NO_THROW(checkDatabase(folders.templateFile(), StoreKind::conditionTemplate)) << steps;
  }
  EXPECT_EQ(value(), 4);
  EXPECT_GT(steps, 8);
}

TEST_F(UserFilesTest, ANameThatCanHaveNoFileIsRefusedEverywhere) {
  EXPECT_FALSE(files.load(u"../x"_s));
  EXPECT_THROW(files.save(u"../x"_s), FileError);
  EXPECT_THROW(files.remove(u"../TJmode"_s), FileError);
  EXPECT_TRUE(QFile::exists(folders.templateFile()));
}

}  // namespace
}  // namespace elevenfive
