#include "history/textlines.h"

#include <QFileInfo>
#include <algorithm>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype blockSize = qsizetype{256} * 1024;
constexpr qsizetype longestLine = qsizetype{64} * 1024;
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

}  // namespace

TextLines::TextLines(const QString& path, Events& events) : file_(path), gb18030_("GB18030") {
  if (!QFileInfo(path).isFile() || !file_.open(QIODevice::ReadOnly))
    throw FileError(u"无法打开文件 %1。"_s.arg(path));
  scan(events);
}

void TextLines::scan(Events& events) {
  QStringDecoder utf8(QStringDecoder::Utf8);
  bool startsWithMark = false;
  bool first = true;
  char last = '\n';
  while (readBlock()) {
    QByteArrayView bytes(block_);
    if (first && bytes.startsWith(byteOrderMark)) {
      startsWithMark = true;
      bytes = bytes.sliced(3);
    }
    first = false;
    if (!bytes.isEmpty())
      last = bytes.back();
    count_ += static_cast<int>(std::count(bytes.begin(), bytes.end(), '\n'));
    if (isUtf8_) {
      [[maybe_unused]] const QString text = utf8(bytes);
      isUtf8_ = !utf8.hasError();
    }
    events.yield();
  }
  if (last != '\n')
    ++count_;
  if (!file_.seek(startsWithMark ? 3 : 0))
    throw FileError(u"无法读取文件 %1。"_s.arg(file_.fileName()));
  block_.clear();
}

bool TextLines::readBlock() {
  block_ = file_.read(blockSize);
  position_ = 0;
  if (file_.error() != QFileDevice::NoError)
    throw FileError(u"无法读取文件 %1。"_s.arg(file_.fileName()));
  return !block_.isEmpty();
}

bool TextLines::next(QString& line) {
  QByteArray begun;  // what earlier blocks hold of this line
  bool tooLong = false;
  while (true) {
    if (position_ == block_.size() && !readBlock()) {
      line = tooLong ? QString() : decoded(begun);
      return !begun.isEmpty();
    }
    const QByteArrayView rest = QByteArrayView(block_).sliced(position_);
    const qsizetype end = rest.indexOf('\n');
    const QByteArrayView piece = end < 0 ? rest : rest.first(end);
    tooLong = tooLong || begun.size() + piece.size() > longestLine;
    position_ += end < 0 ? rest.size() : end + 1;
    if (end >= 0) {
      if (tooLong)
        line.clear();
      else if (begun.isEmpty())
        line = decoded(piece);
      else
        line = decoded(begun.append(piece));
      return true;
    }
    if (!tooLong)
      begun.append(piece);
    else if (begun.isEmpty())
      begun.append(piece.first(1));  // remembers that there was something
  }
}

QString TextLines::decoded(QByteArrayView bytes) {
  if (bytes.endsWith('\r'))
    bytes.chop(1);
  if (isUtf8_)
    return QString::fromUtf8(bytes);
  if (!gb18030_.isValid())
    return QString::fromLatin1(bytes);
  gb18030_.resetState();
  return gb18030_(bytes);
}

}  // namespace elevenfive
