// What the companion writes: texts and tables, UTF-8 with LF.
//
// A table is a header line and a line a row, cells parted by tabs. NULL is an empty cell, a date YYYY-MM-DD with HH:MM:SS
// behind it where there is a time, any other REAL the shortest text that reads back as the same number. A tab, a line end or
// another control character inside a cell is printed as a blank, so that a row stays a line.
#pragma once

#include <QString>
#include <QStringList>
#include <iosfwd>

struct sqlite3_stmt;

namespace elevenfive {

/// A text as it stands, CR LF as LF, with a line end behind it where it has none of its own; nothing for an empty text.
void printText(std::ostream& out, const QString& text);

/// One line of a table.
void printRow(std::ostream& out, const QStringList& cells);

/// The header line of a prepared statement.
void printHeader(std::ostream& out, sqlite3_stmt* statement);

/// The row at which a statement stands.
void printCurrentRow(std::ostream& out, sqlite3_stmt* statement);

}  // namespace elevenfive
