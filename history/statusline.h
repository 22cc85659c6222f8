// What the StatusBar tells of the history: which period comes next, and whether the history reaches up to today.
#pragma once

#include <QDate>
#include <QString>

#include "history/statuspanels.h"
#include "model/numbers.h"

namespace elevenfive {

class Store;

/// Panel 1: whether draws are missing, by the date of the next draw.
QString historyStateText(const QDate& nextDraw, const QDate& today);

/// Panel 3: the next period, its date and today's.
QString nextQihaoText(Qihao next, const QDate& nextDraw, const QDate& today);

/// Writes panels 1 and 3. The game draws every day, so the next draw is today's.
void updateStatusLine(Store& store, StatusPanels& panels, const QDate& today);

}  // namespace elevenfive
