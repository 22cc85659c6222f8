#include "conditions/conditiontemplate.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "model/compaction.h"
#include "model/errors.h"
#include "model/store.h"
#include "tests/support/diskfaults.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class ConditionTemplate : public ::testing::Test {
 protected:
  TestWorkspace w;
  UnflushedFiles quick;
  QString path = w.folders.templateFile();

  void setValue(int value) { w.store().execute("test", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = 3900", value); }

  /// The value in the template, which must be whole.
  int filledValue() {
    checkDatabase(path, StoreKind::conditionTemplate);
    Store file(path, StoreAccess::readOnly);
    return file.value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = 3900").value_or(-1);
  }

  void change(const char* script) {
    Store file(path, StoreAccess::readWrite);
    file.executeScript("test", script);
  }

  QByteArray bytes() {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  QStringList scratchFiles() {
    return QDir(w.folders.temporary).entryList({u"Temp_*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
  }
};

TEST_F(ConditionTemplate, ItTakesTheConditionsAndLeavesNoScratch) {
  setValue(3);
  fillTemplate(w.store(), w.folders, quick);
  EXPECT_EQ(filledValue(), 3);
  setValue(4);
  fillTemplate(w.store(), w.folders, quick);
  EXPECT_EQ(filledValue(), 4);
  EXPECT_EQ(scratchFiles(), QStringList());
}

TEST_F(ConditionTemplate, ItIsCompacted) {
  change(
      "CREATE TABLE filler (a); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
      "INSERT INTO filler SELECT 'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx' FROM n; DROP TABLE filler;");
  const qint64 before = QFileInfo(path).size();
  fillTemplate(w.store(), w.folders, quick);
  EXPECT_LT(QFileInfo(path).size(), before - 100000);
}

TEST_F(ConditionTemplate, AMissingOrDamagedOneIsDamageAndStaysAsItIs) {
  for (const QByteArray& content : {QByteArray("no database"), QByteArray(), bytes().first(bytes().size() / 2)}) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    EXPECT_THROW(fillTemplate(w.store(), w.folders, quick), DamagedData);
    EXPECT_EQ(bytes(), content);
  }
  QFile::remove(path);
  EXPECT_THROW(fillTemplate(w.store(), w.folders, quick), DamagedData);
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(scratchFiles(), QStringList());
}

TEST_F(ConditionTemplate, ARowLessOrMoreInAnyTableIsDamageAndNothingIsWritten) {
  const QByteArray fresh = bytes();
  for (const char* script :
       {"DELETE FROM 过滤条件 WHERE ID = 1", "DELETE FROM 过滤条件使用情况 WHERE 条件 = 1",
        "DELETE FROM 号码特性 WHERE 号码 = 11", "DELETE FROM 历史数据过滤", "INSERT INTO 过滤条件 VALUES (99999, 0)",
        "INSERT INTO 过滤条件使用情况 VALUES (999, 0)", "INSERT INTO 历史数据过滤 VALUES (0, 0, 0, 0)"}) {
    change(script);
    const QByteArray changed = bytes();
    ASSERT_NE(changed, fresh) << script;
    EXPECT_THROW(fillTemplate(w.store(), w.folders, quick), DamagedData) << script;
    EXPECT_EQ(bytes(), changed) << script;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(fresh);
  }
}

TEST_F(ConditionTemplate, AFaultInTheDatabasesOwnRowsIsNotToldAsTheTemplates) {
  const QByteArray fresh = bytes();
  w.store().execute("test", "DELETE FROM 过滤条件 WHERE ID = 1");
  try {
    fillTemplate(w.store(), w.folders, quick);
    FAIL() << "filled";
  } catch (const StoreError& fault) {
    EXPECT_EQ(fault.message(), u"数据库中的过滤条件有错误（数据表 过滤条件 的行数不符），请恢复备份。"_s);
  }
  EXPECT_EQ(bytes(), fresh);
}

TEST_F(ConditionTemplate, AValueOfTheDatabaseThatNoFileCanHoldIsToldLikewise) {
  w.store().executeScript("test",
                          "DROP TABLE 历史数据过滤; CREATE TABLE 历史数据过滤 (使用状态, 最小值, 最大值, 匹配值);"
                          "INSERT INTO 历史数据过滤 VALUES (0, 0, 5000000000, 0);");
  const QByteArray fresh = bytes();
  EXPECT_THROW(fillTemplate(w.store(), w.folders, quick), StoreError);
  EXPECT_EQ(bytes(), fresh);
}

TEST_F(ConditionTemplate, AScratchCopyOfAnEndedRunDoesNotGetIntoIt) {
  for (const QString& name : {u"/Temp_user.uVorex"_s, u"/Temp_user.uVorex-journal"_s, u"/Temp_fuVorex.mdb"_s}) {
    QFile file(w.folders.temporary + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("left behind");
  }
  setValue(3);
  fillTemplate(w.store(), w.folders, quick);
  EXPECT_EQ(filledValue(), 3);
  EXPECT_EQ(scratchFiles(), QStringList());
}

TEST_F(ConditionTemplate, WhicheverStepFailsTheOldOneOrTheNewOneStandsWhole) {
  FaultyFiles disk;
  setValue(3);
  fillTemplate(w.store(), w.folders, quick);
  setValue(4);
  int step = 0;
  int failed = 0;
  for (bool done = false; !done; ++step) {
    disk.steps = 0;
    disk.failingStep = step;
    bool threw = false;
    try {
      fillTemplate(w.store(), w.folders, disk);
    } catch (const FileError&) {
      threw = true;
    }
    done = disk.steps <= step;
    failed += threw ? 1 : 0;
    const int found = filledValue();
    EXPECT_TRUE(found == 4 || (threw && found == 3)) << step << " found " << found;
  }
  EXPECT_EQ(filledValue(), 4);
  EXPECT_GE(failed, 10);
}

TEST_F(ConditionTemplate, WhicheverStepAProcessEndsAtTheOldOneOrTheNewOneStandsWhole) {
  int last = 2;
  setValue(last);
  fillTemplate(w.store(), w.folders, quick);
  int seenOld = 0;
  int seenNew = 0;
  int step = 0;
  for (bool done = false; !done; ++step) {
    setValue(last + 1);
    const pid_t child = ::fork();
    if (child == 0) {
      FaultyFiles disk;
      disk.failingStep = step;
      disk.kill = true;
      Store conditions(w.folders.workingFile(), StoreAccess::readOnly);
      fillTemplate(conditions, w.folders, disk);
      ::_exit(0);
    }
    ASSERT_GT(child, 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    done = WIFEXITED(status);
    const int found = filledValue();
    EXPECT_TRUE(found == last || found == last + 1) << "step " << step << " found " << found;
    ++(found == last ? seenOld : seenNew);
    fillTemplate(w.store(), w.folders, quick);  // as the next run does
    ++last;
    EXPECT_EQ(filledValue(), last) << step;
  }
  EXPECT_GE(seenOld, 8);
  EXPECT_GE(seenNew, 2);
}

TEST_F(ConditionTemplate, ADiskThatFillsLeavesTheOldOne) {
  setValue(3);
  fillTemplate(w.store(), w.folders, quick);
  setValue(4);
  const QByteArray before = bytes();
  {
    const FilesNoLargerThan nothing(100);
    EXPECT_THROW(fillTemplate(w.store(), w.folders, quick), Error);
  }
  EXPECT_EQ(bytes(), before);
  EXPECT_EQ(QDir(w.folders.program).entryList({u"*.new"_s}, QDir::Files), QStringList());
}

}  // namespace

}  // namespace elevenfive
