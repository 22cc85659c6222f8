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

/// A click with the period 0 does nothing that was asked for, and 第一步 empties 日志表 all the same; a command says so first.
void requirePeriod(const QString& period) {
  if (period == u"0"_s)
    throw MissingData(u"期号应大于 0，没有改动。"_s);
}

Action prepareExpand(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  return [period](Session& session) {
    requirePeriod(period);
    clickRunButton(session, buttonExpand, {period});
  };
}

Action prepareRun(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  const QString option = u"--tolerance"_s;
  const QString tolerance = QString::number(arguments.has(option) ? boxNumberOf(arguments, option) : 0);
  return [period, tolerance](Session& session) {
    requirePeriod(period);
    clickRunButton(session, buttonRun, {period, tolerance});
  };
}

Action prepareRefine(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  const QString count = QString::number(boxNumberOf(arguments, u"COUNT"_s));
  return [period, count](Session& session) {
    if (count == u"0"_s)
      throw MissingData(u"要精选的注数应大于 0，没有改动。"_s);
    clickRunButton(session, buttonRefine, {period, count}, u"精选号码完成！"_s);
  };
}

Action prepareCheck(const Arguments& arguments) {
  const QString period = QString::number(boxNumberOf(arguments, u"QIHAO"_s));
  return [period](Session& session) {
    clickRunButton(session, buttonCheck, {period}, u"开奖核对完成,结果请查看右边的操作提示！"_s);
  };
}

constexpr Command commands[] = {
    {u"expand QIHAO", u"button 第一步：初始化", u"status text", prepareExpand},
    {u"run QIHAO [--tolerance T]", u"button 第二步：过滤缩水", u"status text", prepareRun,
     u"a period without rows is no failure: the status text says so"},
    {u"refine QIHAO COUNT", u"button 精选号码", u"status text", prepareRefine},
    {u"check QIHAO", u"button 开奖核对", u"status text", prepareCheck},
};

}  // namespace

bool ResultFileAnswers::askExport(ExportSettings& settings) {
  settings = exported;
  return true;
}

bool ResultFileAnswers::askImport(ImportSettings& settings) {
  settings = imported;
  return true;
}

void clickRunButton(Session& session, RunButtonIndex button, const std::deque<QString>& typed,
                    const std::optional<QString>& success) {
  session.ports().typed = typed;
  session.program().driver.cmmTouZhu_Click(button);
  if (session.ports().refused || (success && session.ports().lastText != *success))
    throw Refused();
  printText(session.out(), session.ports().text());
}

std::span<const Command> runCommands() {
  return commands;
}

}  // namespace elevenfive
