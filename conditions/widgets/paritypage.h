// The panel paicu: six patterns of odd and even numbers that a run leaves out, each with its box and five choices.
//
// It has no tab; an entry of the menu and a button of the condition panel show it. Every choice is in the store at once.
#pragma once

#include <QFrame>
#include <array>

#include "conditions/parityexclusion.h"
#include "model/ports.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;

namespace elevenfive {

class ParityPage final : public QFrame {
  Q_OBJECT

 public:
  ParityPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, QWidget* parent = nullptr);

  /// Takes the newest draw into row 0 and fills all rows from the store.
  void open();

  /// Whether any row is in use.
  bool inUse() { return parity_.inUse(); }

  /// A row was switched or its pattern changed.
  Q_SIGNAL void changed();

 private:
  void buildRow(int row, QGridLayout& grid);
  void showStored();

  ConditionPanel& panel_;
  Boxes& boxes_;
  ParityPanel parity_;
  std::array<QCheckBox*, parityRowCount> checks_{};
  std::array<std::array<QComboBox*, parityColumnCount>, parityRowCount> signs_{};
  std::array<QLabel*, parityRowCount> patterns_{};
};

}  // namespace elevenfive
