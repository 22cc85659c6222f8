// Where the program keeps its files, and what they are called there.
//
// Between runs the packed data file is the truth, during a run the working database is. Paths have no trailing separator.
#pragma once

#include <QString>

namespace elevenfive {

struct DataFolders {
  QString program;    ///< packed data file, template, backup, users' files, Bak
  QString temporary;  ///< working database and scratch files

  /// The packed data file: working database and side file as the last close left them.
  [[nodiscard]] QString packedFile() const { return program + QLatin1StringView("/elevenfive.dat"); }
  /// Plain copy of the working database as it stood at the last start, before compaction.
  [[nodiscard]] QString backupFile() const { return program + QLatin1StringView("/elevenfive.bak"); }
  [[nodiscard]] QString templateFile() const { return program + QLatin1StringView("/TJmode.tjmod"); }
  /// A help file that someone has put there; none is shipped.
  [[nodiscard]] QString helpFile() const { return program + QLatin1StringView("/elevenfive-help.html"); }
  /// The folder through which a new pack passes, and where copies of interrupted work are kept.
  [[nodiscard]] QString bakFolder() const { return program + QLatin1StringView("/Bak"); }
  [[nodiscard]] QString packInTransit() const { return bakFolder() + QLatin1StringView("/elevenfive.dat"); }
  [[nodiscard]] QString workingFile() const { return temporary + QLatin1StringView("/elevenfive.dat"); }
  [[nodiscard]] QString sideFile() const { return temporary + QLatin1StringView("/elevenfive.ico"); }
  /// Scratch files of compaction, of the main database and of a user's file.
  [[nodiscard]] QString mainScratch() const { return temporary + QLatin1StringView("/Temp_fu.mdb"); }
  [[nodiscard]] QString userScratch() const { return temporary + QLatin1StringView("/Temp_fuVorex.mdb"); }
};

}  // namespace elevenfive
