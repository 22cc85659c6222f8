// The panel paicu: up to six patterns of odd and even numbers, position by position, that a run leaves out.
//
// Row 0 is the pattern of the last draw, rows 1 to 5 are the user's own. Row r is switched by code 70 + r; its sign for
// column c (1 to 5) is VALUE of ID 5000 + 10 r + c: 0 双, 1 单, 2 any.
#pragma once

#include <QString>
#include <QStringView>
#include <array>

namespace elevenfive {

class ConditionPanel;
class Store;

inline constexpr int parityRowCount = 6;
inline constexpr int parityColumnCount = 5;
constexpr int parityCode(int row) {
  return 70 + row;
}
constexpr int parityId(int row, int column) {
  return 5000 + 10 * row + column;
}

/// The items of each Combo1_dansuang, and the value that each stores.
inline constexpr QStringView parityItems[] = {u"单", u"双", u"*"};
inline constexpr int parityItemValues[] = {1, 0, 2};

inline constexpr QStringView parityHelp = u"[单]---代表单数;  [双]---代表双数;  [*]---代表单数和双数;";

/// The sign of a stored value.
QStringView paritySign(int value);

/// The five signs of a row as they are stored, one after the other.
QString parityPattern(Store& store, int row);

class ParityPanel final {
 public:
  ParityPanel(Store& gConn, ConditionPanel& panel) : gConn_(gConn), panel_(panel) {}

  struct RowState {
    QString caption;
    bool checked = false;
    std::array<int, parityColumnCount> values{};  ///< as stored, by column
    QString pattern;                              ///< its signs, joined
  };

  /// Opening the panel: writes the parity of the newest draw into row 0. With no draw in the history row 0 stays.
  void open();

  std::array<RowState, parityRowCount> rows();

  /// Whether any row is in use.
  bool inUse();

  /// A click on Check1_paicu(row).
  void clickRow(int row, bool checked);

  /// A choice (0 双, 1 单, 2 any) in Combo1_dansuang(row x 10 + column): stored, and the row's box is ticked.
  void choose(int row, int column, int value);

 private:
  Store& gConn_;
  ConditionPanel& panel_;
};

}  // namespace elevenfive
