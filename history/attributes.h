// What can be told of one draw from its numbers, the draw before it and the table 号码特性.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <span>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// One flag a number: 1 for a member, else 0. Slot 0 is unused.
using NumberFlags = std::array<std::uint8_t, numberCount + 1>;

/// The families of 号码特性 that a derivation needs. 小数 and 高尾码 are not read: a number that is not big is small, one
/// whose tail is not low has a high one.
struct AttributeTables {
  NumberFlags daShu{};
  NumberFlags diWei{};
  std::array<NumberFlags, 4> quJian{};
  std::array<NumberFlags, 10> ziDingYi{};
  std::array<NumberFlags, 10> weiShu{};
  std::array<NumberFlags, 10> touShu{};
};

AttributeTables loadAttributeTables(Store& store);

/// How many of the five numbers, all of them 1..11, are members.
int membersOf(const NumberFlags& flags, const Draw& draw);

/// What a column is derived from.
struct DerivationInput {
  const AttributeTables& tables;
  const Draw& lastDraw;  ///< zeros where there is none
  const Draw& draw;      ///< numbers 1..11
};

/// One derived column of 历史记录; exactly one of number and text is set.
struct DerivedColumn {
  QStringView name;
  int (*number)(const DerivationInput& input, std::size_t member) = nullptr;
  QStringView (*text)(const DerivationInput& input) = nullptr;
  std::size_t member = 0;  ///< which zone or group, from 0
};

/// The derived columns in the order in which they are written.
std::span<const DerivedColumn> derivedColumns();

}  // namespace elevenfive
