#include "acquire/openurltext.h"

#include <utility>

#include "acquire/pagewait.h"

namespace elevenfive {

OpenUrlText::OpenUrlText(PageLoaderFactory loaders, int tickMs) : loaders_(std::move(loaders)) {
  timerOpenURL_.setInterval(tickMs);
  QObject::connect(&timerOpenURL_, &QTimer::timeout, &timerOpenURL_, [this] {
    if (++ticked_ >= ticks)
      done_ = true;
    if (ticked_ >= ticks + readingTicks)
      webBrowserOpenURL_->stop();  // a page caught in a script gives no answer to the reading
  });
}

OpenUrlText::~OpenUrlText() = default;

void OpenUrlText::documentComplete(bool topLevel) {
  came_ = came_ || topLevel;
  if (std::exchange(reading_, true))
    return;
  // One that comes while the one before it is read is looked at in its turn.
  while (std::exchange(came_, false) && !done_)
    if (!webBrowserOpenURL_->bodyText().trimmed().isEmpty())
      done_ = true;
  reading_ = false;
}

void OpenUrlText::requestStop() {
  stopRequested_ = true;
  if (running_ && webBrowserOpenURL_)
    webBrowserOpenURL_->stop();  // a reading, too, waits no longer
}

QString OpenUrlText::openUrlText(const QUrl& url, bool asText) {
  if (std::exchange(running_, true))
    return {};
  if (!webBrowserOpenURL_) {
    webBrowserOpenURL_ = loaders_();
    webBrowserOpenURL_->documentComplete = [this](bool topLevel) { documentComplete(topLevel); };
  }
  stopRequested_ = false;
  done_ = came_ = false;
  ticked_ = 0;
  PageLoader& page = *webBrowserOpenURL_;
  page.navigate(url);
  timerOpenURL_.start();
  runEventsUntil([&] { return done_ || stopRequested_ || !page.fault().isEmpty(); });
  QString read;
  if (!stopRequested_)
    read = (asText ? page.bodyText() : page.markup()).trimmed();
  timerOpenURL_.stop();
  page.stop();
  running_ = false;
  return read;
}

}  // namespace elevenfive
