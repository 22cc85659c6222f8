// The derived columns of the draw history.
#pragma once

#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// Derives all attribute columns of the periods from..to out of their numbers and the draw before each. The first row read,
/// the period before from, serves only as the draw before; a row that is alone in the range is derived against no draw. So the
/// oldest row of the history keeps its columns empty, unless it is alone. progress may be null.
void calcHistoryAttr(Store& store, Qihao from, Qihao to, Progress* progress, Events& events);

}  // namespace elevenfive
