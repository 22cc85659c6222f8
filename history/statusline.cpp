#include "history/statusline.h"

#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int statePanel = 1;
constexpr int nextPanel = 3;

QString shown(const QDate& date) {
  return date.toString(Qt::ISODate);
}

}  // namespace

QString historyStateText(const QDate& nextDraw, const QDate& today) {
  if (today.daysTo(nextDraw) >= 0)
    return u"  ☆☆☆  历史记录： 已更新！  ☆☆☆  "_s;
  return u" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  "_s;
}

QString nextQihaoText(Qihao next, const QDate& nextDraw, const QDate& today) {
  const QString margin(5, u' ');
  return margin + u"※※※  "_s + QString::number(next) + u" 期 于 "_s + shown(nextDraw) + u" 开奖"_s + margin +
         u"今天是： "_s + shown(today) + u"  ※※※"_s + margin;
}

void updateStatusLine(Store& store, StatusPanels& panels, const QDate& today) {
  panels.setPanel(nextPanel, nextQihaoText(getNextQihao(store), today, today));
  panels.setPanel(statePanel, historyStateText(today, today));
}

}  // namespace elevenfive
