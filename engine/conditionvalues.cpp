#include "engine/conditionvalues.h"

#include "model/store.h"

namespace elevenfive {

void loadTiaojianValues(Store& store, RunState& state, int first, int last) {
  Statement rows =
      store.query("读取过滤条件", "SELECT VALUE FROM 过滤条件 WHERE ID >= ? AND ID <= ? ORDER BY ID", first, last);
  std::size_t slot = static_cast<std::size_t>(first % 10);
  while (rows.next() && slot < state.tiaojianValue.size())
    state.tiaojianValue[slot++] = rows.integer(0);
}

void fillTiaojianValues(Store& store, int first, int last, int value) {
  store.execute("写入过滤条件", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= ? AND ID <= ?", value, first, last);
}

int conditionValue(Store& store, int id) {
  return store.value("读取过滤条件", "SELECT VALUE FROM 过滤条件 WHERE ID = ?", id).value_or(0);
}

bool conditionInUse(Store& store, int code) {
  return store.value("读取条件使用情况", "SELECT 使用情况 FROM 过滤条件使用情况 WHERE 条件 = ?", code) == 1;
}

int countRongcuoTiaojian(Store& store) {
  return store
      .value("统计使用中的条件",
             "SELECT COUNT(*) FROM 过滤条件使用情况 WHERE 使用情况 > 0"
             " AND NOT (条件 >= 38 AND 条件 <= 41) AND NOT (条件 >= 30 AND 条件 <= 36) AND 条件 <> 45")
      .value_or(0);
}

}  // namespace elevenfive
