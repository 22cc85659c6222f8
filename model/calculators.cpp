#include "model/calculators.h"

#include <algorithm>
#include <cstdlib>

#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

[[noreturn]] void raiseNumberFault(int n) {
  throw NumberFault(u"号码 %1 不在 01 到 11 之间，无法计算。"_s.arg(n));
}

/// n where it may index a table with slots lowest..numberCount.
std::size_t slot(int n, int lowest) {
  if (n < lowest || n > numberCount)
    raiseNumberFault(n);
  return static_cast<std::size_t>(n);
}

/// The absolute difference of two numbers where it may index a table with slots 0..10; the fault names the one outside.
std::size_t differenceSlot(int a, int b) {
  const int difference = std::abs(a - b);
  if (difference >= numberCount)
    raiseNumberFault(isNumber(a) ? b : a);
  return static_cast<std::size_t>(difference);
}

/// The longest run of consecutive numbers, and how many numbers stand in runs of two and more.
struct Runs {
  int longest = 0;
  int total = 0;
};

Runs findRuns(const std::array<bool, numberCount + 1>& drawn) {
  Runs runs;
  int length = 0;
  for (int n = 1; n <= numberCount; ++n) {
    if (drawn[static_cast<std::size_t>(n)]) {
      runs.longest = std::max(runs.longest, ++length);
      continue;
    }
    if (length > 1)
      runs.total += length;
    length = 0;
  }
  if (length > 1)
    runs.total += length;  // a run that ends at 11
  if (runs.longest < 2)
    runs.longest = 0;
  return runs;
}

/// Run code by [total][longest]; pairs that five different numbers cannot have read 0.
constexpr std::array<std::array<int, 6>, 6> lianHaoCode = [] {
  std::array<std::array<int, 6>, 6> table{};
  table[2][2] = 1;  // 2
  table[4][2] = 2;  // 2+2
  table[3][3] = 3;  // 3
  table[5][3] = 4;  // 3+2
  table[4][4] = 5;  // 4
  table[5][5] = 6;  // 5
  return table;
}();

}  // namespace

int calc_KuaDu(const Draw& draw) {
  const auto [lowest, highest] = std::minmax_element(draw.begin(), draw.end());
  return *highest - *lowest;
}

int calc_JianJuMax(const Draw& draw) {
  int widest = 0;
  for (std::size_t i = 1; i < draw.size(); ++i)
    widest = std::max(widest, std::abs(draw[i] - draw[i - 1]));
  return widest;
}

int calc_AC(const Draw& draw) {
  std::array<bool, numberCount> seen{};
  for (std::size_t i = 0; i < draw.size(); ++i)
    for (std::size_t j = i + 1; j < draw.size(); ++j)
      seen[differenceSlot(draw[i], draw[j])] = true;
  return static_cast<int>(std::count(seen.begin(), seen.end(), true)) - (drawSize - 1);
}

int calc_LianHaoMax(const Draw& draw) {
  std::array<bool, numberCount + 1> drawn{};
  for (const int n : draw)
    drawn[slot(n, 1)] = true;
  const Runs runs = findRuns(drawn);
  return lianHaoCode.at(static_cast<std::size_t>(runs.total)).at(static_cast<std::size_t>(runs.longest));
}

int calc_CongDie(const Draw& previous, const Draw& draw) {
  std::array<bool, numberCount + 1> before{};
  for (const int n : previous)
    before[slot(n, 0)] = true;
  return static_cast<int>(std::count_if(draw.begin(), draw.end(), [&](int n) { return before[slot(n, 0)]; }));
}

int calc_XieWeiMa(const Draw& previous, const Draw& draw) {
  std::array<bool, numberCount + 2> before{};
  for (const int n : previous)
    before[slot(n, 0)] = true;
  return static_cast<int>(std::count_if(draw.begin(), draw.end(), [&](int n) {
    const std::size_t i = slot(n, 1);
    return before[i - 1] || before[i + 1];
  }));
}

int calc_Zhushu(int n, int k, int d) {
  if (n < k)
    return 0;
  if (n == k || d >= k)
    return 1;
  // Multiply and divide in step, so that the running value stays a whole number.
  int ways = 1;
  int divisor = 1;
  for (int factor = n - d; factor > n - k; --factor) {
    ways *= factor;
    if (divisor <= k - d)
      ways /= divisor++;
  }
  for (; divisor <= k - d; ++divisor)
    ways /= divisor;
  return ways;
}

}  // namespace elevenfive
