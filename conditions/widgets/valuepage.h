// A sub-panel of value lists: one or more lists of allowed values, each with the check box that switches its filter, and on
// some tabs a tip with a preview of the allowed values. Neighbouring tabs share one page, which is filled anew for each.
//
// Every click goes to the condition panel at once; nothing is pending.
#pragma once

#include <QWidget>
#include <vector>

#include "model/ports.h"

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace elevenfive {

class ChipList;
class ConditionPanel;
class Store;

/// The tabs that share a page, and the names of its controls; an index of -1 means a control without one.
struct ValuePageFacts {
  int firstTab;
  int lastTab;
  QStringView listName;
  int firstList;
  int lists;
  QStringView checkName;
  int firstCheck;
  QStringView tipName;  ///< empty: no tip
};

class ValuePage final : public QWidget {
  Q_OBJECT

 public:
  ValuePage(Store& gConn, ConditionPanel& panel, Boxes& boxes, const ValuePageFacts& facts, QWidget* parent = nullptr);

  /// Fills the page for one of its tabs from the store.
  void showTab(int tab);

  /// Puts a button beside the check box of a list, counted from 0.
  void addButton(int index, QPushButton* button);

  /// Something of the tab was switched or selected.
  Q_SIGNAL void tabChanged(int tab);

 private:
  struct Group {
    QCheckBox* check = nullptr;
    ChipList* chips = nullptr;
    QHBoxLayout* line = nullptr;  ///< the check box and the buttons
  };

  QWidget* buildGroup(int index);
  void loadSwitches();
  void showStored();
  void refreshTip(const QString& tip);
  void selectionEdited(int list);

  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
  ValuePageFacts facts_;
  std::vector<Group> groups_;
  QLabel* title_ = nullptr;
  QPlainTextEdit* tip_ = nullptr;
  int tab_ = 0;
};

}  // namespace elevenfive
