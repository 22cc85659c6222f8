// Readers of further page shapes, ready to be wired to a source of such a shape; no command reads through them.
//
// Places count from 1, as the pages' shapes are told in them. Markup is compared in lower case.
#pragma once

#include <QDate>
#include <QString>
#include <QStringView>
#include <QUrl>
#include <array>
#include <vector>

#include "acquire/pageloader.h"
#include "model/numbers.h"

namespace elevenfive {

/// The page of the list of provinces on the results site of a game; empty where the site's address is unset.
QUrl siteListUrl(const QString& siteAddress, const QString& lotteryName);

/// The list of provinces on a page of the results site.
class SiteList final {
 public:
  static constexpr int mostSites = 25;

  struct Site {
    int number = 0;
    QString name;
  };

  /// page: what siteListUrl gives. loadMs: how long it is waited for.
  SiteList(PageLoaderFactory loaders, QUrl page, int loadMs = 120'000);

  /// Reads the list out of a text; out of the stretch of the page where it stands when the text is empty. The page is loaded
  /// once. Returns how many sites there are.
  int getSiteList(const QString& text);

  /// The sites of the last reading.
  [[nodiscard]] const std::vector<Site>& sites() const noexcept { return sites_; }

 private:
  QString stretchOfPage();

  PageLoaderFactory loaders_;
  QUrl page_;
  int loadMs_;
  bool loaded_ = false;
  QString stretch_;
  std::vector<Site> sites_;
};

/// The address of one day's result page on the second site, out of the markup of its list page; empty where the day is not
/// in it.
QString dayPageUrl(const QDate& date, const QUrl& listUrl, const QString& markup);

/// The same after loading the list page, with no limit but the control's own.
QString getDayPageUrl(PageLoader& page, const QDate& date, const QUrl& listUrl);

/// How many digits period numbers have on a page: 6 to 10 where its first "chart-bg-qh" cell tells, else 8.
int getQihaoWidth(const QString& html);

/// Digits and "/" of a text; each run of other characters becomes one "#".
QString getDigitsOnly(QStringView text);

struct MarkedDraw {
  QString date;                         ///< the ten characters at place 8 behind the mark
  std::array<int, drawSize> numbers{};  ///< those at places 19, 22, 25, 28 and 31, modulo 12
};

/// Looks for "#" and the period in a text as getDigitsOnly gives it. True where it stands there.
bool getDrawAfterMark(Qihao qihao, const QString& text, MarkedDraw& draw);

}  // namespace elevenfive
