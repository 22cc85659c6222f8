// The button row of a run.
#include <QString>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/values.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Clicks a button with these answers for its input boxes, and prints the status text where nothing went wrong.
void click(Session& session, int button, const std::deque<QString>& typed) {
  session.ports().typed = typed;
  session.program().driver.cmmTouZhu_Click(button);
  if (!session.ports().refused)
    printText(session.out(), session.ports().text());
}

Action prepareExpand(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  return [period](Session& session) { click(session, 0, {period}); };
}

Action prepareRun(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  const QString option = u"--tolerance"_s;
  const QString tolerance = QString::number(arguments.has(option) ? boxNumberOf(arguments, option) : 0);
  return [period, tolerance](Session& session) { click(session, 1, {period, tolerance}); };
}

Action prepareRowsDelete(const Arguments&) {
  return [](Session& session) { click(session, 5, {}); };
}

constexpr Command commands[] = {
    {u"expand QIHAO", u"button 第一步：初始化", u"status text", prepareExpand},
    {u"run QIHAO [--tolerance T]", u"button 第二步：过滤缩水", u"status text", prepareRun},
    {u"rows delete", u"button 删除", u"status text", prepareRowsDelete},
};

}  // namespace

std::span<const Command> runCommands() {
  return commands;
}

}  // namespace elevenfive
