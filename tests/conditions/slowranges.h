// Range texts read a second time, step after step and as slowly as one would with a pencil, to compare the reader with.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "conditions/rangegroups.h"

namespace elevenfive {

/// Every blank of Unicode, line and paragraph ends among them.
inline bool isBlank(QChar ch) {
  static constexpr char16_t ranges[][2] = {{0x09, 0x0D},     {0x20, 0x20},     {0x85, 0x85},     {0xA0, 0xA0},
                                           {0x1680, 0x1680}, {0x2000, 0x200A}, {0x2028, 0x2029}, {0x202F, 0x202F},
                                           {0x205F, 0x205F}, {0x3000, 0x3000}};
  for (const auto& [first, last] : ranges)
    if (ch.unicode() >= first && ch.unicode() <= last)
      return true;
  return false;
}

/// Brings a typed text into the plain form, one rule at a time over the whole text.
inline QString slowClean(const QString& typed) {
  QString text;
  for (const QChar ch : typed)  // commas and blanks go
    if (ch != u',' && ch != u'，' && !isBlank(ch))
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
