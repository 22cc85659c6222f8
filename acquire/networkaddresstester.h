// The test of an address over the network: asks for the page and hangs up as soon as the server has answered.
// It tells what the server did, not whether the page is of use; a redirect off the page's site is told, not followed.
#pragma once

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>

#include "acquire/addresstester.h"

namespace elevenfive {

class NetworkAddressTester final : public QObject, public AddressTester {
 public:
  static constexpr int longestMs = 10000;

  explicit NetworkAddressTester(int timeoutMs = longestMs);
  ~NetworkAddressTester() override;

  void test(const QString& address, Outcome outcome) override;
  void cancel() override;

 private:
  void answered();
  void redirected(const QUrl& to);
  void finish(const QString& sentence);
  [[nodiscard]] QString failure() const;

  int timeoutMs_;
  QNetworkAccessManager manager_;
  QPointer<QNetworkReply> reply_;
  Outcome outcome_;
  QElapsedTimer clock_;
  quint64 tests_ = 0;  ///< so that what a former test left in the event loop is not taken for this one's
};

}  // namespace elevenfive
