#include "acquire/networkrequest.h"

#include <QUrl>
#include <algorithm>
#include <iterator>

#include "acquire/downloaderror.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int opened = 1;
constexpr int partialContent = 206;
constexpr int firstRefusal = 300;
constexpr int mostRedirects = 10 - 1;  // Qt follows one more than it is told

/// What the failures of the network are told as.
struct Failure {
  QNetworkReply::NetworkError error;
  int status;
  QStringView text;
};

constexpr Failure failures[] = {
    {QNetworkReply::TimeoutError, 12002, u"连接超时"},
    {QNetworkReply::HostNotFoundError, 12007, u"找不到服务器"},
    {QNetworkReply::ConnectionRefusedError, 12029, u"无法连接服务器"},
    {QNetworkReply::RemoteHostClosedError, 12030, u"连接中断"},
    {QNetworkReply::ProtocolFailure, 12152, u"服务器的应答无法识别"},
    {QNetworkReply::ProtocolInvalidOperationError, 12152, u"服务器的应答无法识别"},
    {QNetworkReply::SslHandshakeFailedError, 12157, u"无法建立安全连接"},
};
constexpr Failure otherFailure{QNetworkReply::UnknownNetworkError, 12031, u"网络错误"};

const Failure& failureOf(QNetworkReply::NetworkError error) {
  const auto* const found = std::find_if(std::begin(failures), std::end(failures),
                                         [&](const Failure& failure) { return failure.error == error; });
  return found == std::end(failures) ? otherFailure : *found;
}

}  // namespace

void NetworkRequest::open(const QString& method, const QString& url) {
  reply_.reset();
  body_.clear();
  received_ = 0;
  overlong_ = false;
  const QUrl address(url);
  if (!address.isValid() || address.host().isEmpty())
    throw DownloadError(u"网址无效：%1"_s.arg(url));
  method_ = method.toLatin1();
  request_ = QNetworkRequest(address);
  request_.setMaximumRedirectsAllowed(mostRedirects);
  request_.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
  request_.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  request_.setRawHeader("Accept-Encoding", "identity");
}

void NetworkRequest::setRequestHeader(const QString& name, const QString& value) {
  // A colon is no part of a header's name on the line.
  request_.setRawHeader(name.section(u':', 0, 0).toLatin1(), value.toLatin1());
}

void NetworkRequest::send() {
  reply_.reset(manager_.sendCustomRequest(request_, method_));
  QObject::connect(reply_.get(), &QNetworkReply::readyRead, reply_.get(), [this] { takeBody(); });
  QObject::connect(reply_.get(), &QNetworkReply::finished, reply_.get(), [this] { takeBody(); });
}

void NetworkRequest::takeBody() {
  if (overlong_)
    return;  // what is aborted cannot be read
  // Qt could be told to read no more than fits, but then takes some answers that were cut off for whole ones.
  const QByteArray bytes = reply_->readAll();
  received_ += bytes.size();
  overlong_ = received_ > bodyLimit_;
  if (overlong_) {
    body_.clear();
    reply_->abort();
  } else if (sentStatus() == partialContent) {
    body_ += bytes;
  }
}

int NetworkRequest::readyState() const {
  if (!reply_)
    return 0;
  return reply_->isFinished() && !overlong_ ? complete : opened;
}

int NetworkRequest::sentStatus() const {
  return reply_ ? reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() : 0;
}

QNetworkReply::NetworkError NetworkRequest::failure() const {
  if (!reply_ || !reply_->isFinished() || overlong_ || sentStatus() >= firstRefusal)
    return QNetworkReply::NoError;
  const QVariant told = reply_->header(QNetworkRequest::ContentLengthHeader);
  const bool isShort = told.isValid() && received_ < told.toLongLong();
  if (reply_->error() == QNetworkReply::NoError && isShort)
    return QNetworkReply::RemoteHostClosedError;
  return reply_->error();
}

int NetworkRequest::status() const {
  const QNetworkReply::NetworkError error = failure();
  return error == QNetworkReply::NoError ? sentStatus() : failureOf(error).status;
}

QString NetworkRequest::statusText() const {
  const QNetworkReply::NetworkError error = failure();
  if (error != QNetworkReply::NoError)
    return failureOf(error).text.toString();
  return reply_ ? reply_->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString() : QString();
}

QString NetworkRequest::getResponseHeader(const QString& name) const {
  return reply_ ? QString::fromLatin1(reply_->rawHeader(name.toLatin1())) : QString();
}

}  // namespace elevenfive
