// The two scorers, told a second time over plain arrays, as plainly as can be: the tests hold the engine against them.
#pragma once

#include <array>

#include "model/numbers.h"

namespace elevenfive::slow {

/// What the scorers see of the history; place 1 is the newest draw, place 10 the oldest, place 0 is unused. A place without a
/// draw holds zeros.
struct TenDraws {
  std::array<Draw, 11> numbers{};
  std::array<int, 11> sums{};  ///< 和值 as stored
};

/// What 精选号码 writes to 临时数据.
int haomaScore(const TenDraws& past, const Draw& row);

/// What 智能优化 writes to 临时数据. units and misses are 尾数和值 and 遗漏值总和 of the draw before; -1 where there is none.
int youhuaScore(const TenDraws& past, int units, int misses, const Draw& row);

}  // namespace elevenfive::slow
