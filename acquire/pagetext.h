// The scan of a results page: which lines of its text are draws, and what they say.
//
// A line is a draw by its form alone: at least 31 characters, the last 25 of them digits, blanks, colons and hyphens. Its
// digits give the period (eight, to which a 0 is added in the middle: 11031510 is stored as 110315010) and the five numbers.
#pragma once

#include <QDate>
#include <QString>
#include <QStringView>
#include <functional>
#include <optional>

#include "history/historytable.h"
#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

/// Stands in the text of every results page.
inline constexpr QStringView resultsPageMark = u"11选5";

/// The characters of a text whose code lies from 48 to 57.
QString getDigits(QStringView text);

/// A line that has the form of a draw.
struct PageLine {
  Qihao qihao = 0;              ///< 0 where the digits give none
  std::optional<Draw> numbers;  ///< ascending; nothing where they are not five different ones of 1..11
};

/// Nothing where the line has not the form. A number above 11 counts as 11, a 0 as none.
std::optional<PageLine> readPageLine(QStringView line);

/// A page's text out of its bytes: UTF-8 or GB18030, broken sequences replaced, whichever shows the mark of a page; else as any
/// text.
QString decodePage(const QByteArray& bytes);

/// A page's text as it is scanned: blanks for tabs, CR LF at line ends.
QString scanText(const QString& bodyText);

/// What one scan has found so far.
struct PageCounts {
  int lines = 0;        ///< of the whole text, whether or not the scan comes to its end
  int qualified = 0;    ///< lines with the form of a draw
  int rowsDone = 0;     ///< of those, lines that became records
  Qihao lowQihao = 0;   ///< smallest period stored; 0 until the first
  Qihao highQihao = 0;  ///< largest period stored, or what it began with
  QString fault;        ///< the first of the table; empty where it took all
  QString underivable;  ///< the draw out of range that ended the derivation; empty where none did
};

/// Takes the lines of a page one after the other and stores the draws among them.
class PageScan final {
 public:
  /// lines: how many the page has. date: of every draw stored, the day of the download. lastQihao: what highQihao begins with.
  PageScan(Store& store, int lines, const QDate& date, Qihao lastQihao);

  /// The period of the line where it has the form of a draw, stored or not; nothing for any other line. A draw that the
  /// table refuses is noted in the counts and counts for nothing else.
  std::optional<Qihao> takeLine(QStringView line);

  [[nodiscard]] const PageCounts& counts() const noexcept { return counts_; }

 private:
  bool isStored(Qihao period, const Draw& numbers);

  HistoryWriter writer_;
  QDate date_;
  PageCounts counts_;
};

/// Told of each line with the form of a draw, with its period; false ends the scan.
using PageLineTold = std::function<bool(Qihao)>;

/// Scans a whole text, yielding after each line; `stopped` is asked before each, and true ends the scan. A draw that
/// the table refuses ends neither the scan nor what was stored: the fault stands in the counts, for whoever derives what there
/// is and then tells it. Throws StoreError where draws cannot be stored at all.
PageCounts scanPage(Store& store, const QString& bodyText, const QDate& date, Qihao lastQihao, Events& events,
                    const PageLineTold& told = {}, const std::function<bool()>& stopped = {});

/// Derives the columns of the draws a scan has stored, in two calls: the whole range and its oldest draw alone. Nothing where
/// none was stored. A draw with numbers out of range, from elsewhere, ends a call, but is no failure, as the draws themselves
/// are in: the counts name it then. A fault of the table ends its call alone, and stands in the counts unless the scan had one.
void deriveScanned(Store& store, PageCounts& counts, Progress* progress, Events& events, StatusPanels* panels);

/// The second period below the newest, from which an update counts: with two draws the only one below, with fewer 2003001.
Qihao lastQihaoForUpdate(Store& store);

}  // namespace elevenfive
