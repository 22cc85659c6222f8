// The program's own files, which no export may replace, whatever name a person gives.
//
// They are its data, the users' files and the programs themselves, in the program folder, its folder Bak and the temporary
// folder. A file of the same name anywhere else is anybody's.
#pragma once

#include <QString>

#include "model/folders.h"

namespace elevenfive {

/// Whether two paths mean one file, which need not be there: a link means what it leads to. Throws FileError where something
/// other than a plain file stands there.
bool isSamePlace(const QString& path, const QString& other);

/// Throws FileError where a file to be written is one of the program's own in these folders, or where something other than a
/// plain file stands in its place.
void demandForeignFile(const QString& path, const DataFolders& folders);

/// The same while the data is open, for whoever does not know the folders: they are those that an instance has locked.
void demandForeignFile(const QString& path);

}  // namespace elevenfive
