// All commands: finding the one that a line of words means, and the help.
#pragma once

#include <QStringList>
#include <iosfwd>
#include <vector>

#include "cli/command.h"

namespace elevenfive {

/// All commands in the order of the help.
const std::vector<Command>& allCommands();

/// Wrong words of a line, with the commands whose usage would help.
struct WrongWords {
  QString message;
  std::vector<const Command*> meant;  ///< empty: any
};

/// The action of a line of words. Throws WrongWords.
Action prepareCommand(const QStringList& words);

/// The commands that begin with these words; empty where there is none.
std::vector<const Command*> commandsOf(const QStringList& words);

/// How the program itself is called: two lines.
void printCallUsage(std::ostream& out);

/// The help of these commands, by whole rows: commands that are told together come together.
void printHelp(std::ostream& out, const std::vector<const Command*>& commands);

/// The help of the batch.
void printBatchHelp(std::ostream& out);

/// Message and usage of wrong words.
void printWrongWords(std::ostream& err, const WrongWords& wrong);

}  // namespace elevenfive
