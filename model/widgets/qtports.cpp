#include "model/widgets/qtports.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>

#include "model/programtitle.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int repaintIntervalMs = 16;

QString titleOr(const QString& title) {
  return title.isEmpty() ? gTitle.toString() : title;
}

QMessageBox::Icon iconOf(BoxKind kind) {
  switch (kind) {
    case BoxKind::plain:
      return QMessageBox::NoIcon;
    case BoxKind::information:
      return QMessageBox::Information;
    case BoxKind::critical:
      return QMessageBox::Critical;
    case BoxKind::question:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

/// Adds the buttons in the user's language and returns the one that says yes.
QPushButton* addButtons(QMessageBox& box, const Box& question) {
  if (question.buttons == BoxButtons::ok) {
    QPushButton* ok = box.addButton(u"确定(&O)"_s, QMessageBox::AcceptRole);
    box.setEscapeButton(ok);
    return ok;
  }
  const bool yesNo = question.buttons == BoxButtons::yesNo;
  QPushButton* yes = box.addButton(yesNo ? u"是(&Y)"_s : u"确定(&O)"_s, QMessageBox::YesRole);
  QPushButton* no = box.addButton(yesNo ? u"否(&N)"_s : u"取消(&C)"_s, QMessageBox::NoRole);
  box.setDefaultButton(question.destructive ? no : yes);
  box.setEscapeButton(question.closed == Answer::yes ? yes : no);
  return yes;
}

/// Changes a bar, which would paint itself at once each time, so that it is painted by the event loop.
template <typename Change>
void change(QProgressBar& bar, Change&& work) {
  bar.setUpdatesEnabled(false);
  work();
  bar.setUpdatesEnabled(true);
}

/// The file that was chosen in the dialog; empty where it was cancelled.
QString chosenFile(QFileDialog& dialog, const QString& accept) {
  dialog.setLabelText(QFileDialog::LookIn, u"查找范围："_s);
  dialog.setLabelText(QFileDialog::FileName, u"文件名(&N)："_s);
  dialog.setLabelText(QFileDialog::FileType, u"文件类型："_s);
  dialog.setLabelText(QFileDialog::Accept, accept);
  dialog.setLabelText(QFileDialog::Reject, u"取消(&C)"_s);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
    return {};
  return dialog.selectedFiles().constFirst();
}

}  // namespace

Answer QtBoxes::show(const Box& box) {
  // Over the window in which the person works, which gets the focus back.
  QWidget* active = QApplication::activeWindow();
  QMessageBox dialog(active != nullptr ? active : parent_.data());
  dialog.setObjectName(u"messageBox"_s);
  dialog.setWindowTitle(titleOr(box.title));
  dialog.setIcon(iconOf(box.kind));
  dialog.setTextFormat(Qt::PlainText);
  dialog.setText(box.text);
  const QPushButton* yes = addButtons(dialog, box);
  dialog.exec();
  return box.buttons == BoxButtons::ok || dialog.clickedButton() == yes ? Answer::yes : Answer::no;
}

QString QtInputs::askText(const InputBox& box) {
  QInputDialog dialog(parent_);
  dialog.setObjectName(u"inputBox"_s);
  dialog.setWindowTitle(titleOr(box.title));
  dialog.setLabelText(box.prompt);
  dialog.setTextValue(box.defaultText);
  dialog.setOkButtonText(u"确定(&O)"_s);
  dialog.setCancelButtonText(u"取消(&C)"_s);
  if (auto* label = dialog.findChild<QLabel*>())
    label->setTextFormat(Qt::PlainText);
  if (auto* line = dialog.findChild<QLineEdit*>())
    line->setAccessibleName(box.prompt);
  return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

QString QtFileDialogs::openFile(const QString& title, const QString& filter) {
  QFileDialog dialog(parent_, title, {}, filter);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return chosenFile(dialog, u"打开(&O)"_s);
}

QString QtFileDialogs::saveFile(const QString& title, const QString& filter, const QString& defaultName) {
  QFileDialog dialog(parent_, title, {}, filter);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.selectFile(defaultName);
  return chosenFile(dialog, u"保存(&S)"_s);
}

QtProgress::QtProgress(QProgressBar& bar) : bar_(bar) {
  hiding_.setSingleShot(true);
  QObject::connect(&hiding_, &QTimer::timeout, &bar, &QWidget::hide);
}

void QtProgress::setMinimum(int minimum) {
  change(bar_, [&] { bar_.setMinimum(minimum); });
}

void QtProgress::setMaximum(int maximum) {
  change(bar_, [&] { bar_.setMaximum(maximum); });
}

void QtProgress::setValue(int value) {
  const bool due = !sinceShown_.isValid() || sinceShown_.elapsed() >= repaintIntervalMs;
  if (!due && value != bar_.minimum() && value != bar_.maximum())
    return;
  change(bar_, [&] { bar_.setValue(value); });
  sinceShown_.start();
}

void QtProgress::setVisible(bool visible) {
  sinceShown_.invalidate();
  if (!visible) {
    hiding_.start();
    return;
  }
  hiding_.stop();
  bar_.show();
}

void QtControls::setEnabled(ControlId control, bool enabled) {
  if (!enabled && kept_ == control)
    return;
  if (const auto widget = widgets_.find(control); widget != widgets_.end() && widget->second)
    widget->second->setEnabled(enabled);
  if (const auto action = actions_.find(control); action != actions_.end() && action->second)
    action->second->setEnabled(enabled);
}

void QtEvents::yield() {
  if (sinceRun_.isValid() && sinceRun_.elapsed() < intervalMs)
    return;
  QCoreApplication::processEvents();
  sinceRun_.start();
}

}  // namespace elevenfive
