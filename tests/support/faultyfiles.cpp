#include "tests/support/faultyfiles.h"

#include <csignal>
#include <utility>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString shortName(const QString& path) {
  return path.section(u'/', -2);
}

class FaultyOutput final : public OutputFile {
 public:
  FaultyOutput(FaultyFiles& files, QString path)
      : files_(files), path_(std::move(path)), file_(realFiles().create(path_)) {}

  void write(const char* bytes, qint64 size) override {
    files_.step(u"write "_s + shortName(path_));
    const qint64 room = files_.room(size);
    file_->write(bytes, room);
    if (room < size)
      throw FileError(u"无法写入文件 %1：磁盘空间已满。"_s.arg(path_));
  }
  void flush() override {
    files_.step(u"flush "_s + shortName(path_));
    file_->flush();
  }
  void close() override { file_->close(); }

 private:
  FaultyFiles& files_;
  QString path_;
  std::unique_ptr<OutputFile> file_;
};

class UnflushedOutput final : public OutputFile {
 public:
  explicit UnflushedOutput(const QString& path) : file_(realFiles().create(path)) {}
  void write(const char* bytes, qint64 size) override { file_->write(bytes, size); }
  void flush() override {}
  void close() override { file_->close(); }

 private:
  std::unique_ptr<OutputFile> file_;
};

}  // namespace

std::unique_ptr<OutputFile> UnflushedFiles::create(const QString& path) {
  return std::make_unique<UnflushedOutput>(path);
}

std::unique_ptr<OutputFile> FaultyFiles::create(const QString& path) {
  step(u"create "_s + shortName(path));
  return std::make_unique<FaultyOutput>(*this, path);
}

void FaultyFiles::flushFile(const QString& path) {
  step(u"flush "_s + shortName(path));
  realFiles().flushFile(path);
}

void FaultyFiles::flushFolder(const QString& path) {
  step(u"flush folder "_s + path.section(u'/', -1));
  realFiles().flushFolder(path);
}

void FaultyFiles::rename(const QString& from, const QString& to) {
  step(u"rename "_s + shortName(from) + u" -> "_s + shortName(to));
  realFiles().rename(from, to);
}

void FaultyFiles::remove(const QString& path) {
  step(u"remove "_s + shortName(path));
  realFiles().remove(path);
}

void FaultyFiles::makeFolder(const QString& path) {
  step(u"folder "_s + shortName(path));
  realFiles().makeFolder(path);
}

void FaultyFiles::step(const QString& text) {
  const qint64 number = steps++;
  if (text != failingText && (failingStep == never || number < failingStep)) {
    log << text;
    if (shared != nullptr)
      *shared << text;
    return;
  }
  if (kill)
    std::raise(SIGKILL);
  throw FileError(u"无法完成一步：%1。"_s.arg(text));
}

qint64 FaultyFiles::room(qint64 size) {
  if (writableBytes == never)
    return size;
  const qint64 fits = std::min(size, writableBytes);
  writableBytes -= fits;
  return fits;
}

}  // namespace elevenfive
