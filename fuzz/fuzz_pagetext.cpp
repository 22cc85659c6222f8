// The scan of a results page over any text, and the readers of further page shapes.
//
// One store serves all inputs of a process and is emptied before each.
#include <QTemporaryDir>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "acquire/pagemessages.h"
#include "acquire/pagereaders.h"
#include "acquire/pagetext.h"
#include "fuzz/check.h"
#include "history/historytable.h"
#include "model/navigators.h"
#include "model/schema.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive::fuzz {

namespace {

using namespace Qt::StringLiterals;

constexpr Qihao begunWith = 2003001;
const QDate day(2011, 3, 16);

struct Silent final : Events {
  void yield() override {}
};

struct Bench {
  QTemporaryDir folder;
  Store store{folder.filePath(u"fuzz.db"_s), StoreAccess::create};
  Bench() { createSchema(store, StoreKind::main); }
};

int countWhere(Store& store, const char* condition) {
  return store.value("fuzz", std::string("SELECT COUNT(*) FROM 历史记录 WHERE ") + condition).value_or(-1);
}

/// Where the lines with the form of a draw are counted one by one by the line helpers, which walk the text for each anew.
constexpr qsizetype longestReadTwice = 4096;

int qualifiedLines(const QString& text) {
  int qualified = 0;
  for (int n = 1; n <= CountStringLine(text); ++n)
    qualified += readPageLine(ReadStringLine(text, n)) ? 1 : 0;
  return qualified;
}

void checkScan(Store& store, const QString& text) {
  Silent events;
  clearHistoryTable(store, events);
  int told = 0;
  PageCounts counts = scanPage(store, text, day, begunWith, events, [&told](Qihao) {
    ++told;
    return true;
  });
  const QString lines = scanText(text);
  demand(counts.lines == CountStringLine(lines), "every line is seen");
  demand(counts.qualified == told && told <= counts.lines, "every line with the form is told");
  if (lines.size() < longestReadTwice)
    demand(counts.qualified == qualifiedLines(lines), "the scan walks the lines that the line helpers give");
  demand(counts.rowsDone <= counts.qualified, "a record is a line with the form");
  demand(countHistory(store) <= counts.rowsDone, "a row comes of a record");
  demand((countHistory(store) == 0) == (counts.rowsDone == 0), "a record makes a row");
  demand((counts.lowQihao == 0) == (counts.rowsDone == 0), "the smallest period is that of a record");
  demand(counts.highQihao >= std::max(begunWith, counts.lowQihao), "the largest period never falls");
  demand(countWhere(store, "期号 < 1 OR 期号 > 999999999") == 0, "periods have at most nine digits");
  demand(countWhere(store,
                    "NOT (号码1 >= 1 AND 号码1 < 号码2 AND 号码2 < 号码3 AND 号码3 < 号码4 AND 号码4 < 号码5 "
                    "AND 号码5 <= 11)") == 0,
         "the five numbers are ascending");
  deriveScanned(store, counts, nullptr, events, nullptr);
  demand(counts.fault.isEmpty(), "a sound table takes all");
  // The first row of the range serves as the draw before, and the oldest is derived alone: none stays out. A range that
  // begins below the period that stands for "none before" begins there instead, so periods of no real year may stay out.
  if (counts.lowQihao >= noEarlierQihao)
    demand(countWhere(store, "和值 IS NULL") == 0, "every row is derived");
}

void checkReaders(const QString& text) {
  SiteList sites({}, {});
  if (!text.isEmpty()) {
    const int count = sites.getSiteList(text);
    demand(count <= SiteList::mostSites && count == static_cast<int>(sites.sites().size()),
           "there are at most 25 sites");
  }
  const QString url = dayPageUrl(day, QUrl(u"http://second.test/list"_s), text);
  demand(url.isEmpty() || (url.startsWith(u"http://second.test/syxw/syxwlssj/"_s) && url.endsWith(u".html"_s)),
         "a day's page is on the second site");
  const int width = getQihaoWidth(text);
  demand(width >= 6 && width <= 10, "periods have six to ten digits");
  const QString digits = getDigitsOnly(text);
  demand(isCharsIn(digits, u"0123456789/#") && !digits.contains(u"##"_s), "runs of other characters are one mark");
  demand(getDigits(digits) == getDigits(text), "no digit is lost");
  MarkedDraw draw;
  if (getDrawAfterMark(110315, digits, draw))
    for (const int number : draw.numbers)
      demand(number >= 0 && number <= 11, "numbers are taken modulo 12");
}

}  // namespace

void readBytes(const QByteArray& bytes) {
  static Bench bench;
  static_cast<void>(pageTold(bytes));
  static_cast<void>(pageRequest(bytes));
  const QString text = decodePage(bytes);
  demand(text.contains(resultsPageMark) || !decodeText(bytes).contains(resultsPageMark), "a page's mark is not lost");
  checkScan(bench.store, text);
  checkReaders(text);
}

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  elevenfive::fuzz::readBytes(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
