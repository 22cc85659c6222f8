// The addresses that are configuration: the rows of table 数据源, and the provinces' short names in them.
#pragma once

#include <QString>
#include <QStringView>
#include <QUrl>
#include <span>
#include <vector>

namespace elevenfive {

class Store;

/// What an address is for, and its name in the table.
struct SourceKind {
  QStringView name;
  QStringView purpose;
};

inline constexpr SourceKind resultsSite{u"开奖网站", u"下载开奖数据的网站"};
inline constexpr SourceKind secondSite{u"第二网站", u"按日期查开奖结果的网站（目前不使用）"};
inline constexpr SourceKind noticeServer{u"版本公告", u"查询新版本公告的服务器；留空则不查询"};
inline constexpr SourceKind detailPage{u"开奖详情", u"一期开奖详情的网页"};

/// In UTF-16 units, as a line edit counts.
inline constexpr int longestAddress = 200;

/// Stands in an address for the province's short name.
inline constexpr QStringView provincePlace = u"{province}";

struct SourceRow {
  QString name;
  QString address;
};

/// All rows in the order of the table.
std::vector<SourceRow> sourceRows(Store& store);

/// The address of a row as stored; empty where there is no such row.
QString sourceAddress(Store& store, QStringView name);

/// An address as the web is asked for it; without a scheme it is one of http, and blanks around it go. A word and a colon with
/// anything but a port behind them are another kind of address ("mailto:a@b.org"), which stays as it is and is none of the web.
QUrl sourceUrl(const QString& address);

/// Whether a text can stand as an address: empty, or http, https or no scheme at all with a host, in one piece and of at most
/// 200 UTF-16 units. Blanks around it do not count.
bool isSourceAddress(const QString& address);

/// What a person is told of one that cannot.
QString wrongAddressText(const QString& name);

/// Changes an address; blanks around it go. Throws MissingData where there is no row of this name, Error where it cannot stand
/// as an address.
void setSourceAddress(Store& store, const QString& name, const QString& address);

/// Whether an address was never set: it is empty or still names a reserved example host.
bool isUnsetAddress(const QString& address);

/// A word that the name of a game is searched for, and the short name of the province whose page it then has.
struct ProvinceWord {
  QStringView word;
  QStringView province;
};

/// The words in the order in which they are tested. 河北 has the page of 湖北.
std::span<const ProvinceWord> provinceWords();

/// The short name for a game's name: that of the last word found in it; empty where none is.
QString provinceOf(QStringView gameName);

}  // namespace elevenfive
