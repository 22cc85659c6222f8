// The catalogues: games, and the addresses that are configuration.
#include <QString>

#include "acquire/catalogue.h"
#include "acquire/sources.h"
#include "cli/command.h"
#include "cli/output.h"
#include "cli/readonlyquery.h"
#include "cli/session.h"
#include "cli/values.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareGameList(const Arguments&) {
  return [](Session& session) {
    ReadOnlyQuery(session.store(), u"SELECT 序号, 名称, 下载地址, 实时更新地址, 使用 FROM 彩票类型 ORDER BY 序号"_s)
        .print(session.out());
  };
}

Action prepareGameUse(const Arguments& arguments) {
  const int row = numberOf(arguments, u"N"_s);
  return [row](Session& session) { Catalogue(session.store()).selectCaizong(row); };
}

Action prepareGameSource(const Arguments&) {
  return [](Session& session) { printText(session.out(), Catalogue(session.store()).getSourceUrl()); };
}

Action prepareSourceList(const Arguments&) {
  return [](Session& session) {
    const std::vector<SourceRow> rows = sourceRows(session.store());
    printRow(session.out(), {u"名称"_s, u"地址"_s});
    for (const SourceRow& row : rows)
      printRow(session.out(), {row.name, row.address});
  };
}

Action prepareSourceSet(const Arguments& arguments) {
  const QString name = arguments.text(u"NAME"_s);
  const QString address = arguments.text(u"ADDRESS"_s);
  return [name, address](Session& session) { setSourceAddress(session.store(), name, address); };
}

constexpr QStringView gamesText = u"catalogue; select row N; getSourceUrl";
constexpr QStringView gamesPrint = u"table; address";
constexpr QStringView sourcesText =
    u"the addresses that are configuration (results site, second site, notice server, detail page)";

constexpr Command commands[] = {
    {u"game list", gamesText, gamesPrint, prepareGameList},
    {u"game use N", gamesText, gamesPrint, prepareGameUse},
    {u"game source", gamesText, gamesPrint, prepareGameSource},
    {u"source list", sourcesText, u"table", prepareSourceList},
    {u"source set NAME ADDRESS", sourcesText, u"table", prepareSourceSet},
};

}  // namespace

std::span<const Command> catalogueCommands() {
  return commands;
}

}  // namespace elevenfive
