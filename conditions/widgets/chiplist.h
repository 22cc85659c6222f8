// A list of values to allow or not, shown as chips that wrap into rows. A click toggles a value, dragging and Shift take
// several, and the space bar toggles the current one.
#pragma once

#include <QListWidget>
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

  void invertSelection();

  /// One item was selected or deselected by the person.
  Q_SIGNAL void chipClicked(int item, bool selected);
  /// The last chipClicked() of one action has been told.
  Q_SIGNAL void clicksDone();

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  bool filling_ = false;
  bool compact_ = false;
};

}  // namespace elevenfive
