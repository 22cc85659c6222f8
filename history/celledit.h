// Single cells of the history, changed as they are typed into its grid.
#pragma once

#include <QString>
#include <QStringList>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// The columns of the grid that can be typed into: 期号, and those behind the thirty-seventh, 自定义组2 to 自定义组10. The
/// numbers and what is derived from them come by the entry row, the import and the derivation.
QStringList editableHistoryColumns();

/// What became of an edit.
struct CellEdit {
  Qihao qihao = 0;  ///< the row's period afterwards
  QString refusal;  ///< why nothing was changed; empty where the cell is as it was typed
};

/// Writes what was typed into a cell of the row with period q; nothing else of the row changes, and nothing is derived anew.
/// 期号 takes a whole number from 1 to 2147483647 that no other row has, the other columns one from 0 to 255, or nothing,
/// which empties the cell. Throws StoreError, and MissingData for a column that cannot be typed into.
CellEdit editHistoryCell(Store& store, Qihao q, const QString& column, const QString& typed);

}  // namespace elevenfive
