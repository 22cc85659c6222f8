#include "model/widgets/qtports.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <limits>

#include "model/errors.h"
#include "model/widgets/faultbox.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Runs a step once the next modal dialog is up.
template <typename Dialog>
void whenOpen(const std::function<void(Dialog&)>& step) {
  QTimer::singleShot(0, [step] {
    if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
      step(*dialog);
    else
      whenOpen<Dialog>(step);
  });
}

void clickButton(QMessageBox& box, const QString& caption) {
  for (QAbstractButton* button : box.buttons())
    if (button->text() == caption)
      QTest::mouseClick(button, Qt::LeftButton);
}

TEST(QtBoxes, AQuestionShowsItsTextAsItStandsAndTakesTheAnswer) {
  QtBoxes boxes;
  QString title;
  QString text;
  whenOpen<QMessageBox>([&](QMessageBox& box) {
    title = box.windowTitle();
    text = box.text();
    clickButton(box, u"否(&N)"_s);
  });
  EXPECT_EQ(boxes.show({BoxKind::question, u"信息提示"_s, u"<b>要删除它吗？"_s, BoxButtons::yesNo}), Answer::no);
  EXPECT_EQ(title, u"信息提示"_s);
  EXPECT_EQ(text, u"<b>要删除它吗？"_s);

  whenOpen<QMessageBox>([](QMessageBox& box) { clickButton(box, u"是(&Y)"_s); });
  EXPECT_TRUE(boxes.ask(u"要删除它吗？"_s));
}

TEST(QtBoxes, AClosedQuestionIsNo) {
  QtBoxes boxes;
  whenOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(boxes.show({BoxKind::question, {}, u"确认要删除全部记录吗？"_s, BoxButtons::okCancel}), Answer::no);
}

TEST(QtBoxes, AClosedQuestionKeepsWhatANoWouldDelete) {
  QtBoxes boxes;
  whenOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_TRUE(boxes.askToKeep(u"表格中原有的数据要保留吗？"_s));
  whenOpen<QMessageBox>([](QMessageBox& box) { box.close(); });
  EXPECT_TRUE(boxes.askToKeep(u"表格中原有的数据要保留吗？"_s));
  whenOpen<QMessageBox>([](QMessageBox& box) { clickButton(box, u"否(&N)"_s); });
  EXPECT_FALSE(boxes.askToKeep(u"表格中原有的数据要保留吗？"_s));
}

TEST(QtBoxes, EnterAloneAnswersNoWhereAYesDeletes) {
  QtBoxes boxes;
  const auto pressEnter = [](QMessageBox& box) { QTest::keyClick(box.defaultButton(), Qt::Key_Return); };
  whenOpen<QMessageBox>(pressEnter);
  EXPECT_FALSE(boxes.askToDelete(u"确定要清空所有的历史记录吗？"_s));
  whenOpen<QMessageBox>(pressEnter);
  EXPECT_EQ(boxes.show({BoxKind::question, {}, u"确认要删除全部记录吗？"_s, BoxButtons::okCancel, true}), Answer::no);
  whenOpen<QMessageBox>(pressEnter);
  EXPECT_TRUE(boxes.askToKeep(u"表格中原有的数据要保留吗？"_s));
}

TEST(QtBoxes, ABoxWithoutTitleBearsTheProgramsOwn) {
  QtBoxes boxes;
  QString title;
  whenOpen<QMessageBox>([&](QMessageBox& box) {
    title = box.windowTitle();
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  boxes.information(u"导入完成!"_s);
  EXPECT_EQ(title, u"elevenfive 11选5"_s);
}

TEST(QtInputs, GivesTheLineAsTypedAndNothingWhereCancelled) {
  QtInputs inputs;
  whenOpen<QInputDialog>([](QInputDialog& dialog) {
    auto* line = dialog.findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, u"11041510"_s);
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(inputs.askText({{}, u"要过滤哪期的号码 ？"_s, u"7"_s}), u"11041510"_s);

  whenOpen<QInputDialog>([](QInputDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(inputs.askText({{}, u"要过滤哪期的号码 ？"_s, u"7"_s}), QString());
}

TEST(QtProgress, TheLastValueShowsHoweverFastTheStepsCome) {
  QProgressBar bar;
  QtProgress progress(bar);
  progress.setMinimum(0);
  progress.setMaximum(1000);
  progress.setVisible(true);
  for (int value = 0; value <= 1000; ++value)
    progress.setValue(value);
  EXPECT_EQ(bar.value(), 1000);
}

TEST(QtProgress, TheBarStaysUpBetweenTwoStagesAndGoesWhenTheWorkIsDone) {
  QProgressBar bar;
  QtProgress progress(bar);
  progress.setVisible(true);
  progress.setVisible(false);
  progress.setVisible(true);
  QApplication::processEvents();
  EXPECT_TRUE(bar.isVisible());
  progress.setVisible(false);
  EXPECT_TRUE(bar.isVisible());
  QApplication::processEvents();
  EXPECT_FALSE(bar.isVisible());
}

TEST(QtEvents, AStopIsSeenWithinFiftyMilliseconds) {
  QtEvents events;
  qint64 fastest = std::numeric_limits<qint64>::max();  // the others tell how busy the machine is
  for (int round = 0; round < 5; ++round) {
    QElapsedTimer clock;
    clock.start();
    bool stopped = false;
    QTimer::singleShot(30, [&] { stopped = true; });
    while (!stopped && clock.elapsed() < 2000)
      events.yield();
    EXPECT_TRUE(stopped);
    fastest = std::min(fastest, clock.elapsed());
  }
  EXPECT_LT(fastest, 80);
}

TEST(QtControls, ChangesWidgetsAndMenuEntriesByTheirId) {
  QPushButton stop;
  QAction change(nullptr);
  QtControls controls;
  controls.add(ControlId::cmm_stop, &stop);
  controls.add(ControlId::mnu_UserQiehuan, &change);
  controls.setEnabled(ControlId::cmm_stop, false);
  controls.setEnabled(ControlId::mnu_UserQiehuan, false);
  controls.setEnabled(ControlId::Pic_subTouZhu, false);  // not in this window
  EXPECT_FALSE(stop.isEnabled());
  EXPECT_FALSE(change.isEnabled());
}

TEST(WithFaultBox, AFaultBecomesOneCriticalBox) {
  RecordingPorts ports;
  EXPECT_FALSE(withFaultBox(ports, [] { throw MissingData(u"历史记录中没有这一期。"_s); }));
  EXPECT_EQ(ports.log, QStringList{u"critical [] 历史记录中没有这一期。"_s});
  EXPECT_TRUE(withFaultBox(ports, [] {}));
  EXPECT_EQ(ports.boxes.size(), 1U);
}

}  // namespace

}  // namespace elevenfive
