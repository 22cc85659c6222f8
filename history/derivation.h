// The derived columns of the draw history.
//
// A pass goes through its range in ascending order, yields to events after each row and keeps what it has written when a fault
// ends it. It takes no guard of its own: whoever calls it disables what could start another one.
#pragma once

#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// Derives all attribute columns of the periods from..to out of their numbers and the draw before each, and their
/// temperatures as calcWenDuRange does. The first row read, the period before from, serves only as the draw before; a row that is alone in the range
/// is derived against no draw, without temperatures. So the oldest row of the history keeps its columns empty, unless it is alone. Without a row
/// nothing happens. progress (ProgressBar_TuBiao) runs up to the period `to` and may be null, panels too.
/// Throws NumberFault at the first row with a number outside 1..11; the rows before it keep what was derived, and no row of the
/// range gets new temperatures.
void calcHistoryAttr(Store& store, Qihao from, Qihao to, Progress* progress, Events& events,
                     StatusPanels* panels = nullptr);

/// Counts the numbers of each zone again for the periods from..to, after the zones have changed, and writes nothing but
/// 区间1..区间4. False where the range has no row.
bool recalcQujian(Store& store, Qihao from, Qihao to, Boxes& boxes, Progress& progress, Events& events);

}  // namespace elevenfive
