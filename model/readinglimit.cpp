#include "model/readinglimit.h"

#include <SQLiteCpp/Database.h>
#include <sqlite3.h>

namespace elevenfive {

namespace {

/// How many steps lie between two looks at what is left.
constexpr int stride = 1'000;

/// Bytes. The longest statement of a schema, that of 号码特性, has some 5,000.
constexpr int longestText = 16 * 1024;

}  // namespace

ReadingLimit::ReadingLimit(SQLite::Database& database, int steps)
    : database_(database),
      stepsLeft_(steps),
      formerLength_(sqlite3_limit(database.getHandle(), SQLITE_LIMIT_LENGTH, longestText)),
      formerStatement_(sqlite3_limit(database.getHandle(), SQLITE_LIMIT_SQL_LENGTH, longestText)) {
  sqlite3_progress_handler(database.getHandle(), stride, &ReadingLimit::spend, this);
}

ReadingLimit::~ReadingLimit() {
  sqlite3_progress_handler(database_.getHandle(), 0, nullptr, nullptr);
  sqlite3_limit(database_.getHandle(), SQLITE_LIMIT_LENGTH, formerLength_);
  sqlite3_limit(database_.getHandle(), SQLITE_LIMIT_SQL_LENGTH, formerStatement_);
}

int ReadingLimit::spend(void* limit) {
  int& left = static_cast<ReadingLimit*>(limit)->stepsLeft_;
  left -= stride;
  return left < 0 ? 1 : 0;
}

}  // namespace elevenfive
