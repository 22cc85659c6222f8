// The rows of a condition set, one value at a time: 过滤条件 by ID and 过滤条件使用情况 by code.
//
// Rows are never added: writing to an ID or code without a row changes nothing.
#pragma once

#include <optional>
#include <vector>

namespace elevenfive {

class Store;

/// VALUE of an ID; nothing where it has no row.
std::optional<int> readConditionValue(Store& store, int id);

/// Writes VALUE of an ID. True where the row exists.
bool setConditionValue(Store& store, int id, int value);

/// 使用情况 of a code; nothing where it has no row.
std::optional<int> conditionUse(Store& store, int code);

/// Whether a condition counts as in use on the screens: 使用情况 above 0.
bool isConditionUsed(Store& store, int code);

/// Writes 使用情况 of a code. True where the row exists.
bool setConditionUse(Store& store, int code, int value);

/// A row of a block, its ID told from the block's base.
struct BlockRow {
  int offset;
  int value;
};

/// The rows first..last of 过滤条件 in ID order.
std::vector<BlockRow> blockRows(Store& store, int first, int last);

/// The offsets of a block whose VALUE is above 0, ascending.
std::vector<int> allowedOffsets(Store& store, int first, int last);

}  // namespace elevenfive
