// Web requests over the network, answered while the event loop of the thread runs.
//
// Redirects are followed, at most ten, never from https to http. Bytes are taken as they stand: no compressed answer is asked
// for. The body of an answer other than 206 is dropped as it comes in. A body of more than 64 MiB is not read on: its
// answer is never complete, and memory and traffic stay bounded. Cookies live as long as the object.
// A head without an end is the one thing that is not bounded: Qt's thread reads it on (some 300 KB/s) until the server stops, and
// the object's end then waits 5 seconds for it.
//
// | status | the network failed since
// | 12002  | the connection timed out
// | 12007  | the server's name is not known
// | 12029  | nobody listens there
// | 12030  | the connection broke off before the end of the answer
// | 12031  | anything else
// | 12152  | the answer is not HTTP
// | 12157  | no secure connection could be made
// A failure below an answer that refused already (from 300 on) leaves the answer's own status.
#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <memory>

#include "acquire/polledrequest.h"

namespace elevenfive {

class NetworkRequest final : public PolledRequest {
 public:
  static constexpr qint64 largestBody = qint64{64} << 20;

  explicit NetworkRequest(qint64 bodyLimit = largestBody) : bodyLimit_(bodyLimit) {}
  ~NetworkRequest() override = default;
  NetworkRequest(const NetworkRequest&) = delete;
  NetworkRequest& operator=(const NetworkRequest&) = delete;

  void open(const QString& method, const QString& url) override;
  void setRequestHeader(const QString& name, const QString& value) override;
  void send() override;
  [[nodiscard]] int readyState() const override;
  [[nodiscard]] int status() const override;
  [[nodiscard]] QString statusText() const override;
  [[nodiscard]] QByteArray responseBody() const override { return body_; }
  [[nodiscard]] QString getResponseHeader(const QString& name) const override;

 private:
  /// The status that the server sent; 0 where no head has come.
  [[nodiscard]] int sentStatus() const;
  /// How the network failed; NoError also where the answer's own status tells more.
  [[nodiscard]] QNetworkReply::NetworkError failure() const;
  void takeBody();

  qint64 bodyLimit_;
  QNetworkAccessManager manager_;
  QByteArray method_;
  QNetworkRequest request_;
  std::unique_ptr<QNetworkReply> reply_;
  QByteArray body_;
  qint64 received_ = 0;    ///< bytes of the body, kept or not
  bool overlong_ = false;  ///< more came than is kept
};

}  // namespace elevenfive
