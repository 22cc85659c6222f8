// Accounts. Passwords are never printed.
#include <QString>

#include "cli/command.h"
#include "cli/readonlyquery.h"
#include "cli/session.h"
#include "cli/values.h"
#include "shell/startup.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareUserList(const Arguments&) {
  return [](Session& session) {
    ReadOnlyQuery(session.store(), u"SELECT 用户名, 最后登陆时间 FROM 用户表 ORDER BY 用户名"_s).print(session.out());
  };
}

Action prepareUserMode(const Arguments& arguments) {
  const int mode =
      numberOf(arguments, u"N"_s, static_cast<int>(UserMode::notAsked), static_cast<int>(UserMode::several));
  return [mode](Session& session) {
    session.store().execute("保存用户模式", "UPDATE 用户模式 SET 模式 = ?", mode);
    session.program().workspace.gUserMode = mode;
  };
}

Action prepareLogon(const Arguments& arguments) {
  const QString name = arguments.text(u"NAME"_s);
  const QString password = arguments.text(u"PASSWORD"_s);
  const Answer create = arguments.has(u"--create"_s) ? Answer::yes : Answer::no;
  return [name, password, create](Session& session) {
    Users& users = session.program().users;
    session.saveUser();  // as a change of the user does
    session.ports().answers = {create};
    if (!users.cmdOK(name, password))
      throw Refused();
  };
}

constexpr QStringView usersText =
    u"accounts; logon loads the user's conditions, whatever the mode, and the session's end saves them";

constexpr Command commands[] = {
    {u"user list", usersText, u"", prepareUserList},
    {u"user mode N", usersText, u"", prepareUserMode, u"mode: 0 not asked yet, 1 one user, 2 several"},
    {u"user logon NAME PASSWORD [--create]", usersText, u"", prepareLogon,
     u"--create: makes an account that is missing"},
};

}  // namespace

std::span<const Command> userCommands() {
  return commands;
}

}  // namespace elevenfive
