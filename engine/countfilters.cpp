#include "engine/countfilters.h"

#include "engine/numbersets.h"
#include "engine/standardpass.h"
#include "model/store.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// How many numbers of a row the column holds, or does not hold.
MakeAttribute countOf(const QString& column, bool held = true) {
  return [column, held](const RunContext& run, Qihao) -> Attribute {
    return [set = readNumberSet(run.gConn, column), held](const Draw& numbers) {
      const int count = countIn(set, numbers);
      return held ? count : drawSize - count;
    };
  };
}

/// Values of one zone or group: ten rows.
constexpr int stretch = 10;

/// Codes and values of the custom groups lie in two stretches.
struct GroupStretch {
  int lastGroup;
  int codeBefore;   ///< the code of a group is this plus its number
  int valueBefore;  ///< its first value is this plus ten times its number
};

constexpr GroupStretch groupStretches[] = {{10, 19, 3790}, {20, 40, 4390}};

const GroupStretch& stretchOf(int group) {
  return group <= groupStretches[0].lastGroup ? groupStretches[0] : groupStretches[1];
}

QString aliasOf(Store& store, int group) {
  Statement rows = store.query("读取自定义别名", "SELECT 别名 FROM 自定义别名 WHERE 序号 = ?", group);
  return rows.next() ? rows.text(0) : QString();
}

}  // namespace

int filter_Daxiao(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[大数个数]"_s, 12, 3660, 3669, countOf(u"大数"_s)});
}

int filter_Xiaoshu(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[小数个数]"_s, 13, 3670, 3679, countOf(u"大数"_s, false)});
}

int filter_GaoWei(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[高尾码个数]"_s, 14, 3680, 3689, countOf(u"高尾码"_s)});
}

int filter_DiWei(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[低尾码个数]"_s, 15, 3690, 3699, countOf(u"高尾码"_s, false)});
}

int filter_Qujian(const RunContext& run, Qihao period, int k) {
  if (run.state.userStop)
    return 0;
  const QString column = u"区间%1"_s.arg(k);
  const int first = 3690 + stretch * k;
  return runStandardPass(run, period, {u"[%1]"_s.arg(column), 15 + k, first, first + stretch - 1, countOf(column)});
}

int filter_Zidingyi(const RunContext& run, Qihao period, int k) {
  if (run.state.userStop)
    return 0;
  const GroupStretch& group = stretchOf(k);
  const int first = group.valueBefore + stretch * k;
  return runStandardPass(run, period,
                         {u"[%1]"_s.arg(aliasOf(run.gConn, k)), group.codeBefore + k, first, first + stretch - 1,
                          countOf(u"自定义组%1"_s.arg(k))});
}

}  // namespace elevenfive
