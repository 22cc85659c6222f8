#include "model/scramble.h"

#include <algorithm>

namespace elevenfive {

namespace {

constexpr int shift = 5;
constexpr qsizetype keyLength = 8;

/// Codes go round at the ends of the 16 bits that a character has.
QString shifted(QString text, int by) {
  for (QChar& ch : text)
    ch = QChar(static_cast<char16_t>(ch.unicode() + by));
  return text;
}

QString reversed(QString text) {
  std::reverse(text.begin(), text.end());
  return text;
}

}  // namespace

QString scrambleText(const QString& text, bool encode, const QString& key) {
  if (encode)
    return shifted(reversed(text), shift);
  if (key.size() != keyLength)
    return {};
  return reversed(shifted(text, -shift));
}

}  // namespace elevenfive
