// Finding periods in the history by the rows that exist, never by arithmetic on the parts of a period.
//
// Each costs one query on 历史记录 and is kept out of loops over candidates.
#pragma once

#include <QDate>
#include <array>
#include <cstdint>
#include <optional>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// What getPrevQihao gives where no period lies before: smaller than any real one, so a range from it starts at the first row.
inline constexpr Qihao noEarlierQihao = 2003001;

/// The newest period; 0 in an empty history.
Qihao getLastQihao(Store& store);

/// The newest period plus one; 0 in an empty history. It does not roll over at the end of a day. A newest period below 1, and
/// the highest there can be, stand for themselves.
Qihao getNextQihao(Store& store);

/// The earliest period; 0 in an empty history.
Qihao getFirstQihao(Store& store);

/// The n-th period before q, the earliest one where fewer lie before, noEarlierQihao where none does.
Qihao getPrevQihao(Store& store, Qihao q, int n);

/// n steps back from the newest period not after q; the earliest where there are not so many, 0 where there is none.
Qihao getQihaoBack(Store& store, Qihao q, int n);

/// n steps on from the first period not before q; the newest period where there are not so many.
Qihao getQihaoForward(Store& store, Qihao q, int n);

/// The latest draw date in the history; no date where it is empty.
std::optional<QDate> getLastDate(Store& store);

/// The five numbers of a period, where it is in the history.
std::optional<Draw> drawOf(Store& store, Qihao q);

/// The numbers of the ten periods before one. Positions count 1..5; slot 1 is the nearest period before, slot 10 the tenth.
class LookBackBlock final {
 public:
  static constexpr int depth = 10;

  /// Throws std::out_of_range where the position or the slot does not exist.
  [[nodiscard]] std::int16_t& at(int position, int slot) { return slots_.at(index(slot)).at(index(position)); }
  [[nodiscard]] std::int16_t at(int position, int slot) const { return slots_.at(index(slot)).at(index(position)); }

 private:
  static std::size_t index(int oneBased) { return static_cast<std::size_t>(oneBased - 1); }
  std::array<std::array<std::int16_t, drawSize>, depth> slots_{};
};

/// Reads up to ten periods before q, the oldest into slot 10 and on downward, and returns how many. With fewer than ten the
/// filling still starts at slot 10; slots not reached keep what they held.
int getHistoryRecord(Store& store, LookBackBlock& block, Qihao q);

}  // namespace elevenfive
