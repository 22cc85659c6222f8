#include "acquire/pagerules.h"

#include <QStringList>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Second-level labels under which a country's names are given out, so that the name proper is the third: "site.com.cn".
constexpr QStringView sharedLabels[] = {u"com", u"net", u"org", u"gov", u"edu", u"co", u"ac"};

bool isNumericHost(const QString& host) {
  if (host.contains(u':'))
    return true;
  for (const QChar ch : host)
    if (ch != u'.' && (ch < u'0' || ch > u'9'))
      return false;
  return true;
}

bool isShared(QStringView label) {
  for (const QStringView shared : sharedLabels)
    if (label == shared)
      return true;
  return false;
}

/// The part of a host's name that all hosts of its site share.
QString siteName(const QString& host) {
  const QStringList labels = host.split(u'.', Qt::SkipEmptyParts);
  if (isNumericHost(host) || labels.size() < 3)
    return host;
  const bool country = labels.last().size() == 2 && isShared(labels[labels.size() - 2]);
  return labels.mid(labels.size() - (country ? 3 : 2)).join(u'.');
}

int portOf(const QUrl& address) {
  return address.port(address.scheme() == u"https"_s ? 443 : 80);
}

}  // namespace

bool isWebAddress(const QUrl& address) {
  return address.isValid() && !address.host().isEmpty() &&
         (address.scheme() == u"http"_s || address.scheme() == u"https"_s);
}

bool isSameHost(const QUrl& asked, const QUrl& address) {
  if (!isWebAddress(address) || asked.host() != address.host())
    return false;
  const bool secured = asked.scheme() == u"http"_s && address.scheme() == u"https"_s;
  if (asked.scheme() != address.scheme() && !secured)
    return false;
  return portOf(asked) == portOf(address) || (secured && portOf(asked) == 80 && portOf(address) == 443);
}

bool isSameSite(const QUrl& asked, const QUrl& address) {
  if (!isWebAddress(address))
    return false;
  if (isNumericHost(asked.host()))
    return isSameHost(asked, address);
  return siteName(asked.host()) == siteName(address.host());
}

QString toldPlace(const QUrl& asked, const QUrl& address) {
  const QString host = address.host();
  if (host.isEmpty())
    return address.scheme();
  return asked.host() == host ? u"%1:%2"_s.arg(host).arg(portOf(address)) : host;
}

QStringList hostRules(const QUrl& asked) {
  const QString host = asked.host(QUrl::FullyEncoded);
  if (!isNumericHost(host)) {
    const QString site = siteName(host);
    return {u"EXCLUDE "_s + site, u"EXCLUDE *."_s + site};
  }
  const auto rule = [place = host.contains(u':') ? u"[%1]"_s.arg(host) : host](int port) {
    return u"MAP %1:%2 %1:%2"_s.arg(place).arg(port);
  };
  QStringList rules{rule(portOf(asked))};
  if (asked.scheme() == u"http"_s && portOf(asked) == 80)
    rules << rule(443);
  return rules;
}

bool mayHoldPage(const QUrl& asked, const QUrl& address) {
  if (asked.host() == address.host())
    return isSameHost(asked, address);
  const bool turnsPlain = asked.scheme() == u"https"_s && address.scheme() != asked.scheme();
  return isSameSite(asked, address) && !turnsPlain;
}

bool mayFetch(const QUrl& asked, const QUrl& address, FetchKind kind) {
  switch (kind) {
    case FetchKind::document:
      return mayHoldPage(asked, address);
    case FetchKind::frame:
    case FetchKind::buildsText:
      return isSameSite(asked, address);
    case FetchKind::other:
      return false;
  }
  return false;
}

bool mayGo(const QUrl& asked, const QUrl& address, LeaveKind kind, bool top) {
  if (kind == LeaveKind::person)
    return false;
  if (top)
    return mayHoldPage(asked, address);
  return isSameSite(asked, address) || address == QUrl(u"about:blank"_s) || address == QUrl(u"about:srcdoc"_s);
}

}  // namespace elevenfive
