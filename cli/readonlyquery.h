// One statement that only reads, whoever wrote it.
//
// The statement is refused, before it runs, where it would change anything: rows, tables, settings, the state of a
// transaction, or which files are open. So is a second statement behind the first. Faults are StoreErrors.
#pragma once

#include <QString>
#include <iosfwd>

struct sqlite3;
struct sqlite3_stmt;

namespace elevenfive {

class Store;

class ReadOnlyQuery final {
 public:
  ReadOnlyQuery(Store& store, const QString& sql);
  ~ReadOnlyQuery();
  ReadOnlyQuery(const ReadOnlyQuery&) = delete;
  ReadOnlyQuery& operator=(const ReadOnlyQuery&) = delete;

  /// Binds a parameter, counted from 1.
  void bind(int index, int value);

  /// Runs the statement and prints header and rows.
  void print(std::ostream& out);

 private:
  void prepare(const QByteArray& sql);
  [[noreturn]] void fail() const;

  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
  bool denied_ = false;  ///< an action of the statement does more than read
};

}  // namespace elevenfive
