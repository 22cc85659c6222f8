// A fresh workspace in a temporary folder, and draws and rows written as text.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <ostream>

#include "model/workspace.h"
#include "tests/support/faultyfiles.h"

namespace elevenfive {

/// A folder of its own with a fresh data file and template, open; gone with the object.
class TestWorkspace final {
 public:
  TestWorkspace();

  Workspace::Folders folders;
  [[nodiscard]] Store& store() { return workspace_->gConn; }
  [[nodiscard]] Workspace& workspace() { return *workspace_; }

  /// Closes the data, which puts it back into its packed file, and opens it again as a second start of the program would.
  void reopen();
  void close();

  /// Puts draws into the history, one a line: "11031510 01 02 03 04 05". Derived columns stay empty.
  void addDraws(const QString& lines);

  /// The rows of a statement, one a line, cells joined by one blank, NULL as "-".
  QStringList rows(const char* sql);

 private:
  QTemporaryDir folder_;
  UnflushedFiles files_;
  std::unique_ptr<Workspace> workspace_;
};

/// A row "01 02 03 04 05" as a draw, in the order given.
Draw drawFrom(const QString& text);

}  // namespace elevenfive

/// Lets a failed comparison print its texts.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}
