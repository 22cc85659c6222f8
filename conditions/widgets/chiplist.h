// A list of values to allow or not, shown as chips that wrap into rows. A click toggles a value, dragging takes several, and
// the space bar toggles the current one; the second press of a double click toggles like the first. Shift with a click or an
// arrow selects the whole range from the value that was last clicked, or reached by a key, without Shift. Typing goes to the
// value that begins with what was typed and toggles nothing.
#pragma once

#include <QListWidget>
#include <QPersistentModelIndex>
#include <vector>

namespace elevenfive {

class ChipList final : public QListWidget {
  Q_OBJECT

 public:
  explicit ChipList(QWidget* parent = nullptr);

  /// Small chips, for pages of many lists.
  void setCompact(bool compact) { compact_ = compact; }

  /// Shows these items, selected or not, without telling it as clicks.
  void setChips(const QStringList& items, const std::vector<bool>& selected);

  /// Selects these of the items that stand, by place, without telling it as clicks.
  void showSelection(const std::vector<bool>& selected);

  void invertSelection();

  /// Which items are selected, by place.
  [[nodiscard]] std::vector<bool> selection() const;

  /// The person selected or deselected items, one or many in one action.
  Q_SIGNAL void selectionEdited();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /// Without an event nothing is toggled: the search for typed text only moves to its find.
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  void selectRangeTo(const QModelIndex& index);

  QPersistentModelIndex anchor_;  ///< where a range begins
  bool rangePress_ = false;       ///< the mouse button that is down selected a range
  bool filling_ = false;
  bool compact_ = false;
};

}  // namespace elevenfive
