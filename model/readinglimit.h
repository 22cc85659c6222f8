// A bound on what is read of a database file that may be damaged or hostile.
//
// The pages of a table form a tree, and SQLite looks at its depth only: where each inner page names one and the same next page
// many times over, a file of a few kilobytes stands for more rows than can ever be read. Nothing but the number of steps that a
// statement takes tells such a tree from an honest table.
#pragma once

namespace SQLite {
class Database;
}  // namespace SQLite

namespace elevenfive {

/// Steps of SQLite's own machine, of which a row takes four to ten. To read the schema takes some 200 of them for the largest
/// database of this program. To copy a condition set takes 20,000, and to sort as many rows as a file of 4 MiB can hold, which
/// an honest file may bring by mistake, three million.
inline constexpr int mostOpeningSteps = 5'000;
inline constexpr int mostConditionSteps = 5'000'000;

/// While it lives, the statements of a connection end with SQLITE_INTERRUPT after so many steps in all, and a row or statement
/// that is much longer than any of a schema or a condition set with SQLITE_TOOBIG.
class ReadingLimit final {
 public:
  ReadingLimit(SQLite::Database& database, int steps);
  ~ReadingLimit();
  ReadingLimit(const ReadingLimit&) = delete;
  ReadingLimit& operator=(const ReadingLimit&) = delete;

 private:
  static int spend(void* limit);

  SQLite::Database& database_;
  int stepsLeft_;
  int formerLength_;
  int formerStatement_;
};

}  // namespace elevenfive
