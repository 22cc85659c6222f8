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

/// The first draw behind `first` up to the period `to` that cannot be derived; nothing where all can.
std::optional<Qihao> firstUnderivable(Store& store, Qihao first, Qihao to) {
  return store.value("统计开奖号码属性",
                     "SELECT 期号 FROM 历史记录 WHERE 期号 > ? AND 期号 <= ?"
                     " AND (IFNULL(号码1, 0) NOT BETWEEN 1 AND 11 OR IFNULL(号码2, 0) NOT BETWEEN 1 AND 11"
                     " OR IFNULL(号码3, 0) NOT BETWEEN 1 AND 11 OR IFNULL(号码4, 0) NOT BETWEEN 1 AND 11"
                     " OR IFNULL(号码5, 0) NOT BETWEEN 1 AND 11) ORDER BY 期号 LIMIT 1",
                     first, to);
}

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

  /// A draw whose temperatures stay as they are; lastDraw is all zeros where there is none before it.
  void writeAttributes(const DrawRow& row, const Draw& lastDraw) {
    if (!attributesAlone_)
      attributesAlone_.emplace(prepared({}));
    attributesAlone_->bindValue(bindAttributes(*attributesAlone_, row, lastDraw) + 1, row.qihao);
    attributesAlone_->run();
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
  std::optional<Statement> attributesAlone_;
};

}  // namespace

void calcHistoryAttr(Store& store, Qihao from, Qihao to, Progress* progress, Events& events, StatusPanels* panels) {
  PassBar bar(progress, to, from);
  const PanelEmptied panel(progress != nullptr ? panels : nullptr);
  const std::optional<DrawRow> first = DrawRows(store, getPrevQihao(store, from, 1), to).next();
  if (!first)
    return;
  // Temperatures follow once every attribute is in, so a pass that a row is going to end writes none.
  const bool withTemperatures = !firstUnderivable(store, first->qihao, to);
  AttributeWriter writer(store);
  PassTransaction transaction(store);
  Draw lastDraw = first->numbers;
  bool alone = true;
  visitWithRecent(store, *first, to, [&](const DrawRow& row, const RecentDraws& recent) {
    alone = false;
    if (withTemperatures)
      writer.write(row, lastDraw, recent);
    else
      writer.writeAttributes(row, lastDraw);
    lastDraw = row.numbers;
    transaction.rowDone();
    if (withTemperatures)
      showWenDuPeriod(panels, row.qihao);
    events.yield();
    bar.set(row.qihao);
  });
  if (alone)
    writer.writeAttributes(*first, {});
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
