// The candidates and survivors in 日志表.
#include <QString>

#include "cli/command.h"
#include "cli/readonlyquery.h"
#include "cli/runclick.h"
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

/// The items of an exported line, by the names of their boxes.
void setFields(ExportSettings& settings, const QString& list) {
  settings.xuhao = settings.qihao = settings.haoma = settings.fengehang = false;
  if (list == u"-"_s)
    return;
  for (const QString& field : list.split(u',')) {
    if (field == u"序号"_s)
      settings.xuhao = true;
    else if (field == u"期号"_s)
      settings.qihao = true;
    else if (field == u"号码"_s)
      settings.haoma = true;
    else if (field == u"分隔行"_s)
      settings.fengehang = true;
    else
      throw UsageError(u"选项 --fields 只能含有 序号、期号、号码、分隔行，而不是“%1”。"_s.arg(field.left(40)));
  }
}

/// The dialogs take no period that is typed too short.
void requireFilePeriod(Session& session, const QString& typed) {
  if (!acceptFilePeriod(typed, session.ports()))
    throw Refused();
}

Action prepareRowsExport(const Arguments& arguments) {
  ExportSettings settings;
  settings.period = fieldNumberOf(arguments, u"QIHAO"_s);
  if (arguments.has(u"--fields"_s))
    setFields(settings, arguments.text(u"--fields"_s));
  if (arguments.has(u"--separator"_s))
    settings.separator = arguments.text(u"--separator"_s);
  const QString path = pathOf(arguments, u"FILE"_s);
  const QString typed = arguments.text(u"QIHAO"_s);
  return [settings, path, typed](Session& session) {
    requireFilePeriod(session, typed);
    session.resultFiles().exported = settings;
    session.resultFiles().path = path;
    clickRunButton(session, buttonExport, {}, QString());
  };
}

Action prepareRowsImport(const Arguments& arguments) {
  ImportSettings settings;
  settings.period = fieldNumberOf(arguments, u"QIHAO"_s);
  settings.format = static_cast<ImportFormat>(numberOf(arguments, u"--format"_s));
  const Answer keep = arguments.has(u"--keep"_s) ? Answer::yes : Answer::no;
  const QString path = pathOf(arguments, u"FILE"_s);
  const QString typed = arguments.text(u"QIHAO"_s);
  return [settings, keep, path, typed](Session& session) {
    if (settings.format != ImportFormat::qihaoHaoma)  // whose file holds periods of its own
      requireFilePeriod(session, typed);
    requireReadable(path);  // before the old rows go
    session.resultFiles().imported = settings;
    session.resultFiles().path = path;
    session.ports().answers = {keep};
    clickRunButton(session, buttonImport, {});
  };
}

Action prepareRowsDelete(const Arguments&) {
  return [](Session& session) { clickRunButton(session, buttonDelete, {}); };
}

constexpr Command commands[] = {
    {u"rows [QIHAO]", u"日志表 in 期号, 序号, ID order", u"all 13 columns", prepareRows},
    {u"rows export FILE QIHAO [--fields LIST] [--separator TEXT]",
     u"导出; LIST of 序号,期号,号码,分隔行, default 号码; TEXT default ,", u"status text", prepareRowsExport,
     u"QIHAO has 8 to 10 digits"},
    {u"rows import FILE QIHAO --format 0|1|2 [--keep]", u"导入 (0 只有号码, 1 期号＋号码, 2 序号＋号码)",
     u"status text", prepareRowsImport,
     u"QIHAO has 8 to 10 digits, with format 1 any number (0: the period that the dialog offers); --keep: the old rows "
     u"stay"},
    {u"rows delete", u"删除", u"status text", prepareRowsDelete},
};

}  // namespace

std::span<const Command> rowCommands() {
  return commands;
}

}  // namespace elevenfive
