// The words of one line of a batch.
//
// Blanks part words. "..." and '...' keep blanks, and a quoted stretch may stand inside a word. Inside "..." a backslash
// keeps a quotation mark or a backslash as it stands; everywhere else it is a character like any other. '' is an empty word.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace elevenfive {

/// The words of a line, nothing where a quotation is not closed.
std::optional<QStringList> splitWords(const QString& line);

/// Whether a line says nothing: it is blank or begins with "#".
bool isPassedOver(const QString& line);

}  // namespace elevenfive
