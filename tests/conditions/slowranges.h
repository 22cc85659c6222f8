// Range texts read a second time, step after step and as slowly as one would with a pencil, to compare the reader with.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "conditions/rangegroups.h"

namespace elevenfive {

/// Brings a typed text into the plain form, one rule at a time over the whole text.
inline QString slowClean(const QString& typed) {
  QString text;
  for (const QChar ch : typed)  // commas and blanks go
    if (ch != u',' && ch != u'，' && ch != u' ')
      text += ch;
  const QString wide = QStringLiteral("【】－—");
  const QString plain = QStringLiteral("[]--");
  for (qsizetype form = 0; form < wide.size(); ++form)  // wide forms become plain ones
    text = text.split(wide[form]).join(plain[form]);
  QString kept;
  for (qsizetype i = 0; i < text.size(); ++i) {  // empty groups go, once from left to right
    if (i + 1 < text.size() && text[i] == u'[' && text[i + 1] == u']')
      ++i;
    else
      kept += text[i];
  }
  if (kept.isEmpty() || kept.front() != u'[')
    kept = u'[' + kept;
  if (kept.back() != u']')
    kept = kept + u']';
  return kept;
}

/// Reads a cleaned text a character at a time, as one would with a pencil.
inline std::vector<RangeGroup> slowGroups(const QString& cleaned) {
  std::vector<RangeGroup> groups;
  QString pending;
  for (const QChar ch : cleaned) {
    if (ch == u'[')
      continue;
    if (ch != u']') {
      pending += ch;
      continue;
    }
    const auto number = [](QString part) {
      if (part.startsWith(u'-'))
        part = part.mid(1);
      double value = 0;
      while (!part.isEmpty() && QStringLiteral("0123456789").contains(part[0])) {
        value = value * 10 + part[0].digitValue();
        part = part.mid(1);
      }
      return value > largestRangeValue ? largestRangeValue : static_cast<int>(value);
    };
    if (pending.contains(u'-'))
      groups.push_back({number(pending.section(u'-', 0, 0)), number(pending.section(u'-', 1))});
    else
      groups.push_back({number(pending), std::nullopt});
    pending.clear();
  }
  return groups;
}

}  // namespace elevenfive
