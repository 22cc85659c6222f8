// One open SQLite database behind a small typed layer.
//
// Guarantees: SQL text stays with its caller, values are always bound; each statement carries a purpose, a short phrase in
// the user's language, and every fault becomes a StoreError whose message names it. A Store belongs to one thread. A
// Statement must not outlive its Store.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace SQLite {
class Database;
class Statement;
}  // namespace SQLite

namespace elevenfive {

/// A prepared statement. Columns count from 0, bound values from 1.
class Statement final {
 public:
  Statement(SQLite::Database& database, std::string_view purpose, std::string_view sql);
  ~Statement();
  Statement(Statement&&) noexcept;
  Statement& operator=(Statement&&) = delete;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Starts the statement over with these values for its parameters, in order. Missing ones are NULL.
  template <typename... Values>
  Statement& bind(const Values&... values) {
    reset();
    int index = 0;
    (bindValue(++index, values), ...);
    return *this;
  }

  /// Binds one parameter by its index without touching the others; reset() first where the statement has run.
  void bindValue(int index, int value);
  void bindValue(int index, qint64 value);
  void bindValue(int index, double value);
  void bindValue(int index, const QString& value);
  void bindValue(int index, std::nullptr_t);
  template <typename Value>
  void bindValue(int index, const std::optional<Value>& value) {
    if (value)
      bindValue(index, *value);
    else
      bindValue(index, nullptr);
  }

  /// Makes the statement ready to run again; bound values are dropped.
  void reset();

  /// Moves to the next row; false at the end.
  bool next();

  /// Runs a statement that gives no rows, and makes it ready for the next one. Returns how many rows it changed, 0 where it
  /// is none that changes rows.
  int run();

  /// run() with these values.
  template <typename... Values>
  int run(const Values&... values) {
    return bind(values...).run();
  }

  // Reading a column that the row does not have, or without a row, throws StoreError.
  [[nodiscard]] int columnCount() const;
  [[nodiscard]] QString columnName(int column) const;
  [[nodiscard]] bool isNull(int column) const;
  [[nodiscard]] bool isReal(int column) const;     ///< the stored value is a REAL
  [[nodiscard]] bool isInteger(int column) const;  ///< the stored value is an INTEGER
  [[nodiscard]] int integer(int column) const;     ///< NULL reads 0
  [[nodiscard]] qint64 integer64(int column) const;
  [[nodiscard]] double real(int column) const;
  [[nodiscard]] QString text(int column) const;

 private:
  template <typename Read>
  auto cell(int column, Read&& read) const;

  std::unique_ptr<SQLite::Statement> statement_;
  SQLite::Database* database_;
  std::string purpose_;
};

/// How a Store opens its file.
enum class StoreAccess {
  readOnly,   ///< must exist, is never written
  readWrite,  ///< must exist
  create,     ///< is made where it does not exist
};

class Store final {
 public:
  /// Opens the file; throws StoreError, which names the file, where it is missing, no database, or not to be opened for
  /// this access.
  /// The journal is a rollback journal that is truncated, writes are not flushed: what must survive a power failure is
  /// flushed by whoever closes and packs the file.
  Store(const QString& path, StoreAccess access);
  ~Store();
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;

  [[nodiscard]] const QString& path() const noexcept { return path_; }

  /// Closes the file before the object ends; all statements must be gone, and only path() may be called afterwards.
  void close();
  [[nodiscard]] bool isOpen() const noexcept { return database_ != nullptr; }

  /// A statement with its first values bound, ready for next() or run().
  template <typename... Values>
  [[nodiscard]] Statement query(std::string_view purpose, std::string_view sql, const Values&... values) {
    Statement statement(*database_, purpose, sql);
    statement.bind(values...);
    return statement;
  }

  /// Runs one statement and returns how many rows it changed.
  template <typename... Values>
  int execute(std::string_view purpose, std::string_view sql, const Values&... values) {
    return query(purpose, sql, values...).run();
  }

  /// The first column of the first row, nothing where there is no row or the value is NULL.
  template <typename... Values>
  [[nodiscard]] std::optional<int> value(std::string_view purpose, std::string_view sql, const Values&... values) {
    Statement statement = query(purpose, sql, values...);
    if (!statement.next() || statement.isNull(0))
      return std::nullopt;
    return statement.integer(0);
  }

  /// Runs a script of several statements without parameters.
  void executeScript(std::string_view purpose, const std::string& script);

  /// Whether a table of this name is there.
  [[nodiscard]] bool hasTable(const QString& name);

  /// Whether a transaction is open.
  [[nodiscard]] bool inTransaction() const;

  /// The library's own connection, for what this layer does not cover (limits, backup).
  [[nodiscard]] SQLite::Database& database() noexcept { return *database_; }

 private:
  QString path_;
  std::unique_ptr<SQLite::Database> database_;
};

/// What becomes of the rows written in a transaction that a fault ends.
enum class OnFault {
  keep,  ///< what was done so far is kept, as a pass over the history does (a full disk undoes all of it none the less)
  undo,  ///< the store is as it was before, as a stage of a run does
};

/// Row-by-row updates of one stage or pass inside one transaction, which ends with the scope. A scope that is left without
/// an exception commits, also after a stop. Inside another transaction it does nothing: the outer one decides.
class StoreTransaction final {
 public:
  explicit StoreTransaction(Store& store, OnFault onFault = OnFault::undo);
  ~StoreTransaction();
  StoreTransaction(const StoreTransaction&) = delete;
  StoreTransaction& operator=(const StoreTransaction&) = delete;

  /// Writes the transaction to the file now; throws StoreError where that fails, or where SQLite has undone it after an
  /// earlier fault. Call it as the last line of the scope wherever the caller must learn of a full disk.
  void commit();

 private:
  Store& store_;
  OnFault onFault_;
  int exceptions_;
  bool open_;
};

}  // namespace elevenfive
