// Files of unknown origin: whatever they are, they are read or refused, and what the rule lets them change is all they change.
#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include "model/store.h"
#include "tests/conditions/conditionfilesfixture.h"
#include "tests/support/sharedpages.h"
#include "tests/support/slowness.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

using ForeignFiles = ConditionFilesTest;

TEST_F(ForeignFiles, FileThatIsNoDatabaseIsRefused) {
  for (const QByteArray& content : {QByteArray(), QByteArray("not a database at all"), QByteArray(100000, '\xFF'),
                                    QByteArray("SQLite format 3\0", 16) + QByteArray(5000, '\x01')}) {
    QFile file(question.path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    const QStringList before = set();
    ports.boxes.clear();
    expectFormatError();
    EXPECT_EQ(set(), before);
  }
}

TEST_F(ForeignFiles, TruncatedFileIsRefused) {
  exportSet();
  QFile file(question.path);
  ASSERT_TRUE(file.resize(file.size() / 2));
  expectFormatError();
}

TEST_F(ForeignFiles, DatabaseOfAnotherShapeIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER, 数值 INTEGER); INSERT INTO 过滤条件 VALUES (1, 1);");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(ForeignFiles, TablesBeforeTheMissingOneStayCopied) {
  run("UPDATE 过滤条件 SET VALUE = 2 WHERE ID = 1015");
  run("UPDATE 历史数据过滤 SET 匹配值 = 2");
  exportSet();
  alterFile("DROP TABLE 历史数据过滤;");
  run("UPDATE 过滤条件 SET VALUE = 0 WHERE ID = 1015");
  run("UPDATE 历史数据过滤 SET 匹配值 = 3");
  expectFormatError();
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1015"), QStringList{u"2"_s});
  EXPECT_EQ(workspace.rows("SELECT 匹配值 FROM 历史数据过滤"), QStringList{u"3"_s});
}

TEST_F(ForeignFiles, FewerRowsOverwriteTheFirstOnesOnly) {
  changeEverything();
  const QStringList before = workspace.rows(setTables[0]);
  exportSet();
  alterFile("DELETE FROM 过滤条件 WHERE ID > 3; UPDATE 过滤条件 SET VALUE = 9;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows(setTables[0]).first(3), (QStringList{u"1 9"_s, u"2 9"_s, u"3 9"_s}));
  EXPECT_EQ(workspace.rows(setTables[0]).sliced(3), before.sliced(3));
}

TEST_F(ForeignFiles, RowsGoByPositionNotById) {
  exportSet();
  alterFile("UPDATE 过滤条件 SET ID = ID + 100000; UPDATE 过滤条件 SET VALUE = 7 WHERE ID = 100001;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1"), QStringList{u"7"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(ForeignFiles, MoreRowsThanThereArePlacesForAreRefusedAfterTheCopy) {
  exportSet();
  alterFile("INSERT INTO 过滤条件 VALUES (20000, 1); UPDATE 过滤条件 SET VALUE = 7 WHERE ID = 1;");
  expectFormatError();
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1"), QStringList{u"7"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(ForeignFiles, EmptyTablesOverwriteNothing) {
  changeEverything();
  exportSet();
  alterFile("DELETE FROM 过滤条件; DELETE FROM 历史数据过滤; UPDATE 过滤条件使用情况 SET 使用情况 = 1;");
  run("UPDATE 过滤条件 SET VALUE = 2 WHERE ID = 1015");
  const QStringList values = workspace.rows(setTables[0]);
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows(setTables[0]), values);
  EXPECT_EQ(workspace.rows(setTables[3]), QStringList{u"0 1 2 3"_s});
  EXPECT_EQ(workspace.rows("SELECT SUM(使用情况) FROM 过滤条件使用情况"), QStringList{u"63"_s});
}

TEST_F(ForeignFiles, AttributesGoByTheirPlaceWhateverTheirNames) {
  run("UPDATE 号码特性 SET 自定义组1 = 1 WHERE 号码 = 7");
  exportSet();
  alterFile(
      "ALTER TABLE 号码特性 RENAME COLUMN 自定义组1 TO \"a\"\"b, 'c\"; ALTER TABLE 号码特性 RENAME COLUMN \"INDEX\" TO "
      "k;");
  run("UPDATE 号码特性 SET 自定义组1 = 0");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT 号码 FROM 号码特性 WHERE 自定义组1 = 1"), QStringList{u"7"_s});
}

TEST_F(ForeignFiles, AttributesWithAColumnMoreOrLessAreRefusedAndTheTablesBeforeThemStayCopied) {
  for (const char* script :
       {"ALTER TABLE 号码特性 ADD COLUMN 多余 INTEGER", "ALTER TABLE 号码特性 DROP COLUMN 自定义组20"}) {
    ports.boxes.clear();
    run("UPDATE 过滤条件使用情况 SET 使用情况 = 1");
    exportSet();
    alterFile(script);
    run("UPDATE 过滤条件使用情况 SET 使用情况 = 0");
    run("UPDATE 号码特性 SET 自定义组1 = 1 - 自定义组1");
    const QStringList attributes = workspace.rows(setTables[2]);
    expectFormatError();
    EXPECT_EQ(workspace.rows("SELECT MIN(使用情况) FROM 过滤条件使用情况"), QStringList{u"1"_s});
    EXPECT_EQ(workspace.rows(setTables[2]), attributes);
    QFile::remove(question.path);
  }
}

TEST_F(ForeignFiles, ColumnNamesAreNotCaseSensitive) {
  run("UPDATE 过滤条件 SET VALUE = 2 WHERE ID = 1015");
  exportSet();
  alterFile("ALTER TABLE 过滤条件 RENAME COLUMN ID TO id; ALTER TABLE 过滤条件 RENAME COLUMN VALUE TO value;");
  run("UPDATE 过滤条件 SET VALUE = 0 WHERE ID = 1015");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1015"), QStringList{u"2"_s});
}

TEST_F(ForeignFiles, AFileInWriteAheadModeGetsNoFilesBesideIt) {
  changeEverything();
  exportSet();
  const QStringList saved = set();
  alterFile("PRAGMA journal_mode = WAL;");
  changeEverything();
  const QStringList temporary = QDir(workspace.folders.temporary).entryList(QDir::Files);
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(set(), saved);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"set.Vorex"_s});
  EXPECT_EQ(QDir(workspace.folders.temporary).entryList(QDir::Files), temporary);
}

TEST_F(ForeignFiles, WhatAnotherProgramLeftBesideAFileIsNoPartOfIt) {
  changeEverything();
  exportSet();
  const QStringList saved = set();
  for (const QString& suffix : {u"-journal"_s, u"-wal"_s}) {
    QFile beside(question.path + suffix);
    ASSERT_TRUE(beside.open(QIODevice::WriteOnly));
    beside.write("x");
  }
  changeEverything();
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(set(), saved);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 3);
  ASSERT_TRUE(files.exportConditions(today));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"set.Vorex"_s});
}

TEST_F(ForeignFiles, AFileThatIsLockedIsReadAtOnce) {
  changeEverything();
  exportSet();
  const QStringList saved = set();
  Store other(question.path, StoreAccess::readWrite);
  other.executeScript("test", "BEGIN EXCLUSIVE");
  changeEverything();
  QElapsedTimer timer;
  timer.start();
  EXPECT_TRUE(files.importConditions());
  EXPECT_LT(timer.elapsed(), 1000 * slowness);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(set(), saved);
}

TEST_F(ForeignFiles, AFileThatMayOnlyBeReadIsRead) {
  exportSet();
  ASSERT_TRUE(QFile::setPermissions(question.path, QFile::ReadOwner));
  for (int time = 0; time < 2; ++time) {
    ports.boxes.clear();
    EXPECT_TRUE(files.importConditions());
    EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  }
}

TEST_F(ForeignFiles, ViewInThePlaceOfATableIsRefused) {
  exportSet();
  alterFile("ALTER TABLE 过滤条件 RENAME TO t; CREATE VIEW 过滤条件 AS SELECT ID, 5 AS VALUE FROM t;");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(ForeignFiles, ViewInThePlaceOfAnyTableIsRefusedAndTheTablesBeforeItStayCopied) {
  const char* tables[] = {"过滤条件", "过滤条件使用情况", "号码特性", "历史数据过滤"};
  for (std::size_t i = 0; i < std::size(tables); ++i) {
    ports.boxes.clear();
    changeEverything();
    exportSet();
    const std::string table = tables[i];
    alterFile("ALTER TABLE " + table + " RENAME TO t; CREATE VIEW " + table + " AS SELECT * FROM t;");
    std::vector<QStringList> exported;
    for (const char* sql : setTables)
      exported.push_back(workspace.rows(sql));
    changeEverything();
    run("UPDATE 历史数据过滤 SET 匹配值 = 1");
    std::vector<QStringList> present;
    for (const char* sql : setTables)
      present.push_back(workspace.rows(sql));
    expectFormatError();
    for (std::size_t k = 0; k < std::size(tables); ++k)
      EXPECT_EQ(workspace.rows(setTables[k]), k < i ? exported[k] : present[k]) << tables[k] << " behind " << table;
    QFile::remove(question.path);
  }
}

TEST_F(ForeignFiles, HugeFilesAreRefusedAtOnce) {
  const QStringList before = set();
  for (const char* script : {"DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER, VALUE INTEGER);"
                             "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000000)"
                             "INSERT INTO 过滤条件 SELECT -i, 1 FROM n;",
                             "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER PRIMARY KEY, VALUE);"
                             "INSERT INTO 过滤条件 VALUES (1, zeroblob(100000000));"}) {
    ports.boxes.clear();
    exportSet();
    alterFile(script);
    QElapsedTimer timer;
    timer.start();
    expectFormatError();
    EXPECT_LT(timer.elapsed(), 500 * slowness);
    EXPECT_EQ(set(), before);
    QFile::remove(question.path);
  }
}

TEST_F(ForeignFiles, ManyMoreRowsThanPlacesAreRefusedWithoutReadingThemAll) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER, VALUE INTEGER);"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000)"
      "INSERT INTO 过滤条件 SELECT i, 1 FROM n;");
  QElapsedTimer timer;
  timer.start();
  expectFormatError();
  EXPECT_LT(timer.elapsed(), 2000 * slowness);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*), MIN(VALUE), MAX(VALUE) FROM 过滤条件"), QStringList{u"1280 1 1"_s});
}

TEST_F(ForeignFiles, ATableWithoutAnEndIsRefusedAtOnce) {
  const QString honest = folder.filePath(u"honest"_s);
  makeSmallPages(honest, "CREATE TABLE 过滤条件 (ID INTEGER, VALUE INTEGER); INSERT INTO 过滤条件 VALUES (1, 7);");
  for (const int root : {1, 2}) {  // the schema's and the table's
    QFile file(question.path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(withSharedPages(bytesOf(honest), root));
    file.close();
    const QStringList before = set();
    ports.boxes.clear();
    QElapsedTimer timer;
    timer.start();
    expectFormatError();
    EXPECT_LT(timer.elapsed(), 5000 * slowness);
    EXPECT_EQ(set(), before);
  }
}

TEST_F(ForeignFiles, FileCutAtAnyPlaceIsRefusedOrReadWhole) {
  changeEverything();
  exportSet();
  const QStringList saved = set();
  QFile file(question.path);
  const QByteArray whole = bytesOf(question.path);
  for (qsizetype size = 0; size < whole.size(); size += whole.size() / 40) {
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(whole.first(size));
    file.close();
    ports.boxes.clear();
    expectFormatError();
    EXPECT_EQ(set(), saved) << size;  // what was copied is what stands there already
  }
}

TEST_F(ForeignFiles, NamesOfTheFileAreNeverStatements) {
  exportSet();
  alterFile(
      "CREATE TABLE \"x'; DELETE FROM 过滤条件; --\" (a); ALTER TABLE 过滤条件 ADD COLUMN \"y\"\"; DROP TABLE 日志表; "
      "--\" INTEGER; CREATE INDEX i ON 过滤条件 (VALUE);");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM sqlite_master WHERE name = '日志表'"), QStringList{u"1"_s});
}

TEST_F(ForeignFiles, ComputedColumnIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER PRIMARY KEY, VALUE INTEGER AS (ID + 5));"
      "INSERT INTO 过滤条件 (ID) VALUES (1);");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(ForeignFiles, VirtualTableIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE VIRTUAL TABLE 过滤条件 USING fts5(ID, VALUE);"
      "INSERT INTO 过滤条件 VALUES ('1', '1');");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(ForeignFiles, TriggersOfTheFileDoNotRun) {
  exportSet();
  alterFile("CREATE TRIGGER t AFTER UPDATE ON 过滤条件 BEGIN DELETE FROM 过滤条件使用情况; END;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件使用情况"), QStringList{u"63"_s});
}

TEST_F(ForeignFiles, ValuesThatAreNoWholeNumbersAreRefused) {
  for (const char* value : {"'1); DROP TABLE 日志表; --'", "1.5", "NULL", "x'00'", "99999999999"}) {
    exportSet();
    alterFile(
        "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER PRIMARY KEY, VALUE); INSERT INTO 过滤条件 VALUES (1, "
        "6), "
        "(2, " +
        std::string(value) + ");");
    const auto second = workspace.rows("SELECT * FROM 过滤条件 WHERE ID >= 2 ORDER BY ID");
    expectFormatError();
    EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1"), QStringList{u"6"_s}) << value;
    EXPECT_EQ(workspace.rows("SELECT * FROM 过滤条件 WHERE ID >= 2 ORDER BY ID"), second) << value;
    ports.boxes.clear();
    QFile::remove(question.path);
  }
}

}  // namespace

}  // namespace elevenfive
