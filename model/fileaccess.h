// Every write to a file that is meant to last goes through here, so that a test can let any step of it fail.
//
// Promises: replaceFile() puts a file in place only when it is complete, flushed to the disk and checked; until that instant
// the old one stands, and whoever reads the path finds either the old or the new content. Faults are FileErrors with one
// sentence that names the file and the reason. Reading needs no such care and uses QFile.
#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace elevenfive {

/// A file that is being written, from its start.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  virtual void write(const char* bytes, qint64 size) = 0;
  /// Returns once the content has reached the disk.
  virtual void flush() = 0;
  virtual void close() = 0;
};

class FileAccess {
 public:
  virtual ~FileAccess() = default;

  /// A new, empty file; an old one of this name is emptied.
  virtual std::unique_ptr<OutputFile> create(const QString& path) = 0;
  /// Flushes a file that was written elsewhere (by the database) to the disk.
  virtual void flushFile(const QString& path) = 0;
  /// Flushes a folder: names given in it last from then on.
  virtual void flushFolder(const QString& path) = 0;
  /// Gives a file another name in one step; what stood there is gone.
  virtual void rename(const QString& from, const QString& to) = 0;
  /// Removes a file; none of this name is no fault.
  virtual void remove(const QString& path) = 0;
  /// Makes a folder, with those above it; an existing one is no fault.
  virtual void makeFolder(const QString& path) = 0;
};

/// The disk itself.
FileAccess& realFiles();

/// Throws a FileError where a new file is not what it should be.
using FileCheck = std::function<void(const QString& path)>;

/// Writes a file's content; called with the file open.
using FileFill = std::function<void(OutputFile& file)>;

/// The name under which the next version of a file is written, beside it, where nothing else has it.
QString nameBeside(const QString& path);

/// Makes an empty file for the next version of a file, beside it: under nameBeside(), or with a number in it where that is
/// somebody's. Throws FileError where none can be made.
QString reserveBeside(const QString& path);

/// Makes a folder that nobody but this user may enter, as what is worked on there is private; an existing one stays as it is.
void makePrivateFolder(FileAccess& files, const QString& path);

/// Where the content of a path stands, so that a new version can take its place: what a link leads to, there or not. Throws
/// FileError where that is a folder, a device or anything else that is no plain file.
QString placeOf(const QString& path);

/// Gives a new version of a file the permissions of the one that it will replace, and its owner where the system lets us.
void takePermissions(const QString& place, const QString& fresh) noexcept;

/// Writes a file beside its place, flushes and checks it, then puts it there for good. A fault leaves the old file and no new
/// one. Through a link its target is replaced.
void replaceFile(FileAccess& files, const QString& path, const FileFill& fill, const FileCheck& check);

/// replaceFile() with the content of another file, read back and compared.
void replaceByCopy(FileAccess& files, const QString& from, const QString& to);

/// Appends a whole file to one that is being written, piece by piece.
void appendFile(OutputFile& output, const QString& from);

/// Whether files can be made in a folder by the user as whom the program acts; root can nearly everywhere.
bool isWritableFolder(const QString& path);

/// Whether two files can be read and hold the same bytes.
bool sameContent(const QString& first, const QString& second);

}  // namespace elevenfive
