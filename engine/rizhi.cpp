#include "engine/rizhi.h"

#include "model/store.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

void deleteRizhi(const RunContext& run, Qihao period) {
  if (period != 0)
    run.gConn.execute("删除号码", "DELETE FROM 日志表 WHERE 期号 = ?", period);
  else
    run.gConn.execute("删除号码", "DELETE FROM 日志表");
  run.ports.view.showRizhiGrid();
  setStatus(run, run.ports.status.text() + u"表格中号码全部删除已完成．"_s);
}

}  // namespace elevenfive
