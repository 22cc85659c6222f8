// The texts of the 25 tabs of TabStrip_TiaoJian.
#pragma once

#include <QString>

namespace elevenfive {

/// Caption of a tab, 1 to 25; empty for others.
QString tabCaption(int tab);

/// What the values of a tab mean, one sentence and an empty line; empty where the caption says it all.
QString tabHelp(int tab);

}  // namespace elevenfive
