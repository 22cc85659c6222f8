// How much a row looks like the draws before its period: the scorers of 精选号码 and 智能优化. A lower score is a better row.
//
// Both compare two vectors of number differences slot by slot, one of the draws among themselves and one of the row against
// the draws. Numbers are taken as they stand; nothing is indexed by them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "model/navigators.h"
#include "model/numbers.h"

namespace elevenfive {

class Store;

/// The draws before a period by how far they lie back: 1 is the newest, 10 the oldest of ten; slot 0 is unused. With fewer than
/// ten draws the filling still begins at 10, and the slots not reached hold zeros.
struct EarlierDraws {
  static constexpr int depth = LookBackBlock::depth;
  std::array<Draw, depth + 1> numbers{};
  std::array<int, depth + 1> sums{};  ///< 和值 as the history holds it
};

EarlierDraws readEarlierDraws(Store& store, Qihao period);

/// A vector of differences that is filled from its first slot on; what is not reached stays as it was, at first 0.
template <std::size_t size>
class Differences final {
 public:
  /// Every number of the draws first..last back less every number of the other.
  void addDraws(const EarlierDraws& earlier, std::size_t first, std::size_t last, const Draw& other) {
    for (std::size_t back = first; back <= last; ++back)
      for (const int theirs : earlier.numbers[back])
        for (const int own : other)
          slots_[count_++] = theirs - own;
  }

  /// The ten pairs of one draw.
  void addPairs(const Draw& draw) {
    for (std::size_t i = 0; i < drawSize; ++i)
      for (std::size_t j = i + 1; j < drawSize; ++j)
        slots_[count_++] = draw[i] - draw[j];
  }

  void restart() { count_ = 0; }

  /// How many slots from first on agree.
  [[nodiscard]] int agreeing(const Differences& other, std::size_t first) const {
    int count = 0;
    for (std::size_t slot = first; slot < size; ++slot)
      count += slots_[slot] == other.slots_[slot] ? 1 : 0;
    return count;
  }

 private:
  std::array<int, size> slots_{};
  std::size_t count_ = 0;
};

/// 精选号码. The two vectors are built on different plans: the reference from four draws, the second back to the fifth, and the
/// pairs of the newest (110 slots), the row's from nine draws and its own pairs (235 slots). Slots 1 to 462 are compared, so
/// those that neither reaches always count. The sum of the row then raises or lowers the score.
class HaomaScorer final {
 public:
  explicit HaomaScorer(const EarlierDraws& earlier);
  int score(const Draw& row);

 private:
  static constexpr std::size_t slots = 463;
  EarlierDraws earlier_;
  Differences<slots> reference_;
  Differences<slots> differences_;
};

/// What 智能优化 reads of the draw before the period; empty where there is none.
struct PreviousFigures {
  std::optional<int> units;   ///< 尾数和值
  std::optional<int> misses;  ///< 遗漏值总和
};

PreviousFigures readPreviousFigures(Store& store, Qihao period);

/// 智能优化: both vectors on one plan of 236 slots, and three tests of the sum of the row's units digits.
class YouhuaScorer final {
 public:
  YouhuaScorer(const EarlierDraws& earlier, const PreviousFigures& previous);
  int score(const Draw& row);

 private:
  static constexpr std::size_t slots = 236;
  EarlierDraws earlier_;
  PreviousFigures previous_;
  Differences<slots> reference_;
  Differences<slots> differences_;
};

}  // namespace elevenfive
