#include "conditions/conditionfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <functional>
#include <memory>

#include "conditions/conditionpanel.h"
#include "model/errors.h"
#include "model/store.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Answers with a fixed path and keeps what it was asked.
class FixedFile final : public FileQuestion {
 public:
  QString path;
  QStringList asked;
  std::function<void()> onAsked;
  QString OpenSaveDialog(const QString& action, const QString& title, const QString& extension, const QString& label,
                         const QString& defaultName) override {
    asked << QStringList{action, title, extension, label, defaultName}.join(u'|');
    if (onAsked)
      onAsked();
    return path;
  }
};

constexpr const char* setTables[] = {
    "SELECT * FROM 过滤条件 ORDER BY ID",
    "SELECT * FROM 过滤条件使用情况 ORDER BY 条件",
    "SELECT * FROM 号码特性 ORDER BY 号码",
    "SELECT * FROM 历史数据过滤",
};

class Files : public ::testing::Test {
 protected:
  QTemporaryDir folder;
  TestWorkspace workspace;
  RecordingPorts ports;
  ConditionPanel panel{workspace.store()};
  FixedFile question;
  QString templatePath = workspace.folders.program + u"/TJmode.tjmod"_s;
  ConditionFiles files{workspace.store(), panel, ports, ports, question, templatePath};
  const QDate today{2026, 3, 9};
  const QString formatError = u"文件格式错误无法导入数据！"_s;

  void SetUp() override { question.path = folder.filePath(u"set.Vorex"_s); }

  void run(const char* sql) { workspace.store().execute("test", sql); }

  QStringList set() {
    QStringList all;
    for (const char* sql : setTables)
      all << workspace.rows(sql);
    return all;
  }

  /// The rows of a statement on a file.
  static QStringList rowsOf(const QString& path, const char* sql) {
    Store store(path, StoreAccess::readOnly);
    QStringList lines;
    Statement statement = store.query("test", sql);
    while (statement.next()) {
      QStringList cells;
      for (int c = 0; c < statement.columnCount(); ++c)
        cells << statement.text(c);
      lines << cells.join(u' ');
    }
    return lines;
  }

  static QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  /// Gives every value of the set another one.
  void changeEverything() {
    run("UPDATE 过滤条件 SET VALUE = (VALUE + 1) % 3");
    run("UPDATE 过滤条件使用情况 SET 使用情况 = 1 - 使用情况");
    run("UPDATE 号码特性 SET 大数 = 1 - 大数, 区间1 = 1 - 区间1, 自定义组20 = 1, 第7位 = 1");
    run("UPDATE 历史数据过滤 SET 使用状态 = 0, 最小值 = 1, 最大值 = 2, 匹配值 = 3");
  }

  void exportSet() {
    ASSERT_TRUE(files.exportConditions(today));
    ports.boxes.clear();
    question.asked.clear();
  }

  /// Runs a script on the exported file.
  void alterFile(const std::string& script) {
    Store store(question.path, StoreAccess::readWrite);
    store.executeScript("test", script);
  }

  void expectFormatError() {
    EXPECT_TRUE(files.importConditions());
    ASSERT_EQ(ports.boxes.size(), 1U);
    EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
    EXPECT_EQ(ports.boxes[0].text, formatError);
  }
};

TEST_F(Files, ExportAsksAndTells) {
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(question.asked, QStringList{u"save|保存文件|Vorex|过滤条件|条件设置0309.Vorex"_s});
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(ports.boxes[0].text, u"导出完成！"_s);
}

TEST_F(Files, ExportedFileHoldsTheFourTables) {
  changeEverything();
  exportSet();
  for (const char* sql : setTables)
    EXPECT_EQ(rowsOf(question.path, sql), workspace.rows(sql)) << sql;
  EXPECT_EQ(rowsOf(question.path, "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table'"), QStringList{u"4"_s});
}

TEST_F(Files, WhatWasExportedComesBack) {
  changeEverything();
  const QStringList saved = set();
  exportSet();
  changeEverything();
  run("UPDATE 历史数据过滤 SET 最小值 = 77");
  ASSERT_NE(set(), saved);
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(set(), saved);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(question.asked, QStringList{u"open|选择文件|Vorex|过滤条件|"_s});
}

TEST_F(Files, ImportLeavesGroupNames) {
  exportSet();
  run("UPDATE 自定义别名 SET 别名 = 'x' WHERE 序号 = 3");
  files.importConditions();
  EXPECT_EQ(workspace.rows("SELECT 别名 FROM 自定义别名 WHERE 序号 = 3"), QStringList{u"x"_s});
}

TEST_F(Files, ImportOnlyReadsTheFile) {
  exportSet();
  const QByteArray before = bytesOf(question.path);
  files.importConditions();
  EXPECT_EQ(bytesOf(question.path), before);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"set.Vorex"_s});
}

TEST_F(Files, LostTemplateIsTold) {
  QFile::remove(templatePath);
  EXPECT_FALSE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"数据模板文件丢失无法导出，请重新安装！"_s});
  EXPECT_TRUE(question.asked.isEmpty());
}

TEST_F(Files, CancelledExportLeavesNoFileAndTheTemplateHoldsTheExportedStateAllTheSame) {
  changeEverything();
  question.path.clear();
  const QStringList scratchBefore = QDir(workspace.folders.temporary).entryList(QDir::Files);
  EXPECT_FALSE(files.exportConditions(today));
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
  EXPECT_EQ(QDir(workspace.folders.temporary).entryList(QDir::Files), scratchBefore);
  for (const char* sql : setTables)
    EXPECT_EQ(rowsOf(templatePath, sql), workspace.rows(sql)) << sql;
}

TEST_F(Files, TheExportedFileIsTheTemplateByteForByte) {
  changeEverything();
  exportSet();
  EXPECT_EQ(bytesOf(question.path), bytesOf(templatePath));
}

TEST_F(Files, TheTemplateIsFilledBeforeTheFileIsAskedFor) {
  changeEverything();
  question.onAsked = [&] { EXPECT_EQ(rowsOf(templatePath, setTables[3]), QStringList{u"0 1 2 3"_s}); };
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(question.asked.size(), 1);
}

TEST_F(Files, DamagedTemplateCountsAsLost) {
  QFile file(templatePath);
  ASSERT_TRUE(file.resize(file.size() / 2));
  const QByteArray before = bytesOf(templatePath);
  EXPECT_FALSE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"数据模板文件丢失无法导出，请重新安装！"_s});
  EXPECT_TRUE(question.asked.isEmpty());
  EXPECT_EQ(bytesOf(templatePath), before);
}

TEST_F(Files, TheProgramsOwnFilesAreNeverOverwritten) {
  for (const QString& own : {templatePath, workspace.folders.packedFile(), workspace.folders.workingFile()}) {
    question.path = own;
    EXPECT_THROW(files.exportConditions(today), FileError) << own.toStdString();
  }
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(Files, WithoutPackAndBackupANewNameIsStillNoneOfTheProgramsOwn) {
  ASSERT_TRUE(QFile::remove(workspace.folders.packedFile()));
  ASSERT_TRUE(QFile::remove(workspace.folders.backupFile()));
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导出完成！"_s});
}

TEST_F(Files, AFileOfTheScratchFilesNameSurvivesTheExport) {
  QFile mine(question.path + u".new"_s);
  ASSERT_TRUE(mine.open(QIODevice::WriteOnly));
  mine.write("notes");
  mine.close();
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(bytesOf(mine.fileName()), "notes");
  EXPECT_EQ(rowsOf(question.path, "SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(Files, TheExportGoesOnWhereTheTemporaryFolderWasCleared) {
  ASSERT_TRUE(QDir(workspace.folders.temporary).removeRecursively());
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导出完成！"_s});
}

TEST_F(Files, NoToTheOverwriteQuestionLeavesTheOldFile) {
  QFile file(question.path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("old");
  file.close();
  ports.answers = {Answer::no};
  EXPECT_FALSE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"要覆盖这个文件吗？"_s});
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::question);
  EXPECT_EQ(bytesOf(question.path), "old");
}

TEST_F(Files, YesToTheOverwriteQuestionReplacesIt) {
  QFile file(question.path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("old");
  file.close();
  ports.answers = {Answer::yes};
  EXPECT_TRUE(files.exportConditions(today));
  EXPECT_EQ(ports.boxTexts(), (QStringList{u"要覆盖这个文件吗？"_s, u"导出完成！"_s}));
  EXPECT_EQ(rowsOf(question.path, "SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(Files, FileThatCannotBeWrittenIsAFault) {
  question.path = folder.filePath(u"no/such/folder/set.Vorex"_s);
  EXPECT_THROW(files.exportConditions(today), FileError);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(Files, CancelledOrMissingImportEndsSilently) {
  const QStringList before = set();
  EXPECT_FALSE(files.importConditions());
  question.path.clear();
  EXPECT_FALSE(files.importConditions());
  question.path = folder.path();
  EXPECT_FALSE(files.importConditions());
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(set(), before);
}

TEST_F(Files, FileThatIsNoDatabaseIsRefused) {
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

TEST_F(Files, TruncatedFileIsRefused) {
  exportSet();
  QFile file(question.path);
  ASSERT_TRUE(file.resize(file.size() / 2));
  expectFormatError();
}

TEST_F(Files, DatabaseOfAnotherShapeIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER, 数值 INTEGER); INSERT INTO 过滤条件 VALUES (1, 1);");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(Files, TablesBeforeTheMissingOneStayCopied) {
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

TEST_F(Files, FewerRowsOverwriteTheFirstOnesOnly) {
  changeEverything();
  const QStringList before = workspace.rows(setTables[0]);
  exportSet();
  alterFile("DELETE FROM 过滤条件 WHERE ID > 3; UPDATE 过滤条件 SET VALUE = 9;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows(setTables[0]).first(3), (QStringList{u"1 9"_s, u"2 9"_s, u"3 9"_s}));
  EXPECT_EQ(workspace.rows(setTables[0]).sliced(3), before.sliced(3));
}

TEST_F(Files, RowsGoByPositionNotById) {
  exportSet();
  alterFile("UPDATE 过滤条件 SET ID = ID + 100000; UPDATE 过滤条件 SET VALUE = 7 WHERE ID = 100001;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1"), QStringList{u"7"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(Files, MoreRowsThanThereArePlacesForAreRefusedAfterTheCopy) {
  exportSet();
  alterFile("INSERT INTO 过滤条件 VALUES (20000, 1); UPDATE 过滤条件 SET VALUE = 7 WHERE ID = 1;");
  expectFormatError();
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1"), QStringList{u"7"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
}

TEST_F(Files, EmptyTablesOverwriteNothing) {
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

TEST_F(Files, AttributesGoByTheirPlaceWhateverTheirNames) {
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

TEST_F(Files, AttributesWithAColumnMoreOrLessAreRefusedAndTheTablesBeforeThemStayCopied) {
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

TEST_F(Files, ColumnNamesAreNotCaseSensitive) {
  run("UPDATE 过滤条件 SET VALUE = 2 WHERE ID = 1015");
  exportSet();
  alterFile("ALTER TABLE 过滤条件 RENAME COLUMN ID TO id; ALTER TABLE 过滤条件 RENAME COLUMN VALUE TO value;");
  run("UPDATE 过滤条件 SET VALUE = 0 WHERE ID = 1015");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 1015"), QStringList{u"2"_s});
}

TEST_F(Files, AFileInWriteAheadModeGetsNoFilesBesideIt) {
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

TEST_F(Files, WhatAnotherProgramLeftBesideAFileIsNoPartOfIt) {
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

TEST_F(Files, AnExportToANewNameTakesNothingAwayBesideIt) {
  QFile beside(question.path + u"-journal"_s);
  ASSERT_TRUE(beside.open(QIODevice::WriteOnly));
  beside.close();
  exportSet();
  EXPECT_TRUE(beside.exists());
}

TEST_F(Files, AnExportThroughALinkTakesAwayWhatStoodBesideItsTarget) {
  const QString target = folder.filePath(u"target.Vorex"_s);
  for (const QString& path : {target, target + u"-wal"_s, question.path + u"-wal"_s}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
  }
  ASSERT_TRUE(QFile::link(target, question.path));
  ASSERT_TRUE(files.exportConditions(today));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files, QDir::Name),
            (QStringList{u"set.Vorex"_s, u"set.Vorex-wal"_s, u"target.Vorex"_s}));
}

TEST_F(Files, AFileThatIsLockedIsReadAtOnce) {
  changeEverything();
  exportSet();
  const QStringList saved = set();
  Store other(question.path, StoreAccess::readWrite);
  other.executeScript("test", "BEGIN EXCLUSIVE");
  changeEverything();
  QElapsedTimer timer;
  timer.start();
  EXPECT_TRUE(files.importConditions());
  EXPECT_LT(timer.elapsed(), 1000);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(set(), saved);
}

TEST_F(Files, TheCopyThatIsReadIsOneOfTheProgramsOwnFiles) {
  exportSet();
  const QString own = workspace.folders.temporary + u"/Temp_fuDaoru.mdb"_s;
  ASSERT_TRUE(QFile::copy(question.path, own));  // as an import leaves it whose process was ended
  EXPECT_TRUE(files.importConditions());
  EXPECT_FALSE(QFile::exists(own));
  question.path = own;
  EXPECT_THROW(files.exportConditions(today), FileError);
}

TEST_F(Files, AFileThatMayOnlyBeReadIsRead) {
  exportSet();
  ASSERT_TRUE(QFile::setPermissions(question.path, QFile::ReadOwner));
  for (int time = 0; time < 2; ++time) {
    ports.boxes.clear();
    EXPECT_TRUE(files.importConditions());
    EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  }
}

TEST_F(Files, ViewInThePlaceOfATableIsRefused) {
  exportSet();
  alterFile("ALTER TABLE 过滤条件 RENAME TO t; CREATE VIEW 过滤条件 AS SELECT ID, 5 AS VALUE FROM t;");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(Files, ViewInThePlaceOfAnyTableIsRefusedAndTheTablesBeforeItStayCopied) {
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

TEST_F(Files, HugeFilesAreRefusedAtOnce) {
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
    EXPECT_LT(timer.elapsed(), 500);
    EXPECT_EQ(set(), before);
    QFile::remove(question.path);
  }
}

TEST_F(Files, ManyMoreRowsThanPlacesAreRefusedWithoutReadingThemAll) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER, VALUE INTEGER);"
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000)"
      "INSERT INTO 过滤条件 SELECT i, 1 FROM n;");
  QElapsedTimer timer;
  timer.start();
  expectFormatError();
  EXPECT_LT(timer.elapsed(), 2000);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*), MIN(VALUE), MAX(VALUE) FROM 过滤条件"), QStringList{u"1280 1 1"_s});
}

TEST_F(Files, FileCutAtAnyPlaceIsRefusedOrReadWhole) {
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

TEST_F(Files, NamesOfTheFileAreNeverStatements) {
  exportSet();
  alterFile(
      "CREATE TABLE \"x'; DELETE FROM 过滤条件; --\" (a); ALTER TABLE 过滤条件 ADD COLUMN \"y\"\"; DROP TABLE 日志表; "
      "--\" INTEGER; CREATE INDEX i ON 过滤条件 (VALUE);");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件"), QStringList{u"1280"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM sqlite_master WHERE name = '日志表'"), QStringList{u"1"_s});
}

TEST_F(Files, ComputedColumnIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE TABLE 过滤条件 (ID INTEGER PRIMARY KEY, VALUE INTEGER AS (ID + 5));"
      "INSERT INTO 过滤条件 (ID) VALUES (1);");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(Files, VirtualTableIsRefused) {
  exportSet();
  alterFile(
      "DROP TABLE 过滤条件; CREATE VIRTUAL TABLE 过滤条件 USING fts5(ID, VALUE);"
      "INSERT INTO 过滤条件 VALUES ('1', '1');");
  const QStringList before = set();
  expectFormatError();
  EXPECT_EQ(set(), before);
}

TEST_F(Files, TriggersOfTheFileDoNotRun) {
  exportSet();
  alterFile("CREATE TRIGGER t AFTER UPDATE ON 过滤条件 BEGIN DELETE FROM 过滤条件使用情况; END;");
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件使用情况"), QStringList{u"63"_s});
}

TEST_F(Files, ValuesThatAreNoWholeNumbersAreRefused) {
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

TEST_F(Files, RestoreBringsTheFactoryValues) {
  const QStringList uses = workspace.rows(setTables[1]);
  changeEverything();
  run("UPDATE 自定义别名 SET 别名 = '热号' WHERE 序号 = 20");
  files.restoreDefaults();
  EXPECT_EQ(workspace.rows(setTables[1]), uses);
  EXPECT_EQ(
      workspace.rows("SELECT a.ID FROM 过滤条件 a JOIN 默认过滤条件 b ON a.ID = b.ID WHERE a.VALUE <> b.VALUE AND "
                     "a.ID NOT BETWEEN 3800 AND 3899 AND a.ID NOT BETWEEN 4500 AND 4599"),
      QStringList{});
  EXPECT_EQ(workspace.rows("SELECT VALUE FROM 过滤条件 WHERE ID = 40"), QStringList{u"1"_s});
  EXPECT_EQ(workspace.rows("SELECT * FROM 历史数据过滤"), QStringList{u"1 5 2 4"_s});
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::plain);
  EXPECT_EQ(ports.boxes[0].text, u"全部过滤条件已还原为默认值！"_s);
}

TEST_F(Files, RestoreClearsTheGroups) {
  changeEverything();
  run("UPDATE 自定义别名 SET 别名 = '热号' WHERE 序号 = 20");
  files.restoreDefaults();
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 过滤条件 WHERE VALUE <> 0 AND (ID BETWEEN 3800 AND 3899 OR ID BETWEEN "
                           "4500 AND 4599)"),
            QStringList{u"0"_s});
  EXPECT_EQ(workspace.rows("SELECT 别名 FROM 自定义别名 WHERE 序号 = 20"), QStringList{u"自定义组20"_s});
  EXPECT_EQ(workspace.rows("SELECT SUM(自定义组20) FROM 号码特性"), QStringList{u"0"_s});
}

TEST_F(Files, RestoreLeavesZonesAndPositions) {
  changeEverything();
  files.restoreDefaults();
  EXPECT_EQ(workspace.rows("SELECT SUM(第7位) FROM 号码特性"), QStringList{u"11"_s});
}

/// What an action threw as a fault of the main database's own tables.
template <class Action>
QString ownFaultOf(const Action& action) {
  try {
    action();
  } catch (const StoreError& fault) {
    return fault.message();
  }
  return u"no fault"_s;
}

TEST_F(Files, AFactoryTableThatLostARowRestoresNothing) {
  changeEverything();
  const QStringList before = set();
  run("DELETE FROM 默认过滤条件使用情况 WHERE rowid = (SELECT MIN(rowid) FROM 默认过滤条件使用情况)");
  EXPECT_EQ(ownFaultOf([&] { files.restoreDefaults(); }),
            u"数据库中的过滤条件有错误（数据表 默认过滤条件使用情况 的行数不符），请恢复备份。"_s);
  run("DELETE FROM 默认过滤条件 WHERE ID = 5");
  EXPECT_EQ(ownFaultOf([&] { files.restoreDefaults(); }),
            u"数据库中的过滤条件有错误（数据表 默认过滤条件 的行数不符），请恢复备份。"_s);
  EXPECT_EQ(set(), before);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(Files, ATableOfOurOwnThatLostARowIsNotToldAsAFaultOfTheFile) {
  exportSet();
  run("DELETE FROM 过滤条件 WHERE ID = 1");
  const QStringList before = set();
  const QString sentence = u"数据库中的过滤条件有错误（数据表 过滤条件 的行数不符），请恢复备份。"_s;
  EXPECT_EQ(ownFaultOf([&] { files.importConditions(); }), sentence);
  EXPECT_EQ(ownFaultOf([&] { files.restoreDefaults(); }), sentence);
  EXPECT_EQ(set(), before);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

}  // namespace

}  // namespace elevenfive
