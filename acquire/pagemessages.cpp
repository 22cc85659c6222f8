#include "acquire/pagemessages.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <array>

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

struct ToldName {
  PageTold::Kind kind;
  QStringView name;
};

constexpr std::array<ToldName, 4> toldNames{{{PageTold::Kind::complete, u"complete"},
                                             {PageTold::Kind::away, u"away"},
                                             {PageTold::Kind::fault, u"fault"},
                                             {PageTold::Kind::text, u"text"}}};

QByteArray lineOf(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QString encoded(const QUrl& address) {
  return QString::fromLatin1(address.toEncoded());
}

QUrl decoded(const QJsonValue& value) {
  return QUrl::fromEncoded(value.toString().toUtf8());
}

}  // namespace

QByteArray lineOf(const PageRequest& request) {
  if (request.kind == PageRequest::Kind::load)
    return lineOf(QJsonObject{{u"load"_s, encoded(request.address)}});
  return lineOf(
      QJsonObject{{u"read"_s, request.part == PagePart::text ? u"text"_s : u"markup"_s}, {u"id"_s, request.id}});
}

QByteArray lineOf(const PageTold& told) {
  QJsonObject object;
  for (const ToldName& row : toldNames)
    if (row.kind == told.kind)
      object.insert(u"tell"_s, row.name.toString());
  if (told.kind == PageTold::Kind::complete || told.kind == PageTold::Kind::away)
    object.insert(u"address"_s, encoded(told.address));
  else
    object.insert(u"text"_s, told.text);
  if (told.kind == PageTold::Kind::text)
    object.insert(u"id"_s, told.id);
  return lineOf(object);
}

std::optional<PageRequest> pageRequest(const QByteArray& line) {
  const QJsonObject object = QJsonDocument::fromJson(line).object();
  PageRequest request;
  if (object.contains(u"load"_s)) {
    request.address = decoded(object.value(u"load"_s));
    return request;
  }
  const QString part = object.value(u"read"_s).toString();
  if (part != u"text"_s && part != u"markup"_s)
    return std::nullopt;
  request.kind = PageRequest::Kind::read;
  request.id = object.value(u"id"_s).toInt();
  request.part = part == u"text"_s ? PagePart::text : PagePart::markup;
  return request;
}

std::optional<PageTold> pageTold(const QByteArray& line) {
  const QJsonObject object = QJsonDocument::fromJson(line).object();
  for (const ToldName& row : toldNames)
    if (object.value(u"tell"_s).toString() == row.name)
      return PageTold{row.kind, decoded(object.value(u"address"_s)), object.value(u"text"_s).toString(),
                      object.value(u"id"_s).toInt()};
  return std::nullopt;
}

}  // namespace elevenfive
