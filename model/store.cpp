#include "model/store.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <QFileInfo>
#include <exception>

#include "model/errors.h"
#include "model/readinglimit.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString fromUtf8(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The reason of a refused value, by SQLite's extended result code.
QString constraintReason(int extendedCode) {
  switch (extendedCode) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
    case SQLITE_CONSTRAINT_UNIQUE:
      return u"已有相同的记录"_s;
    case SQLITE_CONSTRAINT_NOTNULL:
      return u"缺少必填的值"_s;
    case SQLITE_CONSTRAINT_DATATYPE:
      return u"数值的类型不符"_s;
    default:
      return u"数值超出允许的范围"_s;
  }
}

/// Why a file takes no changes, by SQLite's extended result code.
QString readOnlyReason(int extendedCode) {
  switch (extendedCode) {
    case SQLITE_READONLY_DIRECTORY:
      return u"数据文件的文件夹不允许写入"_s;
    case SQLITE_READONLY_DBMOVED:  // what was stored until then is put back at the close
      return u"数据文件在运行中被删除或移动，请退出程序，以前的改动会保存"_s;
    default:
      return u"数据文件是只读的"_s;
  }
}

/// The reason in the user's language, by SQLite's primary result code.
QString reasonOf(const SQLite::Exception& fault) {
  switch (fault.getErrorCode() & 0xFF) {
    case SQLITE_FULL:
      return u"磁盘空间已满"_s;
    case SQLITE_READONLY:
      return readOnlyReason(fault.getExtendedErrorCode());
    case SQLITE_CANTOPEN:
      return u"文件无法打开，或无法在它的文件夹中写入"_s;
    case SQLITE_NOTADB:
      return u"文件不是有效的数据库"_s;
    case SQLITE_CORRUPT:
    case SQLITE_INTERRUPT:  // only a ReadingLimit ends statements
    case SQLITE_TOOBIG:     // likewise: what this program stores is short
      return u"数据库已损坏"_s;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return u"数据文件正被其他程序使用"_s;
    case SQLITE_IOERR:
      return u"读写磁盘出错"_s;
    case SQLITE_NOMEM:
      return u"内存不足"_s;
    case SQLITE_MISMATCH:
      return u"数值的类型不符"_s;
    case SQLITE_CONSTRAINT:
      return constraintReason(fault.getExtendedErrorCode());
    default:
      return QString::fromUtf8(fault.what());
  }
}

[[noreturn]] void raise(std::string_view purpose, const SQLite::Exception& fault) {
  throw StoreError(u"%1失败：%2。"_s.arg(fromUtf8(purpose), reasonOf(fault)));
}

/// Runs a call into the library and gives its faults the purpose they had.
template <typename Call>
decltype(auto) guarded(std::string_view purpose, Call&& call) {
  try {
    return call();
  } catch (const SQLite::Exception& fault) {
    raise(purpose, fault);
  }
}

constexpr int busyTimeout = 2000;  // milliseconds to wait for another program's lock

int openFlags(StoreAccess access) {
  switch (access) {
    case StoreAccess::readOnly:
      return SQLite::OPEN_READONLY;
    case StoreAccess::readWrite:
      return SQLite::OPEN_READWRITE;
    case StoreAccess::create:
      return SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;
  }
  return SQLite::OPEN_READONLY;
}

}  // namespace

Statement::Statement(SQLite::Database& database, std::string_view purpose, std::string_view sql)
    : database_(&database), purpose_(purpose) {
  guarded(purpose_, [&] { statement_ = std::make_unique<SQLite::Statement>(database, std::string(sql)); });
}

Statement::~Statement() = default;
Statement::Statement(Statement&&) noexcept = default;

void Statement::bindValue(int index, int value) {
  guarded(purpose_, [&] { statement_->bind(index, value); });
}

void Statement::bindValue(int index, qint64 value) {
  guarded(purpose_, [&] { statement_->bind(index, static_cast<std::int64_t>(value)); });
}

void Statement::bindValue(int index, double value) {
  guarded(purpose_, [&] { statement_->bind(index, value); });
}

void Statement::bindValue(int index, const QString& value) {
  guarded(purpose_, [&] { statement_->bind(index, value.toStdString()); });
}

void Statement::bindValue(int index, std::nullptr_t) {
  guarded(purpose_, [&] { statement_->bind(index); });
}

void Statement::reset() {
  // A failed step is reported by the step; the code that reset repeats from it says nothing new.
  statement_->tryReset();
  statement_->clearBindings();
}

bool Statement::next() {
  return guarded(purpose_, [&] { return statement_->executeStep(); });
}

int Statement::run() {
  return guarded(purpose_, [&] {
    const int before = database_->getTotalChanges();
    while (statement_->executeStep()) {
    }
    statement_->reset();
    return database_->getTotalChanges() - before;
  });
}

int Statement::columnCount() const {
  return statement_->getColumnCount();
}

QString Statement::columnName(int column) const {
  return guarded(purpose_, [&] { return QString::fromUtf8(statement_->getColumnName(column)); });
}

template <typename Read>
auto Statement::cell(int column, Read&& read) const {
  return guarded(purpose_, [&] { return read(statement_->getColumn(column)); });
}

bool Statement::isNull(int column) const {
  return cell(column, [](const SQLite::Column& value) { return value.isNull(); });
}

bool Statement::isReal(int column) const {
  return cell(column, [](const SQLite::Column& value) { return value.isFloat(); });
}

bool Statement::isInteger(int column) const {
  return cell(column, [](const SQLite::Column& value) { return value.isInteger(); });
}

int Statement::integer(int column) const {
  return cell(column, [](const SQLite::Column& value) { return value.getInt(); });
}

qint64 Statement::integer64(int column) const {
  return cell(column, [](const SQLite::Column& value) { return static_cast<qint64>(value.getInt64()); });
}

double Statement::real(int column) const {
  return cell(column, [](const SQLite::Column& value) { return value.getDouble(); });
}

QString Statement::text(int column) const {
  return cell(column, [](const SQLite::Column& value) {
    const char* bytes = value.getText();  // before the length: reading as text may convert the value
    return QString::fromUtf8(bytes, value.getBytes());
  });
}

Store::Store(const QString& path, StoreAccess access) : path_(path) {
  const auto refuse = [&](const QString& reason) {
    throw StoreError(u"打开数据文件失败：%1（%2）。"_s.arg(reason, path));
  };
  if (access != StoreAccess::create && !QFileInfo(path).isFile())
    refuse(u"找不到文件"_s);
  try {
    database_ =
        std::make_unique<SQLite::Database>(path.toStdString(), openFlags(access) | SQLite::OPEN_NOMUTEX, busyTimeout);
    const ReadingLimit limit(*database_, mostOpeningSteps);
    // Without the right to write, SQLite opens a file for reading only and says so at the first write.
    if (access != StoreAccess::readOnly && sqlite3_db_readonly(database_->getHandle(), "main") == 1)
      refuse(u"数据文件是只读的"_s);
    if (access != StoreAccess::readOnly) {
      database_->exec("PRAGMA journal_mode = TRUNCATE");
      database_->exec("PRAGMA synchronous = OFF");
    }
    database_->exec("PRAGMA trusted_schema = OFF");
    database_->exec("PRAGMA temp_store = MEMORY");
    database_->exec("PRAGMA cache_size = -16000");  // KiB
    // The header is read by the first statement that needs it: a file that is no database shows here, not later.
    database_->execAndGet("SELECT COUNT(*) FROM sqlite_master");
  } catch (const SQLite::Exception& fault) {
    refuse(reasonOf(fault));
  }
}

Store::~Store() = default;

void Store::close() {
  database_.reset();
}

void Store::executeScript(std::string_view purpose, const std::string& script) {
  guarded(purpose, [&] { database_->exec(script); });
}

bool Store::hasTable(const QString& name) {
  return value("检查数据表", "SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = ?", name).has_value();
}

bool Store::inTransaction() const {
  return sqlite3_get_autocommit(database_->getHandle()) == 0;
}

StoreTransaction::StoreTransaction(Store& store, OnFault onFault)
    : store_(store), onFault_(onFault), exceptions_(std::uncaught_exceptions()), open_(!store.inTransaction()) {
  if (open_)
    store_.execute("开始写入数据", "BEGIN");
}

StoreTransaction::~StoreTransaction() {
  if (!open_ || !store_.inTransaction())
    return;  // nested, committed, or undone by SQLite itself (a full disk)
  const bool faulted = std::uncaught_exceptions() > exceptions_;
  try {
    if (!faulted || onFault_ == OnFault::keep) {
      store_.execute("保存数据", "COMMIT");
      return;
    }
  } catch (const StoreError&) {
    // What cannot be committed is undone below.
  }
  try {
    if (store_.inTransaction())
      store_.execute("撤销写入", "ROLLBACK");
  } catch (const StoreError&) {
    // The journal undoes it at the next opening.
  }
}

void StoreTransaction::commit() {
  if (!open_)
    return;
  if (!store_.inTransaction())
    throw StoreError(u"保存数据失败：前面的写入出错，已全部撤销。"_s);
  store_.execute("保存数据", "COMMIT");
  open_ = false;
}

}  // namespace elevenfive
