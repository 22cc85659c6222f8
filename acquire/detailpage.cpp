#include "acquire/detailpage.h"

#include <QScopeGuard>

#include "acquire/catalogue.h"
#include "acquire/openurltext.h"
#include "acquire/pagerules.h"
#include "acquire/sources.h"
#include "history/statuspanels.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int periodCharacters = 5;

/// Stands in the text of every page that is about a draw.
constexpr QStringView detailMark = u"奖";

}  // namespace

QString unsetDetailText() {
  return u"还没有设置开奖详情的网址，无法查询！\r\n请在菜单“其它”的“数据源设置”中填写“开奖详情”的地址，然后再查询。"_s;
}

QUrl detailUrl(const QString& base, const QString& lotteryName, const QString& period) {
  QString address = provinceAddress(base, lotteryName);
  if (address.isEmpty())
    return {};
  if (const QUrl whole = sourceUrl(address); whole.path().isEmpty() && !whole.hasQuery() && !whole.hasFragment())
    address += u'/';
  const QUrl url = sourceUrl(address + period.right(periodCharacters) + u".html"_s);
  return isWebAddress(url) ? url : QUrl();
}

void showDetailPage(Store& gConn, OpenUrlText& reader, const DetailPorts& ports) {
  const QString period =
      ports.inputs.askText({u"输入要查询的期号"_s, u"请输入您要查询的期号（如:2008118）："_s, QString()}).trimmed();
  if (period.isEmpty())
    return;
  const QString base = sourceAddress(gConn, detailPage.name);
  if (isUnsetAddress(base)) {
    ports.boxes.critical(unsetDetailText());
    return;
  }
  const QUrl url = detailUrl(base, Catalogue(gConn).getLotteryName(), period);
  QString text;
  QString fault;
  if (!url.isEmpty()) {
    const auto cleared = qScopeGuard([&ports] { ports.panels.setPanel(StatusPanels::runningPass, {}); });
    ports.panels.setPanel(StatusPanels::runningPass, u"正在读取 %1 ……"_s.arg(url.toString()));
    text = reader.openUrlText(url, true);
    if (reader.wasStopped())
      return;
    fault = reader.fault();
  }
  if (text.contains(detailMark))
    ports.openPage(url);
  else if (text.isEmpty() && !fault.isEmpty())
    ports.boxes.critical(fault);
  else
    ports.boxes.plain(u"很抱歉，没有找到该期的开奖数据。请稍后再试。。。"_s);
}

}  // namespace elevenfive
