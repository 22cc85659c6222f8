// A row of fields above a grid, one over each visible column, that follows the grid's columns as they move and scroll.
#pragma once

#include <QWidget>
#include <vector>

#include "history/search.h"

class QLineEdit;
class QTableView;

namespace elevenfive {

class FilterRow final : public QWidget {
  Q_OBJECT

 public:
  explicit FilterRow(QTableView* table, QWidget* parent = nullptr);

  /// Makes one field for each column of the table's model, named filter_<header>; older fields go.
  void rebuild();

  /// Header and trimmed text of the fields that are not empty.
  [[nodiscard]] std::vector<ColumnFilter> conditions() const;

  void clear();

  /// Moves the fields over their columns.
  void align();

  /// Puts the focus into the first field.
  void focusFirst();

  /// Puts the focus into the field that had it last, else into the first.
  void focusLast();

  Q_SIGNAL void edited();
  Q_SIGNAL void submitted();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QTableView* table_;
  std::vector<QLineEdit*> fields_;
  QLineEdit* last_ = nullptr;
};

}  // namespace elevenfive
