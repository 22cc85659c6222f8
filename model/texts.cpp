#include "model/texts.h"

#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <algorithm>
#include <cmath>
#include <limits>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView lineEnd = u"\r\n";

bool isDigit(QChar ch) {
  return ch >= u'0' && ch <= u'9';
}

}  // namespace

QString toQuanjiaoDigits(const QString& text) {
  QString wide = text;
  for (QChar& ch : wide)
    if (isDigit(ch))
      ch = QChar(static_cast<char16_t>(ch.unicode() - u'0' + u'０'));
  return wide;
}

QString toQuanjiaoDigits(int number) {
  return toQuanjiaoDigits(QString::number(number));
}

QString twoDigits(int number) {
  return u"%1"_s.arg(number, 2, 10, QChar(u'0'));
}

QString drawText(const Draw& draw, const QString& separator) {
  QString text;
  for (const int n : draw)
    text += (text.isEmpty() ? QString() : separator) + twoDigits(n);
  return text;
}

int leadingNumber(QStringView text) {
  qsizetype end = 0;
  while (end < text.size() && isDigit(text[end]))
    ++end;
  if (end == 0)
    return 0;
  if (end < text.size() && text[end] == u'.') {
    ++end;
    while (end < text.size() && isDigit(text[end]))
      ++end;
  }
  const double value = std::nearbyint(text.first(end).toDouble());  // the default rounding is half to even
  return value > std::numeric_limits<int>::max() ? 0 : static_cast<int>(value);
}

int inputNumber(const QString& typed) {
  return leadingNumber(QString(u'0' + typed.trimmed().left(9)));
}

bool isCharsIn(QStringView text, QStringView allowed) {
  return std::all_of(text.begin(), text.end(), [&](QChar ch) { return hasChar(ch, allowed); });
}

bool hasChar(QChar ch, QStringView allowed) {
  return allowed.contains(ch, Qt::CaseSensitive);
}

int CountStringLine(const QString& text) {
  return static_cast<int>(text.count(lineEnd)) + 1;
}

QString ReadStringLine(const QString& text, int n) {
  if (n < 1)
    return {};
  qsizetype begin = 0;
  for (int line = 1; line < n; ++line) {
    const qsizetype end = text.indexOf(lineEnd, begin);
    if (end < 0)
      return {};
    begin = end + lineEnd.size();
  }
  const qsizetype end = text.indexOf(lineEnd, begin);
  return text.mid(begin, end < 0 ? -1 : end - begin);
}

QByteArray readFileText(const QString& path) {
  QFile file(path);
  if (path.isEmpty() || QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
    throw FileError(u"无法打开文件 %1。"_s.arg(path));
  QByteArray content = file.readAll();
  if (file.error() != QFileDevice::NoError)
    throw FileError(u"无法读取文件 %1。"_s.arg(path));
  return content;
}

QString decodeText(const QByteArray& bytes) {
  // All bytes are here, so a sequence that is cut off at the end is an error like any other.
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = utf8(bytes);
  if (!utf8.hasError())
    return text;  // the decoder drops a byte order mark
  QStringDecoder gb18030("GB18030");
  if (!gb18030.isValid())
    return QString::fromLatin1(bytes);
  // The decoder waits for the rest of a character that is cut off at the end; a line end tells it that none will come.
  text = gb18030(bytes + '\n');
  text.chop(1);
  return text;
}

QString getTempDir() {
  const QString system = QDir::tempPath();
  if (system.isEmpty())
    return {};  // it does not exist
  const QString path = system + u"/elevenfive-"_s + QString::number(geteuid());
  constexpr QFileDevice::Permissions ownerOnly =
      QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
  QDir().mkdir(path, ownerOnly);
  // Everybody may write where this folder stands: one that is not ours may be somebody's trap.
  const QFileInfo folder(path);
  if (folder.isSymLink() || !folder.isDir() || folder.ownerId() != geteuid())
    return {};
  return QFile::setPermissions(path, ownerOnly) ? path : QString();
}

}  // namespace elevenfive
