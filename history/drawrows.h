// The draws of a range of periods, read in ascending order.
//
// The rows are fetched by blocks, and no statement stays open between two rows: a pass may write to the same table while it
// reads, and its memory does not grow with the history. Rows that appear or vanish behind the block in hand are seen as they
// then are.
#pragma once

#include <optional>
#include <vector>

#include "model/numbers.h"
#include "model/store.h"

namespace elevenfive {

/// A stored draw. The numbers are those of the columns and may lie outside 1..11; a missing one is 0.
struct DrawRow {
  Qihao qihao = 0;
  Draw numbers{};
};

class DrawRows final {
 public:
  /// The draws of the periods from..to.
  DrawRows(Store& store, Qihao from, Qihao to);

  /// The next draw; nothing at the end.
  std::optional<DrawRow> next();

 private:
  void fetch();

  Statement block_;
  Qihao to_;
  qint64 after_;  ///< everything up to this period has been fetched
  std::vector<DrawRow> rows_;
  std::size_t position_ = 0;
};

/// Throws NumberFault, naming the period, where one of the numbers lies outside 1..11.
void checkNumbers(const DrawRow& row);

/// How many draws the periods from..to hold.
int countDraws(Store& store, Qihao from, Qihao to);

}  // namespace elevenfive
