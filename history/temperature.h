// 温度: how often the numbers of a draw had come shortly before it.
//
// The temperature of a draw over n periods is the sum, over its five numbers, of how many of the n draws before it held that
// number; the draw itself does not count, and where fewer lie before it, all of them count. At most 5 n.
#pragma once

#include <array>
#include <functional>

#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;
struct DrawRow;

/// The temperature of the draw of period q; 0 where the history does not hold it. Throws NumberFault where a number of the
/// draw lies outside 1..11.
int calc_WenDu(Store& store, Qihao q, int n);

/// Writes 温度值5 and 温度值10 of the periods from..to. The first row read, the period before from, is passed over, so a range
/// of the history's first row alone writes nothing. progress counts rows; it and panels may be null.
void calcWenDuRange(Store& store, Qihao from, Qihao to, Progress* progress, Events& events,
                    StatusPanels* panels = nullptr);

/// The last ten draws that went by, for a pass that meets the draws in ascending order.
class RecentDraws final {
 public:
  static constexpr int shortSpan = 5;
  static constexpr int longSpan = 10;

  void add(const Draw& draw);

  /// The temperature of a draw of numbers 1..11 over the last span draws.
  [[nodiscard]] int temperature(const Draw& draw, int span) const;

 private:
  std::array<unsigned, longSpan> sets_{};
  std::size_t count_ = 0;
};

/// Goes through the draws behind the draw `first` up to the period `to`, in ascending order, and hands each over together
/// with the draws before it, those before `first` included.
void visitWithRecent(Store& store, const DrawRow& first, Qihao to,
                     const std::function<void(const DrawRow& row, const RecentDraws& recent)>& visit);

/// Tells in the panel of running passes which period's temperature is being counted.
void showWenDuPeriod(StatusPanels* panels, Qihao q);

}  // namespace elevenfive
