// Which draws the history's grid shows: all, the last hundred, or those that its filter row finds.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// The columns of 历史记录 that the grid does not show.
std::span<const QStringView> hiddenHistoryColumns();

/// Periods from first to last, both included.
struct QihaoRange {
  Qihao first = 0;
  Qihao last = 0;
};

/// The condition of the periods of a range, with parameters for first and last.
inline constexpr char qihaoRangeWhere[] = " where 期号 >= ? AND 期号 <= ?";

/// The periods of showHistoryMode with "最近100期": from the hundredth newest, or the oldest where there are fewer, to the newest;
/// nothing in an empty history.
std::optional<QihaoRange> recentQihaoRange(Store& store);

/// What was typed into the filter row over one column.
struct ColumnFilter {
  QString column;
  QString text;
};

/// A condition and the values to bind to its parameters, in order.
struct FilterSql {
  std::string where;  ///< empty, or " where " and the conditions
  QStringList values;
};

/// The condition of the filter row: every column with a text, blanks around it aside, must begin with it as shown. Numbers of
/// a draw are found with and without their leading 0, dates are YYYY-MM-DD, an empty cell has no text to begin with. What was
/// typed is data: quotes, % and _ stand for themselves. Throws MissingData for a column that the history does not have.
FilterSql buildFilterSql(const std::vector<ColumnFilter>& filters);

/// The statement that gives the periods under a condition, ascending. Whatever shows draws asks by it.
std::string periodsSql(const std::string& where);

/// The periods that a condition finds, ascending.
std::vector<Qihao> searchHistory(Store& store, const FilterSql& filter);

}  // namespace elevenfive
