// The one way by which draws reach, leave and change in 历史记录.
#pragma once

#include <QDate>
#include <functional>

#include "model/numbers.h"
#include "model/ports.h"
#include "model/store.h"

namespace elevenfive {

/// Stores draws one after the other with one prepared statement. A draw takes the place of an older one of its period without
/// a question; the replaced row keeps its derived columns until derivation runs.
class HistoryWriter final {
 public:
  explicit HistoryWriter(Store& store);
  void write(Qihao qihao, const QDate& date, const Draw& numbers);

 private:
  Statement upsert_;
};

/// Stores one draw as HistoryWriter does; with refresh its period is derived at once. A fault of the derivation leaves the
/// stored draw in place. Lets no event run in between: one row is derived before anybody could act on it.
void addHistoryRecord(Store& store, Qihao qihao, const QDate& date, const Draw& numbers, bool refresh);

/// Deletes all draws.
void clearHistoryTable(Store& store, Events& events);

/// Deletes one period; false where the history does not hold it. The period after it keeps its derived columns.
bool deleteHistoryRecord(Store& store, Qihao qihao);

/// How many draws the history holds.
int countHistory(Store& store);

/// Brings what shows the history into line with it; empty where nothing shows it.
using HistoryLayout = std::function<void()>;

/// Deletes one period, has the grid laid out, and then tells how that went. True where a row is gone.
bool deleteToldRecord(Store& store, Qihao qihao, Boxes& boxes, const HistoryLayout& layout = {});

/// The button cmm_scls: asks for a period and goes on as deleteToldRecord.
bool deleteAskedRecord(Store& store, Inputs& inputs, Boxes& boxes, const HistoryLayout& layout = {});

/// newBtnHistory_3: clears the history after a question, has the grid laid out, and clears once more what the yield between
/// may have brought in. True where the answer was yes.
bool clearAskedHistory(Store& store, Boxes& boxes, Events& events, const HistoryLayout& layout = {});

/// The question before an import: where there are draws, whether they are to go first. True where they were cleared.
bool clearBeforeImport(Store& store, Boxes& boxes, Events& events);

}  // namespace elevenfive
