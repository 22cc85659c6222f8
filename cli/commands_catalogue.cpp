// The catalogues: games, and the addresses that are configuration.
#include <QString>

#include "cli/command.h"
#include "cli/readonlyquery.h"
#include "cli/session.h"
#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareGameList(const Arguments&) {
  return [](Session& session) {
    ReadOnlyQuery(session.store(), u"SELECT 序号, 名称, 下载地址, 实时更新地址, 使用 FROM 彩票类型 ORDER BY 序号"_s)
        .print(session.out());
  };
}

Action prepareSourceList(const Arguments&) {
  return [](Session& session) {
    ReadOnlyQuery(session.store(), u"SELECT 名称, 地址 FROM 数据源 ORDER BY rowid"_s).print(session.out());
  };
}

Action prepareSourceSet(const Arguments& arguments) {
  const QString name = arguments.text(u"NAME"_s);
  const QString address = arguments.text(u"ADDRESS"_s);
  return [name, address](Session& session) {
    if (session.store().execute("修改地址", "UPDATE 数据源 SET 地址 = ? WHERE 名称 = ?", address, name) == 0)
      throw MissingData(u"没有名为“%1”的地址。"_s.arg(name));
  };
}

constexpr Command commands[] = {
    {u"game list", u"catalogue of the games", u"table", prepareGameList},
    {u"source list", u"the addresses that are configuration (results site, second site, notice server, detail page)",
     u"table", prepareSourceList},
    {u"source set NAME ADDRESS", u"changes one of these addresses", u"", prepareSourceSet},
};

}  // namespace

std::span<const Command> catalogueCommands() {
  return commands;
}

}  // namespace elevenfive
