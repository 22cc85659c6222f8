#include "history/historytable.h"

#include "history/derivation.h"
#include "model/daycount.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

struct NoEvents final : Events {
  void yield() override {}
};

}  // namespace

HistoryWriter::HistoryWriter(Store& store)
    : upsert_(store.query("保存开奖记录",
                          "INSERT INTO 历史记录 (期号, 开奖日期, 号码1, 号码2, 号码3, 号码4, 号码5, 已完成)"
                          " VALUES (?, ?, ?, ?, ?, ?, ?, 'Y')"
                          " ON CONFLICT (期号) DO UPDATE SET 开奖日期 = excluded.开奖日期,"
                          " 号码1 = excluded.号码1, 号码2 = excluded.号码2, 号码3 = excluded.号码3,"
                          " 号码4 = excluded.号码4, 号码5 = excluded.号码5, 已完成 = 'Y'")) {}

void HistoryWriter::write(Qihao qihao, const QDate& date, const Draw& numbers) {
  upsert_.run(qihao, dayCountOf(date), numbers[0], numbers[1], numbers[2], numbers[3], numbers[4]);
}

void addHistoryRecord(Store& store, Qihao qihao, const QDate& date, const Draw& numbers, bool refresh) {
  StoreTransaction transaction(store, OnFault::keep);
  HistoryWriter(store).write(qihao, date, numbers);
  if (refresh) {
    NoEvents events;
    calcHistoryAttr(store, qihao, qihao, nullptr, events);
  }
  transaction.commit();
}

void clearHistoryTable(Store& store, Events& events) {
  store.execute("清空历史记录", "DELETE FROM 历史记录");
  events.yield();
}

bool deleteHistoryRecord(Store& store, Qihao qihao) {
  return store.execute("删除开奖记录", "DELETE FROM 历史记录 WHERE 期号 = ?", qihao) > 0;
}

int countHistory(Store& store) {
  return store.value("统计开奖记录", "SELECT COUNT(*) FROM 历史记录").value_or(0);
}

bool deleteToldRecord(Store& store, Qihao qihao, Boxes& boxes, const HistoryLayout& layout) {
  if (!deleteHistoryRecord(store, qihao)) {
    boxes.show({BoxKind::plain, u"删除失败"_s, u"无法完成，历史记录表格中没有该期记录！"_s, BoxButtons::ok});
    return false;
  }
  if (layout)
    layout();
  boxes.plain(u"删除完成！"_s);
  return true;
}

bool deleteAskedRecord(Store& store, Inputs& inputs, Boxes& boxes, const HistoryLayout& layout) {
  const Qihao qihao = leadingNumber(inputs.askText({u"请输入期号"_s, u"您要删除哪期的记录？"_s, {}}).trimmed());
  return qihao != 0 && deleteToldRecord(store, qihao, boxes, layout);
}

bool clearAskedHistory(Store& store, Boxes& boxes, Events& events, const HistoryLayout& layout) {
  if (!boxes.askToDelete(u"确定要清空所有的历史记录吗？"_s))
    return false;
  clearHistoryTable(store, events);
  if (layout)
    layout();
  clearHistoryTable(store, events);
  return true;
}

bool clearBeforeImport(Store& store, Boxes& boxes, Events& events) {
  if (countHistory(store) == 0 || !boxes.askToDelete(u"原有的历史数据是否要清空？"_s))
    return false;
  clearHistoryTable(store, events);
  return true;
}

}  // namespace elevenfive
