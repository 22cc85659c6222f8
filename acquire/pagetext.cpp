#include "acquire/pagetext.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>

#include "history/derivation.h"
#include "model/errors.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype shortestLine = 31;
constexpr qsizetype tailLength = 25;
constexpr QStringView tailCharacters = u"0123456789- :";

constexpr qsizetype pagePeriodDigits = 8;
constexpr qsizetype dayDigits = 6;  // of a period: year, month, day
constexpr int largestNumber = 11;

constexpr Qihao periodBeforeAll = 2003001;

/// The five numbers by flags, so that they come out ascending and without repeats.
std::optional<Draw> numbersOf(QStringView digits) {
  std::array<bool, largestNumber + 1> flags{};
  for (qsizetype i = 0; i < drawSize; ++i) {
    const int value = digits.mid(pagePeriodDigits + 2 * i, 2).toInt();
    flags[static_cast<std::size_t>(std::min(value, largestNumber))] = true;
  }
  Draw numbers{};
  std::size_t found = 0;
  for (int number = 1; number <= largestNumber; ++number)
    if (flags[static_cast<std::size_t>(number)])
      numbers[found++] = number;
  return found == numbers.size() ? std::optional(numbers) : std::nullopt;
}

Qihao periodOf(QStringView digits) {
  const QString day = digits.left(dayDigits).toString();
  return (day + u'0' + digits.mid(dayDigits, pagePeriodDigits - dayDigits).toString()).toInt();
}

}  // namespace

QString getDigits(QStringView text) {
  QString digits;
  for (const QChar ch : text)
    if (ch >= u'0' && ch <= u'9')
      digits += ch;
  return digits;
}

std::optional<PageLine> readPageLine(QStringView line) {
  if (line.size() < shortestLine || !isCharsIn(line.last(tailLength), tailCharacters))
    return std::nullopt;
  const QString digits = getDigits(line);
  return PageLine{periodOf(digits), numbersOf(digits)};
}

QString decodePage(const QByteArray& bytes) {
  QString text = QString::fromUtf8(bytes);
  if (text.contains(resultsPageMark))
    return text;
  QStringDecoder gb18030("GB18030");  // the mark in it happens to be sound UTF-8, of another meaning
  if (gb18030.isValid() && (text = gb18030(bytes)).contains(resultsPageMark))
    return text;
  return decodeText(bytes);
}

QString scanText(const QString& bodyText) {
  QString text = bodyText;
  text.replace(u"\r\n"_s, u"\n"_s).replace(u'\t', u' ');
  return text.replace(u"\n"_s, u"\r\n"_s);
}

PageScan::PageScan(Store& store, int lines, const QDate& date, Qihao lastQihao) : writer_(store), date_(date) {
  counts_.lines = lines;
  counts_.highQihao = lastQihao;
}

std::optional<Qihao> PageScan::takeLine(QStringView line) {
  const std::optional<PageLine> read = readPageLine(line);
  if (!read)
    return std::nullopt;
  ++counts_.qualified;
  if (read->numbers && read->qihao >= 1 && isStored(read->qihao, *read->numbers)) {
    if (counts_.lowQihao == 0 || counts_.lowQihao > read->qihao)
      counts_.lowQihao = read->qihao;
    counts_.highQihao = std::max(counts_.highQihao, read->qihao);
    ++counts_.rowsDone;
  }
  return read->qihao;
}

/// Each draw is written for itself, so that a full disk takes none of those before it along.
bool PageScan::isStored(Qihao period, const Draw& numbers) {
  try {
    writer_.write(period, date_, numbers);
    return true;
  } catch (const StoreError& fault) {
    if (counts_.fault.isEmpty())
      counts_.fault = fault.message();
    return false;
  }
}

PageCounts scanPage(Store& store, const QString& bodyText, const QDate& date, Qihao lastQihao, Events& events,
                    const PageLineTold& told, const std::function<bool()>& stopped) {
  const QString text = scanText(bodyText);
  PageScan scan(store, CountStringLine(text), date, lastQihao);
  for (qsizetype begin = 0; begin <= text.size() && !(stopped && stopped());) {
    const qsizetype end = text.indexOf(u"\r\n"_s, begin);
    const qsizetype length = (end < 0 ? text.size() : end) - begin;
    const std::optional<Qihao> period = scan.takeLine(QStringView(text).mid(begin, length));
    if (period && told && !told(*period))
      break;
    events.yield();
    if (end < 0)
      break;
    begin = end + 2;
  }
  return scan.counts();
}

void deriveScanned(Store& store, PageCounts& counts, Progress* progress, Events& events, StatusPanels* panels) {
  if (counts.rowsDone == 0)
    return;
  const auto derive = [&](Qihao from, Qihao to) {
    try {
      calcHistoryAttr(store, from, to, progress, events, panels);
    } catch (const NumberFault& fault) {
      if (counts.underivable.isEmpty())
        counts.underivable = fault.message();
    } catch (const Error& fault) {
      if (counts.fault.isEmpty())
        counts.fault = fault.message();
    }
  };
  if (counts.lowQihao < counts.highQihao) {
    derive(counts.lowQihao, counts.highQihao);
    derive(counts.lowQihao, counts.lowQihao);
  } else {
    derive(counts.highQihao, counts.highQihao);
    derive(counts.highQihao, counts.lowQihao);
  }
}

Qihao lastQihaoForUpdate(Store& store) {
  const Qihao newest = store.value("读取历史记录", "SELECT 期号 FROM 历史记录 ORDER BY 期号 DESC LIMIT 1").value_or(0);
  Statement below =
      store.query("读取历史记录", "SELECT 期号 FROM 历史记录 WHERE 期号 < ? ORDER BY 期号 DESC LIMIT 2", newest);
  Qihao last = periodBeforeAll;
  while (below.next())
    last = below.integer(0);
  return last;
}

}  // namespace elevenfive
