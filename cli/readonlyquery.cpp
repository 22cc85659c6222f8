#include "cli/readonlyquery.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "cli/output.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Settings that can be asked without an argument and that asking does not change.
constexpr std::string_view askedPragmas[] = {
    "application_id", "compile_options", "database_list", "encoding",        "foreign_key_list", "freelist_count",
    "index_info",     "index_list",      "index_xinfo",   "integrity_check", "page_count",       "page_size",
    "quick_check",    "schema_version",  "table_info",    "table_list",      "table_xinfo",      "user_version",
};

/// Those whose argument names what is asked about; an argument to the others would set them.
constexpr std::string_view describingPragmas[] = {
    "foreign_key_list", "index_info", "index_list", "index_xinfo", "integrity_check",
    "quick_check",      "table_info", "table_list", "table_xinfo",
};

template <std::size_t size>
bool holds(const std::string_view (&names)[size], const char* name) {
  return name != nullptr && std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// Whether an action of a statement only reads.
bool onlyReads(int action, const char* first, const char* second) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_RECURSIVE:
      return true;
    case SQLITE_FUNCTION:
      return std::string_view("load_extension") != second;
    case SQLITE_PRAGMA:
      return holds(askedPragmas, first) && (second == nullptr || holds(describingPragmas, first));
    default:
      return false;
  }
}

/// The store's question about each action of a statement; what was denied is kept, as not each fault that follows says so.
int allowReading(void* denied, int action, const char* first, const char* second, const char*, const char*) {
  if (onlyReads(action, first, second))
    return SQLITE_OK;
  *static_cast<bool*>(denied) = true;
  return SQLITE_DENY;
}

[[noreturn]] void refuse() {
  throw StoreError(u"只允许执行一条只读的查询语句，没有执行。"_s);
}

/// Whether nothing but blanks, semicolons and comments stands there.
bool saysNothing(sqlite3* database, const char* sql) {
  while (*sql != '\0') {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int result = sqlite3_prepare_v2(database, sql, -1, &statement, &rest);
    const bool empty = result == SQLITE_OK && statement == nullptr;
    sqlite3_finalize(statement);
    if (!empty)
      return false;
    sql = rest;
  }
  return true;
}

}  // namespace

ReadOnlyQuery::ReadOnlyQuery(Store& store, const QString& sql) : database_(store.database().getHandle()) {
  if (sql.contains(QChar(u'\0')))
    refuse();
  sqlite3_set_authorizer(database_, allowReading, &denied_);
  try {
    prepare(sql.toUtf8());
  } catch (const StoreError&) {
    sqlite3_finalize(statement_);
    sqlite3_set_authorizer(database_, nullptr, nullptr);
    throw;
  }
}

ReadOnlyQuery::~ReadOnlyQuery() {
  sqlite3_finalize(statement_);
  sqlite3_set_authorizer(database_, nullptr, nullptr);
}

void ReadOnlyQuery::prepare(const QByteArray& sql) {
  const char* rest = nullptr;
  if (sqlite3_prepare_v2(database_, sql.constData(), static_cast<int>(sql.size()) + 1, &statement_, &rest) != SQLITE_OK)
    fail();
  if (statement_ == nullptr)
    throw StoreError(u"没有可执行的查询语句。"_s);
  if (!saysNothing(database_, rest) || sqlite3_stmt_readonly(statement_) == 0 || sqlite3_column_count(statement_) == 0)
    refuse();
}

void ReadOnlyQuery::fail() const {
  if (denied_)
    refuse();
  throw StoreError(u"执行查询语句失败：%1。"_s.arg(QString::fromUtf8(sqlite3_errmsg(database_))));
}

void ReadOnlyQuery::bind(int index, int value) {
  if (sqlite3_bind_int(statement_, index, value) != SQLITE_OK)
    fail();
}

void ReadOnlyQuery::print(std::ostream& out) {
  printHeader(out, statement_);
  int result = sqlite3_step(statement_);
  for (; result == SQLITE_ROW; result = sqlite3_step(statement_))
    printCurrentRow(out, statement_);
  if (result != SQLITE_DONE)
    fail();
}

}  // namespace elevenfive
