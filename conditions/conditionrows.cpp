#include "conditions/conditionrows.h"

#include "model/store.h"

namespace elevenfive {

std::optional<int> readConditionValue(Store& store, int id) {
  return store.value("读取过滤条件", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id);
}

bool setConditionValue(Store& store, int id, int value) {
  return store.execute("写入过滤条件", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = ?", value, id) > 0;
}

std::optional<int> conditionUse(Store& store, int code) {
  return store.value("读取条件使用情况", "SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = ?", code);
}

bool isConditionUsed(Store& store, int code) {
  return conditionUse(store, code).value_or(0) > 0;
}

bool setConditionUse(Store& store, int code, int value) {
  return store.execute("写入条件使用情况", "UPDATE 过滤条件使用情况 SET 使用情况 = ? WHERE 条件 = ?", value, code) > 0;
}

std::vector<BlockRow> blockRows(Store& store, int first, int last) {
  std::vector<BlockRow> rows;
  Statement query =
      store.query("读取过滤条件", "SELECT ID, VALUE FROM 过滤条件 WHERE ID >= ? AND ID <= ? ORDER BY ID", first, last);
  while (query.next())
    rows.push_back({query.integer(0) - first, query.integer(1)});
  return rows;
}

std::vector<int> allowedOffsets(Store& store, int first, int last) {
  std::vector<int> offsets;
  for (const BlockRow row : blockRows(store, first, last))
    if (row.value > 0)
      offsets.push_back(row.offset);
  return offsets;
}

}  // namespace elevenfive
