// How the program calls itself: in the caption of the window, in its boxes, and in the companion's lines.
#pragma once

#include <QStringView>

namespace elevenfive {

/// Caption of the main window without the user's name, and the title of boxes that bring none of their own.
inline constexpr QStringView gTitle = u"elevenfive 11选5";

/// The name under which the system keeps the program's files of a user; the same for the window and its companion.
inline constexpr QStringView programName = u"elevenfive";

}  // namespace elevenfive
