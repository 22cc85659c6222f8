#include "model/widgets/textwindow.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

#include "model/errors.h"
#include "model/ownfiles.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

TextWindow::TextWindow(const QString& title, const QString& text, FileDialogs& files, Boxes& boxes, QWidget* parent)
    : QDialog(parent), files_(files), boxes_(boxes), edit_(new QPlainTextEdit(this)) {
  setObjectName(u"textWindow"_s);
  setWindowTitle(title);
  setAttribute(Qt::WA_DeleteOnClose);

  edit_->setObjectName(u"textWindowText"_s);
  edit_->setAccessibleName(title);
  edit_->setPlainText(text);
  edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
  edit_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));

  auto* copy = new QPushButton(u"全部复制(&C)"_s, this);
  auto* save = new QPushButton(u"另存为(&S)…"_s, this);
  auto* print = new QPushButton(u"打印(&P)…"_s, this);
  auto* close = new QPushButton(u"关闭(&X)"_s, this);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(copy);
  buttons->addWidget(save);
  buttons->addWidget(print);
  buttons->addStretch();
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(edit_);
  layout->addLayout(buttons);
  resize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 30);

  connect(copy, &QPushButton::clicked, this, [this] {
    edit_->selectAll();
    edit_->copy();
  });
  connect(save, &QPushButton::clicked, this, &TextWindow::saveAs);
  connect(print, &QPushButton::clicked, this, &TextWindow::print);
  connect(close, &QPushButton::clicked, this, &QDialog::close);
}

void TextWindow::saveAs() {
  const QString path = files_.saveFile(u"另存为"_s, u"文本文件 (*.txt);;所有文件 (*)"_s, windowTitle() + u".txt"_s);
  if (path.isEmpty())
    return;
  const QByteArray bytes = edit_->toPlainText().replace(u'\n', u"\r\n"_s).toUtf8();
  try {
    demandForeignFile(path);
  } catch (const FileError& fault) {
    boxes_.critical(fault.message());
    return;
  }
  QSaveFile file(path);  // the old file goes only when the new one is whole
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    boxes_.critical(u"无法写入文件 %1：%2"_s.arg(path, file.errorString()));
}

void TextWindow::print() {
  QPrinter printer;
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() == QDialog::Accepted)
    printTo(printer);
}

void TextWindow::printTo(QPrinter& printer) const {
  edit_->print(&printer);
}

void QtTextViewer::showText(const QString& title, const QString& text) {
  auto* window = new TextWindow(title, text, files_, boxes_, parent_);
  window->show();
}

}  // namespace elevenfive
