// The pack: two files in one, as the program folder keeps them between runs.
//
//   offset      size   field
//   0           4      len1, unsigned, little-endian: size of the first payload
//   4           4      len2, the same of the second
//   8           len1   first payload: the database
//   8 + len1    len2   second payload: the side file
//
// No magic, version, checksum or compression; what stands behind the second payload is not read. Payloads pass through in
// pieces, so lengths that lie cost no memory.
#pragma once

#include <QString>
#include <optional>

#include "model/fileaccess.h"

class QIODevice;

namespace elevenfive {

struct PackLengths {
  quint32 first = 0;
  quint32 second = 0;
};

/// The lengths of a pack; nothing where the header is cut off or promises more than the device holds. The device stands at
/// the first payload afterwards.
std::optional<PackLengths> readPackLengths(QIODevice& pack);

/// Packs file1 and file2 into packFile, which is replaced only by the complete, flushed and compared new pack. Throws
/// FileError where a file is missing, cannot be read or written, or is larger than the format can say (4 GB less a byte).
void writePack(const QString& file1, const QString& file2, const QString& packFile, FileAccess& files);

/// Unpacks packFile into file1 and file2. Both are replaced, file2 first, only when both payloads were written and check(),
/// called with the path of the new first file, has passed. Throws FileError where the pack is missing or unreadable or a file
/// cannot be written, DamagedData where the lengths do not fit the file, and what check() throws.
void readPack(const QString& packFile, const QString& file2, const QString& file1, FileAccess& files,
              const FileCheck& check);

/// Whether the first payload of a pack holds the same bytes as a file.
bool packHolds(const QString& packFile, const QString& file1);

/// writePack(); false on any fault.
bool packFiles(const QString& file1, const QString& file2, const QString& packFile, FileAccess& files = realFiles());

/// readPack() without a check; false on any fault. File1 is then as it was, and so is file2 unless the very last step failed,
/// which gives the new file1 its name.
bool unpackFiles(const QString& packFile, const QString& file2, const QString& file1, FileAccess& files = realFiles());

}  // namespace elevenfive
