// One line of a history text: the period, then five numbers, with loose separators between them.
#pragma once

#include <QStringView>
#include <optional>

#include "model/numbers.h"

namespace elevenfive {

struct HistoryLine {
  Qihao qihao = 0;
  Draw numbers{};
};

/// Reads the lines of one text in their order.
///
/// Blanks, tabs, "-", "+", "，", "," and U+3000 separate, in any mix. The period is the number that the line begins with, at
/// most blanks and tabs before it; the
/// numbers are its last five fields of two characters, read from the right, and come out ascending. A number outside 1..11 is
/// passed over. Four different numbers are enough: 号码5 is then what the line before left there, 0 in the first line.
class HistoryLineReader final {
 public:
  /// The draw of the line; nothing for a line of fewer than 11 characters, one without a period from 1 to 2147483647 in front
  /// or with fewer than four different numbers. The line comes without its line end.
  std::optional<HistoryLine> read(QStringView line);

 private:
  Draw numbers_{};
};

}  // namespace elevenfive
