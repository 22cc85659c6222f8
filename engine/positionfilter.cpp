#include "engine/positionfilter.h"

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "engine/numbersets.h"
#include "engine/rowpass.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The switch of a place is this plus the place.
constexpr int codeBefore = 29;
constexpr int toleranceId = 3901;

/// What the places in use allow.
struct Places {
  std::array<NumberSet, drawSize> refused{};
  int active = 0;
};

Places readPlaces(Store& store) {
  Places places;
  for (int place = 1; place <= drawSize; ++place) {
    if (!conditionInUse(store, codeBefore + place))
      continue;
    ++places.active;
    const NumberSet allowed = readNumberSet(store, positionColumn(place));
    for (std::size_t n = 1; n < allowed.size(); ++n)
      places.refused[static_cast<std::size_t>(place - 1)][n] = !allowed[n];
  }
  return places;
}

/// How many places of the row hold a number that they do not allow.
int missesOf(const Places& places, const Candidate& row) {
  int misses = 0;
  for (std::size_t place = 0; place < row.numbers.size(); ++place)
    misses += places.refused[place][static_cast<std::size_t>(row.numbers[place])] ? 1 : 0;
  return misses;
}

}  // namespace

QString positionColumn(int place) {
  return u"第%1位"_s.arg(place);
}

int filter_Dingwei(const RunContext& run, Qihao period) {
  StageText text(run);
  const Places places = readPlaces(run.gConn);
  const int tolerance = conditionValue(run.gConn, toleranceId);
  if (places.active == 0)
    return 0;
  const QString label = u"[号码定位,容错值="_s + toQuanjiaoDigits(tolerance) + u']';
  if (tolerance >= places.active) {
    text.tell(label + u" <容错值太大无法过滤掉号码.>"_s);
    return 0;
  }
  const std::vector<Candidate> rows = readCandidates(run.gConn, period);
  if (rows.empty())
    return 0;
  LoopScope loop(run, static_cast<int>(rows.size()));
  text.tell(u"[号码定位]过滤正在进行中．．．"_s);
  const int passes = markRows(run, period, rows, loop, Marking::settled, [&places, tolerance](const Candidate& row) {
    return missesOf(places, row) <= tolerance;
  });
  if (!run.state.userStop)
    text.tell(label + u"过滤后余："_s + toQuanjiaoDigits(passes) + u" 注"_s);
  return passes;
}

}  // namespace elevenfive
