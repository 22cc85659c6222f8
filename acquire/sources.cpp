#include "acquire/sources.h"

#include <QRegularExpression>
#include <algorithm>

#include "acquire/pagerules.h"
#include "model/errors.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr ProvinceWord words[] = {
    {u"广东", u"gd"},  {u"浙江", u"zj"}, {u"山东", u"sd"}, {u"山西", u"sx"},  {u"辽宁", u"ln"},  {u"陕西", u"shx"},
    {u"内蒙", u"nmg"}, {u"贵州", u"gz"}, {u"天津", u"tj"}, {u"河北", u"hub"}, {u"福建", u"fj"},  {u"北京", u"bj"},
    {u"江西", u"jx"},  {u"安徽", u"ah"}, {u"新疆", u"xj"}, {u"黑龙", u"hlj"}, {u"湖北", u"hub"}, {u"云南", u"yn"},
    {u"广西", u"gx"},  {u"吉林", u"jl"}, {u"宁夏", u"nx"}, {u"江苏", u"js"},  {u"上海", u"sh"},  {u"甘肃", u"gs"},
};

/// What an address is for some province.
QUrl sampleUrl(QString address) {
  return sourceUrl(address.replace(provincePlace.toString(), u"x"_s));
}

}  // namespace

std::vector<SourceRow> sourceRows(Store& store) {
  std::vector<SourceRow> rows;
  Statement query = store.query("读取数据源", "SELECT 名称, 地址 FROM 数据源 ORDER BY rowid");
  while (query.next())
    rows.push_back({query.text(0), query.text(1)});
  return rows;
}

QString sourceAddress(Store& store, QStringView name) {
  Statement query = store.query("读取数据源", "SELECT 地址 FROM 数据源 WHERE 名称 = ?", name.toString());
  return query.next() ? query.text(0) : QString();
}

QUrl sourceUrl(const QString& address) {
  static const QRegularExpression scheme(u"^[a-z][a-z0-9+.-]*:(//|(?![0-9]))"_s,
                                         QRegularExpression::CaseInsensitiveOption);
  const QString text = address.trimmed();
  return text.isEmpty() || scheme.match(text).hasMatch() ? QUrl(text) : QUrl(u"http://"_s + text);
}

bool isSourceAddress(const QString& address) {
  const QString sample = address.trimmed();
  const auto parts = [](QChar ch) { return ch.isSpace() || !ch.isPrint(); };
  if (sample.size() > longestAddress || std::any_of(sample.cbegin(), sample.cend(), parts))
    return false;
  if (sample.isEmpty())
    return true;
  return isWebAddress(sampleUrl(sample));
}

QString wrongAddressText(const QString& name) {
  return u"“%1”的地址不正确：要写成 http:// 或 https:// 开头的网址，不能有空格，最多 %2 个字符。"_s.arg(name).arg(
      longestAddress);
}

void setSourceAddress(Store& store, const QString& name, const QString& address) {
  if (!isSourceAddress(address))
    throw Error(wrongAddressText(name));
  if (store.execute("修改数据源", "UPDATE 数据源 SET 地址 = ? WHERE 名称 = ?", address.trimmed(), name) == 0)
    throw MissingData(u"没有名为“%1”的地址。"_s.arg(name));
}

bool isUnsetAddress(const QString& address) {
  const QString host = sampleUrl(address).host();
  return address.trimmed().isEmpty() || host == u"example"_s || host.endsWith(u".example"_s);
}

std::span<const ProvinceWord> provinceWords() {
  return words;
}

QString provinceOf(QStringView gameName) {
  QStringView found;
  for (const ProvinceWord& entry : words)
    if (gameName.contains(entry.word))
      found = entry.province;
  return found.toString();
}

}  // namespace elevenfive
