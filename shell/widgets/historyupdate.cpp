#include "shell/widgets/historyupdate.h"

#include <QDesktopServices>
#include <QDir>
#include <QScopeGuard>
#include <QWidget>

#include "acquire/detailpage.h"
#include "acquire/processloader.h"
#include "acquire/widgets/sourcesform.h"
#include "history/widgets/historypanel.h"
#include "model/widgets/faultbox.h"
#include "model/widgets/keptfocus.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

PageLoaderFactory orProcess(PageLoaderFactory loaders) {
  return loaders ? std::move(loaders) : processLoaders();
}

}  // namespace

HistoryUpdate::HistoryUpdate(Store& gConn, HistoryPanel& panel, const Ports& ports, QWidget* window)
    : QObject(window),
      gConn_(gConn),
      panel_(panel),
      ports_(ports),
      window_(window),
      update_(gConn, {ports.boxes, ports.events, ports.panels, panel.derivationProgress(), *this,
                      orProcess(ports.loaders), [this](const QUrl& page) { openInBrowser(page); }}),
      details_(orProcess(ports.loaders)) {
  connect(&panel_, &HistoryPanel::updateRequested, this, &HistoryUpdate::updateHistory);
  connect(&panel_, &HistoryPanel::detailsWanted, this, &HistoryUpdate::showDetails);
  connect(&ports_.busy, &BusyState::stopRequested, this, [this] {
    update_.requestStop();
    details_.requestStop();
  });
}

void HistoryUpdate::updateHistory() {
  if (ports_.busy.isBusy())
    return;
  const KeptFocus focus(*window_);
  withFaultBox(ports_.boxes, [this] { update_.updateHistory(); });
}

void HistoryUpdate::showDetails() {
  if (ports_.busy.isBusy())
    return;
  const KeptFocus focus(*window_);
  const BusyScope busy(ports_.busy);
  withFaultBox(ports_.boxes, [this] {
    showDetailPage(gConn_, details_,
                   {ports_.boxes, ports_.inputs, ports_.panels, [this](const QUrl& page) { openInBrowser(page); }});
  });
}

void HistoryUpdate::showSources() {
  SourcesForm form(gConn_, ports_.boxes, orProcess(ports_.loaders), window_);
  form.exec();
}

/// The browser begins in the program's folder. Where the system knows none, the person is told what to open.
void HistoryUpdate::openInBrowser(const QUrl& page) {
  const auto putBack = qScopeGuard([folder = QDir::currentPath()] { QDir::setCurrent(folder); });
  QDir::setCurrent(ports_.programFolder);
  if (!QDesktopServices::openUrl(page))
    ports_.boxes.critical(u"无法打开浏览器，请自行打开下面的网页：\r\n"_s + page.toString());
}

void HistoryUpdate::setButtonsEnabled(bool enabled) {
  if (enabled)
    busy_.reset();
  else
    busy_.emplace(ports_.busy);
}

void HistoryUpdate::selectDataMode(bool chart) {
  panel_.selectDataMode(chart);
}

void HistoryUpdate::showNextPeriod() {
  withFaultBox(ports_.boxes, [this] { panel_.offerNextPeriod(); });
}

void HistoryUpdate::reloadHistoryGrid() {
  panel_.layoutHistoryGrid();
}

void HistoryUpdate::refreshViews() {
  panel_.derivationProgress().setVisible(false);
  Q_EMIT panel_.historyChanged();
}

}  // namespace elevenfive
