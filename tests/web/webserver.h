// A real HTTP server on this machine for tests of page loads, with a log of what was asked of it.
#pragma once

#include <httplib.h>

#include <QString>
#include <QStringList>
#include <QUrl>
#include <atomic>
#include <mutex>
#include <thread>

namespace elevenfive {

class WebServer final {
 public:
  WebServer() {
    server.new_task_queue = [] { return new httplib::ThreadPool(4); };
    server.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response&) {
      const std::lock_guard<std::mutex> lock(mutex_);
      log_ << QString::fromStdString(request.path);
      return httplib::Server::HandlerResponse::Unhandled;
    });
    port_ = server.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { server.listen_after_bind(); });
  }
  ~WebServer() {
    closing = true;
    server.stop();
    thread_.join();
  }
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

  httplib::Server server;
  std::atomic<bool> closing{false};  ///< handlers that hang look at it

  [[nodiscard]] QString base() const { return QStringLiteral("http://127.0.0.1:%1").arg(port_); }
  [[nodiscard]] QUrl url(const QString& path) const { return QUrl(base() + path); }

  /// The paths asked for so far, in order.
  [[nodiscard]] QStringList log() {
    const std::lock_guard<std::mutex> lock(mutex_);
    return log_;
  }

  /// Answers a path with a page.
  void page(const char* path, const QString& body, const char* type = "text/html; charset=utf-8") {
    bytes(path, body.toStdString(), type);
  }
  void bytes(const char* path, const std::string& body, const char* type) {
    server.Get(path, [body, type = std::string(type)](const httplib::Request&, httplib::Response& response) {
      response.set_content(body, type);
    });
  }

  /// Keeps a handler from answering until the server goes.
  void hang() const {
    while (!closing)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }

 private:
  std::mutex mutex_;
  QStringList log_;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace elevenfive
