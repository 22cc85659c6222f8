#include "history/historyline.h"

#include <array>

#include "model/texts.h"

namespace elevenfive {

namespace {

constexpr qsizetype shortestLine = 11;
constexpr qsizetype fieldWidth = 2;
constexpr std::size_t fewestNumbers = 4;

bool isSeparator(QChar ch) {
  return ch.isSpace() || ch == u',' || ch == u'-' || ch == u'+' || ch == u'，' || ch == u'\u3000';
}

QStringView withoutOuterSeparators(QStringView text) {
  while (!text.isEmpty() && isSeparator(text.front()))
    text = text.sliced(1);
  while (!text.isEmpty() && isSeparator(text.back()))
    text.chop(1);
  return text;
}

/// The line without the ASCII blanks around it. Any other separator in front leaves the line without a period.
QStringView withoutOuterBlanks(QStringView text) {
  const auto isBlank = [](QChar ch) { return ch.unicode() < 0x80 && ch.isSpace(); };
  while (!text.isEmpty() && isBlank(text.front()))
    text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back()))
    text.chop(1);
  return text;
}

/// The value of a field's first digits; separators may stand before them.
int fieldNumber(QStringView field) {
  field = withoutOuterSeparators(field);
  int value = 0;
  for (const QChar ch : field) {
    if (ch < u'0' || ch > u'9')
      break;
    value = value * 10 + (ch.unicode() - u'0');
  }
  return value;
}

}  // namespace

std::optional<HistoryLine> HistoryLineReader::read(QStringView line) {
  if (line.size() < shortestLine)
    return std::nullopt;
  QStringView rest = withoutOuterBlanks(line);
  const Qihao qihao = leadingNumber(rest);

  std::array<bool, numberCount + 1> drawn{};
  for (int field = 0; field < drawSize; ++field) {
    const qsizetype width = qMin(fieldWidth, rest.size());
    const int n = fieldNumber(rest.last(width));
    if (isNumber(n))
      drawn[static_cast<std::size_t>(n)] = true;
    rest = withoutOuterSeparators(rest.chopped(width));
  }

  std::size_t count = 0;
  for (int n = 1; n <= numberCount; ++n)
    if (drawn[static_cast<std::size_t>(n)])
      numbers_[count++] = n;
  if (qihao < 1 || count < fewestNumbers)
    return std::nullopt;
  return HistoryLine{qihao, numbers_};
}

}  // namespace elevenfive
