#include "history/missmessage.h"

#include <QStringList>

#include "history/miss.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int fewestHits = 3;

}  // namespace

QString missMessage(int number, Qihao q, const MissFigures& figures) {
  const QString period = QString::number(q);
  const QString head = u"号码 "_s + twoDigits(number) + u" (截止 "_s + period + u" 期)"_s;
  if (figures.hits < fewestHits)
    return u"("_s + head + u")  总共开出："_s + QString::number(figures.hits) + u" 期"_s;
  const auto line = [](const QString& label, int value) { return label + QString::number(value) + u" 期"_s; };
  const QStringList lines{
      head + u"\r\n_____________________"_s,          line(u"总共开出："_s, figures.hits) + u' ',
      line(u"历史遗漏最大值："_s, figures.longest),   line(u"历史遗漏平均值："_s, figures.average),
      line(u"最近一次的遗漏值："_s, figures.lastGap), line(u"第"_s + period + u"期遗漏值："_s, figures.current),
  };
  return lines.join(u"\r\n\r\n"_s);
}

}  // namespace elevenfive
