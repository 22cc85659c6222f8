#include "conditions/conditionpanel.h"

#include <algorithm>
#include <string>

#include "conditions/conditionmap.h"
#include "conditions/conditionrows.h"
#include "conditions/rangetext.h"
#include "engine/conditionvalues.h"
#include "engine/positionfilter.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The text of a temperature tab's help, apart from its figures.
struct WarmthHelp {
  int tab;
  QStringView name;
  QStringView periods;
  QStringView widePeriods;
};

constexpr WarmthHelp warmthHelps[] = {{20, u"温度值5", u"5", u"５"}, {21, u"温度值10", u"10", u"１０"}};

std::size_t slot(int index) {
  return static_cast<std::size_t>(index);
}

/// The codes that make a tab "in use", apart from the check boxes that it shows.
std::vector<int> groupCodes() {
  std::vector<int> codes;
  for (int k = 1; k <= 20; ++k)
    codes.push_back(k <= 10 ? k + 19 : k + 40);
  return codes;
}

}  // namespace

ConditionPanel::ListState ConditionPanel::listState(const ValueList& list) {
  valueFlags.assign(slot(list.lastId - list.base + 1), 0);
  for (const BlockRow& row : blockRows(gConn_, list.base, list.lastId))
    valueFlags[slot(row.offset)] = row.value;
  ListState state{list.itemTexts(), std::vector<bool>(slot(list.itemCount()))};
  for (int item = 0; item < list.itemCount(); ++item)
    state.selected[slot(item)] = valueFlags.at(slot(list.itemId(item) - list.base)) > 0;
  return state;
}

ConditionPanel::ListState ConditionPanel::positionState(int p) {
  ListState state{{}, std::vector<bool>(numberCount)};
  for (int n = 1; n <= numberCount; ++n)
    state.items << twoDigits(n);
  Statement query =
      gConn_.query("读取定位号码", "SELECT 号码 FROM 号码特性 WHERE \"" + positionColumn(p).toStdString() + "\" <> 0");
  while (query.next())
    if (isNumber(query.integer(0)))
      state.selected[slot(query.integer(0) - 1)] = true;
  return state;
}

std::vector<ConditionPanel::ListState> ConditionPanel::valueLists(int tab) {
  std::vector<ListState> states;
  const ConditionTab* row = conditionTab(tab);
  if (row == nullptr)
    return states;
  for (const ValueList& list : row->lists)
    states.push_back(listState(list));
  if (row->kind == TabKind::positions)
    for (int p = 1; p <= positionCount; ++p)
      states.push_back(positionState(p));
  return states;
}

std::vector<ConditionPanel::ListState> ConditionPanel::fillValueList(int tab) {
  const ConditionTab* row = conditionTab(tab);
  if (run_ != nullptr && row != nullptr)
    for (const ValueList& list : row->lists)
      loadTiaojianValues(gConn_, *run_, list.base, list.lastId);
  return valueLists(tab);
}

std::vector<ConditionPanel::SwitchState> ConditionPanel::switches(int tab) {
  std::vector<SwitchState> states;
  const ConditionTab* row = conditionTab(tab);
  if (row == nullptr)
    return states;
  for (const ValueList& list : row->lists)
    states.push_back({list.code, list.caption.toString(), isConditionUsed(gConn_, list.code), true});
  if (row->kind == TabKind::positions) {
    for (int p = 1; p <= positionCount; ++p) {
      const std::vector<bool> selected = positionState(p).selected;
      const bool checked = isConditionUsed(gConn_, positionCode(p));
      // A box that is on without any number, as a loaded condition set may leave it, can still be switched off.
      const bool enabled = checked || std::find(selected.begin(), selected.end(), true) != selected.end();
      states.push_back({positionCode(p), positionCaption(p), checked, enabled});
    }
  }
  if (row->kind == TabKind::reduction)
    states.push_back({optimiseCode, optimiseCaption.toString(), isConditionUsed(gConn_, optimiseCode), true});
  return states;
}

void ConditionPanel::clickValue(int tab, int list, int item, bool selected) {
  const ConditionTab* row = conditionTab(tab);
  if (loadingPanel || row == nullptr || list < 0 || item < 0)
    return;
  if (row->kind == TabKind::positions) {
    if (list < positionCount && item < numberCount)
      clickPosition(list + 1, item + 1, selected);
    return;
  }
  if (slot(list) >= row->lists.size())
    return;
  const ValueList& stretch = row->lists[slot(list)];
  if (item < stretch.itemCount())
    setConditionValue(gConn_, stretch.itemId(item), selected ? 1 : 0);
}

void ConditionPanel::clickPosition(int p, int number, bool selected) {
  const std::string column = '"' + positionColumn(p).toStdString() + '"';
  if (gConn_.execute("写入定位号码", "UPDATE 号码特性 SET " + column + " = ? WHERE 号码 = ?", selected ? 1 : 0,
                     number) == 0)
    return;
  const auto left = gConn_.value("读取定位号码", "SELECT COUNT(*) FROM 号码特性 WHERE " + column + " <> 0");
  if (left.value_or(0) == 0)
    setConditionUse(gConn_, positionCode(p), 0);
}

void ConditionPanel::selectItems(int tab, int list, const std::vector<bool>& selected) {
  if (loadingPanel)
    return;
  const std::vector<ListState> lists = valueLists(tab);
  if (list < 0 || slot(list) >= lists.size())
    return;
  StoreTransaction transaction(gConn_);
  const std::vector<bool>& present = lists[slot(list)].selected;
  for (const bool select : {true, false})
    for (std::size_t item = 0; item < std::min(present.size(), selected.size()); ++item)
      if (present[item] != selected[item] && selected[item] == select)
        clickValue(tab, list, static_cast<int>(item), select);
  transaction.commit();
}

void ConditionPanel::clickSwitch(int code, bool checked) {
  if (!loadingPanel)
    setConditionUse(gConn_, code, checked ? 1 : 0);
}

void ConditionPanel::clickTaggedSwitch(const QString& tag, bool checked) {
  clickSwitch(leadingNumber(tag), checked);
}

bool ConditionPanel::tabInUse(int tab) {
  const ConditionTab* row = conditionTab(tab);
  if (row == nullptr)
    return false;
  if (row->kind == TabKind::match)
    return matchState().used;
  if (row->kind == TabKind::groups) {
    const std::vector<int> codes = groupCodes();
    return std::any_of(codes.begin(), codes.end(), [&](int code) { return isConditionUsed(gConn_, code); });
  }
  const std::vector<SwitchState> boxes = switches(tab);
  return std::any_of(boxes.begin(), boxes.end(), [](const SwitchState& box) { return box.checked; });
}

QString ConditionPanel::rangePreview(int code) {
  const ValueList* list = previewedList(code);
  return list == nullptr ? QString() : toQuanjiaoDigits(rangeText(gConn_, list->base, list->lastId));
}

QString ConditionPanel::updatedTip(int tab, const QString& tip) {
  const ConditionTab* row = conditionTab(tab);
  if (row == nullptr || row->lists.size() != 1 || row->lists.front().previewCode == 0)
    return tip;
  const qsizetype marker = tip.indexOf(previewMarker);
  return tip.left(marker < 0 ? tip.size() : marker) + previewMarker.toString() + u"\r\n\r\n"_s +
         rangePreview(row->lists.front().previewCode);
}

QString ConditionPanel::helpText(int tab) {
  for (const WarmthHelp& help : warmthHelps)
    if (help.tab == tab)
      return u"%1：指的是本期开奖的%2个号码在最近号码%3期中各码开出次数之和。反映的是整注号码相对于最近%4期的冷热程度。"_s
          .arg(help.name.toString(), QString::number(drawSize), help.periods.toString(), help.widePeriods.toString());
  return {};
}

int ConditionPanel::positionTolerance() {
  return readConditionValue(gConn_, positionToleranceId).value_or(0);
}

void ConditionPanel::setPositionTolerance(int index) {
  if (!loadingPanel && index >= 0)
    setConditionValue(gConn_, positionToleranceId, index);
}

int ConditionPanel::reductionType() {
  return readConditionValue(gConn_, reductionTypeId).value_or(0);
}

void ConditionPanel::setReductionType(int value) {
  const int last = firstReductionType + static_cast<int>(std::size(reductionTypes)) - 1;
  if (!loadingPanel && value >= firstReductionType && value <= last)
    setConditionValue(gConn_, reductionTypeId, value);
}

ConditionPanel::MatchState ConditionPanel::matchState() {
  Statement row = gConn_.query("读取历史数据过滤", "SELECT 使用状态, 最小值, 最大值, 匹配值 FROM 历史数据过滤");
  if (!row.next())
    return {};
  return {row.integer(0) > 0, row.integer(1), row.integer(2), row.integer(3)};
}

void ConditionPanel::setMatchUsed(bool used) {
  if (!loadingPanel)
    gConn_.execute("写入历史数据过滤", "UPDATE 历史数据过滤 SET 使用状态 = ?", used ? 1 : 0);
}

void ConditionPanel::setMatchField(MatchField field, int value) {
  if (loadingPanel)
    return;
  const char* sql = nullptr;
  switch (field) {
    case MatchField::minimum:
      sql = "UPDATE 历史数据过滤 SET 最小值 = ?";
      break;
    case MatchField::maximum:
      sql = "UPDATE 历史数据过滤 SET 最大值 = ?";
      break;
    case MatchField::match:
      sql = "UPDATE 历史数据过滤 SET 匹配值 = ?";
      break;
  }
  gConn_.execute("写入历史数据过滤", sql, value);
}

}  // namespace elevenfive
