#include "acquire/versionnotice.h"

#include "acquire/sources.h"
#include "model/programtitle.h"
#include "model/scramble.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView version = u"" ELEVENFIVE_VERSION;
constexpr QStringView marker = u"elevenfive-new-version";

QString encoded(const QString& text) {
  return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

}  // namespace

QString programVersion() {
  return version.toString();
}

QUrl noticeAddress(const QString& server) {
  if (isUnsetAddress(server))
    return {};
  const QString question =
      u"VER="_s + encoded(scrambleText(version.toString(), true, {})) + u"&NAME="_s + encoded(programName.toString());
  QUrl url = sourceUrl(server);
  url.setQuery(url.hasQuery() ? url.query(QUrl::FullyEncoded) + u'&' + question : question);
  return url;
}

bool isNotice(const QString& answer) {
  return answer.contains(marker);
}

QString noticeText() {
  return u"有新版本可以下载，将在浏览器中打开下载页面。"_s;
}

}  // namespace elevenfive
