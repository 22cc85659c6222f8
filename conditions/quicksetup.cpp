#include "conditions/quicksetup.h"

#include <algorithm>

#include "conditions/conditionrows.h"
#include "conditions/rangegroups.h"
#include "conditions/rangetext.h"
#include "model/store.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int shortestRangeText = 3;  // "[5]"

}  // namespace

std::vector<QuickSetup::Row> QuickSetup::rows() {
  std::vector<Row> rows;
  Statement query = gConn_.query(
      "读取快速设置", "SELECT 编号, 菜单ID, 条件名称, 条件编号, 范围min, 范围max FROM 快速设置 ORDER BY 编号");
  while (query.next()) {
    Row row;
    row.number = query.integer(0);
    row.tab = query.integer(1);
    row.name = query.text(2);
    row.code = query.integer(3);
    row.first = query.integer(4);
    row.last = query.integer(5);
    rows.push_back(row);
  }
  for (Row& row : rows) {
    row.used = getQuickUse(row.code) > 0;
    row.text = quickRangeText(row.number);
    row.tip = row.name + u"，直接在文本框里修改然后提交就可以了。"_s;
  }
  return rows;
}

QString QuickSetup::quickRangeText(int n) {
  Statement query = gConn_.query("读取快速设置", "SELECT 范围min, 范围max FROM 快速设置 WHERE 编号 = ?", n);
  return query.next() ? rangeText(gConn_, query.integer(0), query.integer(1)) : QString();
}

int QuickSetup::getQuickUse(int code) {
  return conditionUse(gConn_, code).value_or(0);
}

bool QuickSetup::setQuickUse(int code, int value) {
  return setConditionUse(gConn_, code, value);
}

void QuickSetup::setValueRange(int value, int firstId, int lastId) {
  gConn_.execute("写入取值范围", "UPDATE 过滤条件 SET VALUE = ? WHERE ID >= ? AND ID <= ?", value, firstId,
                 lastId < 1 ? firstId : lastId);
}

std::optional<int> QuickSetup::clickUse(Row& row, bool checked) {
  if (!setQuickUse(row.code, checked ? 1 : 0))
    return std::nullopt;
  row.used = checked;
  return row.tab;
}

bool QuickSetup::submit(std::span<Row> rows, const ShowText& showText) {
  bool sound = true;
  for (Row& row : rows)
    sound = check(row, showText) && sound;
  if (!sound)
    return false;
  {
    StoreTransaction transaction(gConn_);
    for (Row& row : rows) {
      write(row);
      row.text = shownRangeText(row.text);
    }
    transaction.commit();
  }
  if (showText)
    for (const Row& row : rows)
      showText(row);
  boxes_.information(u"条件设置完成！"_s);
  return true;
}

bool QuickSetup::check(Row& row, const ShowText& showText) {
  row.text = cleanRangeText(row.text);
  if (showText)
    showText(row);
  bool sound = true;
  if (row.used && row.text.size() < shortestRangeText) {
    boxes_.critical(u"出错！未设置["_s + row.name + u"]的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)"_s);
    sound = false;
  }
  if (!isRangeText(row.text)) {
    boxes_.critical(u"出错！你设置的["_s + row.name +
                    u"]的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]或者[5]是合法的)"_s);
    sound = false;
  }
  return sound;
}

void QuickSetup::write(const Row& row) {
  if (row.used)
    setValueRange(0, row.first, row.last);
  const int window = row.last - row.first;
  for (const RangeGroup& group : rangeGroups(row.text)) {
    if (group.first > window)
      continue;
    const int last = group.last ? std::min(*group.last, window) : group.first;
    if (last >= group.first)
      setValueRange(1, row.first + group.first, row.first + last);
  }
}

}  // namespace elevenfive
