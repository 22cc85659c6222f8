#include "acquire/catalogue.h"

#include "acquire/sources.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr QStringView resultsPage = u"/?op=dcjb&num=100";

}  // namespace

std::vector<GameOption> Catalogue::showCaizongList() {
  std::vector<GameOption> games;
  Statement query = gConn_.query("读取彩票类型", "SELECT 序号, 名称, 使用 FROM 彩票类型 ORDER BY 序号");
  while (query.next())
    games.push_back({query.integer(0), query.text(1), query.integer(2) > 0});
  return games;
}

void Catalogue::selectCaizong(int index) {
  StoreTransaction transaction(gConn_);
  Statement row = gConn_.query("读取彩票类型", "SELECT 实时更新地址 FROM 彩票类型 WHERE 序号 = ?", index);
  if (!row.next())
    throw MissingData(u"没有序号为 %1 的彩票类型。"_s.arg(index));
  const QString address = row.text(0);
  gConn_.execute("选择彩票类型", "UPDATE 彩票类型 SET 使用 = 0");
  gConn_.execute("选择彩票类型", "UPDATE 彩票类型 SET 使用 = 1 WHERE 序号 = ?", index);
  row.reset();
  transaction.commit();
  updateAddress_ = address;
}

QString Catalogue::getLotteryName() {
  Statement query = gConn_.query("读取彩票类型", "SELECT 名称 FROM 彩票类型 WHERE 使用 > 0 ORDER BY 序号 LIMIT 1");
  return query.next() ? query.text(0) : QString();
}

QString Catalogue::getSourceUrl() {
  return resultsPageUrl(sourceAddress(gConn_, resultsSite.name), getLotteryName());
}

QString provinceAddress(const QString& address, const QString& lotteryName) {
  const QString province = provinceOf(lotteryName);
  if (province.isEmpty() && address.contains(provincePlace))
    return {};
  return address.trimmed().replace(provincePlace.toString(), province);
}

QString resultsPageUrl(const QString& siteAddress, const QString& lotteryName) {
  QString address = provinceAddress(siteAddress, lotteryName);
  if (address.isEmpty() || provinceOf(lotteryName).isEmpty())
    return {};
  while (address.endsWith(u'/'))
    address.chop(1);
  return address + resultsPage.toString();
}

}  // namespace elevenfive
