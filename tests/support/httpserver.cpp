#include "tests/support/httpserver.h"

#include <httplib.h>

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

HttpRequest requestOf(const httplib::Request& request) {
  HttpRequest result{QByteArray::fromStdString(request.method),
                     QByteArray::fromStdString(request.path),
                     QByteArray::fromStdString(request.target),
                     {}};
  for (const auto& [name, value] : request.headers)
    result.headers.emplace_back(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
  return result;
}

/// The length to tell: one that the body does not reach where the connection is to close or hang before its end.
qint64 announcedLength(const HttpReply& reply) {
  constexpr qint64 neverReached = 1000;
  if (reply.announced)
    return *reply.announced;
  return reply.body.size() + (reply.ending == HttpEnding::complete ? 0 : neverReached);
}

}  // namespace

class HttpServer::Implementation final {
 public:
  Implementation() {
    const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
      serve(request, response);
    };
    server_.Get(".*", handler);  // and HEAD
    server_.Post(".*", handler);
    server_.Put(".*", handler);
    server_.Patch(".*", handler);
    server_.Delete(".*", handler);
    server_.Options(".*", handler);
    server_.set_keep_alive_max_count(1);
    server_.new_task_queue = [] { return new httplib::ThreadPool(threads); };  // the server deletes it
    port_ = server_.bind_to_any_port("127.0.0.1");
    if (port_ <= 0)
      throw std::runtime_error("no port for the test server");
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running())
      std::this_thread::yield();
  }

  ~Implementation() {
    {
      const std::lock_guard lock(mutex_);
      stopping_ = true;
    }
    stopped_.notify_all();
    server_.stop();
    thread_.join();
  }

  Implementation(const Implementation&) = delete;
  Implementation& operator=(const Implementation&) = delete;

  void answer(const QByteArray& path, HttpHandler handler) {
    const std::lock_guard lock(mutex_);
    handlers_[path] = std::move(handler);
  }

  [[nodiscard]] int port() const noexcept { return port_; }

  [[nodiscard]] std::vector<HttpRequest> requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
  }

  [[nodiscard]] int hanging() const {
    const std::lock_guard lock(mutex_);
    return hanging_;
  }

 private:
  static constexpr std::size_t threads = 16;  // so many answers may hang at a time

  void serve(const httplib::Request& asked, httplib::Response& response) {
    const HttpRequest request = requestOf(asked);
    const HttpReply reply = replyTo(request);
    pause(reply.beforeHead);
    if (reply.ending == HttpEnding::silent)
      hang([] { return true; });
    response.status = reply.status;
    std::string contentType = "application/octet-stream";
    for (const auto& [name, value] : reply.headers) {
      if (name.compare("Content-Type", Qt::CaseInsensitive) == 0)
        contentType = value.toStdString();
      else
        response.set_header(name.toStdString(), value.toStdString());
    }
    const auto provider = [this, reply, sent = qsizetype{0}](std::size_t, httplib::DataSink& sink) mutable {
      return provide(reply, sent, sink);
    };
    if (reply.length == HttpLength::chunked) {
      response.set_chunked_content_provider(contentType, provider);
      return;
    }
    // A provider that knows no length leaves ranges and the length header to the reply.
    if (reply.length == HttpLength::told)
      response.set_header("Content-Length", std::to_string(announcedLength(reply)));
    response.set_content_provider(contentType, provider);
  }

  HttpReply replyTo(const HttpRequest& request) {
    HttpHandler handler;
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(request);
      if (const auto found = handlers_.find(request.path); found != handlers_.end())
        handler = found->second;
    }
    if (handler)
      return handler(request);
    HttpReply missing;
    missing.status = 404;
    return missing;
  }

  /// Sends the next piece of the body; false closes the connection.
  bool provide(const HttpReply& reply, qsizetype& sent, httplib::DataSink& sink) {
    if (sent == reply.body.size()) {
      switch (reply.ending) {
        case HttpEnding::complete:
          sink.done();
          return true;
        case HttpEnding::hang:
          hang(sink.is_writable);
          return false;
        case HttpEnding::endless:
          sent = 0;
          break;
        default:
          return false;
      }
    }
    const qsizetype size = std::min(reply.pieceSize, reply.body.size() - sent);
    if (sent > 0 && !pause(reply.betweenPieces))
      return false;
    if (!sink.write(reply.body.constData() + sent, static_cast<std::size_t>(size)))
      return false;
    sent += size;
    return true;
  }

  /// Waits, unless the server stops; tells whether it goes on.
  bool pause(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !stopped_.wait_for(lock, time, [this] { return stopping_; });
  }

  /// Waits until the server stops or the other side is gone.
  void hang(const std::function<bool()>& connected) {
    constexpr std::chrono::milliseconds look{20};
    std::unique_lock lock(mutex_);
    ++hanging_;
    while (!stopping_) {
      stopped_.wait_for(lock, look);
      lock.unlock();
      const bool there = connected();
      lock.lock();
      if (!there)
        break;
    }
    --hanging_;
  }

  httplib::Server server_;
  int port_ = 0;
  std::thread thread_;
  mutable std::mutex mutex_;
  std::condition_variable stopped_;
  bool stopping_ = false;
  int hanging_ = 0;
  std::map<QByteArray, HttpHandler> handlers_;
  std::vector<HttpRequest> requests_;
};

QByteArray HttpRequest::header(QByteArrayView name) const {
  for (const auto& [key, value] : headers) {
    if (key.compare(name, Qt::CaseInsensitive) == 0)
      return value;
  }
  return {};
}

HttpServer::HttpServer() : implementation_(std::make_unique<Implementation>()) {}
HttpServer::~HttpServer() = default;

void HttpServer::answer(const QByteArray& path, HttpHandler handler) {
  implementation_->answer(path, std::move(handler));
}

void HttpServer::answer(const QByteArray& path, HttpReply reply) {
  answer(path, [reply = std::move(reply)](const HttpRequest&) { return reply; });
}

int HttpServer::port() const {
  return implementation_->port();
}

QString HttpServer::url(const QString& path) const {
  return u"http://127.0.0.1:%1%2"_s.arg(QString::number(port()), path);
}

std::vector<HttpRequest> HttpServer::requests() const {
  return implementation_->requests();
}

int HttpServer::hanging() const {
  return implementation_->hanging();
}

HttpReply pageReply(const QByteArray& page, const QByteArray& contentType) {
  HttpReply reply;
  reply.body = page;
  reply.headers = {{"Content-Type", contentType}};
  return reply;
}

HttpReply rangeReply(const HttpRequest& request, const QByteArray& file) {
  HttpReply reply;
  const QByteArray range = request.header("Range");
  if (!range.startsWith("bytes=")) {
    reply.body = file;
    return reply;
  }
  const QByteArray bounds = range.mid(6);
  const qsizetype dash = bounds.indexOf('-');
  const qint64 first = bounds.left(dash).toLongLong();
  const qint64 last = std::min<qint64>(bounds.mid(dash + 1).toLongLong(), file.size() - 1);
  const QByteArray total = QByteArray::number(file.size());
  if (first > last) {
    reply.status = 416;
    reply.headers = {{"Content-Range", "bytes */" + total}};
    return reply;
  }
  reply.status = 206;
  reply.body = file.mid(first, last - first + 1);
  reply.headers = {
      {"Content-Range", "bytes " + QByteArray::number(first) + "-" + QByteArray::number(last) + "/" + total}};
  return reply;
}

}  // namespace elevenfive
