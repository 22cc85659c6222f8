#include "acquire/pageprocess/hiddenpage.h"

#include <unistd.h>

#include <QAuthenticator>
#include <QFile>
#include <QWebEngineCertificateError>
#include <QWebEngineDownloadRequest>
#include <QWebEngineHistory>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>
#include <algorithm>

#include "acquire/pagerules.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int memoryWatchMs = 250;

/// A table of 100,000 rows of seven cells takes three quarters of it.
constexpr qint64 mostRendererBytes = qint64{5} << 29;

/// On a machine with little memory: half of it, but at least this.
constexpr qint64 leastLimitBytes = qint64{1} << 30;

/// Longer texts are cut, in characters: a page of 100 draws has some thousands.
constexpr int longestText = 16'000'000;

constexpr QWebEngineSettings::WebAttribute switchedOff[] = {
    QWebEngineSettings::AutoLoadImages,
    QWebEngineSettings::JavascriptCanOpenWindows,
    QWebEngineSettings::JavascriptCanAccessClipboard,
    QWebEngineSettings::LocalContentCanAccessRemoteUrls,
    QWebEngineSettings::LocalContentCanAccessFileUrls,
    QWebEngineSettings::PluginsEnabled,
    QWebEngineSettings::PdfViewerEnabled,
    QWebEngineSettings::FullScreenSupportEnabled,
    QWebEngineSettings::ScreenCaptureEnabled,
    QWebEngineSettings::WebGLEnabled,
    QWebEngineSettings::Accelerated2dCanvasEnabled,
    QWebEngineSettings::AutoLoadIconsForPage,
    QWebEngineSettings::DnsPrefetchEnabled,
    QWebEngineSettings::HyperlinkAuditingEnabled,
    QWebEngineSettings::AllowRunningInsecureContent,
    QWebEngineSettings::ErrorPageEnabled,
};

FetchKind kindOf(const QWebEngineUrlRequestInfo& info) {
  switch (info.resourceType()) {
    case QWebEngineUrlRequestInfo::ResourceTypeMainFrame:
      // A link that saves what it leads to is asked of nobody else.
      return info.navigationType() == QWebEngineUrlRequestInfo::NavigationTypeLink ? FetchKind::other
                                                                                   : FetchKind::document;
    case QWebEngineUrlRequestInfo::ResourceTypeSubFrame:
      return FetchKind::frame;
    case QWebEngineUrlRequestInfo::ResourceTypeStylesheet:
    case QWebEngineUrlRequestInfo::ResourceTypeScript:
    case QWebEngineUrlRequestInfo::ResourceTypeXhr:
      return FetchKind::buildsText;
    default:
      return FetchKind::other;
  }
}

class RequestGate final : public QWebEngineUrlRequestInterceptor {
 public:
  RequestGate(const QUrl& asked, QObject* parent) : QWebEngineUrlRequestInterceptor(parent), asked_(asked) {}

  void interceptRequest(QWebEngineUrlRequestInfo& info) override {
    const QUrl address = info.requestUrl();
    if (address.scheme() == u"data"_s || address.scheme() == u"about"_s)
      return;
    info.block(!mayFetch(asked_, address, kindOf(info)));
  }

 private:
  QUrl asked_;
};

LeaveKind leaveKindOf(QWebEnginePage::NavigationType type) {
  switch (type) {
    case QWebEnginePage::NavigationTypeTyped:
      return LeaveKind::asked;
    case QWebEnginePage::NavigationTypeRedirect:
      return LeaveKind::redirect;
    // Nobody presses anything on a hidden page: a reload, too, is a script's.
    case QWebEnginePage::NavigationTypeOther:
    case QWebEnginePage::NavigationTypeReload:
    case QWebEnginePage::NavigationTypeFormSubmitted:
      return LeaveKind::script;
    default:
      return LeaveKind::person;
  }
}

qint64 residentBytes(qint64 process) {
  QFile file(u"/proc/%1/statm"_s.arg(process));
  if (process <= 0 || !file.open(QIODevice::ReadOnly))
    return 0;
  const QList<QByteArray> fields = file.readAll().split(' ');
  return fields.size() < 2 ? 0 : fields[1].toLongLong() * sysconf(_SC_PAGESIZE);
}

qint64 rendererLimitBytes() {
  const qint64 machine = qint64{sysconf(_SC_PHYS_PAGES)} * sysconf(_SC_PAGESIZE);
  return std::clamp(machine / 2, leastLimitBytes, mostRendererBytes);
}

}  // namespace

HiddenProfile::HiddenProfile(const QUrl& asked) {
  setHttpCacheType(QWebEngineProfile::NoCache);
  setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
  setSpellCheckEnabled(false);
  setUrlRequestInterceptor(new RequestGate(asked, this));
  QObject::connect(this, &QWebEngineProfile::downloadRequested, this,
                   [](QWebEngineDownloadRequest* download) { download->cancel(); });
}

HiddenPage::HiddenPage(QWebEngineProfile& profile, std::function<void(const PageTold&)> tell)
    : QWebEnginePage(&profile), tell_(std::move(tell)) {
  for (const QWebEngineSettings::WebAttribute attribute : switchedOff)
    settings()->setAttribute(attribute, false);
  settings()->setUnknownUrlSchemePolicy(QWebEngineSettings::DisallowUnknownUrlSchemes);
  connect(this, &QWebEnginePage::loadFinished, this, [this] { tell_({PageTold::Kind::complete, url(), {}, 0}); });
  connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] {
    tell_({PageTold::Kind::fault, {}, u"网页无法读取。"_s, 0});
  });
  connect(this, &QWebEnginePage::certificateError, this,
          [](QWebEngineCertificateError error) { error.rejectCertificate(); });
  // A page that asks for a name is not asked again and again: nobody answers.
  const auto refuse = [](QAuthenticator* asked) { *asked = QAuthenticator(); };
  connect(this, &QWebEnginePage::authenticationRequired, this,
          [refuse](const QUrl&, QAuthenticator* asked) { refuse(asked); });
  connect(this, &QWebEnginePage::proxyAuthenticationRequired, this,
          [refuse](const QUrl&, QAuthenticator* asked, const QString&) { refuse(asked); });
  connect(this, &QWebEnginePage::featurePermissionRequested, this, [this](const QUrl& origin, Feature feature) {
    setFeaturePermission(origin, feature, PermissionDeniedByUser);
  });
  setVisible(true);  // a page that counts as hidden has its timers slowed down
  memoryWatch_.setInterval(memoryWatchMs);
  connect(&memoryWatch_, &QTimer::timeout, this, &HiddenPage::watchMemory);
}

void HiddenPage::navigate(const QUrl& address) {
  asked_ = address;
  memoryWatch_.start();
  setUrl(address);
}

void HiddenPage::read(PagePart part, int id) {
  const QString expression = part == PagePart::text
                                 ? u"document.body ? document.body.innerText : ''"_s
                                 : u"document.documentElement ? document.documentElement.outerHTML : ''"_s;
  runJavaScript(u"String(%1).slice(0, %2)"_s.arg(expression).arg(longestText), QWebEngineScript::ApplicationWorld,
                [this, id](const QVariant& value) {
                  tell_({PageTold::Kind::text, {}, value.toString(), id});
                });
}

bool HiddenPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
  const LeaveKind kind = leaveKindOf(type);
  if (mayGo(asked_, url, kind, isMainFrame))
    return true;
  // Once there is a document, whatever wants to lead on from it, it stays and can be read.
  if (isMainFrame && kind == LeaveKind::redirect && history()->count() == 0)
    tell_({PageTold::Kind::away, url, {}, 0});
  return false;
}

void HiddenPage::watchMemory() {
  if (residentBytes(renderProcessPid()) > rendererLimitBytes())
    tell_({PageTold::Kind::fault, {}, u"网页太大，无法读取。"_s, 0});
}

}  // namespace elevenfive
