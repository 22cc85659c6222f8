// A web server on this machine, for tests: real sockets, 127.0.0.1 and a port that the system picks, and every way in which a
// server can misbehave below a sound head.
//
// answer() gives a path its answer to requests of any method, or a function that makes one for each request; it runs on a thread of the server, so what
// it shares with the test must be guarded. Paths without an answer get 404. Each connection carries one answer and closes.
// The destructor ends all answers, those that hang too.
#pragma once

#include <QByteArray>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace elevenfive {

struct HttpRequest {
  QByteArray method;
  QByteArray path;    ///< without the query
  QByteArray target;  ///< path and query as asked for
  std::vector<std::pair<QByteArray, QByteArray>> headers;

  /// The value of a header, whatever the case of its name; empty where it is missing.
  [[nodiscard]] QByteArray header(QByteArrayView name) const;
};

/// How the length of the body is told.
enum class HttpLength { told, chunked, untold };

/// What comes after the last byte of the body.
enum class HttpEnding {
  complete,
  close,    ///< the connection closes although more was announced
  hang,     ///< nothing more comes, the connection stays
  endless,  ///< the body again and again
  silent,   ///< not even a head comes, the connection stays
};

struct HttpReply {
  int status = 200;
  QByteArray body;
  std::vector<std::pair<QByteArray, QByteArray>> headers;  ///< sent as they stand, true or not
  HttpLength length = HttpLength::told;
  std::optional<qint64> announced;  ///< the length told instead of that of the body
  HttpEnding ending = HttpEnding::complete;
  std::chrono::milliseconds beforeHead{0};
  std::chrono::milliseconds betweenPieces{0};
  qsizetype pieceSize = 65536;
};

using HttpHandler = std::function<HttpReply(const HttpRequest& request)>;

class HttpServer final {
 public:
  HttpServer();
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  void answer(const QByteArray& path, HttpHandler handler);
  void answer(const QByteArray& path, HttpReply reply);

  [[nodiscard]] int port() const;
  /// "http://127.0.0.1:port" and the path.
  [[nodiscard]] QString url(const QString& path) const;
  /// All requests so far, in order of arrival.
  [[nodiscard]] std::vector<HttpRequest> requests() const;
  /// How many answers hang at this moment.
  [[nodiscard]] int hanging() const;

 private:
  class Implementation;
  std::unique_ptr<Implementation> implementation_;
};

/// A page that is sent whole, with this type.
HttpReply pageReply(const QByteArray& page, const QByteArray& contentType = "text/html; charset=utf-8");

/// What a sound server says when bytes "first-last" of a file are asked for: 206 with the bytes there are, or 416; without a
/// range 200 and the whole.
HttpReply rangeReply(const HttpRequest& request, const QByteArray& file);

}  // namespace elevenfive
