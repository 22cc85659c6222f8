// The tabs of the condition panel that hold choices in the place of value lists, and the dialogs of the result files.
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "engine/widgets/resultdialogs.h"
#include "shell/widgets/mainwindow.h"
#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

class SettingPagesTest : public ::testing::Test {
 protected:
  void openTab(int tab) {
    window.show();
    window.selectTopTab(2);
    control<QListWidget>(window, u"TabStrip_TiaoJian"_s).setCurrentRow(tab - 1);
  }

  int value(int id) { return data.store().value("test", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id).value_or(-1); }

  TestWorkspace data;
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  MainWindow window{data.workspace(), {ports, ports, files, texts}};
};

TEST_F(SettingPagesTest, APositionWithoutNumbersCannotBeSwitchedOn) {
  data.store().execute("test", "UPDATE 号码特性 SET \"第1位\" = 0");
  openTab(15);
  auto& use = control<QCheckBox>(window, u"Check_useDingWeiTiaojiao_30"_s);
  auto& numbers = control<QListWidget>(window, u"List_DingweiNumber_1"_s);
  EXPECT_FALSE(use.isEnabled());
  numbers.item(2)->setSelected(true);
  EXPECT_EQ(data.rows("SELECT 号码 FROM 号码特性 WHERE \"第1位\" = 1"), QStringList{u"3"_s});
  EXPECT_TRUE(use.isEnabled());
  use.click();
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 30"), QStringList{u"1"_s});
  numbers.item(2)->setSelected(false);
  EXPECT_FALSE(use.isEnabled());
  EXPECT_FALSE(use.isChecked());
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 30"), QStringList{u"0"_s});
}

TEST_F(SettingPagesTest, ThePositionToleranceIsStoredAtOnce) {
  openTab(15);
  click(control<QRadioButton>(window, u"Option_DingweiRongcuo_2"_s));
  EXPECT_EQ(value(3901), 2);
}

TEST_F(SettingPagesTest, TheHistoryMatchIsStoredAtOnce) {
  openTab(23);
  control<QComboBox>(window, u"Combo_HistoryGuoLu_0"_s).setCurrentIndex(29);
  control<QComboBox>(window, u"Combo_PiPei"_s).setCurrentIndex(2);
  control<QCheckBox>(window, u"Check_Historyguolu"_s).setChecked(true);
  EXPECT_EQ(data.rows("SELECT 使用状态, 最小值, 匹配值 FROM 历史数据过滤"), QStringList{u"1 30 3"_s});
}

TEST_F(SettingPagesTest, TheReductionShowsAndStoresItsType) {
  openTab(24);
  EXPECT_TRUE(control<QRadioButton>(window, u"Option_ShuoSuiLeiXing_5"_s).isChecked());
  control<QRadioButton>(window, u"Option_ShuoSuiLeiXing_3"_s).click();
  EXPECT_EQ(value(3900), 3);
  control<QCheckBox>(window, u"Check_auto"_s).click();
  EXPECT_EQ(data.rows("SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = 45"), QStringList{u"1"_s});
}

TEST_F(SettingPagesTest, OpeningTabsWritesNothing) {
  const QStringList values = data.rows("SELECT * FROM 过滤条件");
  const QStringList uses = data.rows("SELECT * FROM 过滤条件使用情况");
  const QStringList match = data.rows("SELECT * FROM 历史数据过滤");
  for (int tab = 1; tab <= 25; ++tab)
    openTab(tab);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件"), values);
  EXPECT_EQ(data.rows("SELECT * FROM 过滤条件使用情况"), uses);
  EXPECT_EQ(data.rows("SELECT * FROM 历史数据过滤"), match);
}

TEST_F(SettingPagesTest, TheSummaryTellsThePresentConditions) {
  data.store().execute("test", "UPDATE 过滤条件 SET VALUE = (ID = 7) * 2 WHERE ID <= 11");
  openTab(25);
  EXPECT_TRUE(control<QPlainTextEdit>(window, u"Text_TiaoJianList"_s).toPlainText().contains(u" 已选“胆码”： ０７"_s));
}

/// Fills a modal dialog once it is up.
void whenOpen(const std::function<void(QWidget&)>& step) {
  QTimer::singleShot(0, [step] {
    if (QWidget* dialog = QApplication::activeModalWidget())
      step(*dialog);
    else
      whenOpen(step);
  });
}

class ResultDialogsTest : public ::testing::Test {
 protected:
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  QtResultFileDialogs dialogs{u"/program"_s, ports, files, texts, nullptr};
};

TEST_F(ResultDialogsTest, AnExportTakesItsFieldsAndRefusesAShortPeriod) {
  whenOpen([this](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_ToFileQS"_s);
    EXPECT_EQ(period.text(), u"11031511"_s);
    period.setText(u"1103"_s);
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
    EXPECT_EQ(ports.boxTexts(), QStringList{u"请在文本框中输入期号。(如：11031510)"_s});
    EXPECT_TRUE(dialog.isVisible());
    period.setText(u"11031512"_s);
    control<QCheckBox>(dialog, u"Check_ToFile_0"_s).setChecked(true);
    control<QCheckBox>(dialog, u"Check_ToFile_3"_s).setChecked(true);
    control<QLineEdit>(dialog, u"TextFG"_s).setText(u"-"_s);
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
  });
  ExportSettings settings;
  settings.period = 11031511;
  ASSERT_TRUE(dialogs.askExport(settings));
  EXPECT_EQ(settings.period, 11031512);
  EXPECT_EQ(settings.separator, u"-"_s);
  EXPECT_TRUE(settings.xuhao && settings.haoma && settings.fengehang);
  EXPECT_FALSE(settings.qihao);
}

TEST_F(ResultDialogsTest, AnImportNeedsNoPeriodWhereTheFileHoldsIt) {
  whenOpen([](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_FromFileQS"_s);
    EXPECT_TRUE(period.isEnabled());
    control<QRadioButton>(dialog, u"Option_GeShi_1"_s).setChecked(true);
    EXPECT_FALSE(period.isEnabled());
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
  });
  ImportSettings settings;
  ASSERT_TRUE(dialogs.askImport(settings));
  EXPECT_EQ(settings.format, ImportFormat::qihaoHaoma);
}

TEST_F(ResultDialogsTest, ACancelledDialogSaysSo) {
  whenOpen([](QWidget& dialog) { click(control<QPushButton>(dialog, u"cmm_Cancel"_s)); });
  ImportSettings settings;
  EXPECT_FALSE(dialogs.askImport(settings));
}

TEST_F(ResultDialogsTest, AWorkingFileStandsInTheProgramFolder) {
  EXPECT_EQ(dialogs.workingFile(u"\\daocuTemp.txt"_s), u"/program/daocuTemp.txt"_s);
}

}  // namespace

}  // namespace elevenfive
