#include "engine/rowpass.h"

#include "model/store.h"

namespace elevenfive {

int markRows(const RunContext& run, Qihao period, const std::vector<Candidate>& rows, LoopScope& loop, Marking marking,
             const RowTest& passes) {
  const bool counted = marking == Marking::counted;
  const bool deletesFailed = !counted || run.state.rongcuoValue <= 0;
  StoreTransaction transaction(run.gConn, OnFault::undo);
  CandidateWriter writer(run.gConn);
  int passed = 0;
  for (const Candidate& row : rows) {
    requireNumbers(row);
    if (passes(row)) {
      writer.pass(row, counted ? row.mark + 1 : 1, ++passed);
    } else if (deletesFailed) {
      writer.fail(row);
    }
    if (!loop.nextRow())
      break;
  }
  deleteMarkedCandidates(run.gConn, period);
  transaction.commit();
  return passed;
}

}  // namespace elevenfive
