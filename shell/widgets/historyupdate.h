// What the window offers of the web: the update by the buttons of the history panel and the menu entry, the details of a
// draw, and the form of the addresses.
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <memory>
#include <optional>

#include "acquire/openurltext.h"
#include "acquire/webupdate.h"
#include "model/widgets/busystate.h"

class QWidget;

namespace elevenfive {

class HistoryPanel;
class Store;

class HistoryUpdate final : public QObject, public UpdateView {
  Q_OBJECT

 public:
  struct Ports {
    Boxes& boxes;
    Inputs& inputs;
    Events& events;
    StatusPanels& panels;
    BusyState& busy;
    QString programFolder;      ///< the working folder of the person's browser
    PageLoaderFactory loaders;  ///< empty: the page process beside the program
  };

  HistoryUpdate(Store& gConn, HistoryPanel& panel, const Ports& ports, QWidget* window);

  /// cmmUpdateHistory_1 and _2, mnu_AutoUpdate.
  void updateHistory();

  /// cmm_kjqk: the page with the details of one draw.
  void showDetails();

  /// The form of the addresses.
  void showSources();

  void setButtonsEnabled(bool enabled) override;
  void selectDataMode(bool chart) override;
  void showNextPeriod() override;
  void reloadHistoryGrid() override;
  void refreshViews() override;

 private:
  void openInBrowser(const QUrl& page);

  Store& gConn_;
  HistoryPanel& panel_;
  Ports ports_;
  QWidget* window_;
  WebUpdate update_;
  OpenUrlText details_;
  std::optional<BusyScope> busy_;
};

}  // namespace elevenfive
