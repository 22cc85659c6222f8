// The dialogs of the result files, filled and closed as a person would.
#include "engine/widgets/resultdialogs.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>

#include "tests/shell/windowtest.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Fills a modal dialog once it is up.
void whenOpen(const std::function<void(QWidget&)>& step) {
  QTimer::singleShot(0, [step] {
    if (QWidget* dialog = QApplication::activeModalWidget())
      step(*dialog);
    else
      whenOpen(step);
  });
}

void cancel(QWidget& dialog) {
  click(control<QPushButton>(dialog, u"cmm_Cancel"_s));
}

/// The label in front of a field.
QLabel& labelOf(QWidget& dialog, const QWidget& field) {
  for (QLabel* label : dialog.findChildren<QLabel*>())
    if (label->buddy() == &field)
      return *label;
  throw std::runtime_error("no label");
}

/// The texts of the labels that head no field.
QStringList notices(const QWidget& dialog) {
  QStringList texts;
  for (const QLabel* label : dialog.findChildren<QLabel*>())
    if (label->buddy() == nullptr)
      texts << label->text();
  return texts;
}

class ResultDialogsTest : public ::testing::Test {
 protected:
  RecordingPorts ports;
  AnsweringFiles files;
  RecordingTexts texts;
  QtResultFileDialogs dialogs{u"/program"_s, ports, files, texts, nullptr};
  const QString refusal = u"请在文本框中输入期号。(如：11031510)"_s;
};

TEST_F(ResultDialogsTest, AnExportTakesItsFieldsAndRefusesAShortPeriod) {
  whenOpen([this](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_ToFileQS"_s);
    EXPECT_EQ(period.text(), u"11031511"_s);
    period.setText(u"1103151"_s);
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
    EXPECT_EQ(ports.boxTexts(), QStringList{refusal});
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
  EXPECT_EQ(ports.boxes.size(), 1U);
  EXPECT_EQ(settings.period, 11031512);
  EXPECT_EQ(settings.separator, u"-"_s);
  EXPECT_TRUE(settings.xuhao && settings.haoma && settings.fengehang);
  EXPECT_FALSE(settings.qihao);
}

TEST_F(ResultDialogsTest, ACancelledExportChangesNoSetting) {
  whenOpen([](QWidget& dialog) {
    control<QLineEdit>(dialog, u"Txt_ToFileQS"_s).setText(u"11031599"_s);
    control<QLineEdit>(dialog, u"TextFG"_s).setText(u"+"_s);
    control<QCheckBox>(dialog, u"Check_ToFile_2"_s).click();
    cancel(dialog);
  });
  ExportSettings settings;
  settings.period = 11031511;
  const bool haoma = settings.haoma;
  EXPECT_FALSE(dialogs.askExport(settings));
  EXPECT_EQ(settings.period, 11031511);
  EXPECT_EQ(settings.separator, u","_s);
  EXPECT_EQ(settings.haoma, haoma);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(ResultDialogsTest, TheExportFormBearsItsTexts) {
  whenOpen([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"数 据 导 出"_s);
    EXPECT_EQ(labelOf(dialog, control<QLineEdit>(dialog, u"Txt_ToFileQS"_s)).text(), u"要导出哪一期的数据："_s);
    auto& separator = control<QLineEdit>(dialog, u"TextFG"_s);
    EXPECT_EQ(labelOf(dialog, separator).text(), u"分隔符号："_s);
    EXPECT_EQ(separator.toolTip(), u"输入各号码之间的分隔符号"_s);
    EXPECT_EQ(separator.text(), u","_s);
    EXPECT_EQ(dialog.findChild<QGroupBox*>()->title(), u"导出内容："_s);
    EXPECT_EQ(notices(dialog), QStringList());
    EXPECT_EQ(control<QPushButton>(dialog, u"cmm_ToFileOK"_s).text(), u"确认"_s);
    EXPECT_EQ(control<QPushButton>(dialog, u"cmm_Cancel"_s).text(), u"取消"_s);
    cancel(dialog);
  });
  ExportSettings settings;
  EXPECT_FALSE(dialogs.askExport(settings));
}

TEST_F(ResultDialogsTest, TheImportFormBearsItsTexts) {
  whenOpen([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"数 据 导 入"_s);
    EXPECT_EQ(dialog.findChild<QGroupBox*>()->title(), u"文件内容格式："_s);
    QList<QRadioButton*> options = dialog.findChildren<QRadioButton*>();
    std::sort(options.begin(), options.end(), [](auto* a, auto* b) { return a->y() < b->y(); });
    QStringList captions;
    for (const QRadioButton* option : options)
      captions << option->objectName() + option->text();
    EXPECT_EQ(captions, (QStringList{u"Option_GeShi_2 序号＋号码"_s, u"Option_GeShi_1 期号＋号码"_s,
                                     u"Option_GeShi_0只有号码"_s}));
    EXPECT_EQ(labelOf(dialog, control<QLineEdit>(dialog, u"Txt_FromFileQS"_s)).text(), u"号码对应的期号："_s);
    EXPECT_EQ(notices(dialog), QStringList{u"文件格式要求：文件内各数之前必须用空格或逗号分开。"_s});
    EXPECT_EQ(control<QPushButton>(dialog, u"cmm_ToFileOK"_s).text(), u"确认"_s);
    EXPECT_EQ(control<QPushButton>(dialog, u"cmm_Cancel"_s).text(), u"取消"_s);
    cancel(dialog);
  });
  ImportSettings settings;
  EXPECT_FALSE(dialogs.askImport(settings));
}

TEST_F(ResultDialogsTest, TheContentsStandInTheOrderOfTheForm) {
  QStringList captions;
  QStringList names;
  whenOpen([&](QWidget& dialog) {
    QList<QCheckBox*> checks = dialog.findChildren<QCheckBox*>();
    std::sort(checks.begin(), checks.end(), [](auto* a, auto* b) { return a->y() < b->y(); });
    for (const QCheckBox* check : checks) {
      captions << check->text();
      names << check->objectName();
    }
    cancel(dialog);
  });
  ExportSettings settings;
  EXPECT_FALSE(dialogs.askExport(settings));
  EXPECT_EQ(captions, (QStringList{u"分隔行"_s, u"号码"_s, u"期号"_s, u"序号"_s}));
  EXPECT_EQ(names, (QStringList{u"Check_ToFile_3"_s, u"Check_ToFile_2"_s, u"Check_ToFile_1"_s, u"Check_ToFile_0"_s}));
}

TEST_F(ResultDialogsTest, EnterInThePeriodOfAnExportMovesOnAsTabDoes) {
  whenOpen([](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_ToFileQS"_s);
    period.setFocus();
    QTest::keyClick(&period, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.focusWidget(), &control<QLineEdit>(dialog, u"TextFG"_s));
    cancel(dialog);
  });
  ExportSettings settings;
  settings.period = 11031511;
  EXPECT_FALSE(dialogs.askExport(settings));
}

TEST_F(ResultDialogsTest, EnterInThePeriodOfAnImportMovesOnAsTabDoes) {
  whenOpen([](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_FromFileQS"_s);
    period.setText(u"11031511"_s);
    period.setFocus();
    QTest::keyClick(&period, Qt::Key_Enter);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_NE(dialog.focusWidget(), &period);
    cancel(dialog);
  });
  ImportSettings settings;
  EXPECT_FALSE(dialogs.askImport(settings));
}

TEST_F(ResultDialogsTest, TheSeparatorIsSelectedAtEachFocus) {
  whenOpen([](QWidget& dialog) {
    auto& separator = control<QLineEdit>(dialog, u"TextFG"_s);
    auto& period = control<QLineEdit>(dialog, u"Txt_ToFileQS"_s);
    for (int visit = 0; visit < 2; ++visit) {
      separator.setFocus();
      EXPECT_TRUE(QTest::qWaitFor([&] { return separator.selectedText() == u","_s; }));
      separator.deselect();
      period.setFocus();
    }
    cancel(dialog);
  });
  ExportSettings settings;
  EXPECT_FALSE(dialogs.askExport(settings));
}

TEST_F(ResultDialogsTest, ThePeriodsTakeDigitsAndTheBackspaceAlone) {
  const auto type = [](QLineEdit& period) {
    period.clear();
    QTest::keyClicks(&period, u"1a1-0 3.1"_s);
    EXPECT_EQ(period.text(), u"11031"_s);
    QTest::keyClick(&period, Qt::Key_Backspace);
    EXPECT_EQ(period.text(), u"1103"_s);
  };
  whenOpen([&](QWidget& dialog) {
    type(control<QLineEdit>(dialog, u"Txt_ToFileQS"_s));
    cancel(dialog);
  });
  ExportSettings out;
  EXPECT_FALSE(dialogs.askExport(out));
  whenOpen([&](QWidget& dialog) {
    type(control<QLineEdit>(dialog, u"Txt_FromFileQS"_s));
    cancel(dialog);
  });
  ImportSettings in;
  EXPECT_FALSE(dialogs.askImport(in));
}

TEST_F(ResultDialogsTest, AnImportWithoutAPeriodIsRefusedAndStaysOpen) {
  for (const int format : {0, 2}) {
    ports.boxes.clear();
    whenOpen([this, format](QWidget& dialog) {
      control<QRadioButton>(dialog, u"Option_GeShi_%1"_s.arg(format)).setChecked(true);
      control<QLineEdit>(dialog, u"Txt_FromFileQS"_s).setText(u"1103151"_s);
      click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
      EXPECT_EQ(ports.boxTexts(), QStringList{refusal});
      EXPECT_TRUE(dialog.isVisible());
      cancel(dialog);
    });
    ImportSettings settings;
    settings.period = 11031500;
    EXPECT_FALSE(dialogs.askImport(settings));
    EXPECT_EQ(settings.period, 11031500);
    EXPECT_EQ(settings.format, ImportFormat::haoma);
  }
}

TEST_F(ResultDialogsTest, OnlyTheFormatWithPeriodsInTheFileDisablesTheFieldAndItsLabel) {
  whenOpen([](QWidget& dialog) {
    auto& period = control<QLineEdit>(dialog, u"Txt_FromFileQS"_s);
    const QLabel& label = labelOf(dialog, period);
    for (const int format : {2, 1, 0, 1}) {
      control<QRadioButton>(dialog, u"Option_GeShi_%1"_s.arg(format)).setChecked(true);
      EXPECT_EQ(period.isEnabled(), format != 1) << format;
      EXPECT_EQ(label.isEnabled(), format != 1) << format;
    }
    period.clear();
    click(control<QPushButton>(dialog, u"cmm_ToFileOK"_s));
  });
  ImportSettings settings;
  ASSERT_TRUE(dialogs.askImport(settings));
  EXPECT_EQ(settings.format, ImportFormat::qihaoHaoma);
  EXPECT_TRUE(ports.boxes.empty());
}

TEST_F(ResultDialogsTest, AWorkingFileStandsInTheProgramFolder) {
  EXPECT_EQ(dialogs.workingFile(u"\\daocuTemp.txt"_s), u"/program/daocuTemp.txt"_s);
}

}  // namespace

}  // namespace elevenfive
