// Fetches one file from a web server in pieces, and a page as text by way of a file.
//
// A download asks for one block after another ("Range: bytes=0-20480", "bytes=20480-40960", ...): each asks for one byte more
// than the step, so the next block is written over the last byte of the one before. The file is held in memory and reaches
// the disk once, at the end. There are no retries; a block has 36 seconds, and the event loop runs while it is waited for.
//
// | outcome text                                       | when
// | 下载完成                                           | the last byte came, or 416
// | 连接数过多                                         | 403
// | 文件无法找到                                       | 404
// | 下载文件超时                                       | 120 looks, 300 ms apart, saw no complete answer
// | 未知错误：, the status text and (the status number) | any other status above 299; the network's failures are from 12000 on
// | 不支持断点续传                                     | any other status that is not 206
//
// What stood in the target file is gone as soon as the download starts. With an outcome text the file holds what had arrived.
// A fault is thrown and leaves it empty: DownloadError for an address that is none, an answer without a usable Content-Range
// header and a file of more than 256 MiB; FileError for a file that cannot be written.
#pragma once

#include <QString>
#include <chrono>
#include <utility>

#include "acquire/polledrequest.h"
#include "model/fileaccess.h"
#include "model/ports.h"

namespace elevenfive {

/// The time between two looks at a request.
class PollPause {
 public:
  virtual ~PollPause() = default;
  /// Returns after this time, with the network's events handled.
  virtual void sleep(std::chrono::milliseconds time) = 0;
};

/// Runs the event loop of the thread meanwhile.
class EventLoopPause final : public PollPause {
 public:
  void sleep(std::chrono::milliseconds time) override;
};

class Module_DownFile final {
 public:
  static constexpr qint64 blockSize = 0x5000;
  static constexpr int rounds = 120;
  static constexpr std::chrono::milliseconds roundTime{300};
  static constexpr qint64 largestFile = qint64{256} << 20;

  struct Ports {
    FileAccess& files;
    Boxes& boxes;
    Events& events;
    PollPause& pause;
  };

  Module_DownFile(const Ports& ports, RequestFactory requests, qint64 fileLimit = largestFile)
      : ports_(ports), requests_(std::move(requests)), fileLimit_(fileLimit) {}

  /// Fetches the file behind an address, with "http://" put before it where it does not begin so, to a path. Returns the
  /// outcome text.
  [[nodiscard]] QString DownFile(const QString& url, const QString& path) const;

 private:
  Ports ports_;
  RequestFactory requests_;
  qint64 fileLimit_;
};

/// The file behind an address as text, UTF-8 or GB18030: downloaded to "KdhLoadFile.Kdtemp" in the folder for working files, where
/// it stays, and read from there. Of a download that failed halfway the part that came, so whether it is complete is not told.
QString getUrlText(const Module_DownFile& downloader, const QString& url);

}  // namespace elevenfive
