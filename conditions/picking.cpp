#include "conditions/picking.h"

#include "conditions/conditionrows.h"
#include "model/errors.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int notPicked = 0;
constexpr int tuo = 1;
constexpr int dan = 2;

bool isBack(int number) {
  return number > backFieldOffset;
}

/// The number that a button stands for, whichever its field.
int numberOf(int button) {
  return isBack(button) ? button - backFieldOffset : button;
}

}  // namespace

void NumberPicking::clickNumber(int number, int mode) {
  if (!isNumber(numberOf(number)))
    throw MissingData(u"没有号码 %1 的选号按钮。"_s.arg(number));
  const std::optional<int> before = readConditionValue(gConn_, number);
  if (!before)
    throw MissingData(u"过滤条件中缺少号码 %1 的记录，请还原或重新安装数据文件。"_s.arg(number));
  if (*before == notPicked && view_.struckThrough(number) && !confirmLowChance(number))
    return;
  int after = mode;
  if (*before == mode)
    after = notPicked;
  else if (*before != notPicked && !confirmChange(number, mode))
    after = *before;
  store(number, after);
  driver_.showXuanhaoTip();
  if (after == dan && tooManyDan(isBack(number))) {
    store(number, *before);
    driver_.showXuanhaoTip();
  }
}

bool NumberPicking::confirmLowChance(int number) {
  return boxes_.ask(u"根据概率统计,号码 "_s + toQuanjiaoDigits(twoDigits(numberOf(number))) + u" 在"_s +
                    toQuanjiaoDigits(view_.markedPeriod()) +
                    u"期中开出的机率很低！确实想要选取这个号码吗？\r\n\r\n"
                    u"[注意,此概率算法以历史开奖记录为依据来分析,请确保历史记录的完整及正确！]"_s);
}

bool NumberPicking::confirmChange(int number, int mode) {
  const QString head = u"号码："_s + twoDigits(numberOf(number));
  return boxes_.ask(head + (mode == dan ? u"之前已经被设为拖码，现在要把它改为胆码吗？"_s
                                        : u"之前已经被设为胆码，现在要把它改为拖码吗？"_s));
}

bool NumberPicking::tooManyDan(bool back) {
  const PickCounts counts = countPicks();
  if ((back ? counts.backDan : counts.frontDan) <= (back ? backDanLimit : frontDanLimit))
    return false;
  boxes_.information((back ? u"后区“胆码”最多只设 "_s : u"“胆码”最多只设 "_s) +
                     toQuanjiaoDigits(back ? backDanLimit : frontDanLimit) + u" 个."_s);
  return true;
}

void NumberPicking::store(int number, int value) {
  view_.paintPick(number, value);
  setConditionValue(gConn_, number, value);
}

void NumberPicking::paintField(int firstNumber, int value) {
  for (int n = 0; n < numberCount; ++n)
    view_.paintPick(firstNumber + n, value);
}

void NumberPicking::selectAllTuo() {
  gConn_.execute("选取全部号码", "UPDATE 过滤条件 SET VALUE = ? WHERE ID <= ?", tuo, numberCount);
  paintField(1, tuo);
  driver_.showXuanhaoTip();
}

void NumberPicking::clearFront() {
  gConn_.execute("清空号码", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID < 40");
  paintField(1, notPicked);
  driver_.showXuanhaoTip();
}

void NumberPicking::clearBack() {
  gConn_.execute("清空后区号码", "UPDATE 过滤条件 SET VALUE = 0 WHERE ID > 100 AND ID < 200");
  paintField(backFieldOffset + 1, notPicked);
  driver_.showXuanhaoTip();
}

void NumberPicking::paintPickButtons() {
  Statement rows = gConn_.query("读取号码", "SELECT ID, VALUE FROM 过滤条件 WHERE ID < 200 ORDER BY ID");
  while (rows.next())
    if (isNumber(numberOf(rows.integer(0))))
      view_.paintPick(rows.integer(0), rows.integer(1));
}

NumberPicking::PickCounts NumberPicking::countPicks() {
  const auto count = [this](const char* sql, int value) { return gConn_.value("统计号码", sql, value).value_or(0); };
  constexpr const char* front = "SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40 AND VALUE = ?";
  constexpr const char* back = "SELECT COUNT(*) FROM 过滤条件 WHERE ID > 100 AND ID < 200 AND VALUE = ?";
  return {count(front, tuo), count(front, dan), count(back, tuo), count(back, dan)};
}

void NumberPicking::announceMode(int mode, bool back) {
  boxes_.plain(u"现在点击数字按钮可以把相应的数设为"_s + (back ? u"后区的"_s : QString()) +
               (mode == dan ? u"“胆码”。"_s : u"“拖码”。"_s));
}

}  // namespace elevenfive
