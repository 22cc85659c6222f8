// A web request that is sent off and then looked at now and then, until its answer is complete.
//
// One object serves any number of requests, one after another: open, headers, send, and then the look at readyState(). open()
// forgets the answer before it. Nothing but open() throws; what goes wrong on the way is a status.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace elevenfive {

class PolledRequest {
 public:
  /// What readyState() is once the whole answer is there, or will never come.
  static constexpr int complete = 4;

  virtual ~PolledRequest() = default;

  /// Makes ready for another request. Throws DownloadError where the address is none.
  virtual void open(const QString& method, const QString& url) = 0;
  virtual void setRequestHeader(const QString& name, const QString& value) = 0;
  virtual void send() = 0;

  [[nodiscard]] virtual int readyState() const = 0;
  /// The answer's status as soon as its head is there, 0 before; from 12000 on where the network failed.
  [[nodiscard]] virtual int status() const = 0;
  [[nodiscard]] virtual QString statusText() const = 0;
  [[nodiscard]] virtual QByteArray responseBody() const = 0;
  /// Empty where the answer has no such header.
  [[nodiscard]] virtual QString getResponseHeader(const QString& name) const = 0;
};

using RequestFactory = std::function<std::unique_ptr<PolledRequest>()>;

}  // namespace elevenfive
