#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <QDir>
#include <QFile>
#include <algorithm>

#include "history/historytable.h"
#include "history/textfiles.h"
#include "model/errors.h"
#include "model/texts.h"
#include "tests/history/historytools.h"
#include "tests/history/slowhistory.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

class TextExport : public ::testing::Test {
 protected:
  TestWorkspace workspace;
  RecordingPorts ports;
  RecordingLines lines;
  QString path = workspace.folders.program + u"/daocuTemp.txt"_s;

  int exportAll() { return exportHistoryText(workspace.store(), path, lines, ports); }
};

TEST_F(TextExport, WritesPeriodAndNumbersInOrderOfThePeriods) {
  workspace.addDraws(u"11031511 07 08 09 10 11\n11031510 01 02 03 04 05"_s);
  EXPECT_EQ(exportAll(), 2);
  EXPECT_EQ(readFileText(path), "11031510 01 02 03 04 05\r\n11031511 07 08 09 10 11\r\n");
  EXPECT_EQ(lines.log, (QStringList{u"show 2"_s, u"hide after 2"_s}));
  EXPECT_EQ(ports.yields, 2);
}

TEST_F(TextExport, OfAnEmptyHistoryWritesAnEmptyFile) {
  EXPECT_EQ(exportAll(), 0);
  EXPECT_TRUE(QFile::exists(path));
  EXPECT_EQ(readFileText(path), "");
}

TEST_F(TextExport, ReplacesTheFileOfAnEarlierOne) {
  workspace.addDraws(u"11031510 01 02 03 04 05\n11031511 01 02 03 04 06"_s);
  exportAll();
  deleteHistoryRecord(workspace.store(), 11031510);
  EXPECT_EQ(exportAll(), 1);
  EXPECT_EQ(readFileText(path), "11031511 01 02 03 04 06\r\n");
}

TEST_F(TextExport, ToAPlaceThatCannotBeWrittenIsAFault) {
  path = workspace.folders.program + u"/none/draws.txt"_s;
  EXPECT_THROW(exportAll(), FileError);
  EXPECT_TRUE(lines.log.isEmpty());
}

TEST_F(TextExport, AFaultOnTheWayLeavesTheOldFileAndNothingElse) {
  workspace.addDraws(u"11031510 01 02 03 04 05"_s);
  exportAll();
  const QStringList files = QDir(workspace.folders.program).entryList(QDir::Files);
  workspace.addDraws(u"11031511 01 02 03 04 06"_s);
  ports.onYield = [](int) { throw StoreError(u"stop"_s); };
  EXPECT_THROW(exportAll(), StoreError);
  EXPECT_EQ(readFileText(path), "11031510 01 02 03 04 05\r\n");
  EXPECT_EQ(QDir(workspace.folders.program).entryList(QDir::Files), files);
  EXPECT_TRUE(lines.log.last().startsWith(u"hide"_s));
}

TEST_F(TextExport, WhatIsExportedComesBackByAnImport) {
  EXPECT_TRUE(rc::check("a random history out, in and out again", [&] {
    const SlowHistory history = anyHistory(1, 20);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    workspace.addDraws(textOf(history));
    RC_ASSERT(exportAll() == static_cast<int>(history.size()));
    const QByteArray first = readFileText(path);
    workspace.store().execute("test", "DELETE FROM 历史记录");
    ImportDoubles doubles;
    importHistoryText(workspace.store(), path, true, doubles.all());
    exportAll();
    RC_ASSERT(readFileText(path) == first);
  }));
}

TEST(SampleHistory, ComesOutByteForByteAsItWentInWithSortedNumbers) {
  TestWorkspace workspace;
  ImportDoubles doubles;
  const QString sample = QStringLiteral(ELEVENFIVE_SOURCE_DIR "/samples/history-sample.txt");
  importHistoryText(workspace.store(), sample, true, doubles.all());
  QByteArray expected;
  for (const QByteArray& line : readFileText(sample).split('\n')) {
    if (line.isEmpty())
      continue;
    QByteArrayList fields = line.trimmed().split(' ');
    std::sort(fields.begin() + 1, fields.end());
    expected += fields.join(' ') + "\r\n";
  }
  const QString path = workspace.folders.program + u"/out.txt"_s;
  EXPECT_EQ(exportHistoryText(workspace.store(), path, doubles.lines, doubles.ports), 296);
  EXPECT_EQ(readFileText(path), expected);
  EXPECT_EQ(workspace.rows("SELECT COUNT(和值), COUNT(温度值5) FROM 历史记录"), QStringList{u"295 295"_s});
}

}  // namespace
}  // namespace elevenfive
