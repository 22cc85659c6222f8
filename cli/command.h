// A command of the companion: one row of a table, from which both the check of the words and the help are made.
#pragma once

#include <QStringView>
#include <functional>
#include <span>

#include "cli/usage.h"

namespace elevenfive {

class Session;

/// What is left to do once the words are checked.
using Action = std::function<void(Session&)>;

struct Command {
  QStringView usage;   ///< the words; see cli/usage.h
  QStringView does;    ///< one line; commands in a row with the same line are told together
  QStringView prints;  ///< one line; empty: nothing but boxes
  /// Checks the words and gives the action; throws UsageError. Nothing is open yet.
  Action (*prepare)(const Arguments&);
  QStringView note = {};  ///< one more line of help; empty: none
};

// The groups of commands, in the order of the help.
std::span<const Command> dataCommands();
std::span<const Command> historyCommands();
std::span<const Command> webCommands();
std::span<const Command> catalogueCommands();
std::span<const Command> missCommands();
std::span<const Command> conditionCommands();
std::span<const Command> groupCommands();
std::span<const Command> setupCommands();
std::span<const Command> runCommands();
std::span<const Command> rowCommands();
std::span<const Command> userCommands();
std::span<const Command> packCommands();

}  // namespace elevenfive
