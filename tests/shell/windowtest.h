// What window tests share: boxes, input lines and dialogs that answer at once, and controls found by their names.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <deque>
#include <functional>

#include "model/widgets/dialogports.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// Hands out file names in order, an empty one when there are none left.
class AnsweringFiles final : public FileDialogs {
 public:
  std::deque<QString> paths;
  std::function<void()> onOpen;  ///< happens while the dialog of openFile() is up
  QString openFile(const QString&, const QString&) override {
    if (onOpen)
      onOpen();
    return next();
  }
  QString saveFile(const QString&, const QString&, const QString&) override { return next(); }

 private:
  QString next() {
    if (paths.empty())
      return {};
    QString path = paths.front();
    paths.pop_front();
    return path;
  }
};

class RecordingTexts final : public TextViewer {
 public:
  QStringList texts;
  void showText(const QString&, const QString& text) override { texts << text; }
};

/// The control of a name below a parent; the test ends where there is none.
template <typename Control>
Control& control(QWidget& parent, const QString& name) {
  auto* found = parent.findChild<Control*>(name);
  if (found == nullptr)
    throw std::runtime_error("no control " + name.toStdString());
  return *found;
}

inline void click(QWidget& widget) {
  QTest::mouseClick(&widget, Qt::LeftButton);
}

}  // namespace elevenfive
