#include "history/attributes.h"

#include <algorithm>

#include "model/calculators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

constexpr std::size_t classCount = 10;  ///< tail and head digits 0..9

/// 连号 by the code of calc_LianHaoMax.
constexpr QStringView lianHaoText[] = {u"0", u"2", u"2+2", u"3", u"3+2", u"4", u"5"};

/// How the numbers of a draw spread over the classes of a digit: the largest class and how many classes are met.
struct Spread {
  int max = 0;
  int kinds = 0;
};

Spread spreadOver(const std::array<NumberFlags, classCount>& classes, const Draw& draw) {
  Spread spread;
  for (const NumberFlags& members : classes) {
    const int count = membersOf(members, draw);
    spread.max = std::max(spread.max, count);
    spread.kinds += count > 0 ? 1 : 0;
  }
  return spread;
}

/// The text of a spread.
struct Form {
  int max;
  int kinds;
  QStringView text;
};

/// 尾数形式: all spreads that five numbers can have.
constexpr Form weiShuForms[] = {
    {1, 5, u"1,1,1,1,1"}, {2, 4, u"2,1,1,1"}, {2, 3, u"2,2,1"}, {3, 3, u"3,1,1"},
    {3, 2, u"3,2"},       {4, 2, u"4,1"},     {5, 1, u"5"},
};

/// 头数形式: numbers up to 11 have two head digits, so other spreads stay without a text.
constexpr Form touShuForms[] = {{3, 2, u"3,2"}, {4, 2, u"4,1"}, {5, 1, u"5"}};

QStringView formText(std::span<const Form> forms, const Spread& spread, QStringView otherwise) {
  const auto found = std::find_if(forms.begin(), forms.end(),
                                  [&](const Form& f) { return f.max == spread.max && f.kinds == spread.kinds; });
  return found == forms.end() ? otherwise : found->text;
}

template <typename Value>
int sumOf(const Draw& draw, Value value) {
  int sum = 0;
  for (const int n : draw)
    sum += value(n);
  return sum;
}

using In = const DerivationInput&;

int bigNumbers(In in, std::size_t) {
  return membersOf(in.tables.daShu, in.draw);
}

int lowTails(In in, std::size_t) {
  return membersOf(in.tables.diWei, in.draw);
}

int zoneNumbers(In in, std::size_t zone) {
  return membersOf(in.tables.quJian[zone], in.draw);
}

int groupNumbers(In in, std::size_t group) {
  return membersOf(in.tables.ziDingYi[group], in.draw);
}

int oddNumbers(In in, std::size_t) {
  return sumOf(in.draw, [](int n) { return n % 2; });
}

constexpr DerivedColumn columns[] = {
    {u"和值", [](In in, std::size_t) { return sumOf(in.draw, [](int n) { return n; }); }},
    {u"奇数和值", [](In in, std::size_t) { return sumOf(in.draw, [](int n) { return n % 2 == 1 ? n : 0; }); }},
    {u"偶数和值", [](In in, std::size_t) { return sumOf(in.draw, [](int n) { return n % 2 == 0 ? n : 0; }); }},
    {u"奇数个数", oddNumbers},
    {u"偶数个数", [](In in, std::size_t) { return drawSize - oddNumbers(in, 0); }},
    {u"大数个数", bigNumbers},
    {u"小数个数", [](In in, std::size_t) { return drawSize - bigNumbers(in, 0); }},
    {u"高尾码个数", [](In in, std::size_t) { return drawSize - lowTails(in, 0); }},
    {u"低尾码个数", lowTails},
    {u"区间1", zoneNumbers, nullptr, 0},
    {u"区间2", zoneNumbers, nullptr, 1},
    {u"区间3", zoneNumbers, nullptr, 2},
    {u"区间4", zoneNumbers, nullptr, 3},
    {u"自定义组1", groupNumbers, nullptr, 0},
    {u"自定义组2", groupNumbers, nullptr, 1},
    {u"自定义组3", groupNumbers, nullptr, 2},
    {u"自定义组4", groupNumbers, nullptr, 3},
    {u"自定义组5", groupNumbers, nullptr, 4},
    {u"自定义组6", groupNumbers, nullptr, 5},
    {u"自定义组7", groupNumbers, nullptr, 6},
    {u"自定义组8", groupNumbers, nullptr, 7},
    {u"自定义组9", groupNumbers, nullptr, 8},
    {u"自定义组10", groupNumbers, nullptr, 9},
    {u"跨度", [](In in, std::size_t) { return calc_KuaDu(in.draw); }},
    {u"最大间距", [](In in, std::size_t) { return calc_JianJuMax(in.draw); }},
    {u"AC值", [](In in, std::size_t) { return calc_AC(in.draw); }},
    {u"连号", nullptr, [](In in) { return lianHaoText[calc_LianHaoMax(in.draw)]; }},
    {u"重叠号", [](In in, std::size_t) { return calc_CongDie(in.lastDraw, in.draw); }},
    {u"斜位码", [](In in, std::size_t) { return calc_XieWeiMa(in.lastDraw, in.draw); }},
    {u"尾数形式", nullptr,
     [](In in) { return formText(weiShuForms, spreadOver(in.tables.weiShu, in.draw), weiShuForms[0].text); }},
    {u"头数形式", nullptr, [](In in) { return formText(touShuForms, spreadOver(in.tables.touShu, in.draw), u""); }},
    {u"头数和值", [](In in, std::size_t) { return sumOf(in.draw, [](int n) { return n / 10; }); }},
    {u"尾数和值", [](In in, std::size_t) { return sumOf(in.draw, [](int n) { return n % 10; }); }},
    {u"已完成", nullptr, [](In) { return QStringView(u"Y"); }},
};

template <std::size_t Count>
void readFlags(Statement& row, int& column, std::array<NumberFlags, Count>& tables, std::size_t number) {
  for (NumberFlags& flags : tables)
    flags[number] = row.integer(column++) != 0 ? 1 : 0;
}

}  // namespace

int membersOf(const NumberFlags& flags, const Draw& draw) {
  return sumOf(draw, [&](int n) { return int{flags[static_cast<std::size_t>(n)]}; });
}

AttributeTables loadAttributeTables(Store& store) {
  Statement row = store.query("读取号码特性",
                              "SELECT 号码, 大数, 低尾码, 区间1, 区间2, 区间3, 区间4,"
                              " 自定义组1, 自定义组2, 自定义组3, 自定义组4, 自定义组5,"
                              " 自定义组6, 自定义组7, 自定义组8, 自定义组9, 自定义组10,"
                              " 尾0, 尾1, 尾2, 尾3, 尾4, 尾5, 尾6, 尾7, 尾8, 尾9,"
                              " 头0, 头1, 头2, 头3, 头4, 头5, 头6, 头7, 头8, 头9"
                              " FROM 号码特性 ORDER BY \"INDEX\"");
  AttributeTables tables;
  while (row.next()) {
    if (!isNumber(row.integer(0)))
      continue;
    const auto number = static_cast<std::size_t>(row.integer(0));
    tables.daShu[number] = row.integer(1) != 0 ? 1 : 0;
    tables.diWei[number] = row.integer(2) != 0 ? 1 : 0;
    int column = 3;
    readFlags(row, column, tables.quJian, number);
    readFlags(row, column, tables.ziDingYi, number);
    readFlags(row, column, tables.weiShu, number);
    readFlags(row, column, tables.touShu, number);
  }
  return tables;
}

std::span<const DerivedColumn> derivedColumns() {
  return columns;
}

}  // namespace elevenfive
