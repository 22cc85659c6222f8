// What the window asks of the person beside boxes and input lines: a file, or a look at a text.
//
// The window implements them with Qt's dialogs, tests with doubles that answer at once.
#pragma once

#include <QString>

namespace elevenfive {

class FileDialogs {
 public:
  virtual ~FileDialogs() = default;
  /// The path of an existing file; empty where the dialog was cancelled. filter is in Qt's form, "文本文件 (*.txt)".
  virtual QString openFile(const QString& title, const QString& filter) = 0;
  /// The path to save to, an existing file only after a question; empty where the dialog was cancelled.
  virtual QString saveFile(const QString& title, const QString& filter, const QString& defaultName) = 0;
};

class TextViewer {
 public:
  virtual ~TextViewer() = default;
  /// Shows a text that can be copied and saved under a name of the person's own.
  virtual void showText(const QString& title, const QString& text) = 0;
};

}  // namespace elevenfive
