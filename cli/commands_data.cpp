// The data file as a whole: making a fresh one, asking it.
#include <QString>

#include "cli/command.h"
#include "cli/readonlyquery.h"
#include "cli/session.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareInit(const Arguments& arguments) {
  const bool force = arguments.has(u"--force"_s);
  return [force](Session& session) {
    session.close();  // a batch may have it open
    Workspace::create(session.folders(), force);
  };
}

Action prepareSql(const Arguments& arguments) {
  const QString statement = arguments.text(u"STATEMENT"_s);
  return [statement](Session& session) { ReadOnlyQuery(session.store(), statement).print(session.out()); };
}

constexpr Command commands[] = {
    {u"init [--force]",
     u"a fresh packed data file and template with the default rows; without --force it refuses where one, or a backup "
     u"of one, "
     u"stands; with it the old data goes to Bak",
     u"", prepareInit},
    {u"sql STATEMENT", u"one read-only statement on the working database; anything that would write is refused",
     u"table", prepareSql,
     u"columns that come from 开奖日期 or 最后登陆时间, or are called so, print as dates; max(开奖日期) is a number"},
};

}  // namespace

std::span<const Command> dataCommands() {
  return commands;
}

}  // namespace elevenfive
