#include "conditions/conditionmap.h"

#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A list whose items are the values first..last behind the label.
constexpr ValueList values(QStringView label, int first, int last, int base, int lastId, int code, QStringView caption,
                           int previewCode = 0) {
  return {label, first, last, {}, base, lastId, code, caption, previewCode};
}

/// A list whose items are forms, one row each in their order.
constexpr ValueList forms(QStringView label, std::span<const QStringView> texts, int base, int lastId, int code,
                          QStringView caption) {
  return {label, 0, -1, texts, base, lastId, code, caption, 0};
}

constexpr QStringView runForms[] = {u"0", u"2", u"2+2", u"3", u"3+2", u"4", u"5"};
constexpr QStringView tailForms[] = {u"1,1,1,1,1", u"2,1,1,1", u"2,2,1", u"3,1,1", u"3,2", u"4,1", u"5"};
constexpr QStringView headForms[] = {u"3,2", u"4,1", u"5"};

constexpr ValueList sums[] = {values(u"和值=", 15, 45, 1000, 1170, 1, u"使用“和值”过滤", 1)};
constexpr ValueList oddSums[] = {values(u"奇数和值=", 0, 45, 2000, 2170, 2, u"使用“奇数和值”过滤", 2)};
constexpr ValueList evenSums[] = {values(u"偶数和值=", 0, 45, 3000, 3170, 3, u"使用“偶数和值”过滤", 3)};
constexpr ValueList spans[] = {values(u"跨度=", 4, 10, 3300, 3340, 4, u"使用“跨度”过滤", 4)};
constexpr ValueList gaps[] = {values(u"最大间距=", 1, 7, 3400, 3440, 5, u"使用“最大间距”过滤", 5)};
constexpr ValueList runs[] = {forms(u"连号=", runForms, 3450, 3460, 6, u"使用“连号”过滤")};
constexpr ValueList repeats[] = {values(u"重叠码个数=", 0, 5, 3470, 3480, 7, u"使用“重叠号”过滤")};
constexpr ValueList diagonals[] = {values(u"斜位码个数=", 0, 5, 3490, 3500, 8, u"使用“斜位码”过滤")};
constexpr ValueList complexities[] = {values(u"AC值=", 1, 10, 3600, 3630, 9, u"使用“ＡＣ值”过滤")};

constexpr ValueList oddCounts[] = {
    values(u"奇数个数=", 0, 5, 3640, 3649, 10, u"使用“奇数个数”过滤"),
    values(u"偶数个数=", 0, 5, 3650, 3659, 11, u"使用“偶数个数”过滤"),
};
constexpr ValueList sizeCounts[] = {
    values(u"大数个数=", 0, 5, 3660, 3669, 12, u"使用“大数个数”过滤"),
    values(u"小数个数=", 0, 5, 3670, 3679, 13, u"使用“小数个数”过滤"),
};
constexpr ValueList tailCounts[] = {
    values(u"高尾码个数=", 0, 5, 3680, 3689, 14, u"使用“高尾码个数”过滤"),
    values(u"低尾码个数=", 0, 5, 3690, 3699, 15, u"使用“低尾码个数”过滤"),
};
constexpr ValueList zoneCounts[] = {
    values(u"区间1开出个数=", 0, 5, 3700, 3709, 16, u"使用“区间１”过滤"),
    values(u"区间2开出个数=", 0, 5, 3710, 3719, 17, u"使用“区间２”过滤"),
    values(u"区间3开出个数=", 0, 5, 3720, 3729, 18, u"使用“区间３”过滤"),
    values(u"区间4开出个数=", 0, 5, 3730, 3739, 19, u"使用“区间４”过滤"),
};

constexpr ValueList tailShapes[] = {forms({}, tailForms, 4000, 4009, 37, u"使用“尾数形式”过滤")};
constexpr ValueList headShapes[] = {forms({}, headForms, 4070, 4079, 42, u"使用“头数形式”过滤")};
constexpr ValueList headSums[] = {values({}, 0, 10, 4080, 4099, 43, u"使用“头数和值”过滤", 22)};
constexpr ValueList tailSums[] = {values({}, 0, 41, 4100, 4159, 44, u"使用“尾数和值”过滤", 23)};
constexpr ValueList warmth5[] = {values({}, 0, 19, 4160, 4179, 46, u"使用“温度值５”过滤", 24)};
constexpr ValueList warmth10[] = {values({}, 0, 29, 4180, 4209, 47, u"使用“温度值１０”过滤", 25)};

constexpr ConditionTab tabs[] = {
    {1, u"选取号码", TabKind::picks},
    {2, u"和值过滤", TabKind::values, sums},
    {3, u"奇数和值", TabKind::values, oddSums},
    {4, u"偶数和值", TabKind::values, evenSums},
    {5, u"跨度过滤", TabKind::values, spans},
    {6, u"最大间距", TabKind::values, gaps},
    {7, u"连 号", TabKind::values, runs},
    {8, u"重叠号", TabKind::values, repeats},
    {9, u"斜位码", TabKind::values, diagonals},
    {10, u"AC值", TabKind::values, complexities},
    {11, u"奇偶比", TabKind::values, oddCounts},
    {12, u"大小比", TabKind::values, sizeCounts},
    {13, u"高低尾码", TabKind::values, tailCounts},
    {14, u"区间设置", TabKind::values, zoneCounts},
    {15, u"定位过滤", TabKind::positions},
    {16, u"尾数设置", TabKind::values, tailShapes},
    {17, u"头数设置", TabKind::values, headShapes},
    {18, u"头数和值", TabKind::values, headSums},
    {19, u"尾数和值", TabKind::values, tailSums},
    {20, u"温度值5", TabKind::values, warmth5},
    {21, u"温度值10", TabKind::values, warmth10},
    {22, u"自定义过滤", TabKind::groups},
    {23, u"历史数据过滤", TabKind::match},
    {24, u"缩水设置", TabKind::reduction},
    {25, u"查看全部", TabKind::summary},
};

}  // namespace

QString ValueList::itemText(int item) const {
  const QString value =
      forms.empty() ? QString::number(firstValue + item) : forms[static_cast<std::size_t>(item)].toString();
  return label.toString() + value;
}

QStringList ValueList::itemTexts() const {
  QStringList texts;
  for (int item = 0; item < itemCount(); ++item)
    texts << itemText(item);
  return texts;
}

std::span<const ConditionTab> conditionTabs() {
  return tabs;
}

const ConditionTab* conditionTab(int index) {
  if (index < firstConditionTab || index > lastConditionTab)
    return nullptr;
  return &tabs[index - firstConditionTab];
}

const ValueList* previewedList(int previewCode) {
  for (const ConditionTab& tab : tabs)
    for (const ValueList& list : tab.lists)
      if (previewCode != 0 && list.previewCode == previewCode)
        return &list;
  return nullptr;
}

const ValueList* listOfCode(int code) {
  for (const ConditionTab& tab : tabs)
    for (const ValueList& list : tab.lists)
      if (list.code == code)
        return &list;
  return nullptr;
}

QString positionColumn(int p) {
  return u"第%1位"_s.arg(p);
}

QString positionCaption(int p) {
  return u"使用第%1位定位过滤"_s.arg(toQuanjiaoDigits(p));
}

}  // namespace elevenfive
