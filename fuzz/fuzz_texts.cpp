// The readers of short texts over any bytes: decoding, the leading number, and the agreement of the two line helpers.
#include <QStringList>
#include <cstddef>
#include <cstdint>

#include "fuzz/check.h"
#include "model/texts.h"

namespace elevenfive::fuzz {

namespace {

using namespace Qt::StringLiterals;

void checkNumbers(const QString& text) {
  const int number = leadingNumber(text);
  demand(number >= 0, "a leading number is never negative");
  demand(number == 0 || (text[0] >= u'0' && text[0] <= u'9'), "only a leading digit makes a number");

  // Nine characters behind the zero hold at most 999999999; a further digit behind the ninth counts for nothing.
  const int typed = inputNumber(text);
  demand(typed >= 0 && typed <= 999999999, "an input box gives 0 to 999999999");
  demand(inputNumber(u' ' + text + u'\t') == typed, "blanks around a typed number count for nothing");
}

void checkDigits(const QString& text) {
  const QString wide = toQuanjiaoDigits(text);
  demand(wide.size() == text.size(), "full-width digits keep the length");
  for (const QChar ch : wide)
    demand(ch < u'0' || ch > u'9', "no plain digit stays");
  demand(toQuanjiaoDigits(wide) == wide, "full-width digits stay as they are");
}

/// Joining all lines must give the text back, whatever stands in them.
void checkLines(const QString& text) {
  const int count = CountStringLine(text);
  QStringList lines;
  for (int n = 1; n <= count; ++n)
    lines << ReadStringLine(text, n);
  demand(lines.join(u"\r\n"_s) == text, "the lines joined are the text");
  demand(ReadStringLine(text, count + 1).isEmpty(), "beyond the last line stands nothing");
  demand(ReadStringLine(text, 0).isEmpty(), "there is no line 0");
}

}  // namespace

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace elevenfive;
  constexpr std::size_t longest = 4096;  // reading line by line costs the square of the length
  if (size > longest)
    return 0;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString text = decodeText(bytes);
  fuzz::demand(bytes.isEmpty() == text.isEmpty() || bytes == "\xEF\xBB\xBF", "only no bytes make no text");
  if (QString::fromUtf8(bytes).toUtf8() == bytes && !bytes.startsWith("\xEF\xBB\xBF"))
    fuzz::demand(text == QString::fromUtf8(bytes), "what is UTF-8 is read as UTF-8");
  fuzz::checkNumbers(text);
  fuzz::checkDigits(text);
  fuzz::checkLines(text);
  return 0;
}
