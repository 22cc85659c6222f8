// The condition panel without its screen: which list item stands for which row, what a click writes, what a tab shows.
//
// Every click is in the store at once; nothing is pending. While loadingPanel is set, because the program itself fills the
// lists, every click handler returns at once. An item, list or code that has no row changes nothing.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "model/numbers.h"

namespace elevenfive {

class Store;
struct RunState;
struct ValueList;

/// Marks in a tip text the place from which the preview of the allowed values stands.
inline constexpr QStringView previewMarker = u"当前取值阅览：";

/// What the boxes of the history match offer: 1 up to these.
inline constexpr int mostMatchPeriods = 100;
inline constexpr int mostMatches = 5;

class ConditionPanel final {
 public:
  /// run: whose buffer tiaojianValue is filled with the lists; nullptr where none is.
  explicit ConditionPanel(Store& gConn, RunState* run = nullptr) : gConn_(gConn), run_(run) {}

  /// One list of a tab as it stands: its items and which of them are selected.
  struct ListState {
    QStringList items;
    std::vector<bool> selected;
  };

  /// One check box of a tab: the code that it switches, its caption, its state. Only the boxes of the position lists are ever
  /// disabled: while they are off and their list has no number.
  struct SwitchState {
    int code = 0;
    QString caption;
    bool checked = false;
    bool enabled = true;
  };

  /// The one row of 历史数据过滤.
  struct MatchState {
    bool used = false;
    int minimum = 0;
    int maximum = 0;
    int match = 0;
  };
  enum class MatchField { minimum, maximum, match };

  bool loadingPanel = false;

  /// The state whose buffer is filled with what the screen reads; nullptr where there is none.
  [[nodiscard]] RunState* run() const noexcept { return run_; }

  /// The lists of a tab (index 1 to 25); empty for tabs without value lists. Tab 15 has the seven position lists.
  std::vector<ListState> valueLists(int tab);

  /// The same for the screen that shows the tab: the stretch of each list over 过滤条件 goes through the run's buffer
  /// tiaojianValue, where a value beyond a later stretch may read it.
  std::vector<ListState> fillValueList(int tab);

  /// The check boxes of a tab that switch a code.
  std::vector<SwitchState> switches(int tab);

  /// A click on item (from 0) of list (from 0) of a tab, which is now selected or not: writes 1 or 0 into its row. On tab 15
  /// it writes the number's field of 号码特性, and a position without numbers is switched off.
  void clickValue(int tab, int list, int item, bool selected);

  /// The clicks that bring a whole list to this selection; items whose state is the same already are not touched. Items are
  /// selected before others are unselected: a position that was empty in between would be switched off.
  void selectItems(int tab, int list, const std::vector<bool>& selected);

  /// A click on a check box: writes 1 or 0 into its row of 过滤条件使用情况.
  void clickSwitch(int code, bool checked);

  /// A click on Check_useTiaojiao or Check_useTiaojiao_else, whose tag carries the code as text; an empty tag is code 0.
  void clickTaggedSwitch(const QString& tag, bool checked);

  /// Whether anything of a tab is switched on.
  bool tabInUse(int tab);

  /// The allowed values of a code (1 to 5, 22 to 25) as bracketed runs in full-width digits; empty for other codes.
  QString rangePreview(int code);

  /// A tip text after a click on a tab: up to the marker as it was, then the marker, two line ends and the preview. The text of
  /// a tab without a preview stays as it is.
  QString updatedTip(int tab, const QString& tip);

  /// The help text of the temperature tabs 20 and 21; empty for the others.
  static QString helpText(int tab);

  int positionTolerance();               ///< the selected Option_DingweiRongcuo
  void setPositionTolerance(int index);  ///< a click on Option_DingweiRongcuo(index)

  int reductionType();               ///< 3 to 7, the value of the selected Option_ShuoSuiLeiXing
  void setReductionType(int value);  ///< a click on Option_ShuoSuiLeiXing; values outside 3 to 7 change nothing

  MatchState matchState();
  void setMatchUsed(bool used);                     ///< Check_Historyguolu
  void setMatchField(MatchField field, int value);  ///< Combo_HistoryGuoLu 0 and 1, Combo_PiPei

 private:
  ListState listState(const ValueList& list);
  ListState positionState(int p);
  void clickPosition(int p, int number, bool selected);

  Store& gConn_;
  RunState* run_;
  std::vector<int> valueFlags;  ///< of the list read now: each row's value by its offset, 0 where it has none
};

}  // namespace elevenfive
