#include "conditions/zones.h"

#include <string>

#include "conditions/conditionpanel.h"
#include "conditions/conditionrows.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

bool isZone(int k) {
  return k >= 1 && k <= zoneCount;
}

std::string zoneColumn(int k) {
  return u"区间%1"_s.arg(k).toStdString();
}

}  // namespace

std::vector<int> zoneMembers(Store& store, int k) {
  std::vector<int> members;
  if (!isZone(k))
    return members;
  Statement query =
      store.query("读取区间号码", "SELECT 号码 FROM 号码特性 WHERE " + zoneColumn(k) + " <> 0 ORDER BY 号码");
  while (query.next())
    members.push_back(query.integer(0));
  return members;
}

QString zoneText(Store& store, int k) {
  QString members;
  for (const int number : zoneMembers(store, k))
    members += toQuanjiaoDigits(twoDigits(number)) + u"  "_s;
  return u" 区间%1：　"_s.arg(k) + (members.isEmpty() ? u"无号码"_s : members);
}

QString Zones::showZones() {
  QString text;
  for (int k = 1; k <= zoneCount; ++k)
    text += zoneText(gConn_, k) + u"\r\n"_s;
  return text;
}

void Zones::clickNumber(int k, int number) {
  if (!isZone(k))
    return;
  const std::string column = zoneColumn(k);
  if (gConn_.execute("划分区间", "UPDATE 号码特性 SET " + column + " = NOT " + column + " WHERE 号码 = ?", number) > 0)
    zonesChanged = true;
}

void Zones::clear(const std::function<void()>& show) {
  {
    StoreTransaction transaction(gConn_);
    gConn_.execute("清空区间", "UPDATE 号码特性 SET 区间1 = 0, 区间2 = 0, 区间3 = 0, 区间4 = 0");
    for (int k = 1; k <= zoneCount; ++k)
      panel_.clickSwitch(zoneCode(k), false);
    transaction.commit();
  }
  zonesChanged = true;
  if (show)
    show();
  boxes_.plain(u"请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。"_s);
}

void Zones::showTip(int k) {
  boxes_.plain(zoneText(gConn_, k));
}

void Zones::recountIfChanged(const std::function<void(Qihao first, Qihao last)>& recount) {
  if (!zonesChanged)
    return;
  recount(getFirstQihao(gConn_), getLastQihao(gConn_));
  zonesChanged = false;
}

}  // namespace elevenfive
