// The first page of the window, Frm_Sub(0): the draw history in a grid, the row for a draw typed in by hand, and the buttons
// that import, export, delete and clear.
//
// All work goes through the operations of the history; this class only asks, shows, and keeps the grid in step. After each
// change of the table historyChanged() tells the window.
#pragma once

#include <QWidget>
#include <array>

#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"
#include "model/widgets/busystate.h"
#include "model/widgets/dialogports.h"

class QFrame;
class QPushButton;
class QRadioButton;
class QStackedWidget;

namespace elevenfive {

class DigitField;
class HistoryGrid;
class ImportProgress;
class SlideIn;
class Store;

/// What the panel speaks to, for its life.
struct HistoryPanelPorts {
  Boxes& boxes;
  Inputs& inputs;
  FileDialogs& files;
  TextViewer& texts;
  Events& events;
  StatusPanels& panels;
  BusyState& busy;
};

class HistoryPanel final : public QWidget {
  Q_OBJECT

 public:
  /// programFolder is where an export leaves its file. Reads the history into the grid, whose columns layoutColumns() then
  /// lays out. Throws StoreError where the history cannot be read.
  HistoryPanel(Store& gConn, const QString& programFolder, const HistoryPanelPorts& ports, QWidget* parent = nullptr);

  /// Shows the rows of the mode in the grid, its newest in view.
  void layoutHistoryGrid();

  void layoutColumns();

  /// Selects "最近100期" or "显示全部", as its option button would.
  void selectHistoryMode(bool all);

  /// Selects data mode or chart mode; a mode that cannot be chosen is left alone.
  void selectDataMode(bool chart);

  /// Puts the next period into the entry row.
  void offerNextPeriod();

  /// The bar ProgressBar_TuBiao.
  [[nodiscard]] Progress& derivationProgress();

  /// Counts the numbers of each zone again for the periods first to last, with its message and its bar in the place of the grid.
  void recountZones(Qihao first, Qihao last);

  /// Puts the focus into the first number field.
  void focusEntry();

  [[nodiscard]] QWidget* entryStrip() const;

  /// The button newBtnHistory_7 was clicked: the chooser of the game is wanted below it.
  Q_SIGNAL void gameChooserWanted(QWidget* button);
  Q_SIGNAL void historyChanged();
  /// cmmUpdateHistory_1 or _2 was clicked: draws are wanted from the web.
  Q_SIGNAL void updateRequested();
  /// cmm_kjqk was clicked: the details of a draw are wanted from the web.
  Q_SIGNAL void detailsWanted();
  /// Draws went out of the table: lists of periods elsewhere are stale. A deleted period, a cleared history and a Yes to the
  /// question before an import all count.
  Q_SIGNAL void drawsDeleted();

 private:
  QWidget* buildEntryStrip();
  QWidget* buildModeStrip();
  QWidget* buildButtons();
  QWidget* buildViews();
  QPushButton* button(const QString& name, const QString& caption, const QString& tip, void (HistoryPanel::*clicked)());

  void addDraw();
  void importText();
  void exportText();
  void deletePeriod();
  void clearHistory();
  void chooseGame();
  void searchRecords();
  void runSearch();
  void endSearch();
  void closeFilterRow();
  void filterEdited();

  void tableChanged();
  void viewsChanged();
  void showWritten(Qihao period);

  Store& gConn_;
  QString programFolder_;
  HistoryPanelPorts ports_;

  QFrame* entryStrip_ = nullptr;
  std::array<DigitField*, 6> entry_{};
  std::array<QRadioButton*, 2> historyMode_{};
  std::array<QRadioButton*, 2> dataMode_{};
  QPushButton* filterBegin_ = nullptr;
  QPushButton* clearFilter_ = nullptr;
  ImportProgress* progress_ = nullptr;
  SlideIn* slide_ = nullptr;
  HistoryGrid* grid_ = nullptr;
  QStackedWidget* views_ = nullptr;
  bool filterExplained_ = false;
};

}  // namespace elevenfive
