#include "model/packfile.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <limits>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr qint64 headerSize = 8;
constexpr qint64 pieceSize = 1 << 20;
constexpr qint64 largestPayload = std::numeric_limits<quint32>::max();

bool isSameFile(const QString& first, const QString& second) {
  const QString path = QFileInfo(first).canonicalFilePath();
  return QFileInfo(first).absoluteFilePath() == QFileInfo(second).absoluteFilePath() ||
         (!path.isEmpty() && path == QFileInfo(second).canonicalFilePath());
}

void demandDifferent(const QString& first, const QString& second) {
  if (isSameFile(first, second))
    throw FileError(u"文件 %1 不能同时用作数据包和其中的文件。"_s.arg(first));
}

void openPack(QFile& pack) {
  const QFileInfo file(pack.fileName());
  if (file.exists() && !file.isFile())  // opening a pipe would wait for ever
    throw FileError(u"无法打开文件 %1：它不是普通文件。"_s.arg(pack.fileName()));
  if (!pack.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    throw FileError(u"无法打开文件 %1。"_s.arg(pack.fileName()));
}

quint32 payloadSize(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile())
    throw FileError(u"找不到文件 %1。"_s.arg(path));
  if (file.size() > largestPayload)
    throw FileError(u"文件 %1 太大，无法打包。"_s.arg(path));
  return static_cast<quint32>(file.size());
}

/// Copies bytes from where the pack stands.
void copyPayload(QFile& pack, qint64 size, OutputFile& output) {
  QByteArray piece(std::min(size, pieceSize), Qt::Uninitialized);
  while (size > 0) {
    const qint64 count = pack.read(piece.data(), std::min(size, pieceSize));
    if (count < 0)
      throw FileError(u"无法读取文件 %1。"_s.arg(pack.fileName()));
    if (count == 0)
      throw DamagedData(u"数据包 %1 不完整"_s.arg(pack.fileName()));
    output.write(piece.constData(), count);
    size -= count;
  }
}

/// Whether the next bytes of the pack are those of a file.
bool holdsFile(QFile& pack, const QString& path, qint64 size) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || file.size() != size)
    return false;
  while (size > 0) {
    const QByteArray piece = file.read(std::min(size, pieceSize));
    if (piece.isEmpty() || piece != pack.read(piece.size()))
      return false;
    size -= piece.size();
  }
  return true;
}

/// Reads a new pack back and compares it with the two files.
void checkPack(const QString& path, const QString& file1, const QString& file2, const PackLengths& lengths) {
  QFile pack(path);
  openPack(pack);
  const std::optional<PackLengths> found = readPackLengths(pack);
  if (!found || found->first != lengths.first || found->second != lengths.second ||
      !holdsFile(pack, file1, lengths.first) || !holdsFile(pack, file2, lengths.second))
    throw FileError(u"写入文件 %1 后核对失败。"_s.arg(path));
}

/// A file that goes again unless it was put in place.
class Fresh final {
 public:
  Fresh(FileAccess& files, const QString& path) : files_(files), place_(placeOf(path)), path_(reserveBeside(place_)) {}
  ~Fresh() {
    try {
      if (!placed_)
        files_.remove(path_);
    } catch (const FileError&) {
      // What is left is in nobody's way.
    }
  }
  Fresh(const Fresh&) = delete;
  Fresh& operator=(const Fresh&) = delete;

  [[nodiscard]] const QString& path() const noexcept { return path_; }
  void take(QFile& pack, qint64 size) {
    const std::unique_ptr<OutputFile> output = files_.create(path_);
    takePermissions(place_, path_);
    copyPayload(pack, size, *output);
    output->close();
  }
  void put() {
    files_.rename(path_, place_);
    placed_ = true;
  }

 private:
  FileAccess& files_;
  QString place_;
  QString path_;
  bool placed_ = false;
};

}  // namespace

std::optional<PackLengths> readPackLengths(QIODevice& pack) {
  std::array<char, headerSize> header{};
  if (pack.read(header.data(), headerSize) != headerSize)
    return std::nullopt;
  const PackLengths lengths{qFromLittleEndian<quint32>(header.data()), qFromLittleEndian<quint32>(header.data() + 4)};
  if (headerSize + qint64{lengths.first} + qint64{lengths.second} > pack.size())
    return std::nullopt;
  return lengths;
}

void writePack(const QString& file1, const QString& file2, const QString& packFile, FileAccess& files) {
  demandDifferent(packFile, file1);
  demandDifferent(packFile, file2);
  const PackLengths lengths{payloadSize(file1), payloadSize(file2)};
  std::array<char, headerSize> header{};
  qToLittleEndian(lengths.first, header.data());
  qToLittleEndian(lengths.second, header.data() + 4);
  replaceFile(
      files, packFile,
      [&](OutputFile& pack) {
        pack.write(header.data(), headerSize);
        appendFile(pack, file1);
        appendFile(pack, file2);
      },
      [&](const QString& fresh) { checkPack(fresh, file1, file2, lengths); });
}

void readPack(const QString& packFile, const QString& file2, const QString& file1, FileAccess& files,
              const FileCheck& check) {
  demandDifferent(packFile, file1);
  demandDifferent(packFile, file2);
  demandDifferent(file1, file2);
  QFile pack(packFile);
  openPack(pack);
  const std::optional<PackLengths> lengths = readPackLengths(pack);
  if (!lengths)
    throw DamagedData(u"数据包 %1 不完整"_s.arg(packFile));
  Fresh first(files, file1);
  Fresh second(files, file2);
  first.take(pack, lengths->first);
  second.take(pack, lengths->second);
  check(first.path());
  second.put();
  first.put();
}

bool packHolds(const QString& packFile, const QString& file1) {
  QFile pack(packFile);
  if (!QFileInfo(packFile).isFile() || !pack.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
    return false;
  const std::optional<PackLengths> lengths = readPackLengths(pack);
  return lengths && holdsFile(pack, file1, lengths->first);
}

bool packFiles(const QString& file1, const QString& file2, const QString& packFile, FileAccess& files) {
  try {
    writePack(file1, file2, packFile, files);
    return true;
  } catch (const Error&) {
    return false;
  }
}

bool unpackFiles(const QString& packFile, const QString& file2, const QString& file1, FileAccess& files) {
  try {
    readPack(packFile, file2, file1, files, [](const QString&) {});
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace elevenfive
