#include "cli/words.h"

namespace elevenfive {

std::optional<QStringList> splitWords(const QString& line) {
  QStringList words;
  QString word;
  bool inWord = false;
  QChar quote;  // null outside a quotation
  for (qsizetype i = 0; i < line.size(); ++i) {
    const QChar ch = line[i];
    if (!quote.isNull()) {
      const bool escapes =
          quote == u'"' && ch == u'\\' && i + 1 < line.size() && (line[i + 1] == u'"' || line[i + 1] == u'\\');
      if (escapes)
        word += line[++i];
      else if (ch == quote)
        quote = QChar();
      else
        word += ch;
    } else if (ch == u'"' || ch == u'\'') {
      quote = ch;
      inWord = true;
    } else if (ch == u' ' || ch == u'\t') {
      if (inWord)
        words << word;
      word.clear();
      inWord = false;
    } else {
      word += ch;
      inWord = true;
    }
  }
  if (!quote.isNull())
    return std::nullopt;
  if (inWord)
    words << word;
  return words;
}

bool isPassedOver(const QString& line) {
  const QString said = line.trimmed();
  return said.isEmpty() || said.startsWith(u'#');
}

}  // namespace elevenfive
