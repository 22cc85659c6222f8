// All 462 combinations through every calculator, against an obvious second way: sets, strings and counting.
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/calculators.h"

namespace elevenfive {
namespace {

std::vector<Draw> allDraws() {
  std::vector<Draw> draws;
  for (int a = 1; a <= 11; ++a)
    for (int b = a + 1; b <= 11; ++b)
      for (int c = b + 1; c <= 11; ++c)
        for (int d = c + 1; d <= 11; ++d)
          for (int e = d + 1; e <= 11; ++e)
            draws.push_back({a, b, c, d, e});
  return draws;
}

/// The runs of two and more as a text, longest first: "3+2", "2", "" where there is none.
std::string runText(const Draw& draw) {
  std::string marks(13, '.');
  for (const int n : draw)
    marks[static_cast<std::size_t>(n)] = '#';
  std::vector<int> lengths;
  for (std::size_t n = 1; n < marks.size(); ++n)
    if (marks[n] == '#' && marks[n - 1] == '.')
      lengths.push_back(static_cast<int>(marks.find('.', n) - n));
  std::sort(lengths.rbegin(), lengths.rend());
  std::string text;
  for (const int length : lengths)
    if (length >= 2)
      text += (text.empty() ? "" : "+") + std::to_string(length);
  return text;
}

bool contains(const Draw& draw, int n) {
  return std::find(draw.begin(), draw.end(), n) != draw.end();
}

/// C(n, k) by the triangle of sums.
std::vector<std::vector<long long>> pascalTriangle(int rows) {
  std::vector<std::vector<long long>> triangle;
  for (int n = 0; n <= rows; ++n) {
    std::vector<long long> row(static_cast<std::size_t>(n) + 1, 1);
    for (std::size_t k = 1; k < static_cast<std::size_t>(n); ++k)
      row[k] = triangle.back()[k - 1] + triangle.back()[k];
    triangle.push_back(row);
  }
  return triangle;
}

TEST(AllCombinations, Are462) {
  EXPECT_EQ(allDraws().size(), 462U);
}

TEST(AllCombinations, SpanAndGapAreThoseOfTheSortedNumbers) {
  for (const Draw& draw : allDraws()) {
    EXPECT_EQ(calc_KuaDu(draw), draw[4] - draw[0]);
    // A gap lies between two numbers of the draw with none of it in between.
    std::set<int> gaps;
    for (int low = 1; low <= 11; ++low)
      for (int high = low + 1; high <= 11; ++high) {
        bool empty = true;
        for (int n = low + 1; n < high; ++n)
          empty = empty && !contains(draw, n);
        if (empty && contains(draw, low) && contains(draw, high))
          gaps.insert(high - low);
      }
    EXPECT_EQ(calc_JianJuMax(draw), *gaps.rbegin());
  }
}

TEST(AllCombinations, AcIsTheNumberOfDifferencesLessFour) {
  for (const Draw& draw : allDraws()) {
    std::set<int> differences;
    for (const int a : draw)
      for (const int b : draw)
        if (a > b)
          differences.insert(a - b);
    EXPECT_EQ(calc_AC(draw), static_cast<int>(differences.size()) - 4);
    EXPECT_GE(calc_AC(draw), 0);
    EXPECT_LE(calc_AC(draw), 6);
  }
}

TEST(AllCombinations, RunCodeIsThatOfTheRunText) {
  const std::map<std::string, int> codes{{"", 0}, {"2", 1}, {"2+2", 2}, {"3", 3}, {"3+2", 4}, {"4", 5}, {"5", 6}};
  std::map<int, int> drawsByCode;
  for (const Draw& draw : allDraws()) {
    EXPECT_EQ(calc_LianHaoMax(draw), codes.at(runText(draw))) << runText(draw);
    ++drawsByCode[calc_LianHaoMax(draw)];
  }
  // Placing the runs as blocks among the six numbers not drawn: C(7,5), 7*C(6,3), C(7,2)*5, 7*C(6,2), 7*6, 7*6, 7.
  const std::map<int, int> expected{{0, 21}, {1, 140}, {2, 105}, {3, 105}, {4, 42}, {5, 42}, {6, 7}};
  EXPECT_EQ(drawsByCode, expected);
}

TEST(AllCombinations, SharedAndDiagonalNumbersAgainstEveryOtherCombination) {
  const std::vector<Draw> draws = allDraws();
  for (const Draw& previous : draws)
    for (const Draw& draw : draws) {
      int shared = 0;
      int diagonal = 0;
      for (const int n : draw) {
        shared += contains(previous, n) ? 1 : 0;
        diagonal += contains(previous, n - 1) || contains(previous, n + 1) ? 1 : 0;
      }
      ASSERT_EQ(calc_CongDie(previous, draw), shared);
      ASSERT_EQ(calc_XieWeiMa(previous, draw), diagonal);
    }
}

TEST(AllCombinations, WithoutAnEarlierDrawOnly01IsDiagonal) {
  for (const Draw& draw : allDraws()) {
    EXPECT_EQ(calc_XieWeiMa({0, 0, 0, 0, 0}, draw), draw[0] == 1 ? 1 : 0);
    EXPECT_EQ(calc_CongDie({0, 0, 0, 0, 0}, draw), 0);
  }
}

TEST(AnyOrder, ChangesOnlyTheGap) {
  EXPECT_TRUE(rc::check("order does not matter to span, AC, runs, shared and diagonal numbers", [] {
    const std::vector<Draw> draws = allDraws();
    const Draw sorted = draws[*rc::gen::inRange<std::size_t>(0, draws.size())];
    const Draw previous = draws[*rc::gen::inRange<std::size_t>(0, draws.size())];
    Draw shuffled = sorted;
    for (std::size_t i = shuffled.size() - 1; i > 0; --i)
      std::swap(shuffled[i], shuffled[*rc::gen::inRange<std::size_t>(0, i + 1)]);
    RC_ASSERT(calc_KuaDu(shuffled) == calc_KuaDu(sorted));
    RC_ASSERT(calc_AC(shuffled) == calc_AC(sorted));
    RC_ASSERT(calc_LianHaoMax(shuffled) == calc_LianHaoMax(sorted));
    RC_ASSERT(calc_CongDie(previous, shuffled) == calc_CongDie(previous, sorted));
    RC_ASSERT(calc_XieWeiMa(previous, shuffled) == calc_XieWeiMa(previous, sorted));
    RC_ASSERT(calc_JianJuMax(shuffled) >= calc_JianJuMax(sorted));
  }));
}

TEST(Zhushu, IsTheBinomialOfPascalsTriangle) {
  const auto triangle = pascalTriangle(20);
  for (int n = 0; n <= 20; ++n)
    for (int k = 0; k <= n; ++k)
      for (int d = 0; d <= k; ++d)
        EXPECT_EQ(calc_Zhushu(n, k, d), triangle[static_cast<std::size_t>(n - d)][static_cast<std::size_t>(k - d)])
            << n << ' ' << k << ' ' << d;
}

TEST(Zhushu, CountsTheCombinationsThatHoldTheFixedNumbers) {
  for (int fixed = 0; fixed <= 5; ++fixed) {
    int holding = 0;
    for (const Draw& draw : allDraws()) {
      bool all = true;
      for (int n = 1; n <= fixed; ++n)
        all = all && contains(draw, n);
      holding += all ? 1 : 0;
    }
    EXPECT_EQ(calc_Zhushu(11, 5, fixed), holding) << fixed;
  }
}

TEST(Zhushu, FewerNumbersThanPlacesIsZeroWhateverIsFixed) {
  for (int k = 1; k <= 11; ++k)
    for (int n = 0; n < k; ++n)
      for (int d = 0; d <= k + 1; ++d)
        EXPECT_EQ(calc_Zhushu(n, k, d), 0);
}

}  // namespace
}  // namespace elevenfive
