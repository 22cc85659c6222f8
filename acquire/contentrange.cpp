#include "acquire/contentrange.h"

#include <algorithm>

#include "acquire/downloaderror.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

[[noreturn]] void raise(QStringView header) {
  constexpr qsizetype shownCharacters = 60;
  throw DownloadError(u"服务器的应答无法使用：从 Content-Range“%1”中读不出文件大小。"_s.arg(
      header.left(shownCharacters).toString().simplified()));
}

/// A count of bytes: digits only, no sign.
qint64 readCount(QStringView text, QStringView header) {
  text = text.trimmed();
  const bool digits = std::all_of(text.begin(), text.end(), [](QChar ch) { return ch >= u'0' && ch <= u'9'; });
  bool fits = false;
  const qint64 value = text.toLongLong(&fits);
  if (!digits || !fits)
    raise(header);
  return value;
}

}  // namespace

ContentRange readContentRange(QStringView header) {
  const QStringView counts = header.mid(header.indexOf(u'-') + 1);
  const qsizetype slash = counts.indexOf(u'/');
  if (slash < 0)
    raise(header);
  return {readCount(counts.left(slash), header), readCount(counts.mid(slash + 1), header)};
}

}  // namespace elevenfive
