// Reading and writing the short texts of the screens: digits, numbers typed into boxes, lines, files.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include "model/numbers.h"

namespace elevenfive {

/// Every ASCII digit becomes its full-width form (０ to ９); all else stays.
QString toQuanjiaoDigits(const QString& text);

/// A count or period in full-width digits.
QString toQuanjiaoDigits(int number);

/// A number as it is shown: two digits.
QString twoDigits(int number);

/// Numbers shown one after the other: two digits each, joined by the separator.
QString drawText(const Draw& draw, const QString& separator);

/// The number that a text begins with: the longest leading decimal number, rounded half to even where it has a fraction; 0
/// where the text does not begin with a digit. Values above 2147483647 read as 0.
int leadingNumber(QStringView text);

/// What was typed into an input box, read as a number: the trimmed text's first nine characters, with a "0" put in front,
/// so an empty or cancelled box, a word and a negative number all give 0.
int inputNumber(const QString& typed);

/// True when every character of text occurs in allowed; true for an empty text.
bool isCharsIn(QStringView text, QStringView allowed);

/// True when ch occurs in allowed, compared by code.
bool hasChar(QChar ch, QStringView allowed);

/// How many lines a text has: its CR LF pairs plus one.
int CountStringLine(const QString& text);

/// Line n of a text without its line end, counted from 1; empty beyond the last.
QString ReadStringLine(const QString& text, int n);

/// The whole content of a file as it stands; throws FileError where it cannot be read.
QByteArray readFileText(const QString& path);

/// Bytes of a text file as text: UTF-8 with or without a byte order mark, else GB18030.
QString decodeText(const QByteArray& bytes);

/// The folder for working files: below the system's temporary folder, the user's own, mode 0700, made where it is missing.
/// Without a trailing separator; empty where it cannot be had, or where another user has put something in its place.
QString getTempDir();

}  // namespace elevenfive
