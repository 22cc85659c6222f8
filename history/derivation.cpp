#include "history/derivation.h"

#include <QStringList>

#include "history/attributes.h"
#include "history/drawrows.h"
#include "history/pass.h"
#include "history/temperature.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Writes the derived columns of one row at a time.
class AttributeWriter final {
 public:
  explicit AttributeWriter(Store& store) : tables_(loadAttributeTables(store)), update_(updateStatement(store)) {}

  void write(const DrawRow& row, const Draw& lastDraw) {
    checkNumbers(row);
    const DerivationInput input{tables_, lastDraw, row.numbers};
    int parameter = 0;
    for (const DerivedColumn& column : derivedColumns()) {
      if (column.number != nullptr) {
        update_.bindValue(++parameter, column.number(input, column.member));
        continue;
      }
      const QStringView text = column.text(input);
      update_.bindValue(++parameter, QString::fromRawData(text.data(), text.size()));
    }
    update_.bindValue(++parameter, row.qihao);
    update_.run();
  }

 private:
  static Statement updateStatement(Store& store) {
    QStringList assignments;
    for (const DerivedColumn& column : derivedColumns())
      assignments << column.name.toString() + u" = ?"_s;
    return store.query("统计开奖号码属性",
                       u"UPDATE 历史记录 SET %1 WHERE 期号 = ?"_s.arg(assignments.join(u", "_s)).toStdString());
  }

  AttributeTables tables_;
  Statement update_;
};

/// Derives the attribute columns of a range; false where it has no row.
bool deriveAttributes(Store& store, Qihao from, Qihao to, Progress* progress, Events& events) {
  PassBar bar(progress, to, from);
  DrawRows rows(store, getPrevQihao(store, from, 1), to);
  std::optional<DrawRow> row = rows.next();
  if (!row)
    return false;
  AttributeWriter writer(store);
  PassTransaction transaction(store);
  Draw lastDraw{};
  if (const std::optional<DrawRow> second = rows.next()) {
    lastDraw = row->numbers;
    row = second;
  }
  while (row) {
    writer.write(*row, lastDraw);
    lastDraw = row->numbers;
    transaction.rowDone();
    const Qihao done = row->qihao;
    row = rows.next();
    if (row) {
      events.yield();
      bar.set(done);
    }
  }
  transaction.commit();
  bar.fill();
  return true;
}

}  // namespace

void calcHistoryAttr(Store& store, Qihao from, Qihao to, Progress* progress, Events& events, StatusPanels* panels) {
  if (deriveAttributes(store, from, to, progress, events))
    calcWenDuRange(store, from, to, progress, events, panels);
}

bool recalcQujian(Store& store, Qihao from, Qihao to, Boxes& boxes, Progress& progress, Events& events) {
  boxes.plain(u"区间重新划分之后，各区间的开出号码个数需要重新计算。。。"_s);
  const int count = countDraws(store, from, to);
  if (count == 0)
    return false;
  PassBar bar(&progress, count, 0);
  const AttributeTables tables = loadAttributeTables(store);
  Statement update =
      store.query("统计区间号码", "UPDATE 历史记录 SET 区间1 = ?, 区间2 = ?, 区间3 = ?, 区间4 = ? WHERE 期号 = ?");
  PassTransaction transaction(store);
  DrawRows rows(store, from, to);
  int done = 0;
  while (const std::optional<DrawRow> row = rows.next()) {
    checkNumbers(*row);
    int parameter = 0;
    for (const NumberFlags& zone : tables.quJian)
      update.bindValue(++parameter, membersOf(zone, row->numbers));
    update.bindValue(++parameter, row->qihao);
    update.run();
    transaction.rowDone();
    bar.set(++done);
    events.yield();
  }
  transaction.commit();
  return true;
}

}  // namespace elevenfive
