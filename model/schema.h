// The tables of the two stores, as data.
//
// The main database holds the draw history, the current condition set, the candidates of a run, the catalogues and the
// accounts. The template holds four of the same tables; a copy of it is a condition-set file or a user's file. Nothing
// alters a table at run time: createSchema makes a fresh store, and afterwards only rows change.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace elevenfive {

class Store;

enum class StoreKind { main, conditionTemplate };

/// What a column holds. Sizes are those of the data model; the store checks them.
enum class ColumnType {
  byte,      ///< 0..255
  int16,     ///< -32768..32767
  int32,     ///< -2147483648..2147483647
  boolean,   ///< 0 or 1
  dateTime,  ///< REAL day count, day 0 is 1899-12-30
  text,      ///< at most `length` characters
};

struct Column {
  QString name;
  ColumnType type;
  int length = 0;  ///< of text
};

struct Table {
  QString name;
  std::vector<Column> columns;
  QString key;          ///< the primary key's column; empty: no key
  QStringList indexes;  ///< columns with a plain index of their own
};

/// The tables of a store in a fixed order.
const std::vector<Table>& schemaTables(StoreKind kind);

/// The table of this name; it must be one of the main database.
const Table& schemaTable(const QString& name);

/// The statement that makes a table.
QString createTableSql(const Table& table);

/// Whether any value is one that its column does not take. The database itself looks only when it writes: opened for reading it
/// passes over such checks, in PRAGMA integrity_check too.
bool holdsValuesOutOfBounds(Store& store, StoreKind kind);

/// Makes all tables of a fresh store and fills the default rows, in one transaction.
void createSchema(Store& store, StoreKind kind);

/// Throws StoreError with the names of the tables or columns that a store lacks.
void checkSchema(Store& store, StoreKind kind);

}  // namespace elevenfive
