#include "model/widgets/pagedtablemodel.h"

#include <algorithm>

#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

QVariant cellOf(const Statement& statement, int column) {
  if (statement.isNull(column))
    return {};
  if (statement.isInteger(column))
    return statement.integer(column);
  if (statement.isReal(column))
    return statement.real(column);
  return statement.text(column);
}

}  // namespace

PagedTableModel::PagedTableModel(Store& store, QObject* parent)
    : QAbstractTableModel(parent), store_(store), pages_(maximumPages) {}

PagedTableModel::~PagedTableModel() = default;

void PagedTableModel::setQuery(PagedQuery query) {
  query_ = std::move(query);
  refresh();
}

void PagedTableModel::refresh() {
  beginResetModel();
  keys_.clear();
  pages_.clear();
  try {
    readKeys();
  } catch (...) {
    keys_.clear();
    endResetModel();
    throw;
  }
  endResetModel();
}

void PagedTableModel::clear() {
  beginResetModel();
  keys_.clear();
  pages_.clear();
  endResetModel();
}

void PagedTableModel::readKeys() {
  const Statement row = store_.query(query_.purpose, query_.rowSql);
  columns_.clear();
  for (int c = 0; c < row.columnCount(); ++c)
    columns_ << row.columnName(c);

  Statement keys = store_.query(query_.purpose, query_.keySql);
  int index = 0;
  for (const auto& value : query_.keyValues)
    std::visit([&](const auto& bound) { keys.bindValue(++index, bound); }, value);
  while (keys.next())
    keys_.push_back(keys.integer(0));
}

void PagedTableModel::rowWritten(int key) {
  const auto place = std::lower_bound(keys_.begin(), keys_.end(), key);
  const int row = static_cast<int>(place - keys_.begin());
  if (place != keys_.end() && *place == key) {
    pages_.remove(row / pageRows);
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    return;
  }
  beginInsertRows({}, row, row);
  keys_.insert(place, key);
  pages_.clear();
  endInsertRows();
}

int PagedTableModel::rowOf(int key) const {
  const auto place = std::lower_bound(keys_.begin(), keys_.end(), key);
  return place != keys_.end() && *place == key ? static_cast<int>(place - keys_.begin()) : -1;
}

void PagedTableModel::rowDeleted(int key) {
  const auto place = std::find(keys_.begin(), keys_.end(), key);
  if (place == keys_.end())
    return;
  const int row = static_cast<int>(place - keys_.begin());
  beginRemoveRows({}, row, row);
  keys_.erase(place);
  pages_.clear();
  endRemoveRows();
}

void PagedTableModel::setWriter(const QStringList& columns, CellWriter write) {
  writable_ = columns;
  write_ = std::move(write);
}

Qt::ItemFlags PagedTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && writable_.contains(columns_[index.column()]) ? flags | Qt::ItemIsEditable : flags;
}

bool PagedTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
    return false;
  if (value.toString() == data(index).toString())
    return true;
  const std::optional<int> key = write_(keyOf(index.row()), columns_[index.column()], value.toString());
  if (!key)
    return false;
  const int row = moveRow(index.row(), *key);
  Q_EMIT dataChanged(this->index(row, 0), this->index(row, columnCount() - 1));
  return true;
}

/// Gives a row another key and the place that goes with it; returns that place. Its cells are read again.
int PagedTableModel::moveRow(int row, int key) {
  const auto at = keys_.begin() + row;
  const int behind = static_cast<int>(std::lower_bound(keys_.begin(), keys_.end(), key) - keys_.begin());
  if (key == *at || behind == row || behind == row + 1) {
    *at = key;
    pages_.remove(row / pageRows);
    return row;
  }
  beginMoveRows({}, row, row, {}, behind);
  keys_.erase(at);
  const int place = behind > row ? behind - 1 : behind;
  keys_.insert(keys_.begin() + place, key);
  pages_.clear();
  endMoveRows();
  return place;
}

int PagedTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(keys_.size());
}

int PagedTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant PagedTableModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid))
    return {};
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
  if (role != Qt::DisplayRole && role != Qt::EditRole && role != valueRole)
    return {};
  const Row* row = fetchRow(index.row());
  if (row == nullptr)
    return {};
  const QVariant& cell = (*row)[static_cast<std::size_t>(index.column())];
  return role != valueRole && cell.isValid() ? QVariant(cell.toString()) : cell;
}

QVariant PagedTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || section < 0)
    return {};
  if (orientation == Qt::Vertical)
    return section + 1;
  return section < columns_.size() ? QVariant(columns_[section]) : QVariant();
}

const PagedTableModel::Row* PagedTableModel::fetchRow(int row) const {
  const int number = row / pageRows;
  Page* page = pages_.object(number);
  if (page == nullptr) {
    page = new Page;
    try {
      *page = readPage(number);
    } catch (const Error&) {
      // A view asks for cells while it paints, where a fault has nowhere to go: the page shows empty.
      page->resize(pageRows);
    }
    if (!pages_.insert(number, page))
      return nullptr;
  }
  const Row& cells = (*page)[static_cast<std::size_t>(row % pageRows)];
  return cells.empty() ? nullptr : &cells;
}

PagedTableModel::Page PagedTableModel::readPage(int page) const {
  const int first = page * pageRows;
  const int last = std::min(first + pageRows, rowCount());
  Statement statement = store_.query(query_.purpose, query_.rowSql);
  Page rows;
  for (int row = first; row < last; ++row)
    rows.push_back(readRow(statement, keyOf(row)));
  return rows;
}

PagedTableModel::Row PagedTableModel::readRow(Statement& statement, int key) const {
  statement.bind(key);
  if (!statement.next())
    return {};
  Row cells;
  cells.reserve(static_cast<std::size_t>(columns_.size()));
  for (int c = 0; c < columns_.size(); ++c)
    cells.push_back(cellOf(statement, c));
  return cells;
}

}  // namespace elevenfive
