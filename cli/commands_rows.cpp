// The candidates and survivors in 日志表.
#include <QString>

#include "cli/command.h"
#include "cli/readonlyquery.h"
#include "cli/session.h"
#include "cli/values.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

Action prepareRows(const Arguments& arguments) {
  const QString columns =
      u"ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 买中个数, 过滤标记, 缩水标记, 精选标记, 临时数据"_s;
  if (!arguments.has(u"QIHAO"_s))
    return [columns](Session& session) {
      ReadOnlyQuery(session.store(), u"SELECT %1 FROM 日志表 ORDER BY 期号, 序号, ID"_s.arg(columns))
          .print(session.out());
    };
  const Qihao qihao = numberOf(arguments, u"QIHAO"_s);
  return [columns, qihao](Session& session) {
    ReadOnlyQuery query(session.store(),
                        u"SELECT %1 FROM 日志表 WHERE 期号 = ? ORDER BY 期号, 序号, ID"_s.arg(columns));
    query.bind(1, qihao);
    query.print(session.out());
  };
}

constexpr Command commands[] = {
    {u"rows [QIHAO]", u"日志表 in 期号, 序号, ID order", u"all 13 columns", prepareRows},
};

}  // namespace

std::span<const Command> rowCommands() {
  return commands;
}

}  // namespace elevenfive
