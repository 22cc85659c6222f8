// The user's words as values: whole numbers, lists of numbers, dates. A word that does not fit throws UsageError, before
// anything is opened or changed.
#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

#include "cli/usage.h"
#include "model/errors.h"
#include "model/numbers.h"

namespace elevenfive {

/// Wrong words: the call ends with status 2 and the usage, and has changed nothing.
class UsageError final : public Error {
 public:
  using Error::Error;
};

/// A decimal number of 32 bits, with a minus sign in front or none; nothing where the word is anything else.
std::optional<int> wholeNumber(const QString& word);

/// The argument as a whole number.
int numberOf(const Arguments& arguments, const QString& name);

/// The argument as a whole number of first..last.
int numberOf(const Arguments& arguments, const QString& name, int first, int last);

/// The argument as a list of different numbers of first..last, ascending: "1,5,11"; "-" is the empty list.
std::vector<int> listOf(const Arguments& arguments, const QString& name, int first, int last);

/// The argument as it is typed into an input box: a whole number, of which the box makes what it makes of any text.
QString typedNumber(const Arguments& arguments, const QString& name);

/// The argument as the period that a dialog's field takes: 0 to 2147483647, ten digits at most.
int fieldNumberOf(const Arguments& arguments, const QString& name);

/// The argument as the path of a file; an empty one is no path.
QString pathOf(const Arguments& arguments, const QString& name);

/// The argument as a file that can be read; throws FileError with one clear sentence where it is none.
void requireReadable(const QString& path);

/// The option as a date YYYY-MM-DD; today where it is not given.
QDate dateOf(const Arguments& arguments, const QString& name);

}  // namespace elevenfive
