#include "engine/parity.h"

#include <cstdlib>

#include "engine/candidates.h"
#include "engine/conditionvalues.h"
#include "engine/rowpass.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// A slot that any number fills.
constexpr int anyParity = 2;

/// Slots 1 to 5 of pattern j are the rows from here.
constexpr int firstSlot(int j) {
  return 5000 + 10 * j + 1;
}

constexpr int lastSlot(int j) {
  return 5000 + 10 * j + drawSize;
}

constexpr int codeOf(int j) {
  return 70 + j;
}

QString labelOf(int j) {
  return j == 0 ? u"排除掉上期单双组合："_s : u"排除掉单双组合%1："_s.arg(j);
}

/// Whether the row differs from the pattern in the buffer at some place.
bool differs(const RunContext& run, const Candidate& row) {
  for (std::size_t place = 0; place < row.numbers.size(); ++place) {
    const int slot = run.state.tiaojianValue[place + 1];
    if (slot != anyParity && slot != row.numbers[place] % 2)
      return true;
  }
  return false;
}

}  // namespace

int filter_Danshuang(const RunContext& run, Qihao period, int j) {
  if (run.state.userStop)
    return 0;
  if (j == 0)
    setShangqiDanshuang(run.gConn, getPrevQihao(run.gConn, period, 1));
  StageText text(run);
  if (!conditionInUse(run.gConn, codeOf(j)))
    return 0;
  const QString head = u'[' + labelOf(j) + u']';
  const QString pattern = getDanshuangText(run.gConn, firstSlot(j), lastSlot(j));
  text.tell(head + u' ' + pattern);
  loadTiaojianValues(run.gConn, run.state, firstSlot(j), lastSlot(j));
  const std::vector<Candidate> rows = readCandidates(run.gConn, period);
  if (rows.empty())
    return 0;
  LoopScope loop(run, static_cast<int>(rows.size()));
  text.tell(head + u"过滤正在进行中．．．"_s);
  const int passes =
      markRows(run, period, rows, loop, Marking::counted, [&run](const Candidate& row) { return differs(run, row); });
  if (!run.state.userStop)
    text.tell(head + pattern + statusBreak() + u"过滤后余："_s + toQuanjiaoDigits(passes) + u" 注"_s);
  return passes;
}

QString getDanshuangText(Store& store, int first, int last) {
  constexpr QStringView symbols = u"双单*";
  Statement rows =
      store.query("读取单双组合", "SELECT VALUE FROM 过滤条件 WHERE ID >= ? AND ID <= ? ORDER BY ID", first, last);
  QString text;
  while (rows.next()) {
    const int value = rows.integer(0);
    if (value >= 0 && value < symbols.size())
      text += symbols[value];
  }
  return text;
}

QString setShangqiDanshuang(Store& store, Qihao drawn) {
  const std::optional<Draw> draw = drawOf(store, drawn);
  if (!draw)
    throw MissingData(u"历史记录中没有上一期的开奖号码，无法得到上期单双组合。请先导入或下载开奖号码。"_s);
  StoreTransaction transaction(store, OnFault::undo);
  Statement write = store.query("写入上期单双组合", "UPDATE 过滤条件 SET VALUE = ? WHERE ID = ?");
  for (int place = 0; place < drawSize; ++place)
    write.run((*draw)[static_cast<std::size_t>(place)] % 2, firstSlot(0) + place);
  transaction.commit();
  return getDanshuangText(store, firstSlot(0), lastSlot(0));
}

}  // namespace elevenfive
