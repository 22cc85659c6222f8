// Keeps the wheel from choosing: on pages that write every choice at once, a turn of the wheel over a box or a tab would
// change a condition unasked, or what the next click changes.
#pragma once

class QWidget;

namespace elevenfive {

/// From now on the control takes no turn of the wheel; it goes to what lies below.
void passWheelOn(QWidget& control);

}  // namespace elevenfive
