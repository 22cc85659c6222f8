// The double of the hidden web page control: pages that are told beforehand, and everything that was asked of it.
#pragma once

#include <QMap>
#include <QStringList>
#include <QTimer>
#include <memory>

#include "acquire/pageloader.h"

namespace elevenfive {

/// What a load of an address gives.
struct FakePage {
  QStringList texts;  ///< of the readings in order, the last one again and again
  QString markup;
  int afterMs = 0;          ///< until the document is complete; negative: never
  bool frameFirst = false;  ///< a frame's document is complete before the page's
  QUrl endsAt;              ///< where it stands at last; empty: where it was asked for
  QString fault;
  int frameMs = -1;  ///< until a frame's document is complete before the page's; negative: there is none such
};

/// The pages by address, and the log of all controls made over them.
struct FakeWeb {
  QMap<QString, FakePage> pages;
  FakePage other{{}, {}, 0, false, {}, {}, -1};
  QStringList log;  ///< "made", "navigate ADDRESS", "stop", "text", "markup", "refresh"

  [[nodiscard]] PageLoaderFactory loaders();
};

class FakePageLoader final : public PageLoader {
 public:
  explicit FakePageLoader(FakeWeb& web) : web_(web) { web_.log << QStringLiteral("made"); }

  [[nodiscard]] bool busy() const override { return busy_; }

  void stop() override {
    web_.log << QStringLiteral("stop");
    busy_ = false;
    timer_.reset();
  }

  void navigate(const QUrl& url) override {
    web_.log << QStringLiteral("navigate ") + url.toString();
    page_ = web_.pages.value(url.toString(), web_.other);
    address_ = page_.endsAt.isEmpty() ? url : page_.endsAt;
    readings_ = 0;
    busy_ = true;
    timer_ = std::make_unique<QTimer>();
    timer_->setSingleShot(true);
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { arrive(); });
    if (page_.afterMs >= 0)
      timer_->start(page_.afterMs);
    if (page_.frameMs >= 0)
      QTimer::singleShot(page_.frameMs, timer_.get(), [told = documentComplete] { told(false); });
  }

  [[nodiscard]] QUrl address() const override { return address_; }

  [[nodiscard]] QString bodyText() override {
    web_.log << QStringLiteral("text");
    const int reading = readings_++;
    return page_.texts.isEmpty() ? QString() : page_.texts.at(qMin<qsizetype>(reading, page_.texts.size() - 1));
  }

  [[nodiscard]] QString markup() override {
    web_.log << QStringLiteral("markup");
    return page_.markup;
  }

  void refresh() override { web_.log << QStringLiteral("refresh"); }
  [[nodiscard]] QString fault() const override { return page_.fault; }

 private:
  void arrive() {
    const auto told = documentComplete;  // what is called may change it
    if (page_.frameFirst && told)
      told(false);
    busy_ = false;
    if (told)
      told(true);
  }

  FakeWeb& web_;
  FakePage page_;
  QUrl address_;
  std::unique_ptr<QTimer> timer_;
  int readings_ = 0;
  bool busy_ = false;
};

inline PageLoaderFactory FakeWeb::loaders() {
  return [this] { return std::make_unique<FakePageLoader>(*this); };
}

}  // namespace elevenfive
