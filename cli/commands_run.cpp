// Expansion and run.
#include <QString>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/runclick.h"
#include "cli/session.h"
#include "cli/values.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareExpand(const Arguments& arguments) {
  const QString period = typedNumber(arguments, u"QIHAO"_s);
  return [period](Session& session) { clickRunButton(session, buttonExpand, {period}); };
}

Action prepareRun(const Arguments& arguments) {
  const QString period = typedNumber(arguments, u"QIHAO"_s);
  const QString option = u"--tolerance"_s;
  const QString tolerance = arguments.has(option) ? typedNumber(arguments, option) : u"0"_s;
  return [period, tolerance](Session& session) { clickRunButton(session, buttonRun, {period, tolerance}); };
}

Action prepareRefine(const Arguments& arguments) {
  const QString period = typedNumber(arguments, u"QIHAO"_s);
  const QString count = typedNumber(arguments, u"COUNT"_s);
  // A count of 0 asks for nothing, and the button then says nothing either.
  const std::optional<QString> success =
      inputNumber(count) > 0 ? std::optional<QString>(u"精选号码完成！"_s) : std::nullopt;
  return [period, count, success](Session& session) {
    clickRunButton(session, buttonRefine, {period, count}, success);
  };
}

Action prepareCheck(const Arguments& arguments) {
  const QString period = typedNumber(arguments, u"QIHAO"_s);
  return [period](Session& session) {
    clickRunButton(session, buttonCheck, {period}, u"开奖核对完成,结果请查看右边的操作提示！"_s);
  };
}

constexpr Command commands[] = {
    {u"expand QIHAO", u"button 第一步：初始化", u"status text", prepareExpand, u"with 0 日志表 is emptied alone"},
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
  settings.format = imported.format;
  if (imported.period > 0)  // else the period that the dialog offers stands
    settings.period = imported.period;
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
