#include "model/fileaccess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 pieceSize = 1 << 20;

/// The reason of a failed system call in the user's language.
QString reasonOf(int code) {
  switch (code) {
    case ENOSPC:
    case EDQUOT:
      return u"磁盘空间已满"_s;
    case EACCES:
    case EPERM:
      return u"没有权限"_s;
    case EROFS:
      return u"磁盘是只读的"_s;
    case ENOENT:
    case ENOTDIR:
      return u"文件夹不存在"_s;
    case EISDIR:
      return u"同名的文件夹已存在"_s;
    case ENAMETOOLONG:
      return u"文件名太长"_s;
    case EFBIG:
      return u"文件太大"_s;
    default:
      return u"读写磁盘出错"_s;
  }
}

[[noreturn]] void raiseWrite(const QString& path) {
  const QString reason = reasonOf(errno);
  throw FileError(u"无法写入文件 %1：%2。"_s.arg(path, reason));
}

/// A file descriptor that closes itself.
class Descriptor final {
 public:
  Descriptor(const QString& path, int flags)
      : number_(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, 0666)) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int number() const noexcept { return number_; }
  [[nodiscard]] bool isOpen() const noexcept { return number_ >= 0; }
  bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

class RealOutput final : public OutputFile {
 public:
  explicit RealOutput(const QString& path) : path_(path), file_(path, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW) {
    if (!file_.isOpen())
      raiseWrite(path_);
  }

  void write(const char* bytes, qint64 size) override {
    while (size > 0) {
      const ssize_t done = ::write(file_.number(), bytes, static_cast<std::size_t>(size));
      if (done < 0 && errno == EINTR)
        continue;
      if (done <= 0)
        raiseWrite(path_);
      bytes += done;
      size -= done;
    }
  }

  void flush() override {
    if (::fsync(file_.number()) != 0)
      raiseWrite(path_);
  }

  void close() override {
    if (!file_.close())
      raiseWrite(path_);
  }

 private:
  QString path_;
  Descriptor file_;
};

class RealFiles final : public FileAccess {
 public:
  std::unique_ptr<OutputFile> create(const QString& path) override { return std::make_unique<RealOutput>(path); }

  void flushFile(const QString& path) override {
    const Descriptor file(path, O_RDONLY);
    if (!file.isOpen() || ::fsync(file.number()) != 0)
      raiseWrite(path);
  }

  void flushFolder(const QString& path) override {
    const Descriptor folder(path, O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen() || (::fsync(folder.number()) != 0 && errno != EINVAL))  // some file systems know no such thing
      raiseWrite(path);
  }

  void rename(const QString& from, const QString& to) override {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
      raiseWrite(to);
  }

  void remove(const QString& path) override {
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT)
      throw FileError(u"无法删除文件 %1：%2。"_s.arg(path, reasonOf(errno)));
  }

  void makeFolder(const QString& path) override {
    if (!QDir().mkpath(path))
      throw FileError(u"无法建立文件夹 %1。"_s.arg(path));
  }
};

[[noreturn]] void raiseRead(const QString& path) {
  throw FileError(u"无法读取文件 %1。"_s.arg(path));
}

}  // namespace

FileAccess& realFiles() {
  static RealFiles files;  // holds no state
  return files;
}

QString nameBeside(const QString& path) {
  return path + u".new"_s;
}

/// Taking the name and making the file are one step, so nothing of anybody else is written over, nor through a link.
QString reserveBeside(const QString& path) {
  constexpr int mostNames = 1000;  // so many are not left behind by chance
  QString name = nameBeside(path);
  for (int n = 2;; ++n) {
    if (const Descriptor file(name, O_WRONLY | O_CREAT | O_EXCL); file.isOpen())
      return name;
    if (errno != EEXIST || n > mostNames)
      raiseWrite(name);
    name = nameBeside(path + u".%1"_s.arg(n));
  }
}

void makePrivateFolder(FileAccess& files, const QString& path) {
  const bool stands = QFileInfo::exists(path);
  files.makeFolder(path);
  if (!stands)
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QString placeOf(const QString& path) {
  constexpr int mostLinks = 40;  // so many the system follows
  QFileInfo place(path);
  for (int links = 0; place.isSymLink(); ++links) {
    if (links == mostLinks)
      throw FileError(u"无法写入文件 %1：链接没有尽头。"_s.arg(path));
    place.setFile(place.symLinkTarget());
  }
  if (place.isDir())
    throw FileError(u"无法写入文件 %1：%2。"_s.arg(path, reasonOf(EISDIR)));
  if (place.exists() && !place.isFile())
    throw FileError(u"无法写入文件 %1：它不是普通文件。"_s.arg(path));
  return place.filePath();
}

void takePermissions(const QString& place, const QString& fresh) noexcept {
  struct stat old {};
  const QByteArray name = QFile::encodeName(fresh);
  if (::stat(QFile::encodeName(place).constData(), &old) != 0)
    return;
  const bool given = ::chown(name.constData(), old.st_uid, old.st_gid) == 0;
  ::chmod(name.constData(), old.st_mode & (given ? 0777U : 0755U));  // nobody new may write
}

void replaceFile(FileAccess& files, const QString& given, const FileFill& fill, const FileCheck& check) {
  const QString path = placeOf(given);
  const QString fresh = reserveBeside(path);
  try {
    const std::unique_ptr<OutputFile> file = files.create(fresh);
    takePermissions(path, fresh);
    fill(*file);
    file->flush();
    file->close();
    check(fresh);
    files.rename(fresh, path);
    files.flushFolder(QFileInfo(path).absolutePath());
  } catch (const Error&) {
    try {
      files.remove(fresh);
    } catch (const FileError&) {
      // The first fault is the one to tell; what is left is in nobody's way.
    }
    throw;
  }
}

void replaceByCopy(FileAccess& files, const QString& from, const QString& to) {
  replaceFile(
      files, to, [&](OutputFile& file) { appendFile(file, from); },
      [&](const QString& fresh) {
        if (!sameContent(from, fresh))
          throw FileError(u"写入文件 %1 后核对失败。"_s.arg(to));
      });
}

void appendFile(OutputFile& output, const QString& from) {
  QFile source(from);
  if (QFileInfo(from).isDir() || !source.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    raiseRead(from);
  QByteArray piece(std::min(pieceSize, std::max<qint64>(source.size(), 1)), Qt::Uninitialized);
  for (;;) {
    const qint64 count = source.read(piece.data(), piece.size());
    if (count < 0)
      raiseRead(from);
    if (count == 0)
      return;
    output.write(piece.constData(), count);
  }
}

bool isWritableFolder(const QString& path) {
  return QFileInfo(path).isDir() &&
         ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

bool sameContent(const QString& first, const QString& second) {
  QFile a(first);
  QFile b(second);
  if (!a.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !b.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
      a.size() != b.size())
    return false;
  for (qint64 left = a.size(); left > 0;) {
    const qint64 size = std::min(left, pieceSize);
    const QByteArray pieceA = a.read(size);
    if (pieceA.size() != size || pieceA != b.read(size))
      return false;
    left -= size;
  }
  return true;
}

}  // namespace elevenfive
