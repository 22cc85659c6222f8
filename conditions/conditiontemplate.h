// The template in the program folder: the pattern of users' files and condition-set files, and what they are copied from.
//
// It is a working file: each save fills it with the main database's conditions, and the file wanted is a copy of it then. What
// was shipped with the program lies elsewhere and is never touched. The template is filled as a scratch copy in the temporary
// folder and replaced only by a complete, flushed and checked file, so it is whole at every instant.
#pragma once

#include "model/fileaccess.h"
#include "model/folders.h"

namespace elevenfive {

class Store;

/// Compacts the template and fills it with the main database's conditions. Throws DamagedData where it is missing, not sound
/// or has other rows than a fresh one, StoreError where the main database's own rows are at fault, FileError or StoreError
/// where it cannot be written; the old template then still stands.
void fillTemplate(Store& gConn, const DataFolders& folders, FileAccess& files = realFiles());

}  // namespace elevenfive
