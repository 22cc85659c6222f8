// The reader of range texts over any bytes: the cleaned form and its groups against a slow second reading, and the road back
// through the form's own text.
#include <cstddef>
#include <cstdint>

#include "conditions/rangegroups.h"
#include "fuzz/check.h"
#include "model/texts.h"
#include "tests/conditions/slowranges.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace elevenfive;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString typed = decodeText(bytes);
  const QString cleaned = cleanRangeText(typed);
  fuzz::demand(cleaned == slowClean(typed), "both readings clean alike");
  fuzz::demand(cleaned.startsWith(u'[') && cleaned.endsWith(u']'), "a cleaned text stands in brackets");
  fuzz::demand(!cleaned.contains(u',') && !cleaned.contains(u' '), "a cleaned text has no commas and blanks");

  const auto groups = rangeGroups(cleaned);
  fuzz::demand(groups == slowGroups(cleaned), "both readings find the same groups");
  fuzz::demand(static_cast<qsizetype>(groups.size()) == cleaned.count(u']'), "each closing bracket ends one group");
  for (const RangeGroup& group : groups) {
    fuzz::demand(group.first >= 0 && group.first <= largestRangeValue, "a start is in range");
    fuzz::demand(!group.last || (*group.last >= 0 && *group.last <= largestRangeValue), "an end is in range");
  }
  const QStringView emptyGroup = u"[]";
  if (!cleaned.contains(emptyGroup))
    fuzz::demand(cleanRangeText(shownRangeText(cleaned)) == cleaned, "what the form shows can be submitted again");
  return 0;
}
