// Miss figures.
#include <QString>

#include "cli/command.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/values.h"
#include "history/miss.h"
#include "history/missmessage.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareMiss(const Arguments& arguments) {
  const Qihao qihao = numberOf(arguments, u"QIHAO"_s);
  return [qihao](Session& session) {
    const MissLabels labels = calcYilou(session.store(), qihao, true, session.program().workspace.yilouNow,
                                        &session.ports(), session.ports());
    printRow(session.out(), {u"号码"_s, u"longest"_s, u"average"_s, u"current"_s, u"hits"_s, u"last"_s});
    for (int n = 1; n <= numberCount; ++n) {
      const MissFigures& figures = labels.numbers.at(static_cast<std::size_t>(n));
      QStringList cells;
      for (const int figure : {n, figures.longest, figures.average, figures.current, figures.hits, figures.lastGap})
        cells << QString::number(figure);
      printRow(session.out(), cells);
    }
  };
}

Action prepareMissMessage(const Arguments& arguments) {
  const Qihao qihao = numberOf(arguments, u"QIHAO"_s);
  const int number = numberOf(arguments, u"N"_s, 1, numberCount);
  return [qihao, number](Session& session) {
    const MissLabels labels = calcYilou(session.store(), qihao, true, session.program().workspace.yilouNow,
                                        &session.ports(), session.ports());
    printText(session.out(), missMessage(number, qihao, labels.numbers.at(static_cast<std::size_t>(number))));
  };
}

Action prepareMissSum(const Arguments& arguments) {
  const Qihao from = numberOf(arguments, u"FROM"_s);
  const Qihao to = numberOf(arguments, u"TO"_s);
  return [from, to](Session& session) {
    calcYilouSum(session.store(), from, to, session.program().workspace.yilouNow, &session.ports(), session.ports());
  };
}

constexpr Command commands[] = {
    {u"miss QIHAO", u"calcYilou with labels", u"号码 longest average current hits last", prepareMiss},
    {u"miss QIHAO N", u"the message of a click on number N", u"text", prepareMissMessage},
    {u"misssum FROM TO", u"calcYilouSum", u"", prepareMissSum},
};

}  // namespace

std::span<const Command> missCommands() {
  return commands;
}

}  // namespace elevenfive
