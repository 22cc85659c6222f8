#include "acquire/pagewait.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace elevenfive {

namespace {

/// A wish to stop is seen well within 50 ms, and waiting costs next to nothing.
constexpr int lookMs = 10;

}  // namespace

void runEventsUntil(const std::function<bool()>& done) {
  QEventLoop loop;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &loop, [&] {
    if (done())
      loop.quit();
  });
  look.start(lookMs);
  if (!done())
    loop.exec();
}

void runEventsFor(int ms, const std::function<bool()>& done) {
  QElapsedTimer passed;
  passed.start();
  runEventsUntil([&] { return passed.elapsed() >= ms || done(); });
}

}  // namespace elevenfive
