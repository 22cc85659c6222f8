#include "conditions/commongroups.h"

#include <algorithm>
#include <cstdlib>

#include "model/navigators.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

bool holds(const Draw& draw, int number) {
  return std::find(draw.begin(), draw.end(), number) != draw.end();
}

bool neighbours(const Draw& draw, int number) {
  return holds(draw, number - 1) || holds(draw, number + 1);
}

/// What a rule may look at: the newest draw and the one before it. Rules that need none are given zeros.
struct Draws {
  Draw last{};
  Draw before{};
};

/// The draws that a rule needs, which decides its message where one is missing.
enum class Needs { last, lastTwo, before };

struct DrawRule {
  QStringView marker;
  QStringView name;  ///< as the entries show it, behind the period
  Needs needs;
  bool (*test)(const Draws& draws, int number);
};

constexpr DrawRule drawRules[] = {
    {u"(复码)", u"期旧码(复码)", Needs::last, [](const Draws& d, int n) { return holds(d.last, n); }},
    {u"期斜码", u"期斜码", Needs::last,
     [](const Draws& d, int n) { return neighbours(d.last, n) && !holds(d.last, n); }},
    {u"期孤码", u"期孤码", Needs::last,
     [](const Draws& d, int n) { return !neighbours(d.last, n) && !holds(d.last, n); }},
    {u"(中码)", u"期新码(中码)", Needs::lastTwo,
     [](const Draws& d, int n) { return !holds(d.last, n) && !holds(d.before, n); }},
    {u"(隔码)", u"期跳码(隔码)", Needs::before, [](const Draws& d, int n) { return holds(d.before, n); }},
    {u"旧码尾数", u"期旧码尾数", Needs::last,
     [](const Draws& d, int n) {
       return std::any_of(d.last.begin(), d.last.end(), [n](int drawn) { return drawn % 10 == n % 10; });
     }},
};

constexpr int lastDivisor = 6;

int digitAt(const QString& text, qsizetype index) {
  const QChar ch = index < text.size() ? text[index] : QChar(u' ');
  return ch >= u'0' && ch <= u'9' ? ch.unicode() - u'0' : -1;
}

template <typename Test>
CommonGroup groupOf(const Test& test) {
  CommonGroup group;
  for (int n = 1; n <= numberCount; ++n)
    group.members[static_cast<std::size_t>(n)] = test(n);
  return group;
}

/// An entry that looks at draws without the period in front, any other as it is.
QString withoutPeriod(const QString& entry) {
  qsizetype digits = 0;
  while (digits < entry.size() && entry[digits] >= u'0' && entry[digits] <= u'9')
    ++digits;
  const QString rest = entry.sliced(digits);
  return rest.startsWith(u'期') ? rest : entry;
}

CommonGroup missingDraw(const QString& message) {
  return {{}, message};
}

CommonGroup drawGroup(Store& store, const DrawRule& rule) {
  const Qihao newest = getLastQihao(store);
  const std::optional<Draw> last = drawOf(store, newest);
  const std::optional<Draw> before = drawOf(store, getPrevQihao(store, newest, 1));
  switch (rule.needs) {
    case Needs::last:
      if (!last)
        return missingDraw(u"无法提取上期开奖号码！"_s);
      break;
    case Needs::lastTwo:
      if (!last || !before)
        return missingDraw(u"无法提取最近2期的开奖号码！"_s);
      break;
    case Needs::before:
      if (!before)
        return missingDraw(u"无法提取上上期开奖号码！"_s);
      break;
  }
  const Draws draws{last.value_or(Draw{}), before.value_or(Draw{})};
  return groupOf([&](int n) { return rule.test(draws, n); });
}

}  // namespace

QStringList commonGroupEntries(Qihao nextPeriod) {
  const QString rule = commonGroupsRule.toString();
  QStringList entries{u"奇数号码"_s, u"偶数号码"_s, rule};
  for (const DrawRule& drawRule : drawRules)
    entries << QString::number(nextPeriod) + drawRule.name.toString();
  entries << rule;
  for (int r = 0; r < 3; ++r)
    entries << u"除3余%1(%1路)"_s.arg(r);
  entries << rule;
  for (int tail = 0; tail < 10; ++tail)
    entries << toQuanjiaoDigits(tail) + u"_尾"_s;
  for (int divisor = 4; divisor <= lastDivisor; ++divisor) {
    entries << rule;
    for (int r = 0; r < divisor; ++r)
      entries << u"除%1余%2"_s.arg(divisor).arg(r);
  }
  return entries;
}

std::optional<QString> entryMeant(const QStringList& entries, const QString& text) {
  const QString wanted = withoutPeriod(text);
  for (const QString& entry : entries)
    if (withoutPeriod(entry) == wanted)
      return entry;
  return std::nullopt;
}

std::optional<CommonGroup> commonGroup(Store& store, const QString& entry) {
  if (entry.contains(u"---"_s))
    return std::nullopt;
  QString text = entry.trimmed();
  for (QChar& ch : text)
    if (ch >= u'０' && ch <= u'９')
      ch = QChar(static_cast<char16_t>(ch.unicode() - u'０' + u'0'));
  if (text.contains(u"除"_s)) {
    const int divisor = digitAt(text, 1);
    const int remainder = digitAt(text, 3);
    if (divisor < 1 || remainder < 0)
      return std::nullopt;
    return groupOf([&](int n) { return n % divisor == remainder; });
  }
  if (text.contains(u"奇数号码"_s))
    return groupOf([](int n) { return n % 2 == 1; });
  if (text.contains(u"偶数号码"_s))
    return groupOf([](int n) { return n % 2 == 0; });
  for (const DrawRule& rule : drawRules)
    if (text.contains(rule.marker))
      return drawGroup(store, rule);
  if (text.contains(u"_尾"_s) && digitAt(text, 0) >= 0)
    return groupOf([&](int n) { return n % 10 == digitAt(text, 0); });
  return std::nullopt;
}

}  // namespace elevenfive
