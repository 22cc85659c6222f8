// elevenfive-cli: the program's operations without its window.
#include <langinfo.h>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <QCoreApplication>

#include "cli/program.h"
#include "model/programtitle.h"

int main(int argc, char** argv) {
  // A reader that goes away must not cut off the session's end, which puts the data back.
  std::signal(SIGPIPE, SIG_IGN);
  // Words and file names are UTF-8 whatever the surroundings say.
  std::setlocale(LC_ALL, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
    setenv("LC_ALL", "C.UTF-8", 1);
  std::ios::sync_with_stdio(false);

  QCoreApplication application(argc, argv);
  QCoreApplication::setApplicationName(elevenfive::programName.toString());
  const QStringList words = QCoreApplication::arguments().mid(1);
  return elevenfive::runProgram(words, {std::cin, std::cout, std::cerr});
}
