// The draws in the grid TDBGridHistory, and over it the row of fields that searches them.
//
// 期号 and the counts of the groups behind the first can be typed over in place, by F2 or a double click; an edit is written
// at once. What cannot be taken is told in one box, and the cell keeps its content.
#pragma once

#include <QWidget>
#include <optional>

#include "model/numbers.h"

namespace elevenfive {

class Boxes;
class FilterRow;
class GridView;
class PagedTableModel;
class Store;

class HistoryGrid final : public QWidget {
  Q_OBJECT

 public:
  HistoryGrid(Store& gConn, Boxes& boxes, QWidget* parent = nullptr);

  /// Takes all draws or the last hundred for its rows. Throws StoreError.
  void bind(bool all);

  /// Widths, hidden columns and balls of the rows it has, the newest in view.
  void layoutColumns();

  /// Both; a fault shows no rows, and one information box.
  void showHistoryMode(bool all);

  /// Brings one stored draw into a grid that shows all of them, and into view.
  void showWritten(Qihao period);

  /// Shows the draws that the row of fields asks for, and goes on in the field where the person was. False where there are
  /// none. Throws StoreError.
  bool showFound();

  /// Reads what it shows again; a fault becomes one box.
  void refresh();

  void openFilter();
  void closeFilter();
  void clearFilter();
  [[nodiscard]] bool filterIsOpen() const;

  /// While the table is being written nothing can be typed.
  void setBusy(bool busy);

  Q_SIGNAL void filterEdited();
  Q_SIGNAL void filterSubmitted();
  /// A cell was typed over, and its row is stored.
  Q_SIGNAL void cellEdited();

 private:
  std::optional<int> write(Qihao period, const QString& column, const QString& typed);
  void tellLater(const QString& text);

  Store& gConn_;
  Boxes& boxes_;
  FilterRow* filter_;
  GridView* grid_;
  PagedTableModel& gHistoryRs;  ///< the rows of TDBGridHistory, which reads and writes through it
  bool busy_ = false;
};

}  // namespace elevenfive
