// The twenty custom groups: sets of numbers that the user names, and how many of each a combination may hold.
//
// Members stand in the columns 自定义组1 to 自定义组20 of 号码特性, allowed counts in a block of ten rows of 过滤条件 each, the
// name that the user sees in 自定义别名. Groups outside 1 to 20 do not exist: nothing is read or written for them.
// While the panel's loadingPanel is set, click handlers return at once. A click for whose number or count no row is found leaves
// the group as it was.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "conditions/commongroups.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class ConditionPanel;
class Store;
struct RunState;

inline constexpr int zdyGroupCount = 20;

/// The counts that List_ZDYset offers: 0 to 5.
inline constexpr int zdyLargestCount = 5;

/// Longest alias, in UTF-16 characters.
inline constexpr int zdyAliasLength = 50;

/// The code that switches group k.
constexpr int zdyCode(int k) {
  return k <= 10 ? k + 19 : k + 40;
}

/// The ID of count v of group k.
constexpr int zdyCountId(int k, int v) {
  return (k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11)) + v;
}

/// Caption of a tab of TabStrip_ZDYchose, which is also the name of the group's column.
QString zdyColumn(int k);

/// Caption of Check_Zdy for a group.
QString zdySwitchCaption(int k);

/// The items of List_ZDYset.
QStringList zdyCountItems();

/// The name that the user sees; empty where there is no row.
QString getZdyAlias(Store& store, int k);

/// "　号码：（０１,１１）"; "（ 无 号 码 ）" where the group is empty.
QString zdyMembersText(Store& store, int k);

/// " 允许开出个数（１个,２个）"; "（条 件 未 设 置）" where no count is allowed. The block is read through the buffer
/// tiaojianValue of run, where there is one.
QString zdyCountsText(Store& store, int k, RunState* run = nullptr);

/// The lines of List_ZDY, group 1 first: name, and members and counts of those in use; an empty one has no counts to tell.
/// Counts are read through the buffer of run.
QStringList zdyLines(Store& store, RunState* run = nullptr);

class CustomGroups final {
 public:
  CustomGroups(Store& gConn, ConditionPanel& panel, Boxes& boxes, Inputs& inputs)
      : gConn_(gConn), panel_(panel), boxes_(boxes), inputs_(inputs) {}

  /// What the tab shows for a group.
  struct GroupState {
    GroupMembers members{};      ///< green buttons
    bool countsEnabled = false;  ///< List_ZDYset: only a group with members has counts to choose
    std::vector<bool> counts;    ///< selected items of List_ZDYset
    bool used = false;           ///< Check_Zdy
    bool useEnabled = true;      ///< only the group shown that has just lost its last count cannot be switched on
  };

  QString getZdyAlias(int k) { return elevenfive::getZdyAlias(gConn_, k); }
  /// Throws Error where the text is longer than zdyAliasLength or holds line breaks or other control characters.
  void setZdyAlias(int k, const QString& text);

  GroupState showZdyGroup(int k);
  QStringList fillZdyList();
  void clearZdyGroup(int k);

  /// cmm_ZDY(number): puts the number in or takes it out. A group that loses its last number loses its counts, and with the
  /// last of them its switch; where none was allowed the switch stays.
  void clickMember(int k, int number);

  /// The groups may have been replaced by others since they were shown: no Check_Zdy is kept disabled.
  void freeSwitches() { closedGroup_ = 0; }

  /// An item of List_ZDYset: a first selected count switches the group on, the last unselected one switches it off.
  void clickCount(int k, int count, bool selected);

  /// Brings the whole of List_ZDYset to this selection: counts whose state is the same already are not written, and the group is
  /// switched on where one is selected then, off where none is.
  void selectCounts(int k, const std::vector<bool>& selected);

  /// Check_Zdy.
  void clickUse(int k, bool checked);

  /// cmmChangeZDYname: asks for a new name. True where it was changed. show brings the screen up to date before the box.
  bool rename(int k, const std::function<void()>& show = {});

  /// cmm_EmptyZDY, "清空全部自定义组".
  void clearAll();

  /// An entry of ComboZDYcyfz: the group takes its members and bears its text. True where the entry stands for a group.
  bool chooseCommon(int k, const QString& entry);

 private:
  void openGroup(int k);

  /// Its last count was unselected last: Check_Zdy stays disabled until a count is selected, a number is put in, a common group
  /// is chosen, the group is cleared, another group shows or the page is filled anew. 0: none. A click that fails leaves it.
  int closedGroup_ = 0;
  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
  Inputs& inputs_;
};

}  // namespace elevenfive
