#include "engine/resultfiles.h"

#include <QFile>
#include <QFileInfo>
#include <functional>

#include "model/errors.h"
#include "model/texts.h"
#include "tests/engine/enginefixture.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// The dialogs, answered by what a test sets.
class RecordingDialogs final : public ResultFileDialogs {
 public:
  explicit RecordingDialogs(RecordingPorts& ports) : ports_(ports) {}

  std::function<bool(ExportSettings&)> onExport = [](ExportSettings&) { return true; };
  std::function<bool(ImportSettings&)> onImport = [](ImportSettings&) { return true; };
  QString openFile;
  QString folder;
  QStringList shownTexts;
  QStringList shownPaths;

  bool askExport(ExportSettings& settings) override {
    ports_.log << u"frmToFile"_s;
    return onExport(settings);
  }
  bool askImport(ImportSettings& settings) override {
    ports_.log << u"frmFromFile"_s;
    return onImport(settings);
  }
  QString askOpenFile() override { return openFile; }
  [[nodiscard]] QString workingFile(const QString& name) const override { return folder + u'/' + name; }
  void showText(const QString& path, const QString& text) override {
    shownPaths << path;
    shownTexts << text;
  }

 private:
  RecordingPorts& ports_;
};

}  // namespace

class ResultFilesTest : public EngineTest {
 protected:
  ResultFilesTest() {
    dialogs.folder = folder.path();
    dialogs.openFile = folder.filePath(u"in.txt"_s);
  }

  QTemporaryDir folder;
  RecordingDialogs dialogs{ports};
  RunPorts portsWithDialogs{ports, ports, ports, ports, ports, ports, view, &dialogs};
  RunDriver fileDriver{workspace.store(), portsWithDialogs};
  ExportSettings exported;
  ImportSettings imported;

  RunContext fileRun() { return {workspace.store(), portsWithDialogs, fileDriver.state()}; }

  void writeFile(const QByteArray& bytes) {
    QFile file(dialogs.openFile);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  QByteArray exportedBytes() { return readFileText(dialogs.workingFile(u"daocuTemp.txt"_s)); }
  QStringList allRows() {
    return workspace.rows("SELECT ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记 FROM 日志表 ORDER BY ID");
  }
  std::optional<int> import() { return importRizhi(fileRun(), dialogs, imported, dialogs.openFile); }
};

TEST_F(ResultFilesTest, ExportWritesTheRowsByXuhaoWithCrLf) {
  addRows(u"07 08 09 10 11\n01 02 03 04 05"_s);
  sql("UPDATE 日志表 SET 序号 = 3 - 序号");
  EXPECT_TRUE(exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s));
  EXPECT_EQ(exportedBytes(), "01,02,03,04,05\r\n07,08,09,10,11\r\n");
}

TEST_F(ResultFilesTest, ExportShowsItsTextAndSaysThatItIsDone) {
  addRows(u"01 02 03 04 05"_s);
  ports.status = u"旧"_s;
  exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s);
  EXPECT_EQ(dialogs.shownTexts, QStringList{u"01,02,03,04,05\r\n"_s});
  EXPECT_EQ(dialogs.shownPaths, QStringList{dialogs.workingFile(u"daocuTemp.txt"_s)});
  EXPECT_EQ(ports.status, u"旧\r\n\r\n号码导出完成．"_s);
}

TEST_F(ResultFilesTest, ExportReplacesAnOlderFileWhole) {
  addRows(u"01 02 03 04 05"_s);
  QFile older(dialogs.workingFile(u"daocuTemp.txt"_s));
  ASSERT_TRUE(older.open(QIODevice::WriteOnly));
  older.write(QByteArray("07,08,09,10,11\r\n").repeated(100));
  older.close();
  EXPECT_TRUE(exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s));
  EXPECT_EQ(exportedBytes(), "01,02,03,04,05\r\n");
}

TEST_F(ResultFilesTest, ExportPutsAnEmptyLineBehindEveryFifthRow) {
  addAllRows();
  sql("DELETE FROM 日志表 WHERE 序号 > 11");
  exported.fengehang = true;
  exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s);
  const QList<QByteArray> lines = exportedBytes().split('\n');
  ASSERT_EQ(lines.size(), 11 + 2 + 1);
  for (int n = 0; n < 13; ++n)
    EXPECT_EQ(lines[n] == "\r", n == 5 || n == 11) << n;
}

TEST_F(ResultFilesTest, ExportMovesItsBarToRowsPlusOneAndYieldsAfterEachRow) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s);
  EXPECT_EQ(ports.log, (QStringList{u"frmToFile"_s, u"disable Pic_subTouZhu"_s, u"progress 0..3"_s,
                                    u"progress hidden"_s, u"enable Pic_subTouZhu"_s}));
  EXPECT_EQ(ports.value, 3);
  EXPECT_EQ(ports.yields, 2);
}

TEST_F(ResultFilesTest, ExportOffersTheNextPeriodAndKeepsTheOtherSettings) {
  QStringList seen;
  dialogs.onExport = [&](ExportSettings& settings) {
    seen << u"%1 %2 %3"_s.arg(settings.period).arg(settings.separator).arg(int(settings.xuhao));
    settings.period = 11031599;
    settings.separator = u"-"_s;
    settings.xuhao = true;
    return true;
  };
  fileDriver.cmmTouZhu_Click(3);
  fileDriver.cmmTouZhu_Click(3);
  EXPECT_EQ(seen, (QStringList{u"11031510 , 0"_s, u"11031510 - 1"_s}));
}

TEST_F(ResultFilesTest, ExportOfAPeriodWithoutRowsSaysSo) {
  fileDriver.cmmTouZhu_Click(3);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表格中没有该期的号码！"_s});
  EXPECT_FALSE(QFileInfo::exists(dialogs.workingFile(u"daocuTemp.txt"_s)));
}

TEST_F(ResultFilesTest, ACancelledExportSaysNothingAndKeepsTheSettings) {
  addRows(u"01 02 03 04 05"_s);
  dialogs.onExport = [](ExportSettings& settings) {
    settings.separator = u"?"_s;
    return false;
  };
  EXPECT_TRUE(exportRizhi(fileRun(), dialogs, exported, u"daocuTemp.txt"_s));
  EXPECT_EQ(exported.separator, u","_s);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_TRUE(dialogs.shownTexts.isEmpty());
}

TEST_F(ResultFilesTest, AnExportThatCannotBeWrittenIsToldInOneBox) {
  addRows(u"01 02 03 04 05"_s);
  dialogs.folder = folder.filePath(u"missing"_s);
  fileDriver.cmmTouZhu_Click(3);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.contains(u"无法写入"_s));
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
}

TEST_F(ResultFilesTest, ImportNumbersItsRowsFromOneInAnEmptyTable) {
  writeFile("01 02 03 04 05\r\n11-10-09-08-07\n");
  EXPECT_EQ(import(), 2);
  EXPECT_EQ(allRows(), (QStringList{u"1 1 11031510 1 2 3 4 5 0"_s, u"2 2 11031510 11 10 9 8 7 0"_s}));
}

TEST_F(ResultFilesTest, ImportPassesOverLinesThatHoldNoRow) {
  writeFile("号码如下\r\n1,2,3,4,5\r\n\r\n01 02 03 04 05\r\n01 02 03 04\r\n");
  EXPECT_EQ(import(), 1);
}

TEST_F(ResultFilesTest, ImportReadsTheLastLineWithoutItsEnd) {
  writeFile("01 02 03 04 05\r\n01 02 03 04 06");
  EXPECT_EQ(import(), 2);
}

TEST_F(ResultFilesTest, ImportReadsGb18030) {
  writeFile(QByteArray("01\xa3\xac") + "02\xa3\xac" + "03\xa3\xac" + "04\xa3\xac" + "05");
  EXPECT_EQ(import(), 1);
  EXPECT_EQ(numbers(), QStringList{u"01 02 03 04 05"_s});
}

TEST_F(ResultFilesTest, ImportOfAnEmptyFileGivesNoRow) {
  writeFile({});
  EXPECT_EQ(import(), 0);
}

TEST_F(ResultFilesTest, RowsThatAreKeptLetTheNewOnesCountOn) {
  addRows(u"01 02 03 04 05\n01 02 03 04 06"_s);
  sql("UPDATE 日志表 SET 序号 = 3 - 序号");  // the last 序号 stands on the first ID
  writeFile("02 03 04 05 06\n");
  ports.answers = {Answer::yes};
  EXPECT_EQ(import(), 1);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"表格中原有的数据要保留吗？"_s});
  EXPECT_EQ(allRows().last(), u"3 3 11031510 2 3 4 5 6 0"_s);
  EXPECT_EQ(allRows().size(), 3);
}

TEST_F(ResultFilesTest, RowsThatAreNotKeptGoBeforeTheFormatIsAsked) {
  addRows(u"01 02 03 04 05"_s);
  writeFile("02 03 04 05 06\n");
  ports.answers = {Answer::no};
  dialogs.onImport = [&](ImportSettings&) {
    EXPECT_TRUE(allRows().isEmpty());
    return false;
  };
  EXPECT_EQ(import(), std::nullopt);
  EXPECT_TRUE(allRows().isEmpty());
  EXPECT_EQ(ports.status, u"表格中号码全部删除已完成．"_s);
}

TEST_F(ResultFilesTest, AnEmptyTableIsNoQuestion) {
  writeFile("01 02 03 04 05\n");
  import();
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(ResultFilesTest, TheRowsTakeThePeriodOfTheDialogWithEveryFormat) {
  writeFile("11039999 01 02 03 04 05\n");
  dialogs.onImport = [](ImportSettings& settings) {
    settings.format = ImportFormat::qihaoHaoma;
    settings.period = 11031520;
    return true;
  };
  import();
  EXPECT_EQ(allRows(), QStringList{u"1 1 11031520 1 2 3 4 5 0"_s});
}

TEST_F(ResultFilesTest, ImportKeepsItsSettingsForTheNextTime) {
  writeFile("7   01 02 03 04 05\n");
  dialogs.onImport = [](ImportSettings& settings) {
    settings.format = ImportFormat::xuhaoHaoma;
    settings.period = 11031520;
    return true;
  };
  import();
  ImportSettings offered;
  dialogs.onImport = [&](ImportSettings& settings) {
    offered = settings;
    return false;
  };
  import();
  EXPECT_EQ(offered.format, ImportFormat::xuhaoHaoma);
  EXPECT_EQ(offered.period, 11031520);
}

TEST_F(ResultFilesTest, NoMoreThan65535RowsComeIn) {
  QByteArray bytes;
  for (int n = 0; n < 70000; ++n)
    bytes += "01 02 03 04 05\n";
  writeFile(bytes);
  EXPECT_EQ(import(), 65535);
  EXPECT_EQ(workspace.rows("SELECT COUNT(*), MAX(序号) FROM 日志表"), QStringList{u"65535 65535"_s});
}

TEST_F(ResultFilesTest, BinaryBytesDoNoHarm) {
  QByteArray bytes;
  for (int n = 0; n < 4096; ++n)
    bytes += static_cast<char>((n * 131) % 256);
  writeFile(bytes + "\n01 02 03 04 05\n");
  ASSERT_TRUE(import().has_value());
  EXPECT_EQ(numbers().last(), u"01 02 03 04 05"_s);
}

TEST_F(ResultFilesTest, AFileThatIsNotThereCostsNoRow) {
  addRows(u"01 02 03 04 05"_s);
  ports.answers = {Answer::no};
  fileDriver.cmmTouZhu_Click(4);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_EQ(allRows().size(), 1);
}

TEST_F(ResultFilesTest, AFaultOfTheStoreKeepsNoHalfOfTheFile) {
  sql("CREATE TRIGGER refuse BEFORE INSERT ON 日志表 WHEN NEW.序号 = 2 BEGIN SELECT RAISE(ABORT, 'full'); END");
  writeFile("01 02 03 04 05\n01 02 03 04 06\n");
  EXPECT_THROW(import(), StoreError);
  EXPECT_TRUE(allRows().isEmpty());
  EXPECT_TRUE(ports.enabled[ControlId::Pic_subTouZhu]);
}

TEST_F(ResultFilesTest, RowsThatWereNotToBeKeptAreGoneWhereAFaultEndsTheImport) {
  addRows(u"07 08 09 10 11"_s);
  sql("CREATE TRIGGER refuse BEFORE INSERT ON 日志表 WHEN NEW.序号 = 2 BEGIN SELECT RAISE(ABORT, 'full'); END");
  writeFile("01 02 03 04 05\n01 02 03 04 06\n");
  ports.answers = {Answer::no};
  EXPECT_THROW(import(), StoreError);
  EXPECT_TRUE(allRows().isEmpty());
}

TEST_F(ResultFilesTest, RowsThatAreKeptOutliveAFaultOfTheImport) {
  addRows(u"07 08 09 10 11"_s);
  sql("CREATE TRIGGER refuse BEFORE INSERT ON 日志表 WHEN NEW.序号 = 3 BEGIN SELECT RAISE(ABORT, 'full'); END");
  writeFile("01 02 03 04 05\n01 02 03 04 06\n");
  ports.answers = {Answer::yes};
  EXPECT_THROW(import(), StoreError);
  EXPECT_EQ(survivors(), QStringList{u"1: 07 08 09 10 11"_s});
}

TEST_F(ResultFilesTest, TheImportButtonTellsHowManyRowsCameIn) {
  writeFile("01 02 03 04 05\n01 02 03 04 06\n");
  fileDriver.cmmTouZhu_Click(4);
  EXPECT_EQ(ports.boxTexts(), QStringList{u"数据导入完成，共导入：２ 注！"_s});
  EXPECT_EQ(ports.status, u"\r\n\r\n数据导入完成，共导入：２ 注！"_s);
  EXPECT_EQ(view.gridShown, 1);
}

TEST_F(ResultFilesTest, AnImportWithoutAFileOrWithACancelledDialogEndsInSilence) {
  writeFile("01 02 03 04 05\n");
  dialogs.onImport = [](ImportSettings&) { return false; };
  fileDriver.cmmTouZhu_Click(4);
  dialogs.openFile.clear();
  fileDriver.cmmTouZhu_Click(4);
  EXPECT_TRUE(ports.boxes.empty());
  EXPECT_EQ(ports.status, QString());
}

TEST_F(ResultFilesTest, WhatGoesOutComesInAgainInTheSameOrder) {
  addRows(u"07 08 09 10 11\n02 01 03 04 05\n01 03 05 07 09"_s);
  const QStringList before = survivors();
  dialogs.onExport = [](ExportSettings& settings) {
    settings.xuhao = true;
    settings.separator = u" "_s;
    settings.fengehang = true;
    return true;
  };
  dialogs.onImport = [](ImportSettings& settings) {
    settings.format = ImportFormat::xuhaoHaoma;
    return true;
  };
  fileDriver.cmmTouZhu_Click(3);
  dialogs.openFile = dialogs.workingFile(u"daocuTemp.txt"_s);
  ports.answers = {Answer::no};
  fileDriver.cmmTouZhu_Click(4);
  EXPECT_EQ(survivors(), before);
}

/// One imported line "11 02 07 04 09", in rising order 02 04 07 09 11.
class UnsortedRow : public ResultFilesTest {
 protected:
  UnsortedRow() {
    writeFile("11 02 07 04 09\n");
    import();
  }

  const QStringList asItStands{u"1: 11 02 07 04 09"_s};

  QStringList survivorsOfARun() {
    fileDriver.runGuolvSuoshui(period);
    return survivors();
  }

  /// 单双组合1 in the order of the places, 1 for 单.
  void exclude(const Draw& pattern) {
    use(71);
    for (int place = 1; place <= 5; ++place)
      setValue(5010 + place, pattern[static_cast<std::size_t>(place - 1)]);
  }
};

TEST_F(UnsortedRow, ItsSpanAndLargestGapAreThoseOfItsNumbersInRisingOrder) {
  use(4);
  setValue(3300 + 9, 1);  // 11 less 2
  use(5);
  setValue(3400 + 3, 1);  // 4 to 7
  EXPECT_EQ(survivorsOfARun(), asItStands);
}

TEST_F(UnsortedRow, TheParityPatternLooksAtItsPlacesAsTheyStand) {
  exclude({0, 0, 1, 1, 1});  // the pattern of 02 04 07 09 11
  EXPECT_EQ(survivorsOfARun(), asItStands);
}

TEST_F(UnsortedRow, TheParityPatternOfItsPlacesExcludesIt) {
  exclude({1, 0, 1, 0, 1});
  EXPECT_TRUE(survivorsOfARun().isEmpty());
}

TEST_F(UnsortedRow, ItsFirstPlaceHoldsWhatTheLineBeganWith) {
  use(30);
  sql("UPDATE 号码特性 SET 第1位 = (号码 = 11)");
  EXPECT_EQ(survivorsOfARun(), asItStands);
}

TEST_F(UnsortedRow, ItsSmallestNumberIsNotItsFirstPlace) {
  use(30);
  sql("UPDATE 号码特性 SET 第1位 = (号码 = 2)");
  EXPECT_TRUE(survivorsOfARun().isEmpty());
}

TEST_F(ResultFilesTest, ARunOverANumberAboveElevenEndsAndNamesTheRow) {
  use(1);
  allow(1000, 1170);
  writeFile("01 02 03 04 05\n01 02 03 04 12\n");
  import();
  ports.typed = {u"11031510"_s, u"0"_s};
  fileDriver.cmmTouZhu_Click(1);
  ASSERT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(ports.boxes[0].kind, BoxKind::critical);
  EXPECT_TRUE(ports.boxes[0].text.contains(u"01 02 03 04 12"_s));
  EXPECT_EQ(survivors(), (QStringList{u"1: 01 02 03 04 05"_s, u"2: 01 02 03 04 12"_s}));
}

TEST_F(ResultFilesTest, WithoutDialogsTheButtonsDoNothing) {
  addRows(u"01 02 03 04 05"_s);
  driver.cmmTouZhu_Click(3);
  driver.cmmTouZhu_Click(4);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(ResultFilesTest, APeriodOfFewerThanEightCharactersIsRefused) {
  EXPECT_FALSE(acceptFilePeriod(u"1103151"_s, ports));
  EXPECT_EQ(ports.boxTexts(), QStringList{u"请在文本框中输入期号。(如：11031510)"_s});
  EXPECT_TRUE(acceptFilePeriod(u"11031510"_s, ports));
  EXPECT_EQ(ports.boxes.size(), 1U);
}

}  // namespace elevenfive
