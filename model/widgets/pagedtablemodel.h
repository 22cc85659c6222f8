// A table of the store as a model for views, whatever its number of rows.
//
// In memory are the keys of all rows, four bytes each, and a bounded number of pages of cells, the least recently used of
// which goes first. So a history of 300,000 draws opens and scrolls to its end at once. The model is read-only unless it is
// given a writer: refresh() reads the keys again after the table has changed. A row that was deleted since shows empty cells.
#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace elevenfive {

class Store;
class Statement;

/// What a model shows. keySql gives one integer key a row in the order of display; rowSql gives the cells of the row whose
/// key is its only parameter, and its column names become the headers.
struct PagedQuery {
  std::string purpose;
  std::string keySql;
  std::vector<std::variant<int, QString>> keyValues;  ///< bound to keySql in order
  std::string rowSql;
};

class PagedTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// Writes what was typed into a column of the row with this key. Returns the row's key afterwards, nothing where the cell
  /// stays as it was. Must not throw.
  using CellWriter = std::function<std::optional<int>(int key, const QString& column, const QString& typed)>;

  static constexpr int pageRows = 64;
  static constexpr int maximumPages = 48;

  /// The cell as it is stored: int, double, QString, or invalid for NULL. Qt::DisplayRole gives the same as text.
  static constexpr int valueRole = Qt::UserRole;

  explicit PagedTableModel(Store& store, QObject* parent = nullptr);
  ~PagedTableModel() override;

  /// Shows another query. Throws StoreError, and then shows no rows.
  void setQuery(PagedQuery query);

  /// Reads the keys again; cells are fetched when they are next shown. Throws StoreError, and then shows no rows.
  void refresh();

  /// Shows no rows until the next query; the columns stay.
  void clear();

  /// Lets these columns be typed over. A model with a writer is ordered by ascending key: a row whose key changes moves.
  void setWriter(const QStringList& columns, CellWriter write);

  /// Puts in one key of a model that is ordered by ascending key, or drops the cells of a key it has already.
  void rowWritten(int key);

  /// Takes out one key, where the model has it.
  void rowDeleted(int key);

  [[nodiscard]] int keyOf(int row) const { return keys_.at(static_cast<std::size_t>(row)); }

  /// The row of a key in a model that is ordered by ascending key; -1 where it has none.
  [[nodiscard]] int rowOf(int key) const;

  /// The column with this header; -1 where there is none.
  [[nodiscard]] int columnOf(const QString& name) const { return static_cast<int>(columns_.indexOf(name)); }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  using Row = std::vector<QVariant>;
  using Page = std::vector<Row>;

  void readKeys();
  const Row* fetchRow(int row) const;
  Page readPage(int page) const;
  Row readRow(Statement& statement, int key) const;
  int moveRow(int row, int key);

  Store& store_;
  PagedQuery query_;
  QStringList columns_;
  QStringList writable_;
  CellWriter write_;
  std::vector<int> keys_;
  mutable QCache<int, Page> pages_;
};

}  // namespace elevenfive
