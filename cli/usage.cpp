#include "cli/usage.h"

#include <algorithm>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

bool isVeryWord(const QString& word) {
  return std::all_of(word.begin(), word.end(), [](QChar ch) { return ch >= u'a' && ch <= u'z'; });
}

/// An option is two dashes and a name, so that "--" alone and a text that merely begins with dashes are not.
bool isOption(const QString& word) {
  return word.size() > 2 && word.startsWith(u"--"_s) && isVeryWord(word.mid(2));
}

/// Of several faults the first is told.
void setFault(QString& fault, const QString& text) {
  if (fault.isEmpty())
    fault = text;
}

}  // namespace

Usage::Usage(QStringView line) {
  const QStringList tokens = line.toString().split(u' ', Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < tokens.size(); ++i) {
    QString token = tokens[i];
    if (token == u"..."_s) {
      positions_.back().repeated = true;
      continue;
    }
    const bool optional = token.startsWith(u'[');
    if (optional)
      token.remove(0, 1);
    if (token.startsWith(u"--"_s)) {
      const bool closed = token.endsWith(u']');
      Option option{closed ? token.chopped(1) : token, {}, optional};
      if (!closed && i + 1 < tokens.size() && !tokens[i + 1].startsWith(u'['))
        option.value = optional ? tokens[++i].chopped(1) : tokens[++i];
      options_.push_back(option);
      continue;
    }
    if (optional)
      token.chop(1);
    const auto kind = isVeryWord(token)      ? Position::Kind::literal
                      : token.contains(u'|') ? Position::Kind::choice
                                             : Position::Kind::word;
    positions_.push_back({kind, token, optional});
  }
}

const Usage::Option* Usage::findOption(const QString& name) const {
  const auto found = std::find_if(options_.begin(), options_.end(), [&](const Option& o) { return o.name == name; });
  return found == options_.end() ? nullptr : &*found;
}

Usage::Match Usage::match(const QStringList& words) const {
  Match match;
  takePositions(takeOptions(words, match), match);
  for (const Option& option : options_) {
    if (!option.optional && !match.arguments.has(option.name))
      setFault(match.fault, u"缺少选项 %1。"_s.arg(option.name));
    const QString given = match.arguments.text(option.name);
    if (option.value.contains(u'|') && match.arguments.has(option.name) && !option.value.split(u'|').contains(given))
      setFault(match.fault, u"选项 %1 应为 %2，而不是“%3”。"_s.arg(option.name, option.value, given));
  }
  return match;
}

QStringList Usage::takeOptions(const QStringList& words, Match& match) const {
  QStringList rest;
  for (qsizetype i = 0; i < words.size(); ++i) {
    if (words[i] == u"--"_s) {
      rest << words.mid(i + 1);
      break;
    }
    if (!isOption(words[i])) {
      rest << words[i];
      continue;
    }
    const Option* option = findOption(words[i]);
    if (option == nullptr) {
      match.knowsOptions = false;
      setFault(match.fault, u"没有这个选项：%1。"_s.arg(words[i]));
      continue;
    }
    if (match.arguments.has(option->name))
      setFault(match.fault, u"选项 %1 给了两次。"_s.arg(option->name));
    if (option->value.isEmpty()) {
      match.arguments.add(option->name, {});
    } else if (i + 1 < words.size()) {
      match.arguments.add(option->name, words[++i]);
    } else {
      setFault(match.fault, u"选项 %1 后面缺少 %2。"_s.arg(option->name, option->value));
      match.arguments.add(option->name, {});
    }
  }
  return rest;
}

void Usage::takePositions(const QStringList& words, Match& match) const {
  qsizetype next = 0;
  for (const Position& position : positions_) {
    if (next >= words.size()) {
      if (!position.optional)
        setFault(match.fault, u"缺少参数 %1。"_s.arg(position.name));
      match.lacksLiteral = position.kind == Position::Kind::literal;
      break;
    }
    const QString& word = words[next++];
    if (position.kind == Position::Kind::literal) {
      match.contradicts = match.contradicts || word != position.name;
      match.literals += word == position.name ? 1 : 0;
      continue;
    }
    if (position.kind == Position::Kind::choice && !position.name.split(u'|').contains(word))
      setFault(match.fault, u"参数应为 %1，而不是“%2”。"_s.arg(position.name, word));
    match.arguments.add(position.name, word);
    while (position.repeated && next < words.size())
      match.arguments.add(position.name, words[next++]);
  }
  if (next < words.size())
    setFault(match.fault, u"多余的参数：“%1”。"_s.arg(words[next]));
}

}  // namespace elevenfive
