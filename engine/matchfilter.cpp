#include "engine/matchfilter.h"

#include <algorithm>
#include <vector>

#include "engine/candidates.h"
#include "engine/numbersets.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

struct MatchSettings {
  bool inUse = false;
  int window = 0;     ///< how many draws before the period are compared
  int threshold = 0;  ///< from how many common numbers on a row goes
};

MatchSettings readSettings(Store& store) {
  Statement rows = store.query("读取历史数据过滤", "SELECT 使用状态, 最小值, 匹配值 FROM 历史数据过滤");
  if (!rows.next())
    return {};
  return {rows.integer(0) == 1, rows.integer(1), rows.integer(2)};
}

/// The draws of the window, the oldest first. A window of no draw at all holds none.
std::vector<NumberSet> readWindow(Store& store, Qihao period, int window) {
  std::vector<NumberSet> draws;
  if (window < 1)
    return draws;
  Statement rows = store.query("读取历史开奖号码",
                               "SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录"
                               " WHERE 期号 >= ? AND 期号 <= ? ORDER BY 期号",
                               getPrevQihao(store, period, window), getPrevQihao(store, period, 1));
  while (rows.next()) {
    NumberSet& draw = draws.emplace_back();
    for (int place = 0; place < drawSize; ++place)
      if (isNumber(rows.integer(place)))
        draw[static_cast<std::size_t>(rows.integer(place))] = true;
  }
  return draws;
}

/// A row as it stands in the table, and what the draws compared so far make of it.
struct Compared {
  Candidate stored;
  int mark;
  int rank;
};

/// The rows of a period while draw after draw is compared. They stand in memory and are written once at the end: only what
/// the last draw left is ever seen.
class MatchPass final {
 public:
  MatchPass(const RunContext& run, Qihao period) : run_(run) {
    for (const Candidate& row : readCandidates(run.gConn, period))
      rows_.push_back({row, row.mark, row.xuhao});
  }

  [[nodiscard]] int passes() const { return passes_; }

  /// Compares the rows with one draw, until the end or a stop; failed rows are out of the next comparison.
  void compare(const NumberSet& draw, int threshold, LoopScope& loop) {
    if (rows_.empty())
      return;
    loop.restart(static_cast<int>(rows_.size()));
    passes_ = 0;
    for (Compared& row : rows_) {
      requireNumbers(row.stored);
      if (countIn(draw, row.stored.numbers) < threshold) {
        row.mark = 1;
        row.rank = ++passes_;
      } else {
        row.mark = deletedMark;
      }
      if (!loop.nextRowUncounted())
        break;
    }
    const auto failed =
        std::stable_partition(rows_.begin(), rows_.end(), [](const Compared& row) { return row.mark >= 0; });
    gone_.insert(gone_.end(), failed, rows_.end());
    rows_.erase(failed, rows_.end());
  }

  void write() {
    StoreTransaction transaction(run_.gConn, OnFault::undo);
    CandidateWriter writer(run_.gConn);
    SparseYield pace(run_.ports.events);
    for (const Compared& row : rows_) {
      writer.pass(row.stored, row.mark, row.rank);
      pace.row();
    }
    for (const Compared& row : gone_) {
      writer.remove(row.stored);
      pace.row();
    }
    transaction.commit();
  }

 private:
  RunContext run_;
  std::vector<Compared> rows_;
  std::vector<Compared> gone_;
  int passes_ = 0;
};

}  // namespace

int filter_Lishi(const RunContext& run, Qihao period) {
  StageText text(run);
  const MatchSettings settings = readSettings(run.gConn);
  if (!settings.inUse)
    return 0;
  LoopScope loop(run);
  const std::vector<NumberSet> window = readWindow(run.gConn, period, settings.window);
  MatchPass pass(run, period);
  if (!window.empty()) {
    text.tell(u"[历史数据过滤]过滤正进行中．．．"_s);
    for (const NumberSet& draw : window) {
      pass.compare(draw, settings.threshold, loop);
      loop.advance();
      if (run.state.userStop)
        break;
    }
    pass.write();
  }
  if (!run.state.userStop)
    text.tell(u"[历史数据过滤]过滤后余："_s + toQuanjiaoDigits(pass.passes()) + u" 注"_s);
  return pass.passes();
}

}  // namespace elevenfive
