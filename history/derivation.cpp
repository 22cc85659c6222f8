#include "history/derivation.h"

#include <QStringList>
#include <optional>

#include "history/attributes.h"
#include "history/drawrows.h"
#include "history/pass.h"
#include "history/temperature.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Writes the derived columns of one row at a time, and its temperatures in the same statement: a second one would cost the
/// row a second rewriting.
class AttributeWriter final {
 public:
  explicit AttributeWriter(Store& store) : store_(store), tables_(loadAttributeTables(store)) {}

  /// A draw with the ones before it.
  void write(const DrawRow& row, const Draw& lastDraw, const RecentDraws& recent) {
    if (!withTemperature_)
      withTemperature_.emplace(prepared({u"温度值5 = ?"_s, u"温度值10 = ?"_s}));
    const int parameter = bindAttributes(*withTemperature_, row, lastDraw);
    withTemperature_->bindValue(parameter + 1, recent.temperature(row.numbers, RecentDraws::shortSpan));
    withTemperature_->bindValue(parameter + 2, recent.temperature(row.numbers, RecentDraws::longSpan));
    withTemperature_->bindValue(parameter + 3, row.qihao);
    withTemperature_->run();
  }

  /// A draw that is alone: there is none before it, and its temperatures stay as they are.
  void writeAlone(const DrawRow& row) {
    Statement update = prepared({});
    update.bindValue(bindAttributes(update, row, {}) + 1, row.qihao);
    update.run();
  }

 private:
  [[nodiscard]] Statement prepared(const QStringList& furtherAssignments) {
    QStringList assignments;
    for (const DerivedColumn& column : derivedColumns())
      assignments << column.name.toString() + u" = ?"_s;
    assignments << furtherAssignments;
    return store_.query("统计开奖号码属性",
                        u"UPDATE 历史记录 SET %1 WHERE 期号 = ?"_s.arg(assignments.join(u", "_s)).toStdString());
  }

  /// Returns the last parameter that is bound.
  int bindAttributes(Statement& update, const DrawRow& row, const Draw& lastDraw) const {
    checkNumbers(row);
    const DerivationInput input{tables_, lastDraw, row.numbers};
    int parameter = 0;
    for (const DerivedColumn& column : derivedColumns()) {
      if (column.number != nullptr) {
        update.bindValue(++parameter, column.number(input, column.member));
        continue;
      }
      const QStringView text = column.text(input);
      update.bindValue(++parameter, QString::fromRawData(text.data(), text.size()));
    }
    return parameter;
  }

  Store& store_;
  AttributeTables tables_;
  std::optional<Statement> withTemperature_;
};

}  // namespace

void calcHistoryAttr(Store& store, Qihao from, Qihao to, Progress* progress, Events& events, StatusPanels* panels) {
  PassBar bar(progress, to, from);
  const PanelEmptied panel(progress != nullptr ? panels : nullptr);
  const std::optional<DrawRow> first = DrawRows(store, getPrevQihao(store, from, 1), to).next();
  if (!first)
    return;
  AttributeWriter writer(store);
  PassTransaction transaction(store);
  Draw lastDraw = first->numbers;
  bool alone = true;
  visitWithRecent(store, *first, to, [&](const DrawRow& row, const RecentDraws& recent) {
    alone = false;
    writer.write(row, lastDraw, recent);
    lastDraw = row.numbers;
    transaction.rowDone();
    showWenDuPeriod(panels, row.qihao);
    events.yield();
    bar.set(row.qihao);
  });
  if (alone)
    writer.writeAlone(*first);
  transaction.commit();
  bar.fill();
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
