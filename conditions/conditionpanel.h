// The condition panel without its screen: which list item stands for which row, what a click writes, what a tab shows.
//
// Every click is in the store at once; nothing is pending. While loadingPanel is set, because the program itself fills the
// lists, every click handler returns at once.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "engine/rundriver.h"
#include "model/numbers.h"

namespace elevenfive {

class Store;

class ConditionPanel final {
 public:
  explicit ConditionPanel(Store& gConn) : gConn_(gConn) {}

  /// One list of a tab as it stands: its items and which of them are selected.
  struct ListState {
    QStringList items;
    std::vector<bool> selected;
  };

  /// One check box of a tab: the code that it switches, its caption, its state.
  struct SwitchState {
    int code = 0;
    QString caption;
    bool checked = false;
  };

  bool loadingPanel = false;

  /// The lists of a tab (index 1 to 25); empty for tabs without value lists.
  std::vector<ListState> valueLists(int tab);

  /// The check boxes of a tab.
  std::vector<SwitchState> switches(int tab);

  /// A click on item (from 0) of list (from 0) of a tab, which is now selected or not: writes 1 or 0 into its row.
  void clickValue(int tab, int list, int item, bool selected);

  /// A click on a check box: writes 1 or 0 into its row of 过滤条件使用情况.
  void clickSwitch(int code, bool checked);

  /// The allowed values of a code as bracketed runs in full-width digits; empty for codes without a preview.
  QString rangePreview(int code);

 private:
  Store& gConn_;
};

}  // namespace elevenfive
