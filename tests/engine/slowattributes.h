// The attributes of one combination, told a second time and as plainly as can be: the tests hold the engine against them.
//
// Each works on the five numbers in the order in which the row holds them, without tables, calculators or a store.
#pragma once

#include <array>
#include <set>
#include <vector>

#include "model/numbers.h"

namespace elevenfive::slow {

/// Membership by number; slot 0 is unused.
using Members = std::array<bool, numberCount + 1>;

int sum(const Draw& row);
int sumOfOdd(const Draw& row);
int sumOfEven(const Draw& row);
int sumOfTens(const Draw& row);
int sumOfUnits(const Draw& row);
int countOdd(const Draw& row);
int countEven(const Draw& row);
int span(const Draw& row);        ///< largest less smallest
int largestGap(const Draw& row);  ///< between neighbours of the numbers in rising order
int runCode(const Draw& row);     ///< 0 none, 1 "2", 2 "2+2", 3 "3", 4 "3+2", 5 "4", 6 "5"
int acValue(const Draw& row);     ///< different differences of the ten pairs, less 4

int countIn(const Draw& row, const std::set<int>& numbers);

/// Numbers of the row with a direct neighbour in the draw; each counts once.
int countBeside(const Draw& row, const std::set<int>& drawn);

/// How the row falls into classes of numbers: the size of the fullest class and the number of classes that are not empty.
struct Spread {
  int fullest = 0;
  int occupied = 0;
};
Spread spreadOver(const Draw& row, const std::vector<Members>& classes);

int tailFormCode(const Spread& spread);
int headFormCode(const Spread& spread);

}  // namespace elevenfive::slow
