// What a click on one of the eleven numbers of the miss view tells of it.
#pragma once

#include <QString>

#include "model/numbers.h"

namespace elevenfive {

struct MissFigures;

/// The figures of a number as of a period, as the text of a message box, lines ended by CR LF. A number that came less than
/// three times has too few gaps to speak of: only its hits are told.
QString missMessage(int number, Qihao q, const MissFigures& figures);

}  // namespace elevenfive
