// Tab 22: the twenty custom groups. The list tells all of them, the card above it edits the selected one.
//
// Every click goes to the store at once; nothing is pending.
#pragma once

#include <QWidget>
#include <array>
#include <vector>

#include "conditions/customgroups.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QTabBar;

namespace elevenfive {

class ChipList;
class PickButton;

class GroupPage final : public QWidget {
  Q_OBJECT

 public:
  GroupPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, Inputs& inputs, QWidget* parent = nullptr);

  /// Fills the page from the store. The common groups keep the period that was next when they were filled.
  void reload();

  /// Fills ComboZDYcyfz with the period that is next now.
  void fillCommonGroups();

  /// Something of the tab was switched.
  Q_SIGNAL void tabChanged(int tab);

 private:
  QWidget* buildList();
  QWidget* buildHelp();
  QWidget* buildEditor();
  QWidget* buildNumbers();
  QWidget* buildCounts();
  void countsEdited();
  void showCounts();
  [[nodiscard]] int group() const;
  void selectGroup(int k);
  void showGroup();
  void showSwitch(const CustomGroups::GroupState& state);
  void showLines();
  void chooseCommon(int index);

  /// Runs a click's work, shows what became of the group, and tells it.
  template <typename Work>
  void change(Work&& work);

  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
  CustomGroups groups_;
  QListWidget* lines_ = nullptr;
  QTabBar* tabs_ = nullptr;
  QLabel* alias_ = nullptr;
  QComboBox* common_ = nullptr;
  std::array<PickButton*, numberCount + 1> members_{};  ///< by number
  QCheckBox* use_ = nullptr;
  ChipList* counts_ = nullptr;
  /// List_ZDYset and its buttons: only a group with numbers has counts to choose.
  std::vector<QWidget*> countControls_;
};

}  // namespace elevenfive
