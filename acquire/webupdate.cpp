#include "acquire/webupdate.h"

#include <QTime>

#include "acquire/catalogue.h"
#include "acquire/pagerules.h"
#include "acquire/pagewait.h"
#include "acquire/sources.h"
#include "acquire/versionnotice.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr std::array<QStringView, 2> downloadingTexts{u"》》》》》   数据下载中   《《《《《",
                                                      u"》》》》》 数据下载中 《《《《《"};
constexpr std::array<QStringView, 2> noticeTexts{u"》》》》》   数据载入中   《《《《《",
                                                 u"》》》》》 数据载入中 《《《《《"};

constexpr int reads = 3;

double secondsSinceMidnight() {
  return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

/// Runs what ends a scope, also where a fault ends it.
template <typename Work>
class AtEnd final {
 public:
  explicit AtEnd(Work work) : work_(std::move(work)) {}
  ~AtEnd() { work_(); }
  AtEnd(const AtEnd&) = delete;
  AtEnd& operator=(const AtEnd&) = delete;

 private:
  Work work_;
};

}  // namespace

QString unsetAddressText() {
  return u"还没有设置下载开奖数据的网址，无法更新！\r\n请在菜单“其它”的“数据源设置”中填写“开奖网站”的地址，然后再下载。"_s;
}

QString failedUpdateText() {
  return u"服务器忙或网络链接断开,无法完成更新!\r\n"
         "要正常更新需要电脑与互联网联接正常.\r\n"
         "若无法更新可能是由于你的防火墙设为禁止程序访问网络,\r\n"
         "你可以重新更改设置或关闭防火墙后再试.)\r\n"_s;
}

WebUpdate::WebUpdate(Store& gConn, UpdatePorts ports, UpdateTimes times)
    : gConn_(gConn), ports_(std::move(ports)), times_(std::move(times)), timerXZ_(ports_.panels, times_.pulseMs) {
  if (!times_.clock)
    times_.clock = secondsSinceMidnight;
}

bool WebUpdate::updateHistory() {
  if (running_)
    return false;
  running_ = true;
  stopRequested_ = false;
  const AtEnd ended([this] { running_ = stopRequested_ = false; });
  ports_.view.setButtonsEnabled(false);
  const AtEnd enabled([this] { ports_.view.setButtonsEnabled(true); });
  bool done = false;
  {
    const AtEnd refreshed([this] { ports_.view.refreshViews(); });
    ports_.view.selectDataMode(false);
    const QDate today = QDate::currentDate();
    const QString name = Catalogue(gConn_).getLotteryName();
    done = updateFromWeb(today, true, name, lastQihaoForUpdate(gConn_));
    if (done || stored_)  // a stop keeps what was stored: the period offered before is taken now
      ports_.view.showNextPeriod();
    ports_.view.selectDataMode(true);
  }
  if (!fault_.isEmpty())
    throw StoreError(fault_);
  // The buttons stay disabled meanwhile: the notice is read through the same control.
  if (!stopRequested_ && !std::exchange(noticeDone_, true))
    versionNotice();
  return done;
}

void WebUpdate::requestStop() {
  stopRequested_ = running_;
  if (running_ && webBrowser_history_)
    webBrowser_history_->stop();
}

bool WebUpdate::updateFromWeb(const QDate& date, bool interactive, const QString& /*name*/, Qihao lastQihao) {
  stored_ = false;
  fault_.clear();
  leftSiteText_.clear();
  leftInPanel_.clear();
  if (webBrowser_history_ && webBrowser_history_->busy())
    webBrowser_history_->stop();
  timerXZ_.start(downloadingTexts);
  PageCounts counts;
  Outcome outcome = Outcome::stopped;
  {
    const AtEnd cleared([this] {
      timerXZ_.stop();
      setPanel({});
    });
    outcome = fetch(date, lastQihao, counts);
    fault_ = counts.fault;
    stored_ = counts.rowsDone > 0;
    if (outcome != Outcome::noAddress && fault_.isEmpty())
      tellOutcome(outcome, date, interactive);
  }
  // These texts stay in the panel.
  if (outcome == Outcome::noAddress) {
    leaveInPanel(date.toString(Qt::ISODate) + u"  数据：   服务器数据还没有更新，请稍后下载。  "_s);
    tellOutcome(outcome, date, interactive);
  } else if (outcome == Outcome::leftSite) {
    leftSiteText_ = u"网页被转到其它网站（%1），没有读取。"_s.arg(toldPlace(asked_, webBrowser_history_->address()));
    leaveInPanel(leftSiteText_);
  } else if (outcome == Outcome::read && counts.qualified == 0) {
    leaveInPanel(u"网页共 %1 行，其中 %2 行符合开奖记录的格式。"_s.arg(counts.lines).arg(counts.qualified));
  } else if (!counts.underivable.isEmpty()) {
    leaveInPanel(counts.underivable);
  }
  return outcome == Outcome::read;
}

WebUpdate::Outcome WebUpdate::fetch(const QDate& date, Qihao lastQihao, PageCounts& counts) {
  Catalogue catalogue(gConn_);
  const bool hasPage = !provinceOf(catalogue.getLotteryName()).isEmpty();
  if (hasPage && isUnsetAddress(sourceAddress(gConn_, resultsSite.name)))
    return Outcome::unsetAddress;
  const QString address = catalogue.getSourceUrl();
  if (address.isEmpty())
    return Outcome::noAddress;
  const QUrl url = sourceUrl(address);
  asked_ = url;
  // Whatever comes of the page, it does not work on behind the window.
  const AtEnd released([this] {
    if (webBrowser_history_)
      webBrowser_history_->stop();
  });
  loadDocument(url);
  const QString text = readBody();
  if (stopRequested_)
    return Outcome::stopped;
  if (!webBrowser_history_->fault().isEmpty())
    return Outcome::noControl;
  if (isWebAddress(url) && !mayHoldPage(url, webBrowser_history_->address()))
    return Outcome::leftSite;
  if (!text.contains(resultsPageMark))
    return Outcome::notResults;
  scan(text, date, lastQihao, counts);
  return stopRequested_ ? Outcome::stopped : Outcome::read;
}

void WebUpdate::loadDocument(const QUrl& url) {
  PageLoader& page = control();
  docDone_ = false;
  const double begun = times_.clock();
  waitingDoc_ = true;
  page.navigate(url);
  runEventsUntil([&] { return docDone_ || stopRequested_ || times_.clock() - begun > times_.documentSeconds; });
  waitingDoc_ = false;
}

QString WebUpdate::readBody() {
  QString text;
  for (int i = 0; i < reads && !stopRequested_; ++i) {
    if (i > 0)
      runEventsFor(times_.betweenReadsMs, [this] { return stopRequested_; });
    text = webBrowser_history_->bodyText();
    if (!docDone_ && text.isNull())  // the time was up before, and a page that hangs answers no other reading either
      break;
  }
  return text;
}

void WebUpdate::scan(const QString& text, const QDate& date, Qihao lastQihao, PageCounts& counts) {
  counts = scanPage(
      gConn_, text, date, lastQihao, ports_.events,
      [this](Qihao period) {
        timerXZ_.stop();
        setPanel(u"数据下载中：   正在下载 "_s + QString::number(period) + u" 期的数据。。。"_s);
        return true;
      },
      [this] { return stopRequested_; });
  deriveScanned(gConn_, counts, &ports_.derivation, ports_.events, &ports_.panels);
  webBrowser_history_->refresh();
  try {
    ports_.view.reloadHistoryGrid();
  } catch (const Error& fault) {
    if (counts.fault.isEmpty())
      counts.fault = fault.message();
  }
}

void WebUpdate::tellOutcome(Outcome outcome, const QDate& date, bool interactive) {
  if (!interactive)
    return;
  switch (outcome) {
    case Outcome::noAddress:
      ports_.boxes.critical(u"抱歉，"_s + date.toString(Qt::ISODate) +
                            u"的开奖数据在服务器中还没有更新，请稍后下载。"_s);
      break;
    case Outcome::unsetAddress:
      ports_.boxes.show({BoxKind::critical, failedUpdateTitle.toString(), unsetAddressText(), BoxButtons::ok});
      break;
    case Outcome::noControl:
      ports_.boxes.show(
          {BoxKind::critical, failedUpdateTitle.toString(), webBrowser_history_->fault(), BoxButtons::ok});
      break;
    case Outcome::notResults:
      ports_.boxes.show({BoxKind::critical, failedUpdateTitle.toString(), failedUpdateText(), BoxButtons::ok});
      break;
    case Outcome::read:
      ports_.boxes.information(u"下载完成！(如果没有取得最新的数据请过几分钟后重试，多试几次即可。)"_s);
      break;
    case Outcome::leftSite:
    case Outcome::stopped:
      break;
  }
}

void WebUpdate::versionNotice() {
  const QUrl address =
      noticeAddress(provinceAddress(sourceAddress(gConn_, noticeServer.name), Catalogue(gConn_).getLotteryName()));
  if (address.isEmpty())
    return;
  PageLoader& page = control();
  docDone_ = false;
  timerXZ_.start(noticeTexts);
  const AtEnd cleared([this] {
    timerXZ_.stop();
    setPanel(leftInPanel_);
  });
  page.navigate(address);
  runEventsFor(times_.noticeMs, [this] { return docDone_ || stopRequested_; });
  const bool told = docDone_ && isNotice(page.bodyText().trimmed());
  page.stop();
  timerXZ_.stop();
  if (!told)
    return;
  ports_.boxes.information(noticeText());
  if (ports_.openPage)
    ports_.openPage(address.adjusted(QUrl::RemoveQuery));
}

PageLoader& WebUpdate::control() {
  if (!webBrowser_history_) {
    webBrowser_history_ = ports_.loaders();
    webBrowser_history_->documentComplete = [this](bool topLevel) { documentComplete(topLevel); };
  }
  return *webBrowser_history_;
}

void WebUpdate::documentComplete(bool topLevel) {
  if (waitingDoc_ || topLevel)
    docDone_ = true;
}

void WebUpdate::leaveInPanel(const QString& text) {
  leftInPanel_ = text;
  setPanel(text);
}

void WebUpdate::setPanel(const QString& text) {
  ports_.panels.setPanel(StatusPanels::runningPass, text);
}

}  // namespace elevenfive
