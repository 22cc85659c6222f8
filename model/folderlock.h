// One instance a folder: a lock that ends with its process, however that ends.
#pragma once

#include <QString>

namespace elevenfive {

class FolderLock final {
 public:
  /// Locks a folder. Throws AlreadyRunning where another instance holds it, that of another user of the system included,
  /// FileError where the folder is missing or cannot be written.
  explicit FolderLock(const QString& folder);
  ~FolderLock();
  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&&) = delete;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

  /// Whether the locked file is still what stands in the folder; it is not where someone has cleared the folder.
  [[nodiscard]] bool isCurrent() const;

 private:
  void openFile(const QString& folder);

  QString path_;
  int file_ = -1;
};

}  // namespace elevenfive
