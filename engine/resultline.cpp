#include "engine/resultline.h"

#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype xuhaoWidth = 4;
constexpr qsizetype shortestLine = 11;
constexpr qsizetype shortestLineWithPeriod = 13;
constexpr int largestByte = 255;

bool isDigit(QChar ch) {
  return ch >= u'0' && ch <= u'9';
}

/// The text without the blanks at its ends; a full-width blank or a tab is a separator like others and stays.
QStringView withoutBlanksAround(QStringView text) {
  while (text.startsWith(u' '))
    text = text.sliced(1);
  while (text.endsWith(u' '))
    text.chop(1);
  return text;
}

/// Reads runs of digits one after the other.
class DigitRuns final {
 public:
  explicit DigitRuns(QStringView text) : rest_(text) {}

  /// The next number, as far as it stays within a byte: larger ones give largestByte + 1. Nothing at the end.
  std::optional<int> next() {
    while (!rest_.isEmpty() && !isDigit(rest_.front()))
      rest_ = rest_.sliced(1);
    if (rest_.isEmpty())
      return std::nullopt;
    int number = 0;
    for (; !rest_.isEmpty() && isDigit(rest_.front()); rest_ = rest_.sliced(1))
      number = qMin(largestByte + 1, number * 10 + (rest_.front().unicode() - u'0'));
    return number;
  }

 private:
  QStringView rest_;
};

}  // namespace

QString exportLine(const ExportSettings& settings, int xuhao, Qihao qihao, const Draw& numbers) {
  // The blanks in front of the numbers hide behind "#" while the separator takes the place of those between them.
  QString line;
  if (settings.xuhao)
    line += QString::number(xuhao).leftJustified(xuhaoWidth, u'#');
  if (settings.qihao)
    line += QString::number(qihao) + u'#';
  if (settings.haoma)
    line += drawText(numbers, u" "_s);
  line.replace(u' ', settings.separator);
  line.replace(u'#', u' ');
  while (line.endsWith(u' '))
    line.chop(1);
  return line;
}

std::optional<Draw> importedNumbers(QStringView line, ImportFormat format) {
  line = withoutBlanksAround(line);
  const bool withPeriod = format == ImportFormat::qihaoHaoma;
  if (line.size() < (withPeriod ? shortestLineWithPeriod : shortestLine))
    return std::nullopt;
  if (withPeriod && !isDigit(line.front()))
    return std::nullopt;
  DigitRuns runs(line);
  if (format != ImportFormat::haoma)
    runs.next();
  Draw numbers{};
  for (int& number : numbers) {
    const std::optional<int> found = runs.next();
    if (!found || *found > largestByte)
      return std::nullopt;
    number = *found;
  }
  return numbers;
}

}  // namespace elevenfive
