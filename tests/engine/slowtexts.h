// Texts that the slow engine's files share.
#pragma once

#include <QString>
#include <set>

#include "model/numbers.h"

namespace elevenfive::slow {

/// Two line breaks, which open every line of the status text.
inline QString lineBreaks() {
  return QStringLiteral("\r\n\r\n");
}

/// A number in full-width digits.
inline QString wide(int number) {
  QString text = QString::number(number);
  for (QChar& c : text)
    if (c >= u'0' && c <= u'9')
      c = QChar(c.unicode() - u'0' + u'０');
  return text;
}

inline std::set<int> setOf(const Draw& draw) {
  return {draw.begin(), draw.end()};
}

}  // namespace elevenfive::slow
