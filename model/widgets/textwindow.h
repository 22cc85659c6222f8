// A window that shows a text, from which it can be copied, saved under a name of the person's own, or printed.
#pragma once

#include <QDialog>
#include <QPointer>

#include "model/ports.h"
#include "model/widgets/dialogports.h"

class QPlainTextEdit;
class QPrinter;

namespace elevenfive {

class TextWindow final : public QDialog {
  Q_OBJECT

 public:
  TextWindow(const QString& title, const QString& text, FileDialogs& files, Boxes& boxes, QWidget* parent);

  /// Prints the whole text, in pages of the printer's size.
  void printTo(QPrinter& printer) const;

 private:
  void saveAs();
  void print();

  FileDialogs& files_;
  Boxes& boxes_;
  QPlainTextEdit* edit_;
};

/// Opens a text window beside the main one; it stays open while the work goes on.
class QtTextViewer final : public TextViewer {
 public:
  QtTextViewer(FileDialogs& files, Boxes& boxes) : files_(files), boxes_(boxes) {}
  void setParent(QWidget* parent) { parent_ = parent; }
  void showText(const QString& title, const QString& text) override;

 private:
  FileDialogs& files_;
  Boxes& boxes_;
  QPointer<QWidget> parent_;
};

}  // namespace elevenfive
