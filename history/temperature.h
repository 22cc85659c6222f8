// 温度: how often the numbers of a draw had come shortly before it.
//
// The temperature of a draw over n periods is the sum, over its five numbers, of how many of the n draws before it held that
// number; the draw itself does not count, and where fewer lie before it, all of them count. At most 5 n.
#pragma once

#include "history/statuspanels.h"
#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// The temperature of the draw of period q; 0 where the history does not hold it. Throws NumberFault where a number of the
/// draw lies outside 1..11.
int calc_WenDu(Store& store, Qihao q, int n);

/// Writes 温度值5 and 温度值10 of the periods from..to. The first row read, the period before from, is passed over, so a range
/// of the history's first row alone writes nothing. progress counts rows; it and panels may be null.
void calcWenDuRange(Store& store, Qihao from, Qihao to, Progress* progress, Events& events,
                    StatusPanels* panels = nullptr);

}  // namespace elevenfive
