#include "conditions/rangegroups.h"

#include <algorithm>

#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A character of the plain form; what has no plain form stays.
QChar plainForm(QChar ch) {
  switch (ch.unicode()) {
    case u'【':
      return u'[';
    case u'】':
      return u']';
    case u'－':
    case u'—':
      return u'-';
    default:
      return ch;
  }
}

/// The number that a text begins with, without its sign; 0 where it begins with none.
int absoluteNumber(QStringView text) {
  if (text.startsWith(u'-'))
    text = text.sliced(1);
  qint64 number = 0;
  for (const QChar ch : text) {
    if (ch < u'0' || ch > u'9')
      break;
    number = std::min<qint64>(number * 10 + (ch.unicode() - u'0'), largestRangeValue);
  }
  return static_cast<int>(number);
}

/// Reads what stands between two "]"; a "[" may stand anywhere in it.
RangeGroup groupOf(QStringView raw) {
  const QString text = raw.toString().remove(u'[');
  const qsizetype dash = text.indexOf(u'-');
  if (dash < 0)
    return {absoluteNumber(text), std::nullopt};
  return {absoluteNumber(QStringView(text).first(dash)), absoluteNumber(QStringView(text).sliced(dash + 1))};
}

}  // namespace

QString cleanRangeText(const QString& typed) {
  QString text;
  text.reserve(typed.size() + 2);
  for (const QChar ch : typed)
    if (ch != u',' && ch != u'，' && ch != u' ')
      text += plainForm(ch);
  text.remove(u"[]"_s);
  if (!text.startsWith(u'['))
    text.prepend(u'[');
  if (!text.endsWith(u']'))
    text.append(u']');
  return text;
}

bool isRangeText(const QString& cleaned) {
  return isCharsIn(cleaned, rangeCharacters);
}

std::vector<RangeGroup> rangeGroups(const QString& cleaned) {
  std::vector<RangeGroup> groups;
  qsizetype begin = 0;
  for (qsizetype end = cleaned.indexOf(u']'); end >= 0; end = cleaned.indexOf(u']', begin)) {
    groups.push_back(groupOf(QStringView(cleaned).sliced(begin, end - begin)));
    begin = end + 1;
  }
  return groups;
}

QString shownRangeText(const QString& cleaned) {
  return QString(cleaned).replace(u"]["_s, u"],["_s);
}

}  // namespace elevenfive
