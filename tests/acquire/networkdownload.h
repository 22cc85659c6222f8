// What the tests of downloads from a real server share: the server, a target file, and a pause that does not wait for real.
#pragma once

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <chrono>
#include <memory>

#include "acquire/downfile.h"
#include "acquire/networkrequest.h"
#include "tests/support/faultyfiles.h"
#include "tests/support/httpserver.h"
#include "tests/support/recordingports.h"

namespace elevenfive {

/// Handles events as they come and returns after some; after a short while where there are none.
inline void runEvents(std::chrono::milliseconds longest) {
  QEventLoop loop;
  QTimer::singleShot(longest, &loop, &QEventLoop::quit);
  loop.processEvents(QEventLoop::WaitForMoreEvents);
}

/// Long enough for a loaded machine, unless the server is known to hang.
class ShortPause final : public PollPause {
 public:
  explicit ShortPause(const HttpServer& server) : server_(server) {}
  void sleep(std::chrono::milliseconds time) override {
    EXPECT_EQ(time, Module_DownFile::roundTime);
    ++count;
    runEvents(std::chrono::milliseconds(quick || server_.hanging() > 0 ? 4 : 25));
  }
  int count = 0;
  bool quick = false;  ///< the test knows that nothing more will come

 private:
  const HttpServer& server_;
};

/// A file in which neighbouring blocks differ.
inline QByteArray fileOf(qsizetype size) {
  QByteArray bytes(size, '\0');
  for (qsizetype i = 0; i < size; ++i)
    bytes[i] = static_cast<char>((i * 7 + i / 251) & 0xFF);
  return bytes;
}

class NetworkDownload : public ::testing::Test {
 protected:
  HttpServer server_;
  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("target"));
  RecordingPorts ports_;
  ShortPause pause_{server_};
  UnflushedFiles files_;
  Module_DownFile downloader_{{files_, ports_, ports_, pause_}, [] { return std::make_unique<NetworkRequest>(); }};

  QString download(const QString& url) { return downloader_.DownFile(url, path_); }
  QString download() { return download(server_.url(QStringLiteral("/f"))); }

  QByteArray content() {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  /// The first blocks of a file come well, then this. A request is known by where it begins: one that found its connection
  /// closed comes a second time.
  void serve(const QByteArray& file, int blocks, const HttpReply& then) {
    server_.answer("/f", [=](const HttpRequest& request) {
      return beginOf(request) < qint64{20480} * blocks ? rangeReply(request, file) : then;
    });
  }
  /// The first byte that a request asks for: Range is bytes=FIRST-LAST.
  static qint64 beginOf(const HttpRequest& request) {
    const QByteArray range = request.header("Range");
    return range.mid(6, range.indexOf('-') - 6).toLongLong();
  }
  void serve(const HttpReply& reply) { server_.answer("/f", reply); }

  static HttpReply status(int number) {
    HttpReply reply;
    reply.status = number;
    reply.body = "refused";
    return reply;
  }
  static HttpReply piece(const QByteArray& body, const QByteArray& range) {
    HttpReply reply;
    reply.status = 206;
    reply.body = body;
    if (!range.isEmpty())
      reply.headers = {{"Content-Range", range}};
    return reply;
  }
  static HttpReply ending(HttpReply reply, HttpEnding ending) {
    reply.ending = ending;
    return reply;
  }
};

}  // namespace elevenfive
