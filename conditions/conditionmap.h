// The tabs of the condition panel as one table of facts: which list item of which tab stands for which row of 过滤条件, and
// which code of 过滤条件使用情况 switches the list's filter.
//
// A list's items are either values, whose row is base + value, or forms, whose row is base + place in the list from 0.
#pragma once

#include <QString>
#include <QStringList>
#include <span>

#include "engine/positionfilter.h"

namespace elevenfive {

/// What a tab of TabStrip_TiaoJian holds.
enum class TabKind {
  picks,      ///< the number buttons
  values,     ///< lists over stretches of 过滤条件
  positions,  ///< lists over the columns 第1位 to 第7位 of 号码特性
  groups,     ///< the custom groups
  match,      ///< the boxes of 历史数据过滤
  reduction,  ///< reduction type and optimisation switch
  summary,    ///< the text of all conditions
};

/// One list of values and its stretch of rows.
struct ValueList {
  QStringView label;   ///< stands in front of each item's value, with its "="
  int firstValue = 0;  ///< of the items, both included; unused where the items are forms
  int lastValue = -1;
  std::span<const QStringView> forms{};  ///< texts of items that go by place; empty: the items are values
  int base = 0;                          ///< ID of value 0 or of the first form
  int lastId = 0;                        ///< end of the stretch
  int code = 0;                          ///< the condition that the list's check box switches
  QStringView caption;                   ///< of that check box
  int previewCode = 0;                   ///< code of the stretch's preview; 0: it has none

  [[nodiscard]] int itemCount() const {
    return forms.empty() ? lastValue - firstValue + 1 : static_cast<int>(forms.size());
  }
  [[nodiscard]] QString itemText(int item) const;
  [[nodiscard]] QStringList itemTexts() const;
  /// The ID of an item's row.
  [[nodiscard]] int itemId(int item) const { return base + (forms.empty() ? firstValue + item : item); }
};

struct ConditionTab {
  int index = 0;  ///< 1 to 25
  QStringView caption;
  TabKind kind = TabKind::values;
  std::span<const ValueList> lists{};
};

inline constexpr int firstConditionTab = 1;
inline constexpr int lastConditionTab = 25;

/// All tabs, ascending from 1.
std::span<const ConditionTab> conditionTabs();

/// The tab of an index; nullptr outside 1 to 25.
const ConditionTab* conditionTab(int index);

/// A stretch that has a preview: tabs 2 to 6 carry the codes 1 to 5, tabs 18 to 21 the codes 22 to 25.
const ValueList* previewedList(int previewCode);

/// The list that a code switches; nullptr where there is none.
const ValueList* listOfCode(int code);

/// The position filter: list p (1 to positionCount) writes positionColumn(p) of 号码特性 (engine/positionfilter.h) and is switched
/// by code positionCode(p).
inline constexpr int zonesTab = 14;
inline constexpr int positionsTab = 15;
inline constexpr int positionCount = 7;
constexpr int positionCode(int p) {
  return p + 29;
}
QString positionCaption(int p);  ///< of Check_useDingWeiTiaojiao

inline constexpr int positionToleranceId = 3901;
inline constexpr int reductionTypeId = 3900;
inline constexpr int reductionTab = 24;
inline constexpr int optimiseCode = 45;  ///< Check_auto
inline constexpr QStringView optimiseCaption = u"缩水前进行智能优化—自动分析每注号码,提高缩水后大奖命中率";

/// The reduction types: option k (from 0) stores firstReductionType + k.
inline constexpr int firstReductionType = 3;
inline constexpr QStringView reductionTypes[] = {u"保三型", u"保四型", u"保五型", u"保六型", u"保七型"};

inline constexpr int groupsTab = 22;
inline constexpr int summaryTab = 25;
inline constexpr int matchTab = 23;
inline constexpr QStringView matchCaption =
    u"使用这个条件(如果要使用这个条件来过滤掉历史数据相关的号码，请在前面打上勾)";

}  // namespace elevenfive
