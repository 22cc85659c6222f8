// A copy of the template that holds the conditions of the main database: what becomes a user's file or a condition-set file.
//
// It is made in the temporary folder and is gone with the object; the template itself is only read.
#pragma once

#include <QString>

#include "model/fileaccess.h"
#include "model/folders.h"

namespace elevenfive {

class Store;

class FilledTemplate final {
 public:
  /// Copies, compacts, fills and checks. Throws DamagedData where the template is missing or not sound, FileError or
  /// StoreError where the copy cannot be written.
  FilledTemplate(Store& gConn, const DataFolders& folders, FileAccess& files = realFiles());
  ~FilledTemplate();
  FilledTemplate(const FilledTemplate&) = delete;
  FilledTemplate& operator=(const FilledTemplate&) = delete;

  /// Puts a copy of it in a file's place, complete, flushed and compared. Throws FileError; the old file then still stands.
  void copyTo(const QString& path);

 private:
  void fill(Store& gConn, const DataFolders& folders);
  void removeScratch();

  FileAccess& files_;
  QString scratch_;
};

}  // namespace elevenfive
