// The grid of the program: a table over a paged model, read-only as it is made, with rows of one height and columns as wide
// as their headers need. Where the last row stands in view it does so at another height, too.
#pragma once

#include <QStringList>
#include <QTableView>

#include "model/widgets/ball.h"
#include "model/widgets/pagedtablemodel.h"

namespace elevenfive {

class GridView final : public QTableView {
  Q_OBJECT

 public:
  explicit GridView(Store& store, QWidget* parent = nullptr);

  [[nodiscard]] PagedTableModel& rows() noexcept { return *rows_; }
  [[nodiscard]] BallDelegate& balls() noexcept { return *balls_; }

  /// Hides the columns with these headers; the others show.
  void hideColumns(const QStringList& names);

  /// Shows the columns 号码1 to 号码5 as balls.
  void showNumbersAsBalls();

  /// A background for one column, given in the order 0xBBGGRR.
  void tintColumn(const QString& name, unsigned bgr);

  /// Gives each column the width that its header needs, and `wide` the width of that many digits.
  void fitColumns(const QStringList& wide, int digits);

  /// Lets the shown columns share the whole width, for tables of few columns.
  void stretchColumns();

  /// Makes a column at least as wide as a sample text needs.
  void fitColumn(const QString& name, const QString& sample);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  PagedTableModel* rows_;
  BallDelegate* balls_;
};

}  // namespace elevenfive
