// Expansion and run.
#include <QString>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/runclick.h"
#include "cli/session.h"
#include "cli/values.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareExpand(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  return [period](Session& session) { clickRunButton(session, buttonExpand, {period}); };
}

Action prepareRun(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  const QString option = u"--tolerance"_s;
  const QString tolerance = QString::number(arguments.has(option) ? boxNumberOf(arguments, option) : 0);
  return [period, tolerance](Session& session) { clickRunButton(session, buttonRun, {period, tolerance}); };
}

constexpr Command commands[] = {
    {u"expand QIHAO", u"button 第一步：初始化", u"status text", prepareExpand},
    {u"run QIHAO [--tolerance T]", u"button 第二步：过滤缩水", u"status text", prepareRun},
};

}  // namespace

void clickRunButton(Session& session, RunButtonIndex button, const std::deque<QString>& typed) {
  session.ports().typed = typed;
  session.program().driver.cmmTouZhu_Click(button);
  if (!session.ports().refused)
    printText(session.out(), session.ports().text());
}

std::span<const Command> runCommands() {
  return commands;
}

}  // namespace elevenfive
