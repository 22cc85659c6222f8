// Calls of the companion inside the test's own process, over a folder of its own.
#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <csignal>
#include <sstream>

#include "cli/program.h"

namespace elevenfive {

class CliProcess final {
 public:
  struct Outcome {
    int status = 0;
    QString out;
    QString err;
  };

  /// A call with the words behind the program's name; --folder and --temp are put in front.
  Outcome call(const QStringList& words, const QString& input = {}) {
    return callWithBytes(words, input.toStdString());
  }

  /// The same, whatever the bytes of standard input are.
  Outcome callWithBytes(const QStringList& words, const std::string& input) {
    return callAsIs(QStringList{QStringLiteral("--folder"), folder(), QStringLiteral("--temp"), folder()} + words,
                    input);
  }

  /// A call with exactly these words.
  static Outcome callAsIs(const QStringList& words, const std::string& input = {}) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    Outcome outcome;
    outcome.status = runProgram(words, {in, out, err});
    std::signal(SIGINT, SIG_DFL);  // a process that ends leaves it ignored
    outcome.out = QString::fromStdString(out.str());
    outcome.err = QString::fromStdString(err.str());
    return outcome;
  }

  /// A batch of these lines.
  Outcome batch(const QString& lines) { return call({QStringLiteral("batch")}, lines); }

  /// The rows of a statement without its header line.
  QString rows(const QString& sql) { return call({QStringLiteral("sql"), sql}).out.section(u'\n', 1); }

  [[nodiscard]] QString folder() const { return folder_.path(); }
  [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }

 private:
  QTemporaryDir folder_;
};

}  // namespace elevenfive
