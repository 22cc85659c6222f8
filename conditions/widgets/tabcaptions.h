// The texts of the 25 tabs of TabStrip_TiaoJian.
#pragma once

#include <QString>

namespace elevenfive {

/// Caption of a tab, 1 to 25; empty for others.
QString tabCaption(int tab);

/// What the values of a tab mean, one sentence and an empty line; empty where the caption says it all.
QString tabHelp(int tab);

/// Whether a tab is meant by what was typed into the search: part of its caption or of what it offers, or the initials of the
/// caption in pinyin. Blanks and case count for nothing; an empty text means every tab.
bool tabMatches(int tab, const QString& typed);

}  // namespace elevenfive
