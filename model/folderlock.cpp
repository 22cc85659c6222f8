#include "model/folderlock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <utility>

#include "model/errors.h"
#include "model/fileaccess.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t readableByAll = 0644;

}  // namespace

FolderLock::FolderLock(const QString& folder) : path_(folder + u"/elevenfive.lock"_s) {
  if (!QFileInfo(folder).isDir())
    throw FileError(u"找不到文件夹 %1。"_s.arg(folder));
  do {
    if (file_ >= 0)
      ::close(std::exchange(file_, -1));
    openFile(folder);
    if (::flock(file_, LOCK_EX | LOCK_NB) != 0) {
      const bool taken = errno == EWOULDBLOCK;
      ::close(std::exchange(file_, -1));
      if (taken)
        throw AlreadyRunning(u"程序正在运行,不允许同时打开多个!!!"_s);
      throw FileError(u"无法锁定文件夹 %1。"_s.arg(folder));
    }
    // The former holder removes the file as it lets go: what was locked may no longer be what stands there.
  } while (!isCurrent());
  if (!isWritableFolder(folder)) {
    ::close(std::exchange(file_, -1));
    throw FileError(u"无法在文件夹 %1 中写入文件。"_s.arg(folder));
  }
  ::fchmod(file_, readableByAll);  // so that another user's instance can tell; nothing is lost where it is not ours
}

/// A file of another user can mostly be read, which is all that a lock needs.
void FolderLock::openFile(const QString& folder) {
  const QByteArray name = QFile::encodeName(path_);
  file_ = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (file_ < 0 && errno == EACCES)
    file_ = ::open(name.constData(), O_RDONLY | O_CLOEXEC);
  if (file_ >= 0)
    return;
  if (errno == EACCES && QFileInfo::exists(path_))
    throw FileError(u"文件 %1 属于其他用户，不能打开；请先关闭该用户的程序，或删除这个文件。"_s.arg(path_));
  throw FileError(u"无法在文件夹 %1 中写入文件。"_s.arg(folder));
}

/// Where someone has removed the file, what stands there by now may be the lock of another instance.
FolderLock::~FolderLock() {
  if (file_ < 0)
    return;
  if (isCurrent())
    ::unlink(QFile::encodeName(path_).constData());
  ::close(file_);
}

FolderLock::FolderLock(FolderLock&& other) noexcept
    : path_(std::move(other.path_)), file_(std::exchange(other.file_, -1)) {}

bool FolderLock::isCurrent() const {
  struct stat held {};
  struct stat there {};
  return ::fstat(file_, &held) == 0 && ::stat(QFile::encodeName(path_).constData(), &there) == 0 &&
         held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

}  // namespace elevenfive
