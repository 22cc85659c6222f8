#include "cli/values.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <limits>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

bool isDigit(QChar ch) {
  return ch >= u'0' && ch <= u'9';
}

/// A word as it is told back: long ones are cut.
QString told(const QString& word) {
  constexpr qsizetype longest = 40;
  return word.size() > longest ? word.left(longest) + u"…"_s : word;
}

int checkedNumber(const QString& name, const QString& word, int first, int last) {
  const std::optional<int> number = wholeNumber(word);
  const QString digits = word.startsWith(u'-') ? word.mid(1) : word;
  if (!number && !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isDigit))
    throw UsageError(u"参数 %1 超出范围：“%2”。"_s.arg(name, told(word)));
  if (!number)
    throw UsageError(u"参数 %1 应为整数，而不是“%2”。"_s.arg(name, told(word)));
  if (*number < first || *number > last)
    throw UsageError(u"参数 %1 应在 %2 到 %3 之间，而不是“%4”。"_s.arg(name).arg(first).arg(last).arg(told(word)));
  return *number;
}

}  // namespace

std::optional<int> wholeNumber(const QString& word) {
  const QString digits = word.startsWith(u'-') ? word.mid(1) : word;
  if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit))
    return std::nullopt;
  bool fits = false;
  const int number = word.toInt(&fits);
  return fits ? std::optional<int>(number) : std::nullopt;
}

int numberOf(const Arguments& arguments, const QString& name) {
  return numberOf(arguments, name, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
}

int numberOf(const Arguments& arguments, const QString& name, int first, int last) {
  return checkedNumber(name, arguments.text(name), first, last);
}

std::vector<int> listOf(const Arguments& arguments, const QString& name, int first, int last) {
  const QString list = arguments.text(name);
  std::vector<int> numbers;
  if (list == u"-"_s)
    return numbers;
  for (const QString& word : list.split(u','))
    numbers.push_back(checkedNumber(name, word, first, last));
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

QString typedNumber(const Arguments& arguments, const QString& name) {
  numberOf(arguments, name);
  return arguments.text(name);
}

int fieldNumberOf(const Arguments& arguments, const QString& name) {
  return numberOf(arguments, name, 0, std::numeric_limits<int>::max());
}

QString pathOf(const Arguments& arguments, const QString& name) {
  QString path = arguments.text(name);
  if (path.isEmpty())
    throw UsageError(u"参数 %1 应为文件名，不能为空。"_s.arg(name));
  return path;
}

void requireReadable(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
    throw FileError(u"无法打开文件 %1。"_s.arg(path));
}

QDate dateOf(const Arguments& arguments, const QString& name) {
  if (!arguments.has(name))
    return QDate::currentDate();
  const QString word = arguments.text(name);
  const QDate date = QDate::fromString(word, u"yyyy-MM-dd"_s);
  if (!date.isValid())
    throw UsageError(u"选项 %1 应为日期 YYYY-MM-DD，而不是“%2”。"_s.arg(name, told(word)));
  return date;
}

}  // namespace elevenfive
