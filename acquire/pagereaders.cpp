#include "acquire/pagereaders.h"

#include <utility>

#include "acquire/catalogue.h"
#include "acquire/pagewait.h"
#include "acquire/sources.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

// Where the list of provinces stands in the markup of its page.
constexpr qsizetype listPlace = 2000;
constexpr qsizetype listLength = 3000;

constexpr qsizetype digitsBeforeDate = 15;
constexpr int usualWidth = 8;

/// The part of a text from a place on, counted from 1.
QString from(const QString& text, qsizetype place, qsizetype length = -1) {
  return text.mid(place - 1, length);
}

SiteList::Site siteOf(QString text) {
  text.remove(u"11选5</a>"_s).remove(u"</dd>"_s).remove(u' ').replace(u'"', u'&').remove(u'>');
  const qsizetype mark = text.indexOf(u'&');
  return {leadingNumber(text), mark < 0 ? QString() : text.mid(mark + 2)};
}

void waitForDocument(PageLoader& page, const QUrl& url, int loadMs) {
  bool done = false;
  page.documentComplete = [&done](bool) { done = true; };
  page.navigate(url);
  if (loadMs > 0)
    runEventsFor(loadMs, [&done] { return done; });
  else
    runEventsUntil([&done] { return done; });
  page.documentComplete = {};
}

}  // namespace

QUrl siteListUrl(const QString& siteAddress, const QString& lotteryName) {
  QString site = provinceAddress(siteAddress, lotteryName);
  if (site.isEmpty())
    return {};
  while (site.endsWith(u'/'))
    site.chop(1);
  return sourceUrl(site + u"/chart.asp?siteid=2"_s);
}

SiteList::SiteList(PageLoaderFactory loaders, QUrl page, int loadMs)
    : loaders_(std::move(loaders)), page_(std::move(page)), loadMs_(loadMs) {}

QString SiteList::stretchOfPage() {
  if (!std::exchange(loaded_, true)) {
    const std::unique_ptr<PageLoader> page = loaders_();
    waitForDocument(*page, page_, loadMs_);
    stretch_ = from(page->markup(), listPlace, listLength);
  }
  return stretch_;
}

int SiteList::getSiteList(const QString& text) {
  sites_.clear();
  const QString list = (text.isEmpty() ? stretchOfPage() : text).toLower();
  const QString key = u"siteid="_s;
  for (const QString& line : list.split(u'\n')) {
    const qsizetype at = line.indexOf(key);
    if (at >= 0 && sites_.size() < mostSites)
      sites_.push_back(siteOf(line.mid(at + key.size()).remove(u'\r')));
  }
  return static_cast<int>(sites_.size());
}

QString dayPageUrl(const QDate& date, const QUrl& listUrl, const QString& markup) {
  const QString lower = markup.toLower();
  const qsizetype begin = lower.indexOf(u"选择期号"_s);
  const qsizetype end = begin < 0 ? -1 : lower.indexOf(u"/select"_s, begin);
  if (end < 0)
    return {};
  const QString stretch = lower.mid(begin, end - begin);
  const qsizetype place = stretch.indexOf(date.toString(Qt::ISODate)) + 1;
  if (place <= digitsBeforeDate)
    return {};
  QString rest = from(stretch, place - digitsBeforeDate, digitsBeforeDate);
  rest.remove(0, rest.indexOf(u'/') + 1);
  if (const qsizetype dot = rest.indexOf(u'.'); dot >= 0)
    rest.truncate(dot);
  if (rest.isEmpty())
    return {};
  return listUrl.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).toString() +
         u"/syxw/syxwlssj/"_s + rest + u".html"_s;
}

QString getDayPageUrl(PageLoader& page, const QDate& date, const QUrl& listUrl) {
  waitForDocument(page, listUrl, 0);
  return dayPageUrl(date, listUrl, page.markup());
}

int getQihaoWidth(const QString& html) {
  const QString lower = html.toLower();
  const qsizetype cell = lower.indexOf(u"chart-bg-qh"_s);
  const qsizetype begin = cell < 0 ? -1 : lower.indexOf(u'>', cell);
  const qsizetype end = begin < 0 ? -1 : lower.indexOf(u'<', begin + 1);
  if (end < 0)
    return usualWidth;
  const QString text = lower.mid(begin + 1, end - begin - 1);
  const qsizetype place = text.size() + 1;  // of the "<" behind the text
  const bool told = place >= 7 && place <= 11 && isCharsIn(text, u"0123456789");
  return told ? static_cast<int>(text.size()) : usualWidth;
}

QString getDigitsOnly(QStringView text) {
  QString digits;
  bool inRun = false;
  for (const QChar ch : text) {
    const bool kept = (ch >= u'0' && ch <= u'9') || ch == u'/';
    if (kept)
      digits += ch;
    else if (!inRun)
      digits += u'#';
    inRun = !kept;
  }
  return digits;
}

bool getDrawAfterMark(Qihao qihao, const QString& text, MarkedDraw& draw) {
  const qsizetype mark = text.indexOf(u'#' + QString::number(qihao));
  if (mark < 0)
    return false;
  draw.date = text.mid(mark + 8, 10);
  for (std::size_t i = 0; i < draw.numbers.size(); ++i)
    draw.numbers[i] = leadingNumber(text.mid(mark + 19 + 3 * static_cast<qsizetype>(i), 2)) % 12;
  return true;
}

}  // namespace elevenfive
