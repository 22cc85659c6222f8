// The candidate rows of one period in 日志表, as the filters read and write them.
#pragma once

#include <optional>
#include <vector>

#include "model/numbers.h"
#include "model/store.h"

namespace elevenfive {

/// A row as a filter sees it. The numbers stand as stored: rows from a file may hold them in any order.
struct Candidate {
  int id = 0;
  int xuhao = 0;  ///< 序号
  Draw numbers{};
  int mark = 0;  ///< 过滤标记 in the filters, 缩水标记 in the reduction
};

/// A mark below 0 stands only for the length of one stage, which ends by deleting such rows.
inline constexpr int deletedMark = -1;

/// The row that a statement stands at, which begins with `ID`, 序号, 号码1 to 号码5; the mark is left to the reader.
Candidate candidateAt(const Statement& rows);

/// The rows of a period with 过滤标记 from 0 up, in the order of 序号; rows with equal 序号 come in the order of `ID`.
std::vector<Candidate> readCandidates(Store& store, Qihao period);

/// How many rows a period has.
int countCandidates(Store& store, Qihao period);

/// Throws NumberFault with the row's 序号 and numbers where one of them is no number of a draw.
void requireNumbers(const Candidate& row);

/// Ends a run over a row for which a stage has no figure: its numbers repeat in a way that no draw has.
[[noreturn]] void refuseRow(const Candidate& row);

/// Writes what a stage says of single rows; prepared once a pass.
class CandidateWriter final {
 public:
  explicit CandidateWriter(Store& store);

  /// The row passed: it takes this mark and rank. A rank that it has already is not written again, which spares its index.
  void pass(const Candidate& row, int mark, int rank);

  /// The row failed and goes at the end of the stage.
  void fail(const Candidate& row);

  /// Deletes the row at once.
  void remove(const Candidate& row);

 private:
  Statement mark_;
  Statement markAndXuhao_;
  Statement remove_;
};

/// Deletes the rows of a period whose 过滤标记 is below 0.
void deleteMarkedCandidates(Store& store, Qihao period);

}  // namespace elevenfive
