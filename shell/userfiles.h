// Users' files: the four tables of one person's conditions, as a file of the program folder.
//
// A save fills the template first; the file is a copy of it, made beside its place, compared, flushed and renamed. A name that
// would lead out of the folder, or that some system cannot have as a file name, has no file.
#pragma once

#include <QString>

#include "model/fileaccess.h"
#include "model/folders.h"

namespace elevenfive {

class Store;

/// Names of at most so many characters, passwords likewise. A character is a UTF-16 unit here; the table's own check counts
/// whole characters, which lets longer ones pass.
inline constexpr int longestUserText = 50;

/// Whether a name can be that of a file on every system: no separators, no reserved characters or names, no leading or
/// trailing dot or blank, 1 to 50 characters.
bool isUserFileName(const QString& name);

class UserFiles final {
 public:
  UserFiles(Store& gConn, const DataFolders& folders, FileAccess& files = realFiles())
      : gConn_(gConn), folders_(folders), files_(files) {}

  /// Path of a user's file. Throws FileError where the name can have none.
  [[nodiscard]] QString path(const QString& name) const;

  /// Copies a user's file into the main database. False where it is missing or not sound; the main database is then as it
  /// was, and a file that is not sound stays under another name. Throws StoreError where the file cannot be read, the
  /// database cannot be written or its own conditions are at fault; both are then as they were.
  bool load(const QString& name);

  /// Writes the main database's conditions into the template and from there into a user's file. False where the template is
  /// missing or not sound. Throws FileError or StoreError where one of them cannot be written or the main database's own
  /// conditions are at fault; the old file then still stands.
  bool save(const QString& name);

  /// Gives a file that stands in the way of a new user's another name, which is the result; empty where there is none.
  QString setAside(const QString& name);

  /// Removes a user's file; none is no fault.
  void remove(const QString& name);

 private:
  Store& gConn_;
  DataFolders folders_;
  FileAccess& files_;
};

}  // namespace elevenfive
