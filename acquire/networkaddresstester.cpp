#include "acquire/networkaddresstester.h"

#include <QTimer>
#include <utility>

#include "acquire/pagerules.h"
#include "acquire/sources.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int firstRedirect = 300;
constexpr int firstRefusal = 400;

}  // namespace

NetworkAddressTester::NetworkAddressTester(int timeoutMs) : timeoutMs_(timeoutMs) {
  manager_.setRedirectPolicy(QNetworkRequest::UserVerifiedRedirectPolicy);
}

NetworkAddressTester::~NetworkAddressTester() {
  cancel();
}

void NetworkAddressTester::cancel() {
  ++tests_;
  outcome_ = {};
  if (reply_) {
    reply_->disconnect(this);
    reply_->deleteLater();  // which hangs up
    reply_.clear();
  }
}

void NetworkAddressTester::test(const QString& address, Outcome outcome) {
  cancel();
  outcome_ = std::move(outcome);
  const auto tell = [this, test = tests_](const QString& sentence) {
    QTimer::singleShot(0, this, [this, test, sentence] {
      if (test == tests_)
        finish(sentence);
    });
  };
  if (isUnsetAddress(address)) {
    tell(u"地址还没有设置。"_s);
    return;
  }
  const QUrl url = sourceUrl(address);
  if (!isWebAddress(url)) {
    tell(u"地址不正确，要以 http:// 或 https:// 开头。"_s);
    return;
  }
  clock_.start();
  reply_ = manager_.get(QNetworkRequest(url));
  connect(reply_, &QNetworkReply::redirected, this, &NetworkAddressTester::redirected);
  connect(reply_, &QNetworkReply::metaDataChanged, this, &NetworkAddressTester::answered);
  connect(reply_, &QNetworkReply::finished, this, [this] {
    answered();
    if (outcome_)
      finish(failure());
  });
  QTimer::singleShot(timeoutMs_, this, [this, test = tests_] {
    if (test == tests_ && reply_)
      finish(u"服务器 %1 在 %2 秒内没有答复。"_s.arg(reply_->url().host()).arg((timeoutMs_ + 999) / 1000));
  });
}

/// The head of the answer tells enough; the page itself is not wanted.
void NetworkAddressTester::answered() {
  if (!reply_ || !outcome_)
    return;
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status == 0 || (status >= firstRedirect && status < firstRefusal && !reply_->isFinished()))
    return;
  if (status < firstRedirect)
    finish(
        u"服务器有答复（HTTP %1，%2 秒）。"_s.arg(status).arg(static_cast<double>(clock_.elapsed()) / 1000, 0, 'f', 1));
  else
    finish(u"服务器有答复，但没有给出网页（HTTP %1）。"_s.arg(status));
}

/// The page's own site may send on, as it may when the page is read; another one is not asked.
void NetworkAddressTester::redirected(const QUrl& to) {
  if (!reply_ || !outcome_)
    return;
  if (mayHoldPage(reply_->request().url(), to))
    Q_EMIT reply_->redirectAllowed();
  else
    finish(u"服务器把网页转到其它网站（%1），没有读取。"_s.arg(toldPlace(reply_->request().url(), to)));
}

QString NetworkAddressTester::failure() const {
  const QString host = reply_->url().host();
  switch (reply_->error()) {
    case QNetworkReply::HostNotFoundError:
      return u"找不到服务器 %1，请检查地址或网络。"_s.arg(host);
    case QNetworkReply::ConnectionRefusedError:
      return u"服务器 %1 拒绝连接。"_s.arg(host);
    case QNetworkReply::SslHandshakeFailedError:
      return u"无法与服务器 %1 建立安全连接。"_s.arg(host);
    case QNetworkReply::RemoteHostClosedError:
      return u"服务器 %1 中断了连接。"_s.arg(host);
    default:
      return u"网络出错，无法打开 %1。"_s.arg(host);
  }
}

void NetworkAddressTester::finish(const QString& sentence) {
  const Outcome outcome = std::exchange(outcome_, {});
  cancel();
  if (outcome)
    outcome(sentence);
}

}  // namespace elevenfive
