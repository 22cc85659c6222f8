// The plain page reader: one page, its text or its markup, within some seconds. The detail page of a draw is read with it.
#pragma once

#include <QTimer>
#include <QUrl>

#include "acquire/pageloader.h"

namespace elevenfive {

class OpenUrlText final {
 public:
  static constexpr int ticks = 50;
  static constexpr int readingTicks = 10;  ///< for a page that has not come by then to show what it has

  /// The control, WebBrowserOpenURL, is made on first use. tickMs: between two ticks of TimerOpenURL.
  explicit OpenUrlText(PageLoaderFactory loaders, int tickMs = 100);
  ~OpenUrlText();

  /// The trimmed text of the page, or its trimmed markup. Runs the event loop until the page has a body, or for 50 ticks; then
  /// whatever there is by that time, empty where nothing is or the page does not answer for ten ticks more. A call during another gives an empty text.
  QString openUrlText(const QUrl& url, bool asText);

  /// Ends a running call, which then gives an empty text.
  void requestStop();

  /// Why the control had no page to show in the last call, a sentence for the person; empty where it worked, whatever came of
  /// the page.
  [[nodiscard]] QString fault() const { return webBrowserOpenURL_ ? webBrowserOpenURL_->fault() : QString(); }

  /// Whether the last call was ended so.
  [[nodiscard]] bool wasStopped() const noexcept { return stopRequested_; }

 private:
  void documentComplete(bool topLevel);

  PageLoaderFactory loaders_;
  std::unique_ptr<PageLoader> webBrowserOpenURL_;
  QTimer timerOpenURL_;
  int ticked_ = 0;
  bool done_ = false;
  bool came_ = false;     ///< a document that was not looked at yet
  bool reading_ = false;  ///< a document is looked at
  bool running_ = false;
  bool stopRequested_ = false;
};

}  // namespace elevenfive
