// A web page that nobody sees: loaded, its scripts run, then read for its text.
//
// It shares nothing with other loads: its profile is off the record, without cache or cookies kept. It opens no window, shows
// no alert, saves no download, reads no local file, asks for no permission, and fetches and goes only what pagerules.h allows.
#pragma once

#include <QTimer>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <functional>

#include "acquire/pagemessages.h"

namespace elevenfive {

class HiddenPage final : public QWebEnginePage {
 public:
  HiddenPage(QWebEngineProfile& profile, std::function<void(const PageTold&)> tell);

  /// Loads the page; tells `complete` for each document that stands in its place, `away` where the server sends the load off its
  /// site before a document stands, `fault` where it takes too much memory.
  void navigate(const QUrl& address);

  /// Tells `text` with this number when the renderer answers; a renderer that is caught in a script does not.
  void read(PagePart part, int id);

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  QWebEnginePage* createWindow(WebWindowType) override { return nullptr; }
  QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override { return {}; }
  void javaScriptAlert(const QUrl&, const QString&) override {}
  bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
  bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override { return false; }
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) override {}

 private:
  void watchMemory();

  std::function<void(const PageTold&)> tell_;
  QUrl asked_;
  QTimer memoryWatch_;
};

/// A profile for one HiddenPage, which must go before it does.
class HiddenProfile final : public QWebEngineProfile {
 public:
  /// asked: the page that is going to be loaded.
  explicit HiddenProfile(const QUrl& asked);
};

}  // namespace elevenfive
