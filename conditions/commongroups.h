// The common groups ("常用分组"): number sets by a rule, several of which look at the newest draws.
#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <optional>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// The text of ComboZDYcyfz at rest, and what stands between its blocks.
inline constexpr QStringView commonGroupsCaption = u"常用分组";
inline constexpr QStringView commonGroupsRule = u"-------";

/// Which numbers are in a group, by number; slot 0 unused.
using GroupMembers = std::array<bool, numberCount + 1>;

/// The entries of ComboZDYcyfz in order. Those that look at draws bear the period in front.
QStringList commonGroupEntries(Qihao nextPeriod);

/// The one of entries that a text means: the same text, the period in front of an entry not compared; nothing where there is
/// none.
std::optional<QString> entryMeant(const QStringList& entries, const QString& text);

/// What an entry stands for.
struct CommonGroup {
  GroupMembers members{};
  QString message;  ///< why the members are none: a draw that the rule needs is missing; else empty
};

/// The group of an entry against the newest draws of the history; nothing where the entry is a rule line or no known entry.
/// The period in front of an entry is not looked at.
std::optional<CommonGroup> commonGroup(Store& store, const QString& entry);

}  // namespace elevenfive
