// The update flow over the real page process and a server on this machine, with a page whose table its script builds.
#pragma once

#include "tests/web/webtest.h"

namespace elevenfive {

/// What shows the history keeps only the text of its panel.
struct Quiet final : UpdateView, StatusPanels {
  QString panel;
  void setButtonsEnabled(bool) override {}
  void selectDataMode(bool) override {}
  void showNextPeriod() override {}
  void reloadHistoryGrid() override {}
  void refreshViews() override {}
  void setPanel(int, const QString& text) override { panel = text; }
};

class RealUpdate : public WebTest {
 protected:
  void SetUp() override {
    WebTest::SetUp();
    constexpr int guangdong = 1;
    Catalogue(data.store()).selectCaizong(guangdong);
    setSourceAddress(data.store(), resultsSite.name.toString(), server.url({}));
    times.betweenReadsMs = 150;
    times.documentSeconds = 30;
  }

  /// A fresh flow; the one before it is gone.
  WebUpdate& update() {
    const auto make = [this] {
      auto page = std::make_unique<ProcessLoader>(loader);
      control = page.get();
      return page;
    };
    update_ =
        std::make_unique<WebUpdate>(data.store(), UpdatePorts{ports, ports, screen, ports, screen, make, {}}, times);
    return *update_;
  }

  bool fetch() { return update().updateFromWeb(QDate(2011, 3, 16), true, {}, lastQihaoForUpdate(data.store())); }

  int count() { return data.store().value("test", "SELECT COUNT(*) FROM 历史记录").value_or(-1); }

  /// The whole table, a draw a line: period, numbers, sum.
  QStringList draws() {
    return data.rows("SELECT 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 和值 FROM 历史记录 ORDER BY 期号");
  }

  /// The flow gave up with its box of a page that could not be had, and the table is as it was.
  void expectFailed() {
    EXPECT_FALSE(fetch());
    EXPECT_EQ(ports.boxTexts(), QStringList{failedUpdateText()});
    EXPECT_EQ(screen.panel, QString());
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(control->processId(), 0);  // nothing works on, although the update may be asked for again
  }

  /// The flow came to its end, and these draws are the whole table.
  void expectDraws(const QStringList& rows) {
    EXPECT_TRUE(fetch());
    EXPECT_EQ(ports.boxTexts(), QStringList{completedText()});
    EXPECT_EQ(draws(), rows);
    EXPECT_EQ(control->processId(), 0);
  }

  TestWorkspace data;
  RecordingPorts ports;
  Quiet screen;
  UpdateTimes times;
  LoaderTimes loader;
  ProcessLoader* control = nullptr;

 private:
  std::unique_ptr<WebUpdate> update_;
};

}  // namespace elevenfive
