// The request over the network, and downloads through it from servers that behave and that do not.
#include "acquire/networkrequest.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <algorithm>
#include <vector>

#include "acquire/downloaderror.h"
#include "model/texts.h"
#include "tests/acquire/networkdownload.h"

namespace elevenfive {
namespace {

using namespace Qt::StringLiterals;

/// A server that answers each connection with these bytes, whatever they are, and closes it.
class RawServer final {
 public:
  explicit RawServer(const QByteArray& bytes) {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this, bytes] {
      QTcpSocket* const socket = server_.nextPendingConnection();
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, bytes] {
        if (!socket->readAll().contains("\r\n\r\n"))
          return;
        socket->write(bytes);
        socket->disconnectFromHost();
      });
    });
    if (!server_.listen(QHostAddress::LocalHost))
      ADD_FAILURE() << "no port";
  }
  [[nodiscard]] QString url() const { return u"http://127.0.0.1:%1/f"_s.arg(server_.serverPort()); }

 private:
  QTcpServer server_;
};

/// A port on which nobody listens.
QString deadUrl() {
  QTcpServer server;
  server.listen(QHostAddress::LocalHost);
  return u"http://127.0.0.1:%1/f"_s.arg(server.serverPort());
}

// --- Sound servers ---

struct Size {
  qsizetype bytes;
  int requests;
};

class NetworkDownloadOfSize : public NetworkDownload, public ::testing::WithParamInterface<Size> {};

TEST_P(NetworkDownloadOfSize, ArrivesByteForByte) {
  const QByteArray file = fileOf(GetParam().bytes);
  server_.answer("/f", [file](const HttpRequest& request) { return rangeReply(request, file); });
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), file);
  const auto requests = server_.requests();
  ASSERT_EQ(requests.size(), static_cast<std::size_t>(GetParam().requests));
  for (std::size_t i = 0; i < requests.size(); ++i) {
    const auto first = static_cast<qint64>(i) * 20480;
    EXPECT_EQ(requests[i].method, "GET");
    EXPECT_EQ(requests[i].header("Range"),
              "bytes=" + QByteArray::number(first) + "-" + QByteArray::number(first + 20480));
    EXPECT_EQ(requests[i].header("Content-Type"), "application/octet-stream");
    EXPECT_EQ(requests[i].header("Accept-Encoding"), "identity");
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, NetworkDownloadOfSize,
                         ::testing::Values(Size{0, 1}, Size{1, 1}, Size{20479, 1}, Size{20480, 1}, Size{20481, 1},
                                           Size{20482, 2}, Size{40960, 2}, Size{40961, 2}, Size{40962, 3},
                                           Size{102400, 5}),
                         [](const auto& row) { return std::to_string(row.param.bytes) + "Bytes"; });

TEST_F(NetworkDownload, TheAddressMayComeWithoutItsScheme) {
  server_.answer("/f", [](const HttpRequest& request) { return rangeReply(request, "abc"); });
  EXPECT_EQ(download(u"127.0.0.1:%1/f?a=1&b=%2"_s.arg(QString::number(server_.port()), u"中"_s)), u"下载完成"_s);
  EXPECT_EQ(content(), "abc");
  EXPECT_EQ(server_.requests().at(0).target, "/f?a=1&b=%E4%B8%AD");
}

TEST_F(NetworkDownload, ASlowServerIsWaitedFor) {
  const QByteArray file = fileOf(30000);
  server_.answer("/f", [file](const HttpRequest& request) {
    HttpReply reply = rangeReply(request, file);
    reply.beforeHead = std::chrono::milliseconds(30);
    reply.betweenPieces = std::chrono::milliseconds(10);
    reply.pieceSize = 5000;
    return reply;
  });
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), file);
}

TEST_F(NetworkDownload, AChunkedPieceIsKept) {
  HttpReply reply = piece(fileOf(20000), "bytes 0-19999/20000");
  reply.length = HttpLength::chunked;
  reply.pieceSize = 777;
  serve(reply);
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(20000));
}

TEST_F(NetworkDownload, APieceThatEndsWithTheConnectionIsKept) {
  HttpReply reply = piece(fileOf(20000), "bytes 0-19999/20000");
  reply.length = HttpLength::untold;
  serve(reply);
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(20000));
}

TEST_F(NetworkDownload, ACompressedPieceIsKeptAsItStands) {
  HttpReply reply = piece("\x1f\x8b not really", "bytes 0-13/14");
  reply.headers.emplace_back("Content-Encoding", "gzip");
  serve(reply);
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), "\x1f\x8b not really");
}

TEST_F(NetworkDownload, ALongPieceIsKeptWhole) {
  serve(piece(fileOf(3 << 20), "bytes 0-3145727/3145728"));
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(3 << 20));
}

TEST_F(NetworkDownload, OneRequestObjectServesOneAddressAfterAnother) {
  server_.answer("/a", pageReply("first"));
  server_.answer("/b", pageReply("second"));
  NetworkRequest request;
  EXPECT_EQ(request.readyState(), 0);
  for (const QString& path : {u"/a"_s, u"/none"_s, u"/b"_s}) {
    request.open(u"GET"_s, server_.url(path));
    EXPECT_EQ(request.readyState(), 0);
    EXPECT_EQ(request.status(), 0);
    request.send();
    for (int i = 0; i < 200 && request.readyState() != PolledRequest::complete; ++i)
      runEvents(std::chrono::milliseconds(25));
    EXPECT_EQ(request.status(), path == u"/none" ? 404 : 200);
    EXPECT_EQ(request.statusText(), path == u"/none" ? u"Not Found"_s : u"OK"_s);
    EXPECT_EQ(request.responseBody(), QByteArray());  // only pieces are kept
  }
}

TEST_F(NetworkDownload, OneThatStartsWhileAnotherWaitsDisturbsItNot) {
  server_.answer("/f", [](const HttpRequest& request) { return rangeReply(request, fileOf(50000)); });
  server_.answer("/g", [](const HttpRequest& request) { return rangeReply(request, QByteArray(30000, 'g')); });
  const QString second = folder_.filePath(u"second"_s);
  ports_.onYield = [&](int yields) {
    if (yields == 2) {
      EXPECT_EQ(downloader_.DownFile(server_.url(u"/g"_s), second), u"下载完成"_s);
    }
  };
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(50000));
  EXPECT_EQ(readFileText(second), QByteArray(30000, 'g'));
}

// --- A cut at every block ---

struct Cut {
  const char* name;
  HttpReply reply;
  QStringView result;  ///< empty: a fault
};

class NetworkDownloadCut : public NetworkDownload, public ::testing::WithParamInterface<int> {
 protected:
  static std::vector<Cut> cuts() {
    const HttpReply whole = piece(QByteArray(5000, 'x'), "bytes 0-4999/5000");
    return {{"403", status(403), u"连接数过多"},
            {"404", status(404), u"文件无法找到"},
            {"416", status(416), u"下载完成"},
            {"500", status(500), u"未知错误：Internal Server Error(500)"},
            {"200", status(200), u"不支持断点续传"},
            {"closed", ending(whole, HttpEnding::close), u"未知错误：连接中断(12030)"},
            {"hanging", ending(whole, HttpEnding::hang), u"下载文件超时"},
            {"silent", ending(whole, HttpEnding::silent), u"下载文件超时"},
            {"403 hanging", ending(status(403), HttpEnding::hang), u"连接数过多"},
            {"416 closed", ending(status(416), HttpEnding::close), u"下载完成"},
            {"404 closed", ending(status(404), HttpEnding::close), u"文件无法找到"},
            {"500 hanging", ending(status(500), HttpEnding::hang), u"下载文件超时"},
            {"no size", piece("abc", {}), u""},
            {"no number", piece("abc", "bytes 0-2/*"), u""}};
  }
};

TEST_P(NetworkDownloadCut, KeepsTheBlocksBefore) {
  const QByteArray file = fileOf(4 * 20480 + 100);  // five blocks
  const int blocks = GetParam();
  for (const Cut& cut : cuts()) {
    serve(file, blocks, cut.reply);
    if (cut.result.isEmpty()) {
      EXPECT_THROW(static_cast<void>(download()), DownloadError) << cut.name;
      EXPECT_EQ(content(), QByteArray()) << cut.name;
    } else {
      EXPECT_EQ(download(), cut.result.toString()) << cut.name;
      EXPECT_EQ(content(), file.left(blocks == 0 ? 0 : blocks * 20480 + 1)) << cut.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AtBlock, NetworkDownloadCut, ::testing::Range(0, 5));

// --- Servers that lie ---

TEST_F(NetworkDownload, FiveGigabytesAnnouncedTakeNoMoreThanWhatComes) {
  serve(QByteArray(), 0, {});
  server_.answer("/f", [](const HttpRequest& request) {
    return beginOf(request) < 3 * 20480 ? piece(QByteArray(20481, 'x'), "bytes 0-20480/5368709120") : status(404);
  });
  EXPECT_EQ(download(), u"文件无法找到"_s);
  EXPECT_EQ(content(), QByteArray(3 * 20480 + 1, 'x'));
}

TEST_F(NetworkDownload, AnAnswerOfFiveGigabytesThatStopsIsATimeout) {
  HttpReply reply = ending(piece(QByteArray(100000, 'x'), "bytes 0-20480/40961"), HttpEnding::hang);
  reply.announced = qint64{5} << 30;
  serve(reply);
  EXPECT_EQ(download(), u"下载文件超时"_s);
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, AnEndlessPieceIsNotReadBeyondTheLimit) {
  for (const HttpLength length : {HttpLength::told, HttpLength::chunked, HttpLength::untold}) {
    HttpReply reply = ending(piece(QByteArray(65536, 'x'), "bytes 0-20480/40961"), HttpEnding::endless);
    reply.length = length;
    reply.announced = qint64{5} << 30;
    serve(reply);
    NetworkRequest request(1 << 20);
    request.open(u"GET"_s, server_.url(u"/f"_s));
    request.send();
    qsizetype largest = 0;
    bool ended = false;
    for (int i = 0; i < 100 && !ended; ++i) {
      runEvents(std::chrono::milliseconds(5));
      largest = std::max(largest, request.responseBody().size());
      ended = request.readyState() == PolledRequest::complete;
    }
    EXPECT_FALSE(ended);
    EXPECT_EQ(request.status(), 206);
    EXPECT_LE(largest, 1 << 20);
  }
}

TEST_F(NetworkDownload, AnEndlessPieceIsATimeoutAndLeavesAnEmptyFile) {
  HttpReply reply = ending(piece(QByteArray(65536, 'x'), "bytes 0-20480/40961"), HttpEnding::endless);
  reply.length = HttpLength::chunked;
  serve(reply);
  const Module_DownFile downloader({files_, ports_, ports_, pause_},
                                   [] { return std::make_unique<NetworkRequest>(1 << 20); });
  pause_.quick = true;
  EXPECT_EQ(downloader.DownFile(server_.url(u"/f"_s), path_), u"下载文件超时"_s);
  EXPECT_EQ(pause_.count, 120);
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, AnEndlessWholeIsATimeoutToo) {
  HttpReply reply = ending(status(200), HttpEnding::endless);
  reply.body = QByteArray(65536, 'x');
  reply.announced = qint64{5} << 30;
  serve(reply);
  pause_.quick = true;
  EXPECT_EQ(download(), u"下载文件超时"_s);
  EXPECT_EQ(pause_.count, 120);
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, APieceJustAboveTheLimitIsNeverComplete) {
  serve(piece(QByteArray(1001, 'x'), "bytes 0-1000/1001"));
  NetworkRequest request(1000);
  request.open(u"GET"_s, server_.url(u"/f"_s));
  request.send();
  for (int i = 0; i < 40; ++i)
    runEvents(std::chrono::milliseconds(10));
  EXPECT_NE(request.readyState(), PolledRequest::complete);
  EXPECT_EQ(request.status(), 206);
}

TEST_F(NetworkDownload, AConnectionThatClosesWithoutAWordIsAnError) {
  const RawServer raw{QByteArray()};
  EXPECT_EQ(download(raw.url()), u"未知错误：连接中断(12030)"_s);
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, AHeadThatIsCutOffIsAnError) {
  const RawServer raw("HTTP/1.1 206 Partial Content\r\nContent-Ran");
  EXPECT_EQ(download(raw.url()), u"未知错误：连接中断(12030)"_s);
}

TEST_F(NetworkDownload, AnAnswerThatIsNoHttpIsAnError) {
  const RawServer raw("220 mail server ready\r\n\r\n");
  const QString result = download(raw.url());
  EXPECT_TRUE(result.startsWith(u"未知错误："_s)) << result.toStdString();
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, TheServersOwnStatusTextIsShown) {
  const RawServer raw("HTTP/1.1 507 No Room Left\r\nContent-Length: 0\r\n\r\n");
  EXPECT_EQ(download(raw.url()), u"未知错误：No Room Left(507)"_s);
}

TEST_F(NetworkDownload, NobodyAtThePortIsAnError) {
  EXPECT_EQ(download(deadUrl()), u"未知错误：无法连接服务器(12029)"_s);
}

TEST_F(NetworkDownload, AnAddressThatIsNoneIsAFaultAndLeavesAnEmptyFile) {
  for (const QString& url : {QString(), u"http://"_s, u"http://a b/"_s, u"http://127.0.0.1:99999/"_s, u"http:///f"_s}) {
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    EXPECT_THROW(static_cast<void>(download(url)), DownloadError) << url.toStdString();
    EXPECT_EQ(content(), QByteArray());
  }
}

// --- Redirects ---

TEST_F(NetworkDownload, ARedirectIsFollowedWithItsRange) {
  HttpReply reply = status(302);
  reply.headers = {{"Location", "/other"}};
  serve(reply);
  server_.answer("/other", [](const HttpRequest& request) { return rangeReply(request, fileOf(30000)); });
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), fileOf(30000));
  EXPECT_EQ(server_.requests().at(1).header("Range"), "bytes=0-20480");
}

TEST_F(NetworkDownload, ARedirectToAnotherServerIsFollowed) {
  HttpServer other;
  other.answer("/g", [](const HttpRequest& request) { return rangeReply(request, "there"); });
  HttpReply reply = status(301);
  reply.headers = {{"Location", other.url(u"/g"_s).toLatin1()}};
  serve(reply);
  EXPECT_EQ(download(), u"下载完成"_s);
  EXPECT_EQ(content(), "there");
}

TEST_F(NetworkDownload, ARedirectInACircleEnds) {
  HttpReply reply = status(302);
  reply.headers = {{"Location", "/f"}};
  serve(reply);
  EXPECT_EQ(download(), u"未知错误：Found(302)"_s);
  EXPECT_LE(server_.requests().size(), 20U);  // ten redirects, and what Qt sends again on a fresh connection
  EXPECT_EQ(content(), QByteArray());
}

TEST_F(NetworkDownload, ARedirectToAFileOrToNothingIsNotFollowed) {
  QFile secret(folder_.filePath(u"secret"_s));
  ASSERT_TRUE(secret.open(QIODevice::WriteOnly));
  secret.write("secret");
  secret.close();
  for (const QByteArray& location : {"file://" + secret.fileName().toUtf8(), QByteArray("ftp://127.0.0.1/x"),
                                     QByteArray("javascript:1"), QByteArray("http://"), QByteArray()}) {
    HttpReply reply = status(302);
    reply.headers = {{"Location", location}};
    serve(reply);
    EXPECT_EQ(download(), u"未知错误：Found(302)"_s) << location.toStdString();
    EXPECT_EQ(content(), QByteArray());
  }
}

}  // namespace
}  // namespace elevenfive
