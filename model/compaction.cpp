#include "model/compaction.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

#include <QFileInfo>
#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "model/errors.h"
#include "model/readinglimit.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// How many rows each table of a kind has, in the order of the schema.
std::vector<int> rowCounts(const QString& path, StoreKind kind) {
  Store store(path, StoreAccess::readOnly);
  std::vector<int> counts;
  for (const Table& table : schemaTables(kind))
    counts.push_back(
        store.value("核对数据表", u"SELECT COUNT(*) FROM \"%1\""_s.arg(table.name).toStdString()).value_or(0));
  return counts;
}

void compact(const QString& path, const QString& scratch, StoreKind kind, FileAccess& files) {
  files.remove(scratch);
  {
    Store store(path, StoreAccess::readWrite);  // from a reading one, SQLite copies row by row, four times slower
    store.execute("压缩数据文件", "VACUUM INTO ?", scratch);
  }
  if (rowCounts(path, kind) != rowCounts(scratch, kind))
    throw FileError(u"压缩数据文件后核对失败。"_s);
  files.rename(scratch, path);
}

QString compactDb(const QString& path, bool takeBackup, const DataFolders& folders, const QString& scratch,
                  StoreKind kind, FileAccess& files) {
  if (!QFileInfo::exists(path))
    return {};
  QString fault;
  try {
    if (takeBackup)
      replaceByCopy(files, path, folders.backupFile());
  } catch (const Error& error) {
    fault = error.message();
    if (kind == StoreKind::conditionTemplate)
      return fault;
  }
  try {
    compact(path, scratch, kind, files);
  } catch (const Error& error) {
    if (fault.isEmpty())
      fault = error.message();
    try {
      files.remove(scratch);
    } catch (const FileError&) {
      // The next compaction removes it first.
    }
  }
  return fault;
}

/// Faults that say nothing about what a file holds: another program has it, the disk or the memory fails.
constexpr int passingCodes[] = {SQLITE_BUSY,     SQLITE_LOCKED, SQLITE_CANTOPEN, SQLITE_IOERR,   SQLITE_NOMEM,
                                SQLITE_READONLY, SQLITE_PERM,   SQLITE_FULL,     SQLITE_PROTOCOL};

bool isPassing(int code) {
  return std::find(std::begin(passingCodes), std::end(passingCodes), code) != std::end(passingCodes);
}

/// Whether a file that could not be opened is to blame for it itself. It is not where it can be opened by now.
bool isPassingOpening(const QString& path) {
  try {
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READONLY);
    const ReadingLimit limit(database, mostOpeningSteps);
    database.execAndGet("SELECT COUNT(*) FROM sqlite_master");
    return true;
  } catch (const SQLite::Exception& fault) {
    return isPassing(fault.getErrorCode());
  }
}

[[noreturn]] void raiseDamage(const StoreError& fault) {
  QString reason = fault.message();
  if (reason.endsWith(u'。'))
    reason.chop(1);
  throw DamagedData(reason);
}

}  // namespace

void checkDatabase(const QString& path, StoreKind kind, CheckDepth depth) {
  std::optional<Store> store;
  try {
    store.emplace(path, StoreAccess::readOnly);
  } catch (const StoreError& fault) {
    if (QFileInfo(path).isFile() && isPassingOpening(path))
      throw;
    raiseDamage(fault);
  }
  try {
    checkSchema(*store, kind);
    Statement check = store->query("检查数据库", "PRAGMA integrity_check(1)");
    if (!check.next() || check.text(0) != u"ok"_s ||
        (depth == CheckDepth::values && holdsValuesOutOfBounds(*store, kind)))
      throw DamagedData(u"数据库已损坏"_s);
  } catch (const StoreError& fault) {
    if (isPassing(store->database().getErrorCode()))
      throw;
    raiseDamage(fault);
  }
}

QString compactMainDb(const QString& path, bool takeBackup, const DataFolders& folders, FileAccess& files) {
  return compactDb(path, takeBackup, folders, folders.mainScratch(), StoreKind::main, files);
}

QString compactUserDb(const QString& path, bool takeBackup, const DataFolders& folders, FileAccess& files) {
  return compactDb(path, takeBackup, folders, folders.userScratch(), StoreKind::conditionTemplate, files);
}

}  // namespace elevenfive
