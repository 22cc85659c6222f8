#include "engine/historyfilters.h"

#include "engine/standardpass.h"
#include "model/calculators.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A figure of the row towards the draw before.
MakeAttribute againstDrawBefore(const QString& name, int (*figure)(const Draw& previous, const Draw& numbers)) {
  return [name, figure](const RunContext& run, Qihao period) -> Attribute {
    return [previous = requireDrawBefore(run.gConn, period, u"条件[%1]"_s.arg(name)), figure](const Draw& numbers) {
      return figure(previous, numbers);
    };
  };
}

/// How many of the last draws before a period hold each number, by number.
std::array<int, numberCount + 1> countHits(Store& store, Qihao period, int draws) {
  const Qihao from = getPrevQihao(store, period, draws);
  Statement rows = store.query("统计温度值",
                               "SELECT 号码1, 号码2, 号码3, 号码4, 号码5 FROM 历史记录"
                               " WHERE 期号 < ? AND 期号 >= ? ORDER BY 期号",
                               period, from);
  std::array<int, numberCount + 1> hits{};
  while (rows.next())
    for (int n = 1; n <= numberCount; ++n)
      for (int place = 0; place < drawSize; ++place)
        if (rows.integer(place) == n) {
          ++hits[static_cast<std::size_t>(n)];
          break;
        }
  return hits;
}

/// The sum of the hits of the five numbers.
MakeAttribute temperatureOver(int draws) {
  return [draws](const RunContext& run, Qihao period) -> Attribute {
    return [hits = countHits(run.gConn, period, draws)](const Draw& numbers) {
      int sum = 0;
      for (const int n : numbers)
        sum += hits[static_cast<std::size_t>(n)];
      return sum;
    };
  };
}

}  // namespace

int filter_Chongdie(const RunContext& run, Qihao period) {
  return runStandardPass(run, period,
                         {u"[重叠号]"_s, 7, 3470, 3480, againstDrawBefore(u"重叠号"_s, calc_CongDie),
                          HistoryWarning{HistoryStage::chongdie, u"重叠号"}});
}

int filter_Xiewei(const RunContext& run, Qihao period) {
  return runStandardPass(run, period,
                         {u"[斜位码]"_s, 8, 3490, 3500, againstDrawBefore(u"斜位码"_s, calc_XieWeiMa),
                          HistoryWarning{HistoryStage::xiewei, u"斜位码"}});
}

int filter_Wendu5(const RunContext& run, Qihao period) {
  return runStandardPass(
      run, period,
      {u"[温度值5]"_s, 46, 4160, 4179, temperatureOver(5), HistoryWarning{HistoryStage::wendu5, u"温度值5", true}});
}

int filter_Wendu10(const RunContext& run, Qihao period) {
  return runStandardPass(
      run, period,
      {u"[温度值10]"_s, 47, 4180, 4209, temperatureOver(10), HistoryWarning{HistoryStage::wendu10, u"温度值10", true}});
}

Draw requireDrawBefore(Store& store, Qihao period, const QString& needed) {
  if (const std::optional<Draw> draw = drawOf(store, getPrevQihao(store, period, 1)))
    return *draw;
  throw MissingData(
      u"历史记录中没有 %1 期之前的开奖号码，无法使用%2。请先导入或下载开奖号码。"_s.arg(period).arg(needed));
}

}  // namespace elevenfive
