// Compaction and soundness of database files.
#pragma once

#include <QString>

#include "model/fileaccess.h"
#include "model/folders.h"
#include "model/schema.h"

namespace elevenfive {

/// How closely a database is looked at.
enum class CheckDepth {
  pages,   ///< its pages, its indexes and the types of its values
  values,  ///< also that each column takes its values, which doubles the time: for a file that nothing else vouches for
};

/// Throws DamagedData with the reason where a file is missing or no database, its pages, indexes or values are not sound, or
/// it lacks a table or column of its kind. Throws StoreError where that cannot be told: another program has the file, it may
/// not be read, the disk or the memory fails.
void checkDatabase(const QString& path, StoreKind kind, CheckDepth depth = CheckDepth::values);

/// Compacts the main database in place; first copies it to the plain backup where takeBackup is set. A missing file is
/// passed over. The backup and the database are replaced only by complete, checked files, so each fault leaves them as they
/// were and is ignored; the first one's sentence is the result, empty where all went well. The compacted file is not
/// flushed: the working database lasts for one run.
QString compactMainDb(const QString& path, bool takeBackup, const DataFolders& folders,
                      FileAccess& files = realFiles());

/// The same for a user's file or a copy of the template, but without the backup that was asked for it is not compacted.
QString compactUserDb(const QString& path, bool takeBackup, const DataFolders& folders,
                      FileAccess& files = realFiles());

}  // namespace elevenfive
