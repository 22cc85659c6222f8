#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QDate>

#include "history/historytable.h"
#include "history/textfiles.h"
#include "model/daycount.h"
#include "model/errors.h"
#include "tests/history/historytools.h"
#include "tests/history/slowhistory.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class TextImport : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  ImportDoubles doubles;

  void importBytes(const QByteArray& bytes, bool showMessage = true) {
    importHistoryText(workspace.store(), writeFile(workspace, bytes), showMessage, doubles.all());
  }

  QStringList draws() {
    return workspace.rows("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录 ORDER BY 期号");
  }
};

TEST_F(TextImport, StoresTheDrawsUnderTodaysDateAndDerivesThem) {
  importBytes("11031510 01 02 03 04 05\r\n11031511 06 04 03 02 01\r\n");
  EXPECT_EQ(draws(), (QStringList{u"11031510 1 2 3 4 5"_s, u"11031511 1 2 3 4 6"_s}));
  EXPECT_EQ(workspace.rows("SELECT 已完成, 和值, 重叠号, 温度值10 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"Y - - -"_s, u"Y 16 4 4"_s}));
  EXPECT_EQ(workspace.rows("SELECT DISTINCT CAST(开奖日期 AS INTEGER) FROM 历史记录"),
            QStringList{QString::number(dayCountOf(QDate::currentDate()))});
  EXPECT_EQ(doubles.lines.log, (QStringList{u"show 2"_s, u"hide after 2"_s}));
  EXPECT_EQ(doubles.ports.log, (QStringList{u"progress 0..11031512"_s, u"progress hidden"_s, u"info [] 导入完成!"_s}));
}

TEST_F(TextImport, WithoutMessagesShowsNoBox) {
  importBytes("11031510 01 02 03 04 05\n", false);
  EXPECT_TRUE(doubles.ports.boxes.empty());
  importBytes("", false);
  EXPECT_TRUE(doubles.ports.boxes.empty());
  EXPECT_EQ(draws(), QStringList{u"11031510 1 2 3 4 5"_s});
}

TEST_F(TextImport, OfAnEmptyFileSaysSoAndDoesNothingElse) {
  for (const QByteArray& bytes : {QByteArray(), QByteArray("\xEF\xBB\xBF")}) {
    importBytes(bytes);
    EXPECT_EQ(doubles.ports.log, QStringList{u"plain [] 没有数据，无法导入！"_s});
    EXPECT_TRUE(doubles.lines.log.isEmpty());
    doubles.ports.log.clear();
  }
}

TEST_F(TextImport, PassesOverBadLinesInSilenceButCountsThem) {
  importBytes("\n期号 号码\n11031510 01 02 03 04 05\n1234567890\n0 01 02 03 04 05\n11031511 99 99 99 99 99\n");
  EXPECT_EQ(draws(), QStringList{u"11031510 1 2 3 4 5"_s});
  EXPECT_EQ(doubles.lines.log, (QStringList{u"show 6"_s, u"hide after 6"_s}));
  EXPECT_EQ(doubles.ports.boxTexts(), QStringList{u"导入完成!"_s});
}

TEST_F(TextImport, OfLinesWithoutADrawIsComplete) {
  importBytes("nothing to be found here\n");
  EXPECT_EQ(draws(), QStringList{});
  EXPECT_EQ(doubles.ports.boxTexts(), QStringList{u"导入完成!"_s});
}

TEST_F(TextImport, ReplacesAnExistingPeriodAndDerivesItAnew) {
  workspace.addDraws(u"11031509 01 02 03 04 05\n11031510 07 08 09 10 11"_s);
  importBytes("11031510 01 02 03 04 06\n");
  EXPECT_EQ(draws(), (QStringList{u"11031509 1 2 3 4 5"_s, u"11031510 1 2 3 4 6"_s}));
  EXPECT_EQ(workspace.rows("SELECT 和值 FROM 历史记录 WHERE 期号 = 11031510"), QStringList{u"16"_s});
}

TEST_F(TextImport, TheLastOfTwoLinesOfAPeriodStays) {
  importBytes("11031510 01 02 03 04 05\n11031510 07 08 09 10 11\n");
  EXPECT_EQ(draws(), QStringList{u"11031510 7 8 9 10 11"_s});
}

TEST_F(TextImport, ARepeatedNumberTakesTheFifthOfTheLineBefore) {
  importBytes("11031510 07 08 09 10 11\n11031511 01 02 03 04 04\n");
  EXPECT_EQ(draws(), (QStringList{u"11031510 7 8 9 10 11"_s, u"11031511 1 2 3 4 11"_s}));
}

TEST_F(TextImport, ARepeatedNumberInTheFirstLineStoresZeroThere) {
  importBytes("11031510 01 02 03 04 04\n11031511 07 08 09 10 11\n");
  EXPECT_EQ(draws(), (QStringList{u"11031510 1 2 3 4 0"_s, u"11031511 7 8 9 10 11"_s}));
  EXPECT_EQ(doubles.ports.boxTexts(), QStringList{u"导入完成!"_s});  // the oldest row is not derived
}

TEST_F(TextImport, ADrawThatCannotBeDerivedEndsTheDerivationInSilence) {
  workspace.addDraws(u"11031501 01 02 03 04 05"_s);
  importBytes("11031510 01 02 03 04 04\n11031511 07 08 09 10 11\n");
  EXPECT_EQ(draws(), (QStringList{u"11031501 1 2 3 4 5"_s, u"11031510 1 2 3 4 0"_s, u"11031511 7 8 9 10 11"_s}));
  EXPECT_EQ(workspace.rows("SELECT 和值 FROM 历史记录 ORDER BY 期号"), (QStringList{u"-"_s, u"-"_s, u"-"_s}));
  EXPECT_EQ(doubles.ports.log, (QStringList{u"progress 0..11031512"_s, u"progress hidden"_s, u"info [] 导入完成!"_s}));
  EXPECT_FALSE(doubles.ports.visible);
}

TEST_F(TextImport, ReadsGb18030) {
  importBytes(
      "11031510\xA3\xAC"
      "01\xA3\xAC"
      "02\xA3\xAC"
      "03\xA1\xA1"
      "04\xA1\xA1"
      "05\r\n");
  EXPECT_EQ(draws(), QStringList{u"11031510 1 2 3 4 5"_s});
}

TEST_F(TextImport, ReadsUtf8WithAMark) {
  importBytes(
      "\xEF\xBB\xBF"
      "11031510，01，02，03，04，05");
  EXPECT_EQ(draws(), QStringList{u"11031510 1 2 3 4 5"_s});
}

TEST_F(TextImport, PeriodsOfEightAndNineDigitsAreOrderedByValue) {
  importBytes("110315101 01 02 03 04 05\n11031510 01 02 03 04 06\n");
  EXPECT_EQ(draws(), (QStringList{u"11031510 1 2 3 4 6"_s, u"110315101 1 2 3 4 5"_s}));
}

TEST_F(TextImport, TheLargestPeriodIsStoredAndALargerOneIsNot) {
  importBytes("2147483647 01 02 03 04 05\n2147483648 01 02 03 04 06\n");
  EXPECT_EQ(draws(), QStringList{u"2147483647 1 2 3 4 5"_s});
}

TEST_F(TextImport, StopsAfterTheLineAtHandAndStillDerives) {
  doubles.lines.stopAfter = 2;
  importBytes("11031510 01 02 03 04 05\n11031511 01 02 03 04 06\n11031512 01 02 03 04 07\n");
  EXPECT_EQ(draws().size(), 2);
  EXPECT_EQ(workspace.rows("SELECT 和值 FROM 历史记录 WHERE 期号 = 11031511"), QStringList{u"16"_s});
  EXPECT_EQ(doubles.lines.log, (QStringList{u"show 3"_s, u"hide after 2"_s}));
  EXPECT_EQ(doubles.ports.boxTexts(), QStringList{u"导入完成!"_s});
}

TEST_F(TextImport, YieldsAtEachLine) {
  QByteArray bytes;
  for (int i = 0; i < 50; ++i)
    bytes += "bad line number " + QByteArray::number(i) + "\n";
  importBytes(bytes);
  EXPECT_GE(doubles.ports.yields, 50);
}

TEST_F(TextImport, OfAFileThatCannotBeOpenedSaysThatThereIsNoData) {
  for (const QString& path : {workspace.folders.program + u"/none.txt"_s, workspace.folders.program, QString()}) {
    importHistoryText(workspace.store(), path, true, doubles.all());
    EXPECT_EQ(doubles.ports.log, QStringList{u"plain [] 没有数据，无法导入！"_s}) << path.toStdString();
    EXPECT_TRUE(doubles.lines.log.isEmpty());
    doubles.ports.log.clear();
    importHistoryText(workspace.store(), path, false, doubles.all());
    EXPECT_TRUE(doubles.ports.log.isEmpty());
  }
}

TEST_F(TextImport, WhatWasStoredBeforeAFaultIsDerivedAndShownBeforeTheFaultIsTold) {
  workspace.store().execute("test",
                            "CREATE TRIGGER refuse BEFORE INSERT ON 历史记录 WHEN NEW.期号 = 11031512"
                            " BEGIN SELECT RAISE(ABORT, 'no'); END");
  HistoryImportPorts all = doubles.all();
  all.reloadHistoryGrid = [&] { doubles.ports.log << u"reload"_s; };
  const QString path =
      writeFile(workspace,
                "11031510 01 02 03 04 05\n11031511 01 02 03 04 06\n11031512 01 02 03 04 07\n11031513 01 02 03 04 08\n");
  EXPECT_THROW(importHistoryText(workspace.store(), path, true, all), StoreError);
  EXPECT_EQ(workspace.rows("SELECT 期号, 和值, 温度值5 FROM 历史记录 ORDER BY 期号"),
            (QStringList{u"11031510 - -"_s, u"11031511 16 4"_s}));
  EXPECT_EQ(doubles.ports.log, (QStringList{u"progress 0..11031512"_s, u"progress hidden"_s, u"reload"_s}));
  EXPECT_EQ(doubles.lines.log, (QStringList{u"show 4"_s, u"hide after 2"_s}));
}

TEST_F(TextImport, OfBinaryBytesDoesNoHarm) {
  QByteArray bytes;
  quint32 state = 7;
  for (int i = 0; i < 200000; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>(state >> 24);
  }
  importBytes(bytes);
  EXPECT_EQ(doubles.ports.boxTexts(), QStringList{u"导入完成!"_s});
  EXPECT_EQ(workspace.rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
}

TEST_F(TextImport, AFullDiskEndsItWithWholeRowsAndTheFrameHidden) {
  QByteArray bytes;
  for (int i = 0; i < 20000; ++i)
    bytes += QByteArray::number(11031510 + i) + " 01 02 03 04 05\n";
  limitGrowth(workspace.store(), 150);
  try {
    importBytes(bytes);
    FAIL() << "no fault";
  } catch (const StoreError& fault) {
    EXPECT_EQ(fault.message(), u"保存开奖记录失败：磁盘空间已满。"_s);
  }
  EXPECT_EQ(doubles.lines.log.size(), 2);
  EXPECT_TRUE(doubles.lines.log.last().startsWith(u"hide after "_s));
  EXPECT_FALSE(workspace.store().inTransaction());
  EXPECT_EQ(workspace.rows("SELECT COUNT(*) FROM 历史记录 WHERE 号码1 = 1 AND 号码5 = 5 AND 已完成 = 'Y'"),
            workspace.rows("SELECT COUNT(*) FROM 历史记录"));
  EXPECT_GT(countHistory(workspace.store()), 0);
  EXPECT_EQ(workspace.rows("PRAGMA integrity_check"), QStringList{u"ok"_s});
}

TEST_F(TextImport, AFullDiskDuringDerivationHidesTheBarAndKeepsTheDraws) {
  QByteArray bytes;
  for (int i = 0; i < 3000; ++i)
    bytes += QByteArray::number(11031510 + i) + " 01 02 03 04 05\n";
  importBytes(bytes);
  workspace.store().execute("test", "UPDATE 历史记录 SET 和值 = NULL, 连号 = NULL, 温度值5 = NULL");
  workspace.store().executeScript("test", "VACUUM");
  limitGrowth(workspace.store(), 0);
  EXPECT_THROW(importBytes("11031510 01 02 03 04 06\n"), StoreError);
  EXPECT_FALSE(doubles.ports.visible);
  EXPECT_EQ(countHistory(workspace.store()), 3000);
}

TEST_F(TextImport, OfARandomHistoryGivesTheColumnsByTheirMeaning) {
  EXPECT_TRUE(rc::check("random draws in random order of lines", [&] {
    const SlowHistory history = anyHistory(1, 20);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    QStringList lines = textOf(history).split(u'\n', Qt::SkipEmptyParts);
    for (qsizetype i = 1; i < lines.size(); ++i)
      lines.swapItemsAt(i, *rc::gen::inRange<qsizetype>(0, i + 1));
    importBytes(lines.join(u"\r\n"_s).toUtf8(), false);
    const QStringList rows =
        workspace.rows(("SELECT " + std::string(slowColumnNames) + " FROM 历史记录 ORDER BY 期号").c_str());
    RC_ASSERT(static_cast<std::size_t>(rows.size()) == history.size());
    for (std::size_t i = 1; i < history.size(); ++i)
      RC_ASSERT(rows[static_cast<qsizetype>(i)].toStdString() == slowColumns(history, i).toStdString());
  }));
}

}  // namespace
}  // namespace elevenfive
