// The steps on the disk that tests of a start and of a close expect, as FaultyFiles logs them.
#pragma once

#include <QStringList>

namespace elevenfive {

/// The log without the steps that only repeat others.
inline QStringList withoutWrites(QStringList log) {
  log.removeIf([](const QString& step) {
    return step.startsWith(QStringLiteral("write ")) || step.startsWith(QStringLiteral("folder "));
  });
  return log;
}

/// How a close puts the working database back into the packed data file and leaves the temporary folder.
inline QStringList putBackSteps() {
  return {
      QStringLiteral("create Bak/elevenfive.dat.new"),
      QStringLiteral("flush Bak/elevenfive.dat.new"),
      QStringLiteral("rename Bak/elevenfive.dat.new -> Bak/elevenfive.dat"),
      QStringLiteral("flush folder Bak"),
      QStringLiteral("create program/elevenfive.dat.new"),
      QStringLiteral("flush program/elevenfive.dat.new"),
      QStringLiteral("rename program/elevenfive.dat.new -> program/elevenfive.dat"),
      QStringLiteral("flush folder program"),
      QStringLiteral("remove temp/elevenfive.dat"),
      QStringLiteral("remove temp/elevenfive.dat-journal"),
      QStringLiteral("remove temp/elevenfive.dat-wal"),
      QStringLiteral("remove temp/elevenfive.dat-shm"),
      QStringLiteral("remove temp/elevenfive.ico"),
  };
}

}  // namespace elevenfive
