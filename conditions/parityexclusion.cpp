#include "conditions/parityexclusion.h"

#include "conditions/conditionpanel.h"
#include "conditions/conditionrows.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString rowCaption(int row) {
  return row == 0 ? u"排除掉上一期的单双组合形式："_s : u"排除掉%1："_s.arg(row);
}

}  // namespace

QStringView paritySign(int value) {
  switch (value) {
    case 0:
      return u"双";
    case 1:
      return u"单";
    default:
      return u"*";
  }
}

QString parityPattern(Store& store, int row) {
  QString pattern;
  for (const BlockRow slot : blockRows(store, parityId(row, 1), parityId(row, parityColumnCount)))
    pattern += paritySign(slot.value);
  return pattern;
}

void ParityPanel::open() {
  const std::optional<Draw> newest = drawOf(gConn_, getLastQihao(gConn_));
  if (!newest)
    return;
  StoreTransaction transaction(gConn_);
  int column = 0;
  for (const int number : *newest)
    setConditionValue(gConn_, parityId(0, ++column), number % 2);
  transaction.commit();
}

std::array<ParityPanel::RowState, parityRowCount> ParityPanel::rows() {
  std::array<RowState, parityRowCount> states;
  for (int row = 0; row < parityRowCount; ++row) {
    RowState& state = states[static_cast<std::size_t>(row)];
    state.caption = rowCaption(row);
    state.checked = isConditionUsed(gConn_, parityCode(row));
    for (const BlockRow slot : blockRows(gConn_, parityId(row, 1), parityId(row, parityColumnCount)))
      state.values[static_cast<std::size_t>(slot.offset)] = slot.value;
    state.pattern = parityPattern(gConn_, row);
  }
  return states;
}

bool ParityPanel::inUse() {
  for (int row = 0; row < parityRowCount; ++row)
    if (isConditionUsed(gConn_, parityCode(row)))
      return true;
  return false;
}

void ParityPanel::clickRow(int row, bool checked) {
  if (row >= 0 && row < parityRowCount)
    panel_.clickSwitch(parityCode(row), checked);
}

void ParityPanel::choose(int row, int column, int value) {
  if (panel_.loadingPanel || row < 0 || row >= parityRowCount || column < 1 || column > parityColumnCount)
    return;
  StoreTransaction transaction(gConn_);
  setConditionValue(gConn_, parityId(row, column), value);
  setConditionUse(gConn_, parityCode(row), 1);
  transaction.commit();
}

}  // namespace elevenfive
