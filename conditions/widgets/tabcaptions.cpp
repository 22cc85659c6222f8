#include "conditions/widgets/tabcaptions.h"

#include <algorithm>
#include <iterator>

#include "conditions/conditionmap.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

struct TabHelp {
  int tab;
  QStringView help;
};

constexpr TabHelp tabHelps[] = {
    {2, u"和值：五个号码相加之和。"},
    {3, u"奇数和值：五个号码中奇数号码相加之和。"},
    {4, u"偶数和值：五个号码中偶数号码相加之和。"},
    {5, u"跨度：最大号码与最小号码之差。"},
    {6, u"最大间距：从小到大排列后，相邻两个号码之差的最大值。"},
    {7, u"连号：相连号码的形式，“2+2”表示有两组二连号，“0”表示没有连号。"},
    {8, u"重叠号：与上一期开奖号码相同的号码个数。"},
    {9, u"斜位码：与上一期某个开奖号码相差一的号码个数。"},
    {10, u"AC值：号码的算术复杂度，即两两之差的不同个数减四。"},
    {16, u"尾数形式：五个号码个位数的重复形式。"},
    {17, u"头数形式：五个号码十位数的重复形式。"},
    {18, u"头数和值：五个号码十位数相加之和。"},
    {19, u"尾数和值：五个号码个位数相加之和。"},
};

/// What a tab is found by beside its caption and the captions of its check boxes.
struct TabWords {
  QStringView initials;  ///< of the caption, in pinyin
  QStringView words;
};

/// By tab, from 1.
constexpr TabWords tabWords[] = {
    {u"xqhm", u"拖码胆码机选后区"},
    {u"hzgl", {}},
    {u"jshz", {}},
    {u"oshz", {}},
    {u"kdgl", {}},
    {u"zdjj", {}},
    {u"lh", {}},
    {u"cdh", u"重叠码"},
    {u"xwm", {}},
    {u"acz", {}},
    {u"job", {}},
    {u"dxb", {}},
    {u"gdwm", {}},
    {u"qjsz", {}},
    {u"dwgl", {}},
    {u"wssz", {}},
    {u"tssz", {}},
    {u"tshz", {}},
    {u"wshz", {}},
    {u"wdz5", {}},
    {u"wdz10", {}},
    {u"zdygl", u"自定义组常用分组"},
    {u"lssjgl", u"匹配值"},
    {u"sssz", u"保三型保四型保五型保六型保七型智能优化"},
    {u"ckqb", {}},
};
static_assert(std::size(tabWords) == lastConditionTab);

}  // namespace

QString tabCaption(int tab) {
  const ConditionTab* row = conditionTab(tab);
  return row == nullptr ? QString() : row->caption.toString();
}

bool tabMatches(int tab, const QString& typed) {
  const ConditionTab* row = conditionTab(tab);
  if (row == nullptr)
    return false;
  const TabWords& words = tabWords[tab - firstConditionTab];
  QStringList texts{row->caption.toString(), words.words.toString()};
  for (const ValueList& list : row->lists)
    texts << list.caption.toString();
  const QString wanted = QString(typed).remove(u' ');
  if (words.initials.startsWith(wanted, Qt::CaseInsensitive))
    return true;
  return std::any_of(texts.begin(), texts.end(),
                     [&](QString& text) { return text.remove(u' ').contains(wanted, Qt::CaseInsensitive); });
}

QString tabHelp(int tab) {
  for (const TabHelp& row : tabHelps)
    if (row.tab == tab)
      return row.help.toString() + u"\n\n"_s;
  return {};
}

}  // namespace elevenfive
