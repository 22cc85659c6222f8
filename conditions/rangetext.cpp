#include "conditions/rangetext.h"

#include <QStringList>
#include <optional>

#include "conditions/conditionrows.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString runText(int start, int end) {
  return start == end ? u"[%1]"_s.arg(start) : u"[%1-%2]"_s.arg(start).arg(end);
}

}  // namespace

QString rangeText(Store& store, int first, int last) {
  QStringList runs;
  std::optional<int> runStart;
  int lastOffset = 0;
  for (const BlockRow row : blockRows(store, first, last)) {
    lastOffset = row.offset;
    if (row.value > 0) {
      if (!runStart)
        runStart = row.offset;
    } else if (runStart) {
      runs << runText(*runStart, row.offset - 1);
      runStart.reset();
    }
  }
  if (runStart)
    runs << runText(*runStart, lastOffset);
  return runs.join(u" , "_s);
}

}  // namespace elevenfive
