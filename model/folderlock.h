// One instance a folder: a lock that ends with its process, however that ends.
#pragma once

#include <QString>

namespace elevenfive {

class FolderLock final {
 public:
  /// Locks a folder. Throws AlreadyRunning where another instance holds it, FileError where the folder is missing or cannot
  /// be written.
  explicit FolderLock(const QString& folder);
  ~FolderLock();
  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&&) = delete;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  bool isCurrent() const;

  QString path_;
  int file_ = -1;
};

}  // namespace elevenfive
