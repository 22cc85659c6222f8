// The default rows of both stores, as data: what a fresh installation begins with and what a reset restores.
#pragma once

#include <QString>
#include <array>
#include <vector>

#include "model/numbers.h"
#include "model/schema.h"

namespace elevenfive {

/// First and last of a run of IDs or codes, both included.
struct IdRange {
  int first;
  int last;
};

/// All IDs of 过滤条件, ascending (1280 of them).
const std::vector<int>& conditionIds();

/// The value that 默认过滤条件 holds for an ID; 过滤条件 begins with the same but for ID 40, which is 0 there.
int defaultConditionValue(int id);

/// All codes of 过滤条件使用情况, ascending (63 of them).
const std::vector<int>& conditionCodes();

/// The default 使用情况 of a code: 0 or 1.
int defaultConditionUse(int code);

/// A boolean column of 号码特性 with the numbers for which it is true in the default rows.
struct AttributeColumn {
  QString name;
  std::array<bool, numberCount + 1> members{};  ///< by number; slot 0 unused
};

/// The 98 boolean columns of 号码特性 in table order, behind `INDEX` and 号码.
const std::vector<AttributeColumn>& attributeColumns();

/// Fills the default rows of a fresh store.
void insertDefaultRows(Store& store, StoreKind kind);

/// Puts the default row into tables of the main store that work on a row that is always there and have lost it: 用户模式,
/// 历史数据过滤, the account 临时用户, each group's of 自定义别名 and each address of 数据源. Throws StoreError.
void insertLostRows(Store& store);

}  // namespace elevenfive
