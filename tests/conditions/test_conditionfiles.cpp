#include "conditions/conditionfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "model/errors.h"
#include "tests/conditions/conditionfilesfixture.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultof.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

using Files = ConditionFilesTest;

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

TEST_F(Files, ImportOverTheSmallestAndTheLargestValueWrites) {
  exportSet();
  const QStringList saved = set();
  run("UPDATE 过滤条件 SET VALUE = -2147483648 WHERE ID = 1001");
  run("UPDATE 过滤条件 SET VALUE = 2147483647 WHERE ID = 1002");
  ASSERT_NE(set(), saved);
  EXPECT_TRUE(files.importConditions());
  EXPECT_EQ(ports.boxTexts(), QStringList{u"导入完成！"_s});
  EXPECT_EQ(set(), saved);
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

TEST_F(Files, TheCopyThatIsReadIsOneOfTheProgramsOwnFiles) {
  exportSet();
  const QString own = workspace.folders.temporary + u"/Temp_fuDaoru.mdb"_s;
  ASSERT_TRUE(QFile::copy(question.path, own));  // as an import leaves it whose process was ended
  EXPECT_TRUE(files.importConditions());
  EXPECT_FALSE(QFile::exists(own));
  question.path = own;
  EXPECT_THROW(files.exportConditions(today), FileError);
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

TEST_F(Files, AFactoryTableThatLostARowRestoresNothing) {
  changeEverything();
  const QStringList before = set();
  run("DELETE FROM 默认过滤条件使用情况 WHERE rowid = (SELECT MIN(rowid) FROM 默认过滤条件使用情况)");
  EXPECT_EQ(faultOf<StoreError>([&] { files.restoreDefaults(); }),
            u"数据库中的过滤条件有错误（数据表 默认过滤条件使用情况 的行数不符），请恢复备份。"_s);
  run("DELETE FROM 默认过滤条件 WHERE ID = 5");
  EXPECT_EQ(faultOf<StoreError>([&] { files.restoreDefaults(); }),
            u"数据库中的过滤条件有错误（数据表 默认过滤条件 的行数不符），请恢复备份。"_s);
  EXPECT_EQ(set(), before);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(Files, AStoreThatTakesNoChangesIsNotToldAsAFaultOfTheFile) {
  exportSet();
  changeEverything();
  const QStringList before = set();
  {
    const FilesNoLargerThan nothing(100);
    EXPECT_THROW(files.importConditions(), StoreError);
  }
  EXPECT_EQ(set(), before);
  ASSERT_TRUE(QDir(workspace.folders.temporary).removeRecursively());
  EXPECT_EQ(faultOf<StoreError>([&] { files.importConditions(); }),
            u"写入过滤条件失败：数据文件在运行中被删除或移动，请退出程序，以前的改动会保存。"_s);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(Files, AnImportWithinATransactionLeavesWhatThatHasWritten) {
  exportSet();
  const QStringList saved = set();
  changeEverything();
  {
    StoreTransaction outer(workspace.store());
    run("UPDATE 用户模式 SET 模式 = 2");
    EXPECT_TRUE(files.importConditions());
    outer.commit();
  }
  EXPECT_EQ(set(), saved);
  EXPECT_EQ(workspace.rows("SELECT 模式 FROM 用户模式"), QStringList{u"2"_s});
}

TEST_F(Files, AFactoryTableWithARowMoreRestoresNothingEither) {
  changeEverything();
  const QStringList before = set();
  run("INSERT INTO 默认过滤条件 (ID, VALUE) VALUES (9998, 1)");
  EXPECT_EQ(faultOf<StoreError>([&] { files.restoreDefaults(); }),
            u"数据库中的过滤条件有错误（数据表 默认过滤条件 的行数不符），请恢复备份。"_s);
  EXPECT_EQ(set(), before);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

TEST_F(Files, ATableOfOurOwnThatLostARowIsNotToldAsAFaultOfTheFile) {
  exportSet();
  run("DELETE FROM 过滤条件 WHERE ID = 1");
  const QStringList before = set();
  const QString sentence = u"数据库中的过滤条件有错误（数据表 过滤条件 的行数不符），请恢复备份。"_s;
  EXPECT_EQ(faultOf<StoreError>([&] { files.importConditions(); }), sentence);
  EXPECT_EQ(faultOf<StoreError>([&] { files.restoreDefaults(); }), sentence);
  EXPECT_EQ(set(), before);
  EXPECT_EQ(ports.boxTexts(), QStringList());
}

}  // namespace

}  // namespace elevenfive
