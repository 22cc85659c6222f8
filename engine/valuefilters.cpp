#include "engine/valuefilters.h"

#include <algorithm>

#include "engine/standardpass.h"
#include "model/calculators.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// The sum over the five numbers of what each counts.
template <int (*share)(int number)>
int sumOf(const Draw& numbers) {
  int sum = 0;
  for (const int n : numbers)
    sum += share(n);
  return sum;
}

int whole(int n) {
  return n;
}
int oddOne(int n) {
  return n % 2;
}
int evenOne(int n) {
  return 1 - n % 2;
}
int oddValue(int n) {
  return n % 2 == 1 ? n : 0;
}
int evenValue(int n) {
  return n % 2 == 0 ? n : 0;
}
int tensDigit(int n) {
  return n / 10;
}
int unitsDigit(int n) {
  return n % 10;
}

/// Rows from a file may stand in any order; the gap is one of the rising order all the same.
int widestGap(const Draw& numbers) {
  Draw rising = numbers;
  std::sort(rising.begin(), rising.end());
  return calc_JianJuMax(rising);
}

}  // namespace

int filter_Hezhi(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[ 和 值 ]"_s, 1, 1000, 1170, rowOnly(sumOf<whole>)});
}

int filter_QishuHezhi(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[奇数和值]"_s, 2, 2000, 2170, rowOnly(sumOf<oddValue>)});
}

int filter_OushuHezhi(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[偶数和值]"_s, 3, 3000, 3170, rowOnly(sumOf<evenValue>)});
}

int filter_TouHezhi(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[头数和值]"_s, 43, 4080, 4099, rowOnly(sumOf<tensDigit>)});
}

int filter_WeiHezhi(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[尾数和值]"_s, 44, 4100, 4159, rowOnly(sumOf<unitsDigit>)});
}

int filter_QishuGeshu(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[奇数个数]"_s, 10, 3640, 3649, rowOnly(sumOf<oddOne>)});
}

int filter_OushuGeshu(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[偶数个数]"_s, 11, 3650, 3659, rowOnly(sumOf<evenOne>)});
}

int filter_Kuadu(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[ 跨 度 ]"_s, 4, 3300, 3340, rowOnly(calc_KuaDu)});
}

int filter_JianjuMax(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[最大间距]"_s, 5, 3400, 3440, rowOnly(widestGap)});
}

int filter_Lianhao(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[连号]"_s, 6, 3450, 3460, rowOnly(calc_LianHaoMax)});
}

int filter_AC(const RunContext& run, Qihao period) {
  return runStandardPass(run, period, {u"[AC值]"_s, 9, 3600, 3630, rowOnly(calc_AC)});
}

}  // namespace elevenfive
