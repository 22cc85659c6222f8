#include "engine/widgets/resultdialogs.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <array>
#include <functional>

#include "model/texts.h"
#include "model/widgets/digitfield.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestPeriod = 9;

/// Enter in a dialog without a default button: on a button it clicks, elsewhere it moves on as Tab does.
class EnterMovesOn final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress)
      return QObject::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
      return QObject::eventFilter(watched, event);
    if (auto* button = qobject_cast<QPushButton*>(watched)) {
      button->click();
    } else {
      QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
      QCoreApplication::sendEvent(watched, &tab);
    }
    return true;
  }
};

/// Selects the text of a line each time that it gets the focus.
class SelectsOnFocus final : public QObject {
 public:
  explicit SelectsOnFocus(QLineEdit& line) : QObject(&line) { line.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    // A mouse press places the caret after the focus has come, so the selection waits until it has.
    if (event->type() == QEvent::FocusIn)
      QTimer::singleShot(0, static_cast<QLineEdit*>(watched), &QLineEdit::selectAll);
    return QObject::eventFilter(watched, event);
  }
};

/// The buttons 确认 and 取消. accepted decides whether the dialog closes on 确认.
QHBoxLayout* closingButtons(QDialog& dialog, const std::function<bool()>& accepted) {
  auto* ok = new QPushButton(u"确认"_s, &dialog);
  ok->setObjectName(u"cmm_ToFileOK"_s);
  auto* cancel = new QPushButton(u"取消"_s, &dialog);
  cancel->setObjectName(u"cmm_Cancel"_s);
  auto* enter = new EnterMovesOn(&dialog);
  for (QPushButton* button : {ok, cancel}) {
    button->setAutoDefault(false);
    button->installEventFilter(enter);
  }
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(ok);
  row->addWidget(cancel);
  QObject::connect(ok, &QPushButton::clicked, &dialog, [&dialog, accepted] {
    if (accepted())
      dialog.accept();
  });
  QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
  return row;
}

DigitField* periodField(const QString& name, const QString& label, Qihao period, QWidget* parent) {
  auto* field = new DigitField(longestPeriod, parent);
  field->setObjectName(name);
  field->setAccessibleName(label);
  field->installEventFilter(new EnterMovesOn(field));
  if (period > 0)
    field->setText(QString::number(period));
  return field;
}

}  // namespace

bool QtResultFileDialogs::askExport(ExportSettings& settings) {
  QDialog dialog(parent_);
  dialog.setObjectName(u"frmToFile"_s);
  dialog.setWindowTitle(u"数 据 导 出"_s);
  DigitField* period = periodField(u"Txt_ToFileQS"_s, u"要导出哪一期的数据"_s, settings.period, &dialog);
  auto* separator = new QLineEdit(settings.separator, &dialog);
  separator->setObjectName(u"TextFG"_s);
  separator->setAccessibleName(u"分隔符号"_s);
  separator->setToolTip(u"输入各号码之间的分隔符号"_s);
  new SelectsOnFocus(*separator);
  separator->installEventFilter(new EnterMovesOn(separator));

  auto* content = new QGroupBox(u"导出内容："_s, &dialog);
  auto* choices = new QVBoxLayout(content);
  const std::array<std::pair<QStringView, bool*>, 4> fields{{{u"分隔行", &settings.fengehang},
                                                             {u"号码", &settings.haoma},
                                                             {u"期号", &settings.qihao},
                                                             {u"序号", &settings.xuhao}}};
  std::array<QCheckBox*, 4> checks{};
  for (std::size_t i = 0; i < fields.size(); ++i) {
    checks[i] = new QCheckBox(fields[i].first.toString(), content);
    checks[i]->setObjectName(u"Check_ToFile_%1"_s.arg(fields.size() - 1 - i));
    checks[i]->setChecked(*fields[i].second);
    choices->addWidget(checks[i]);
  }

  auto* form = new QFormLayout;
  form->addRow(u"要导出哪一期的数据："_s, period);
  form->addRow(u"分隔符号："_s, separator);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addLayout(form);
  layout->addWidget(content);
  layout->addLayout(closingButtons(dialog, [&] { return acceptFilePeriod(period->text(), boxes_); }));
  if (dialog.exec() != QDialog::Accepted)
    return false;
  settings.period = leadingNumber(period->text());
  settings.separator = separator->text();
  for (std::size_t i = 0; i < fields.size(); ++i)
    *fields[i].second = checks[i]->isChecked();
  return true;
}

bool QtResultFileDialogs::askImport(ImportSettings& settings) {
  QDialog dialog(parent_);
  dialog.setObjectName(u"frmFromFile"_s);
  dialog.setWindowTitle(u"数 据 导 入"_s);
  auto* label = new QLabel(u"号码对应的期号："_s, &dialog);
  DigitField* period = periodField(u"Txt_FromFileQS"_s, u"号码对应的期号"_s, settings.period, &dialog);
  label->setBuddy(period);
  auto* formats = new QGroupBox(u"文件内容格式："_s, &dialog);
  auto* choices = new QVBoxLayout(formats);
  auto* group = new QButtonGroup(&dialog);
  QObject::connect(group, &QButtonGroup::idToggled, &dialog, [period, label](int id, bool checked) {
    if (!checked)
      return;
    period->setEnabled(id != static_cast<int>(ImportFormat::qihaoHaoma));
    label->setEnabled(period->isEnabled());
  });
  constexpr std::array<QStringView, 3> captions{u"只有号码", u" 期号＋号码", u" 序号＋号码"};
  for (int i = static_cast<int>(captions.size()) - 1; i >= 0; --i) {
    auto* option = new QRadioButton(captions[static_cast<std::size_t>(i)].toString(), formats);
    option->setObjectName(u"Option_GeShi_%1"_s.arg(i));
    group->addButton(option, i);
    choices->addWidget(option);
  }
  group->button(static_cast<int>(settings.format))->setChecked(true);

  auto* form = new QFormLayout;
  form->addRow(label, period);
  auto* notice = new QLabel(u"文件格式要求：文件内各数之前必须用空格或逗号分开。"_s, &dialog);
  notice->setProperty("note", true);
  auto* layout = new QVBoxLayout(&dialog);
  layout->addWidget(formats);
  layout->addLayout(form);
  layout->addWidget(notice);
  const auto periodInFile = [group] { return group->checkedId() == static_cast<int>(ImportFormat::qihaoHaoma); };
  layout->addLayout(closingButtons(dialog, [&] { return periodInFile() || acceptFilePeriod(period->text(), boxes_); }));
  if (dialog.exec() != QDialog::Accepted)
    return false;
  settings.format = static_cast<ImportFormat>(group->checkedId());
  // Emptied while the period comes from the file: the offered one stands, since no row can be for period 0.
  if (const int typed = leadingNumber(period->text()); typed > 0)
    settings.period = typed;
  return true;
}

QString QtResultFileDialogs::askOpenFile() {
  return files_.openFile(u"导入号码"_s, u"文本文件 (*.txt);;所有文件 (*)"_s);
}

QString QtResultFileDialogs::workingFile(const QString& name) const {
  return QDir::cleanPath(programFolder_ + u'/' + QString(name).replace(u'\\', u'/'));
}

void QtResultFileDialogs::showText(const QString&, const QString& text) {
  texts_.showText(u"投注号码"_s, QString(text).remove(u'\r'));
}

}  // namespace elevenfive
