// One line of a result file: a combination with what stands in front of it.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>

#include "model/numbers.h"

namespace elevenfive {

/// What an exported line holds, in this order, and how its numbers are parted.
struct ExportSettings {
  bool xuhao = false;      ///< 序号, filled up with blanks to a width of four
  bool qihao = false;      ///< 期号 and one blank
  bool haoma = true;       ///< the five numbers, two digits each
  bool fengehang = false;  ///< an empty line behind every fifth row
  QString separator = QStringLiteral(",");
  Qihao period = 0;  ///< the period whose rows go out
};

/// The line of a row without its line end; blanks at its end are cut off. A "#" in the separator comes out as a blank.
QString exportLine(const ExportSettings& settings, int xuhao, Qihao qihao, const Draw& numbers);

/// What stands on the lines of a file that comes in, by the index of its option.
enum class ImportFormat {
  haoma = 0,       ///< 只有号码
  qihaoHaoma = 1,  ///< 期号＋号码
  xuhaoHaoma = 2,  ///< 序号＋号码
};

/// The five numbers of a line, in its order and as they stand there; nothing where the line is too short for its format or
/// holds fewer than five. Digits form numbers, all else separates them, so the field in front that a format drops is the first
/// run of digits: "11031510期 01 ...", "3、01 ..." and "3:01 ..." lose no number. A line of the format with periods must begin with a
/// digit. Blanks around a line do not count for its length, other separators do. A line with a number above 255, which no row can
/// hold, gives nothing either.
std::optional<Draw> importedNumbers(QStringView line, ImportFormat format);

}  // namespace elevenfive
