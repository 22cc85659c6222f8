// The draw history: one draw, text files, derivation.
#include <QString>

#include "cli/command.h"
#include "cli/session.h"
#include "cli/values.h"
#include "history/derivation.h"
#include "history/entryrow.h"
#include "history/historytable.h"
#include "history/textfiles.h"
#include "history/textlines.h"
#include "model/errors.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareAdd(const Arguments& arguments) {
  HistoryEntry entry{QString::number(numberOf(arguments, u"QIHAO"_s)), {}};
  for (int i = 1; i <= drawSize; ++i)
    entry.numbers.at(static_cast<std::size_t>(i - 1)) = QString::number(numberOf(arguments, u"N%1"_s.arg(i)));
  const QDate date = dateOf(arguments, u"--date"_s);
  const bool refresh = !arguments.has(u"--plain"_s);
  return [entry, date, refresh](Session& session) {
    const HistoryEntryCheck check = checkHistoryInput(entry);
    if (check.valid)
      addHistoryRecord(session.store(), check.qihao, date, check.numbers, refresh);
    else
      session.ports().critical(historyEntryRefusal());
  };
}

/// A period of 0 or below is none: as the button, nothing is done then and nothing told.
Action prepareDelete(const Arguments& arguments) {
  const Qihao qihao = numberOf(arguments, u"QIHAO"_s);
  return [qihao](Session& session) {
    if (qihao > 0 && !deleteToldRecord(session.store(), qihao, session.ports()))
      throw Refused();
  };
}

Action prepareClear(const Arguments&) {
  return [](Session& session) { clearAskedHistory(session.store(), session.ports(), session.ports()); };
}

/// The import itself tells whether it was done: a draw that cannot be derived is no reason to do it again.
void importHistory(Session& session, const QString& path) {
  CliPorts& ports = session.ports();
  CliLineProgress lines;
  importHistoryText(session.store(), path, true, {ports, lines, ports, ports});
  if (ports.lastText != u"导入完成!"_s)
    throw Refused();
  ports.refused = false;
}

Action prepareImport(const Arguments& arguments) {
  const QString path = pathOf(arguments, u"FILE"_s);
  const Answer clear = arguments.has(u"--clear"_s) ? Answer::yes : Answer::no;
  return [path, clear](Session& session) {
    CliPorts& ports = session.ports();
    // Both before the old draws go.
    requireReadable(path);
    if (TextLines(path, ports).count() == 0) {
      ports.plain(u"没有数据，无法导入！"_s);
      throw Refused();
    }
    ports.answers = {clear};
    clearBeforeImport(session.store(), ports, ports);
    importHistory(session, path);
  };
}

Action prepareExport(const Arguments& arguments) {
  const QString path = pathOf(arguments, u"FILE"_s);
  return [path](Session& session) {
    CliLineProgress lines;
    exportHistoryText(session.store(), path, lines, session.ports());
  };
}

Action prepareDerive(const Arguments& arguments) {
  const Qihao from = numberOf(arguments, u"FROM"_s);
  const Qihao to = numberOf(arguments, u"TO"_s);
  return
      [from, to](Session& session) { calcHistoryAttr(session.store(), from, to, &session.ports(), session.ports()); };
}

constexpr QStringView buttonsText = u"as the buttons, question answered Yes";
constexpr QStringView filesText = u"importHistoryText, exportHistoryText";

constexpr Command commands[] = {
    {u"history add QIHAO N1 N2 N3 N4 N5 [--date YYYY-MM-DD] [--plain]",
     u"the entry row's check, sort and addHistoryRecord; --plain: refresh off; date: today", u"", prepareAdd},
    {u"history delete QIHAO", buttonsText, u"", prepareDelete},
    {u"history clear", buttonsText, u"", prepareClear},
    {u"history import FILE [--clear]", filesText, u"", prepareImport, u"--clear: the old draws go first"},
    {u"history export FILE", filesText, u"", prepareExport},
    {u"history derive FROM TO", u"calcHistoryAttr", u"", prepareDerive},
};

}  // namespace

std::span<const Command> historyCommands() {
  return commands;
}

}  // namespace elevenfive
