#include "acquire/downfile.h"

#include <QByteArray>
#include <QEventLoop>
#include <QFileInfo>
#include <QStringDecoder>
#include <QTimer>
#include <algorithm>

#include "acquire/contentrange.h"
#include "acquire/downloaderror.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int rangeOutside = 416;
constexpr int partialContent = 206;
constexpr int lastSuccess = 299;

/// Statuses that end a download with a text of their own, whether or not the rest of their answer has come.
struct Refusal {
  int status;
  QStringView text;
};
constexpr Refusal refusals[] = {{403, u"连接数过多"}, {404, u"文件无法找到"}};

/// The file as far as it has come.
class MemoryStream final {
 public:
  explicit MemoryStream(qint64 limit) : limit_(limit) {}

  /// Writes over what stands there; a gap before the position becomes zeros.
  void write(qint64 position, const QByteArray& bytes) {
    const qint64 end = position + bytes.size();
    if (end > limit_)
      throw DownloadError(u"要下载的文件超过 %1 MB，已停止下载。"_s.arg(limit_ >> 20));
    if (const qint64 size = bytes_.size(); end > size) {
      bytes_.resize(end);
      std::fill(bytes_.begin() + size, bytes_.end(), '\0');
    }
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + position);
  }

  [[nodiscard]] const QByteArray& bytes() const noexcept { return bytes_; }

 private:
  qint64 limit_;
  QByteArray bytes_;
};

/// One download from its first block to its end.
class Download final {
 public:
  Download(const Module_DownFile::Ports& ports, PolledRequest& request, qint64 limit)
      : ports_(ports), request_(request), stream_(limit) {}

  QString run(const QString& url, const QString& path) {
    createEmpty(path);
    while (!fetchBlock(url)) {
      position_ += Module_DownFile::blockSize;
      ports_.events.yield();
    }
    save(path);
    return finished_ ? u"下载完成"_s : result_;
  }

 private:
  void createEmpty(const QString& path) {
    ports_.files.remove(path);
    ports_.files.create(path)->close();
  }

  /// Asks for the block at the position; true where it was the last, for better or worse.
  bool fetchBlock(const QString& url) {
    request_.open(u"GET"_s, url);
    request_.setRequestHeader(
        u"Range"_s,
        u"bytes=%1-%2"_s.arg(QString::number(position_), QString::number(position_ + Module_DownFile::blockSize)));
    request_.setRequestHeader(u"Content-Type:"_s, u"application/octet-stream"_s);
    request_.send();
    awaitAnswer();
    if (isEnding())
      return true;
    stream_.write(position_, request_.responseBody());
    const QString header = request_.getResponseHeader(u"Content-Range"_s);
    if (header.isEmpty())
      ports_.boxes.show({BoxKind::information, u"错误006"_s, u"无法获取文件大小！"_s});
    const ContentRange range = readContentRange(header);
    result_ = QString::number(range.rangeEnd) + u'/' + QString::number(range.totalSize);
    finished_ = range.totalSize - range.rangeEnd == 1;
    return finished_;
  }

  void awaitAnswer() {
    for (int round = 0; round < Module_DownFile::rounds && request_.readyState() != PolledRequest::complete; ++round) {
      ports_.pause.sleep(Module_DownFile::roundTime);
      ports_.events.yield();
    }
  }

  /// Judges the answer. The order counts: a refusal is one also while its body is still on its way.
  bool isEnding() {
    const int status = request_.status();
    finished_ = status == rangeOutside;
    if (finished_)
      return true;
    for (const Refusal& refusal : refusals) {
      if (refusal.status == status)
        return endWith(refusal.text.toString());
    }
    if (request_.readyState() != PolledRequest::complete)
      return endWith(u"下载文件超时"_s);
    if (status > lastSuccess)
      return endWith(u"未知错误："_s + request_.statusText() + u'(' + QString::number(status) + u')');
    return status != partialContent && endWith(u"不支持断点续传"_s);
  }

  bool endWith(const QString& result) {
    result_ = result;
    return true;
  }

  void save(const QString& path) {
    const QByteArray& bytes = stream_.bytes();
    replaceFile(
        ports_.files, path, [&](OutputFile& file) { file.write(bytes.constData(), bytes.size()); },
        [&](const QString& fresh) {
          if (QFileInfo(fresh).size() != bytes.size())
            throw FileError(u"写入文件 %1 后核对失败。"_s.arg(path));
        });
  }

  const Module_DownFile::Ports& ports_;
  PolledRequest& request_;
  MemoryStream stream_;
  qint64 position_ = 0;  ///< where the next block starts
  bool finished_ = false;
  QString result_;  ///< how far the download is, then how it failed
};

bool isUtf8(const QByteArray& bytes) {
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  static_cast<void>(QString(utf8(bytes)));
  return !utf8.hasError();
}

/// How many bytes at the end begin a character of UTF-8 without ending it; 0 where there is no such character.
qsizetype brokenTail(const QByteArray& bytes) {
  constexpr qsizetype longestCharacter = 4;
  for (qsizetype tail = 1; tail < longestCharacter && tail <= bytes.size(); ++tail) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - tail]);
    if ((byte & 0xC0U) == 0x80U)
      continue;  // inside a character
    const qsizetype length = byte >= 0xF0U ? 4 : byte >= 0xE0U ? 3 : byte >= 0xC0U ? 2 : 1;
    return length > tail ? tail : 0;
  }
  return 0;
}

/// A text of which the end may be missing: half a character there does not make UTF-8 something else, it is left out.
QString decodePart(const QByteArray& bytes) {
  const QByteArray whole = bytes.chopped(brokenTail(bytes));
  return decodeText(isUtf8(whole) ? whole : bytes);
}

}  // namespace

void EventLoopPause::sleep(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  loop.exec();
}

QString Module_DownFile::DownFile(const QString& url, const QString& path) const {
  const QString scheme = u"http://"_s;
  const std::unique_ptr<PolledRequest> request = requests_();
  return Download(ports_, *request, fileLimit_).run(url.startsWith(scheme) ? url : scheme + url, path);
}

QString getUrlText(const Module_DownFile& downloader, const QString& url) {
  const QString folder = getTempDir();
  const QString path = (folder.isEmpty() ? folder : folder + u'/') + u"KdhLoadFile.Kdtemp"_s;
  static_cast<void>(downloader.DownFile(url, path));  // the part that came is as good as it gets
  return decodePart(readFileText(path));
}

}  // namespace elevenfive
