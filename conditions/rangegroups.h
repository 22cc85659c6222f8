// Range texts as the quick setup takes them: "[20-39],[41-44]", "5", "【1－5】".
//
// cleanRangeText brings a text into the plain form, rangeGroups reads that form. Neither fails: what is left of a bad text
// shows in isRangeText, and groups that make no sense are read by rule (a start above its end stays so and allows nothing).
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace elevenfive {

/// The characters of a cleaned text.
inline constexpr QStringView rangeCharacters = u"0123456789[]-";

/// Values beyond this are read as this: far above any block, far below any overflow.
inline constexpr int largestRangeValue = 1'000'000'000;

/// Drops commas, plain blanks and "[]" (other white space stays, as a wrong character), turns full-width and Chinese brackets
/// and dashes into plain ones, and supplies the "[" at the start and the "]" at the end.
QString cleanRangeText(const QString& typed);

/// Whether a cleaned text holds only rangeCharacters.
bool isRangeText(const QString& cleaned);

/// One group: a single value, or all values from first to last.
struct RangeGroup {
  int first = 0;
  std::optional<int> last;
  bool operator==(const RangeGroup&) const = default;
};

/// The groups of a cleaned text in order; what follows the last "]" is no group.
std::vector<RangeGroup> rangeGroups(const QString& cleaned);

/// A cleaned text as the form shows it, with commas between its groups.
QString shownRangeText(const QString& cleaned);

}  // namespace elevenfive
