// The companion as one call: words in, standard streams, exit status out.
#pragma once

#include <QStringList>
#include <iosfwd>

namespace elevenfive {

/// Exit statuses of the companion.
enum ExitStatus : int { exitDone = 0, exitFailed = 1, exitUsage = 2 };

struct Streams {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
};

/// Runs one call; words are those behind the program's own name. Never throws. A call that has run a session leaves Ctrl-C
/// ignored: the process is about to end.
int runProgram(const QStringList& words, const Streams& streams);

}  // namespace elevenfive
