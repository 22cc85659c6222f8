#include "conditions/widgets/tabcaptions.h"

#include <array>

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

struct TabText {
  QStringView caption;
  QStringView help;
};

constexpr std::array<TabText, conditionTabCount> tabs{{
    {u"选取号码", u""},
    {u"和值过滤", u"和值：五个号码相加之和。"},
    {u"奇数和值", u"奇数和值：五个号码中奇数号码相加之和。"},
    {u"偶数和值", u"偶数和值：五个号码中偶数号码相加之和。"},
    {u"跨度过滤", u"跨度：最大号码与最小号码之差。"},
    {u"最大间距", u"最大间距：从小到大排列后，相邻两个号码之差的最大值。"},
    {u"连 号", u"连号：相连号码的形式，“2+2”表示有两组二连号，“0”表示没有连号。"},
    {u"重叠号", u"重叠号：与上一期开奖号码相同的号码个数。"},
    {u"斜位码", u"斜位码：与上一期某个开奖号码相差一的号码个数。"},
    {u"AC值", u"AC值：号码的算术复杂度，即两两之差的不同个数减四。"},
    {u"奇偶比", u""},
    {u"大小比", u""},
    {u"高低尾码", u""},
    {u"区间设置", u""},
    {u"定位过滤", u""},
    {u"尾数设置", u"尾数形式：五个号码个位数的重复形式。"},
    {u"头数设置", u"头数形式：五个号码十位数的重复形式。"},
    {u"头数和值", u"头数和值：五个号码十位数相加之和。"},
    {u"尾数和值", u"尾数和值：五个号码个位数相加之和。"},
    {u"温度值5", u""},
    {u"温度值10", u""},
    {u"自定义过滤", u""},
    {u"历史数据过滤", u""},
    {u"缩水设置", u""},
    {u"查看全部", u""},
}};

const TabText& textsOf(int tab) {
  return tabs.at(static_cast<std::size_t>(tab - 1));
}

}  // namespace

QString tabCaption(int tab) {
  return textsOf(tab).caption.toString();
}

QString tabHelp(int tab) {
  const QStringView help = textsOf(tab).help;
  return help.isEmpty() ? QString() : help.toString() + u"\n\n"_s;
}

}  // namespace elevenfive
