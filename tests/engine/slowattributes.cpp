#include "tests/engine/slowattributes.h"

#include <algorithm>
#include <cstdlib>

namespace elevenfive::slow {

int sum(const Draw& row) {
  return row[0] + row[1] + row[2] + row[3] + row[4];
}

int sumOfOdd(const Draw& row) {
  int total = 0;
  for (int number : row)
    if (number % 2 == 1)
      total += number;
  return total;
}

int sumOfEven(const Draw& row) {
  int total = 0;
  for (int number : row)
    if (number % 2 == 0)
      total += number;
  return total;
}

int sumOfTens(const Draw& row) {
  int total = 0;
  for (int number : row)
    total += number / 10;
  return total;
}

int sumOfUnits(const Draw& row) {
  int total = 0;
  for (int number : row)
    total += number % 10;
  return total;
}

int countOdd(const Draw& row) {
  return static_cast<int>(std::count_if(row.begin(), row.end(), [](int number) { return number % 2 == 1; }));
}

int countEven(const Draw& row) {
  return static_cast<int>(std::count_if(row.begin(), row.end(), [](int number) { return number % 2 == 0; }));
}

int span(const Draw& row) {
  const std::set<int> numbers(row.begin(), row.end());
  return *numbers.rbegin() - *numbers.begin();
}

int largestGap(const Draw& row) {
  const std::set<int> numbers(row.begin(), row.end());
  int largest = 0;
  int before = *numbers.begin();
  for (int number : numbers) {
    largest = std::max(largest, number - before);
    before = number;
  }
  return largest;
}

int runCode(const Draw& row) {
  // The lengths of the runs of two and more, in the order of the numbers.
  const std::set<int> numbers(row.begin(), row.end());
  std::vector<int> runs;
  for (int number : numbers) {
    if (numbers.contains(number - 1))
      continue;
    int length = 1;
    while (numbers.contains(number + length))
      ++length;
    if (length >= 2)
      runs.push_back(length);
  }
  std::sort(runs.rbegin(), runs.rend());
  if (runs == std::vector<int>{2})
    return 1;
  if (runs == std::vector<int>{2, 2})
    return 2;
  if (runs == std::vector<int>{3})
    return 3;
  if (runs == std::vector<int>{3, 2})
    return 4;
  if (runs == std::vector<int>{4})
    return 5;
  if (runs == std::vector<int>{5})
    return 6;
  return 0;
}

int acValue(const Draw& row) {
  std::set<int> differences;
  for (int i = 0; i < drawSize; ++i)
    for (int j = i + 1; j < drawSize; ++j)
      differences.insert(std::abs(row.at(static_cast<std::size_t>(i)) - row.at(static_cast<std::size_t>(j))));
  return static_cast<int>(differences.size()) - 4;
}

int countIn(const Draw& row, const std::set<int>& numbers) {
  int count = 0;
  for (int number : row)
    if (numbers.contains(number))
      ++count;
  return count;
}

int countBeside(const Draw& row, const std::set<int>& drawn) {
  int count = 0;
  for (int number : row)
    if (drawn.contains(number - 1) || drawn.contains(number + 1))
      ++count;
  return count;
}

Spread spreadOver(const Draw& row, const std::vector<Members>& classes) {
  Spread spread;
  for (const Members& members : classes) {
    int size = 0;
    for (int number : row)
      if (members.at(static_cast<std::size_t>(number)))
        ++size;
    spread.fullest = std::max(spread.fullest, size);
    if (size > 0)
      ++spread.occupied;
  }
  return spread;
}

int tailFormCode(const Spread& spread) {
  if (spread.fullest == 1 && spread.occupied == 5)
    return 0;  // 1,1,1,1,1
  if (spread.fullest == 2 && spread.occupied == 4)
    return 1;  // 2,1,1,1
  if (spread.fullest == 2 && spread.occupied == 3)
    return 2;  // 2,2,1
  if (spread.fullest == 3 && spread.occupied == 3)
    return 3;  // 3,1,1
  if (spread.fullest == 3 && spread.occupied == 2)
    return 4;  // 3,2
  if (spread.fullest == 4 && spread.occupied == 2)
    return 5;  // 4,1
  if (spread.fullest == 5 && spread.occupied == 1)
    return 6;  // 5
  return 0;
}

int headFormCode(const Spread& spread) {
  if (spread.fullest == 3 && spread.occupied == 2)
    return 0;  // 3,2
  if (spread.fullest == 4 && spread.occupied == 2)
    return 1;  // 4,1
  if (spread.fullest == 5 && spread.occupied == 1)
    return 2;  // 5
  return 0;
}

}  // namespace elevenfive::slow
