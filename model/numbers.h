// What a number, a draw and a period are.
#pragma once

#include <array>
#include <cstdint>

namespace elevenfive {

/// Numbers are 1..numberCount; a draw and a combination hold drawSize of them.
inline constexpr int numberCount = 11;
inline constexpr int drawSize = 5;

/// Five numbers, ascending as the history stores them. Result rows read from a file may stand in any order.
using Draw = std::array<int, drawSize>;

/// 期号: key of the history, shown as YYMMDDNN and ordered by value. Nothing parses it.
using Qihao = std::int32_t;

/// Whether n can be drawn.
constexpr bool isNumber(int n) noexcept {
  return n >= 1 && n <= numberCount;
}

}  // namespace elevenfive
