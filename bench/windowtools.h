// A window worked by a program: clicks and keys sent as events, and turns of the event loop until all is painted.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>
#include <stdexcept>

#include "model/ports.h"
#include "model/widgets/dialogports.h"

namespace elevenfive {

/// Counts what is painted in the whole program.
class PaintCount final : public QObject {
 public:
  PaintCount() { qApp->installEventFilter(this); }

  /// Lets events run until something has been painted and nothing more is waiting to be.
  void settle() {
    constexpr int patience = 5000;
    QElapsedTimer waiting;
    waiting.start();
    for (int before = paints_; paints_ == before;) {
      QApplication::processEvents();
      if (waiting.elapsed() > patience)
        throw std::runtime_error("nothing was painted");
    }
    finish();
  }

  /// Lets events run until nothing is waiting to be painted.
  void finish() {
    for (int before = -1; paints_ != before;) {
      before = paints_;
      QApplication::processEvents();
    }
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint)
      ++paints_;
    return false;
  }

 private:
  int paints_ = 0;
};

/// The control of a name below a parent.
template <typename Control>
Control& control(const QWidget& parent, const QString& name) {
  auto* found = parent.findChild<Control*>(name);
  if (found == nullptr)
    throw std::runtime_error("no control " + name.toStdString());
  return *found;
}

inline void clickAt(QWidget& widget, const QPoint& place) {
  for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
}

inline void click(QWidget& widget) {
  clickAt(widget, widget.rect().center());
}

inline void pressEnter(QWidget& widget) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
  }
}

/// Answers at once: yes, what an input line offers, and one file for every dialog.
struct QuietPerson final : Boxes, Inputs, FileDialogs, TextViewer {
  QString file;
  Answer show(const Box& box) override {
    if (box.kind == BoxKind::critical)
      throw std::runtime_error(box.text.toStdString());
    return Answer::yes;
  }
  QString askText(const InputBox& box) override { return box.defaultText; }
  QString openFile(const QString&, const QString&) override { return file; }
  QString saveFile(const QString&, const QString&, const QString&) override { return file; }
  void showText(const QString&, const QString&) override {}
};

}  // namespace elevenfive
