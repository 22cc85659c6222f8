// The second page of the window, Frm_Sub(1): the 25 tabs of the conditions at the left, the selected tab's page at the
// right. A dot marks each tab of which something is in use, and the button of the parity panel, which has no tab.
#pragma once

#include <QWidget>
#include <vector>

#include "conditions/conditionpanel.h"
#include "engine/rundriver.h"
#include "model/ports.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;

namespace elevenfive {

class GroupPage;
class MatchPage;
class ParityPage;
class PickPage;
class PositionTolerance;
class ReductionPage;
class SummaryPage;
class ValuePage;

class ConditionView final : public QWidget {
  Q_OBJECT

 public:
  ConditionView(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent = nullptr);

  /// Selects a tab, 1 to 25, of TabStrip_TiaoJian.
  void selectTab(int tab);

  /// Shows the panel paicu, which has no tab; no tab is selected while it shows.
  void showParityPage();

  [[nodiscard]] int currentTab() const { return shownTab_; }  ///< 0 while none is selected

  /// Reads the selected tab and all marks again from the store.
  void reload();

  /// Loads the numbers of the first page from the store and tells how many combinations they give. Throws StoreError.
  void loadNumbers();

  /// No number stays picked, in either field.
  void clearPicks();

  /// Fills ComboZDYcyfz with the period that is next now.
  void fillCommonGroups();

  /// What the screens of the conditions write through.
  [[nodiscard]] ConditionPanel& panel() noexcept { return panel_; }

  /// cmm_kuaisusezi: the person wants the quick setup.
  Q_SIGNAL void quickSetupWanted();

  /// cmm_QujianTip(k): the person wants to see which numbers zone k has.
  Q_SIGNAL void zoneTipWanted(int k);

  /// The counting lines of the picks; their last line stands below the tabs whatever the tab.
  void setChoseNumberTip(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* buildTabs();
  void fitTabs();
  void buildPages(Inputs& inputs);
  void addPage(int tab, QWidget* page);
  void selectionChanged();
  void showTab(int tab);
  void tabClicked(int tab);
  void markTab(int tab);
  void markParity();
  void addZoneTips(ValuePage& page);
  void addShortcuts();
  void stepTab(int step);
  void findTab(const QString& text);

  Store& gConn_;
  Boxes& boxes_;
  RunDriver& driver_;
  ConditionPanel panel_;
  QLineEdit* find_ = nullptr;
  QListWidget* tabs_ = nullptr;
  QPushButton* parity_ = nullptr;  ///< leads to the parity panel and bears its mark
  QLabel* count_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  PickPage* pickPage_ = nullptr;
  ParityPage* parityPage_ = nullptr;
  PositionTolerance* tolerance_ = nullptr;
  GroupPage* groupPage_ = nullptr;
  MatchPage* matchPage_ = nullptr;
  ReductionPage* reductionPage_ = nullptr;
  SummaryPage* summaryPage_ = nullptr;
  int shownTab_ = 0;                 ///< 0: the parity panel
  std::vector<QWidget*> pageOfTab_;  ///< by tab; slot 0 unused
};

}  // namespace elevenfive
