// A database by bare sqlite3 calls, with the settings of the store: what the floors are measured on.
#pragma once

#include <sqlite3.h>

#include <QString>
#include <memory>
#include <stdexcept>

namespace elevenfive {

class BareSqlite final {
 public:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Prepared = std::unique_ptr<sqlite3_stmt, Finalize>;

  /// Opens the file, or makes it.
  explicit BareSqlite(const QString& path) {
    if (sqlite3_open(path.toUtf8().constData(), &db_) != SQLITE_OK)
      throw std::runtime_error("cannot open the floor's database");
    run("PRAGMA journal_mode = TRUNCATE; PRAGMA synchronous = OFF; PRAGMA cache_size = -16000");
  }
  ~BareSqlite() { sqlite3_close(db_); }
  BareSqlite(const BareSqlite&) = delete;
  BareSqlite& operator=(const BareSqlite&) = delete;

  /// Runs statements without parameters.
  void run(const char* sql) {
    if (sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(db_));
  }

  [[nodiscard]] Prepared prepared(const QByteArray& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db_, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(db_));
    return Prepared(statement);
  }

  /// Runs a statement that gives no rows and makes it ready for the next values.
  static void step(const Prepared& statement) {
    if (sqlite3_step(statement.get()) != SQLITE_DONE)
      throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement.get())));
    sqlite3_reset(statement.get());
  }

  /// Reads all rows of a statement and returns the sum of their first column, so that reading is not optimised away.
  long long sumOf(const QByteArray& sql) {
    const Prepared statement = prepared(sql);
    long long sum = 0;
    while (sqlite3_step(statement.get()) == SQLITE_ROW)
      sum += sqlite3_column_int64(statement.get(), 0);
    return sum;
  }

 private:
  sqlite3* db_ = nullptr;
};

}  // namespace elevenfive
