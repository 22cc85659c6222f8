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

/// How a start unpacks the packed data file into the temporary folder.
inline QStringList unpackSteps() {
  return {
      QStringLiteral("create temp/elevenfive.dat.new"),
      QStringLiteral("create temp/elevenfive.ico.new"),
      QStringLiteral("remove temp/elevenfive.dat-journal"),
      QStringLiteral("remove temp/elevenfive.dat-wal"),
      QStringLiteral("remove temp/elevenfive.dat-shm"),
      QStringLiteral("rename temp/elevenfive.ico.new -> temp/elevenfive.ico"),
      QStringLiteral("rename temp/elevenfive.dat.new -> temp/elevenfive.dat"),
  };
}

/// How a start takes the backup and compacts the working database.
inline QStringList compactionSteps() {
  return {
      QStringLiteral("create program/elevenfive.bak.new"),
      QStringLiteral("flush program/elevenfive.bak.new"),
      QStringLiteral("rename program/elevenfive.bak.new -> program/elevenfive.bak"),
      QStringLiteral("flush folder program"),
      QStringLiteral("remove temp/Temp_fu.mdb"),
      QStringLiteral("rename temp/Temp_fu.mdb -> temp/elevenfive.dat"),
  };
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
