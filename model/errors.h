// The program's own faults: one family, each carrying a clear sentence for the person at the screen.
//
// Expected outcomes (a line that does not parse, a refused entry) are values, never exceptions. What is thrown ends the
// operation; what was written until then stays consistent, and the front end shows message() in one critical box.
#pragma once

#include <QString>
#include <stdexcept>

namespace elevenfive {

/// A fault with a sentence in the user's language. what() holds the same text in UTF-8.
class Error : public std::runtime_error {
 public:
  explicit Error(const QString& message) : std::runtime_error(message.toStdString()), message_(message) {}
  [[nodiscard]] const QString& message() const noexcept { return message_; }

 private:
  QString message_;
};

/// The store refused a statement or could not be opened. The message names the purpose of the statement.
class StoreError final : public Error {
 public:
  using Error::Error;
};

/// A number outside 1..11 stands where a number of a draw must stand.
class NumberFault final : public Error {
 public:
  using Error::Error;
};

/// A draw that an operation needs is not in the history, or a row that must be there is missing.
class MissingData final : public Error {
 public:
  using Error::Error;
};

/// A file could not be read or written.
class FileError final : public Error {
 public:
  using Error::Error;
};

/// A data file is there but what it holds is not usable: cut off, no pack, no sound database. The message is the reason, a
/// phrase without a full stop.
class DamagedData final : public Error {
 public:
  using Error::Error;
};

/// Another instance of the program has the data open.
class AlreadyRunning final : public Error {
 public:
  using Error::Error;
};

}  // namespace elevenfive
