#include "cli/commandtable.h"

#include <algorithm>

#include "cli/output.h"
#include "cli/values.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A call with these words behind the global options.
QString callText(QStringView words) {
  return u"elevenfive-cli [--folder DIR] [--temp DIR] "_s + words.toString();
}

QString noSuchUse(const QString& command) {
  return u"命令 %1 没有这种用法。"_s.arg(command);
}

/// Whether two commands share a row of the help.
bool sharesRow(const Command& one, const Command& other) {
  return one.does == other.does && one.prints == other.prints;
}

/// The commands that share the row of this one, itself among them, in the order of the help.
std::vector<const Command*> rowOf(const Command& command) {
  std::vector<const Command*> row;
  for (const Command& other : allCommands())
    if (sharesRow(command, other))
      row.push_back(&other);
  return row;
}

struct Candidate {
  const Command* command;
  Usage::Match match;
};

/// The commands whose very words the line does not contradict, as far as those that share most of them with it.
std::vector<Candidate> nearest(const QStringList& words) {
  std::vector<Candidate> candidates;
  int most = 1;
  for (const Command& command : allCommands()) {
    Usage::Match match = Usage(command.usage).match(words);
    if (match.contradicts || match.literals < most)
      continue;
    if (match.literals > most)
      candidates.clear();
    most = match.literals;
    candidates.push_back({&command, std::move(match)});
  }
  return candidates;
}

/// What to say of words that fit none of these ways: the fault on which they agree. Where some of them know the options that
/// were typed, one of these was meant. A way that lacks a word of its own has no say: "history" may be any of its rows.
QString faultOf(const std::vector<Candidate>& ways, const QString& command) {
  const bool someKnow =
      std::any_of(ways.begin(), ways.end(), [](const Candidate& way) { return way.match.knowsOptions; });
  QStringList faults;
  for (const Candidate& way : ways)
    if (!way.match.lacksLiteral && (way.match.knowsOptions || !someKnow))
      faults << way.match.fault;
  faults.removeDuplicates();
  return faults.size() == 1 ? faults.first() : noSuchUse(command);
}

std::vector<const Command*> commandsNamed(const QString& firstWord) {
  std::vector<const Command*> found;
  for (const Command& command : allCommands())
    if (command.usage.toString().section(u' ', 0, 0) == firstWord)
      found.push_back(&command);
  return found;
}

void printRowHelp(std::ostream& out, const std::vector<const Command*>& row) {
  for (const Command* command : row)
    printText(out, command->usage.toString());
  printText(out, u"    "_s + row.front()->does.toString());
  if (!row.front()->prints.isEmpty())
    printText(out, u"    prints: "_s + row.front()->prints.toString());
  for (const Command* command : row)
    if (!command->note.isEmpty())
      printText(out, u"    "_s + command->note.toString());
}

}  // namespace

const std::vector<Command>& allCommands() {
  static const std::vector<Command> commands = [] {
    std::vector<Command> all;
    for (const std::span<const Command> group :
         {dataCommands(), historyCommands(), webCommands(), catalogueCommands(), missCommands(), conditionCommands(),
          groupCommands(), setupCommands(), runCommands(), rowCommands(), userCommands(), packCommands()})
      all.insert(all.end(), group.begin(), group.end());
    return all;
  }();
  return commands;
}

Action prepareCommand(const QStringList& words) {
  const std::vector<Candidate> candidates = nearest(words);
  if (candidates.empty()) {
    const std::vector<const Command*> named = commandsNamed(words.value(0));
    throw WrongWords{named.empty() ? u"没有这个命令：“%1”。"_s.arg(words.value(0).left(40)) : noSuchUse(words.first()),
                     named};
  }
  const auto fitting =
      std::find_if(candidates.begin(), candidates.end(), [](const Candidate& c) { return c.match.fault.isEmpty(); });
  if (fitting != candidates.end()) {
    try {
      return fitting->command->prepare(fitting->match.arguments);
    } catch (const UsageError& fault) {
      throw WrongWords{fault.message(), {fitting->command}};
    }
  }
  WrongWords wrong{faultOf(candidates, words.first()), {}};
  for (const Candidate& candidate : candidates)
    wrong.meant.push_back(candidate.command);
  throw wrong;
}

std::vector<const Command*> commandsOf(const QStringList& words) {
  std::vector<const Command*> found;
  for (const Candidate& candidate : nearest(words))
    found.push_back(candidate.command);
  return found.empty() ? commandsNamed(words.value(0)) : found;
}

void printCallUsage(std::ostream& out) {
  printText(out, u"usage: "_s + callText(u"COMMAND [ARGUMENTS]"));
  printText(out, u"       "_s + callText(u"batch [FILE | -]"));
}

void printBatchHelp(std::ostream& out) {
  printText(out, u"batch [FILE | -]"_s);
  printText(out,
            u"    reads one command a line with the same words and runs them in one open session;"
            " stops at the first line that fails"_s);
  printText(out, u"    prints: > LINE before each command's own output"_s);
}

void printHelp(std::ostream& out, const std::vector<const Command*>& commands) {
  const Command* before = nullptr;
  for (const Command* command : commands) {
    if (before == nullptr || !sharesRow(*before, *command))
      printRowHelp(out, rowOf(*command));
    before = command;
  }
}

void printWrongWords(std::ostream& err, const WrongWords& wrong) {
  printText(err, wrong.message);
  if (wrong.meant.empty()) {
    printCallUsage(err);
    printText(err, u"       elevenfive-cli --help"_s);
    return;
  }
  QString lead = u"usage: "_s;
  for (const Command* command : wrong.meant) {
    printText(err, lead + callText(command->usage));
    lead = u"       "_s;
  }
}

}  // namespace elevenfive
