// Writes the packed data file and the template that are shipped with the program, by the same code that a fresh folder is
// filled with.
//
//   make_shipped FOLDER SCRATCH     what stands in FOLDER is replaced; SCRATCH is for working files
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

#include "model/errors.h"
#include "model/workspace.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 3) {
    std::fputs("usage: make_shipped FOLDER SCRATCH\n", stderr);
    return 2;
  }
  const elevenfive::Workspace::Folders folders{QFile::decodeName(argv[1]), QFile::decodeName(argv[2])};
  try {
    QDir(folders.program).removeRecursively();
    elevenfive::Workspace::create(folders, false);
    return 0;
  } catch (const elevenfive::Error& fault) {
    std::fprintf(stderr, "%s\n", fault.what());
    return 1;
  }
}
