// The one way by which draws reach, leave and change in 历史记录.
#pragma once

#include <QDate>

#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// Stores a draw under its period, in place of an older one without a question. A replaced row keeps its derived columns until
/// derivation runs; with refresh the period is derived at once.
void addHistoryRecord(Store& store, Qihao qihao, const QDate& date, const Draw& numbers, bool refresh, Events& events);

/// Deletes all draws.
void clearHistoryTable(Store& store, Events& events);

/// Deletes one period; false where the history does not hold it.
bool deleteHistoryRecord(Store& store, Qihao qihao);

/// How many draws the history holds.
int countHistory(Store& store);

}  // namespace elevenfive
