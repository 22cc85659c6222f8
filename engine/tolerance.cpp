#include "engine/tolerance.h"

#include "engine/conditionvalues.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

int applyRongcuo(const RunContext& run, Qihao period, int tolerance) {
  const int needed = countRongcuoTiaojian(run.gConn) - tolerance;
  const int left =
      run.gConn
          .value("统计容错后的号码", "SELECT COUNT(*) FROM 日志表 WHERE 期号 = ? AND 过滤标记 >= ?", period, needed)
          .value_or(0);
  run.gConn.execute("删除超出容错的号码", "DELETE FROM 日志表 WHERE 期号 = ? AND 过滤标记 < ?", period, needed);
  if (!run.state.userStop)
    addStatusLine(run, u"以上条件容错"_s + toQuanjiaoDigits(tolerance) + u"后余："_s + toQuanjiaoDigits(left) +
                           u" 注"_s + statusBreak());
  return left;
}

}  // namespace elevenfive
