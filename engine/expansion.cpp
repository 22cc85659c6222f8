#include "engine/expansion.h"

#include <vector>

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "model/calculators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Values of a pick row: anything from 1 up allows the number, exactly 2 makes it a banker.
constexpr int tuoma = 1;
constexpr int danma = 2;

struct Picks {
  std::vector<int> allowed;  ///< rising
  std::array<bool, numberCount + 1> banker{};
  int bankerCount = 0;
};

Picks readPicks(const RunContext& run) {
  loadTiaojianValues(run.gConn, run.state, 1, numberCount);
  Picks picks;
  for (int n = 1; n <= numberCount; ++n) {
    const int value = run.state.tiaojianValue[static_cast<std::size_t>(n)];
    if (value >= tuoma)
      picks.allowed.push_back(n);
    picks.banker[static_cast<std::size_t>(n)] = value == danma;
  }
  picks.bankerCount = countDanma(run.gConn);
  // The second field passes through the buffer too and has no effect: this game draws from one field.
  loadTiaojianValues(run.gConn, run.state, 101, 111);
  return picks;
}

/// All combinations of five allowed numbers with at least as many bankers as were picked, the last place moving fastest.
std::vector<Draw> combinationsOf(const Picks& picks) {
  std::vector<Draw> found;
  const auto& n = picks.allowed;
  const std::size_t count = n.size();
  for (std::size_t a = 0; a < count; ++a)
    for (std::size_t b = a + 1; b < count; ++b)
      for (std::size_t c = b + 1; c < count; ++c)
        for (std::size_t d = c + 1; d < count; ++d)
          for (std::size_t e = d + 1; e < count; ++e) {
            const Draw draw{n[a], n[b], n[c], n[d], n[e]};
            int bankers = 0;
            for (const int number : draw)
              bankers += picks.banker[static_cast<std::size_t>(number)] ? 1 : 0;
            if (bankers >= picks.bankerCount)
              found.push_back(draw);
          }
  return found;
}

/// Rows that the period keeps from before: none where the person lets them go.
int keepOrDelete(const RunContext& run, Qihao period) {
  const int standing = countCandidates(run.gConn, period);
  if (standing == 0)
    return 0;
  const Answer answer = run.ports.boxes.show(
      {BoxKind::question, u"信息提示"_s, u"该期数已有记录存在日志表中!要删除它吗？\r\n按'是',删除它;按'否'保留它!"_s,
       BoxButtons::yesNo});
  if (answer == Answer::no)
    return standing;
  run.gConn.execute("删除旧的号码", "DELETE FROM 日志表 WHERE 期号 = ?", period);
  return 0;
}

/// Writes the rows until the end or a stop; returns how many rows the period has.
int insertRows(const RunContext& run, Qihao period, int firstId, int standing) {
  const std::vector<Draw> combinations = combinationsOf(readPicks(run));
  LoopScope loop(run, run.state.zuheTotal);
  Statement insert = run.gConn.query("写入候选号码",
                                     "INSERT INTO 日志表 (ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记)"
                                     " VALUES (?, ?, ?, ?, ?, ?, ?, ?, 0)");
  int inserted = 0;
  for (const Draw& draw : combinations) {
    run.ports.events.yield();
    insert.run(firstId + inserted, inserted + 1, period, draw[0], draw[1], draw[2], draw[3], draw[4]);
    ++inserted;
    run.ports.progress.setValue(standing + inserted);
    if (run.state.userStop)
      break;
  }
  return standing + inserted;
}

}  // namespace

int countTuoma(Store& store) {
  return store.value("统计拖码", "SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40 AND VALUE = ?", tuoma).value_or(0);
}

int countDanma(Store& store) {
  return store.value("统计胆码", "SELECT COUNT(*) FROM 过滤条件 WHERE ID < 40 AND VALUE = ?", danma).value_or(0);
}

void showXuanhaoTip(const RunContext& run) {
  const int tuo = countTuoma(run.gConn);
  const int dan = countDanma(run.gConn);
  run.state.zuheTotal = calc_Zhushu(tuo + dan, drawSize, dan);
  run.ports.view.setChoseNumberTip(
      u"已选“拖码”个数： %1\r\n\r\n已选“胆码”个数： %2\r\n过滤缩水前全部号码组合： %3  注"_s.arg(
          toQuanjiaoDigits(tuo), toQuanjiaoDigits(dan), toQuanjiaoDigits(run.state.zuheTotal)));
}

bool checkHaomaXuanqu(const RunContext& run, bool showMessage) {
  showXuanhaoTip(run);
  if (run.state.zuheTotal > 0)
    return true;
  if (showMessage) {
    run.ports.boxes.plain(u"号码还没有选取,或者已选的号码个数太少!请先选取号码！"_s);
    run.ports.view.showPickingPage();
  }
  return false;
}

int initXuanhao(const RunContext& run, Qihao period) {
  if (period < 1)
    return 0;
  const StopCleared stopCleared(run.state);
  if (!checkHaomaXuanqu(run, true))
    return 0;
  StoreTransaction transaction(run.gConn, OnFault::undo);
  run.gConn.execute("删除其他期的号码", "DELETE FROM 日志表 WHERE 期号 <> ?", period);
  const int lastId = run.gConn.value("读取候选号码", "SELECT MAX(ID) FROM 日志表").value_or(0);
  const int standing = keepOrDelete(run, period);
  const int count = insertRows(run, period, lastId + 1, standing);
  transaction.commit();
  if (!run.state.userStop) {
    const QString text = u"初始化选号完成!共 "_s + toQuanjiaoDigits(count) + u" 注！"_s;
    run.ports.boxes.plain(text);
    run.ports.view.showRizhiGrid();
    showTip(run, text + u"\r\n"_s, false);
  }
  return count;
}

}  // namespace elevenfive
