#include "engine/resultfiles.h"

#include <QSaveFile>

#include "engine/candidates.h"
#include "engine/rizhi.h"
#include "history/textlines.h"
#include "model/errors.h"
#include "model/navigators.h"
#include "model/ownfiles.h"
#include "model/store.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

constexpr int rowsBetweenEmptyLines = 5;
constexpr int mostImportedRows = 65535;
constexpr qsizetype shortestPeriod = 8;

/// A text file with CR LF line ends that is there whole or not at all.
class LineFile final {
 public:
  explicit LineFile(const QString& path) : file_(path) {
    demandForeignFile(path);
    if (!file_.open(QIODevice::WriteOnly))
      fail();
  }

  void write(const QString& line) {
    const QByteArray bytes = line.toUtf8() + "\r\n";
    if (file_.write(bytes) != bytes.size())
      fail();
  }

  void commit() {
    if (!file_.commit())
      fail();
  }

 private:
  [[noreturn]] void fail() const {
    throw FileError(u"文件“%1”无法写入：%2"_s.arg(file_.fileName(), file_.errorString()));
  }

  QSaveFile file_;
};

/// The bar of an export: it begins at 1, so that its value is the number of the row at hand. There is no stop.
class ExportBar final {
 public:
  ExportBar(Progress& progress, int rows) : progress_(progress) {
    progress_.setMinimum(0);
    progress_.setMaximum(rows + 1);
    progress_.setValue(value_);
    progress_.setVisible(true);
  }
  ~ExportBar() { progress_.setVisible(false); }
  ExportBar(const ExportBar&) = delete;
  ExportBar& operator=(const ExportBar&) = delete;

  [[nodiscard]] int value() const { return value_; }
  void advance() { progress_.setValue(++value_); }

 private:
  Progress& progress_;
  int value_ = 1;
};

void writeRows(const RunContext& run, const ExportSettings& settings, LineFile& file, int rowCount) {
  const PanelHold hold(run);
  ExportBar bar(run.ports.progress, rowCount);
  Statement rows = run.gConn.query("导出号码",
                                   "SELECT 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5 FROM 日志表"
                                   " WHERE 期号 = ? ORDER BY 序号, ID",
                                   settings.period);
  while (rows.next()) {
    const Draw numbers{rows.integer(2), rows.integer(3), rows.integer(4), rows.integer(5), rows.integer(6)};
    file.write(exportLine(settings, rows.integer(0), rows.integer(1), numbers));
    if (settings.fengehang && bar.value() % rowsBetweenEmptyLines == 0)
      file.write({});
    bar.advance();
    run.ports.events.yield();
  }
  file.commit();
}

/// The largest `ID` and 序号 that stand in the table; new rows count on from them.
struct LastRow {
  int id = 0;
  int xuhao = 0;
};

LastRow lastRow(Store& store) {
  Statement last = store.query("读取候选号码", "SELECT MAX(ID), MAX(序号) FROM 日志表");
  last.next();
  return {last.integer(0), last.integer(1)};
}

int insertLines(const RunContext& run, const ImportSettings& settings, TextLines& lines) {
  const PanelHold hold(run);
  StoreTransaction transaction(run.gConn, OnFault::undo);
  const LastRow last = lastRow(run.gConn);
  Statement insert = run.gConn.query("导入号码",
                                     "INSERT INTO 日志表 (ID, 序号, 期号, 号码1, 号码2, 号码3, 号码4, 号码5, 过滤标记)"
                                     " VALUES (?, ?, ?, ?, ?, ?, ?, ?, 0)");
  int added = 0;
  QString line;
  while (added < mostImportedRows && lines.next(line)) {
    if (const std::optional<Draw> n = importedNumbers(line, settings.format)) {
      ++added;
      insert.run(last.id + added, last.xuhao + added, settings.period, (*n)[0], (*n)[1], (*n)[2], (*n)[3], (*n)[4]);
    }
    run.ports.events.yield();
  }
  transaction.commit();
  return added;
}

}  // namespace

bool acceptFilePeriod(const QString& typed, Boxes& boxes) {
  bool inRange = false;
  static_cast<void>(typed.toInt(&inRange));
  if (typed.size() >= shortestPeriod && inRange)
    return true;
  boxes.plain(u"请在文本框中输入期号。(如：11031510)"_s);
  return false;
}

bool exportRizhi(const RunContext& run, ResultFileDialogs& dialogs, ExportSettings& settings, const QString& name) {
  const QString path = dialogs.workingFile(name);
  ExportSettings wanted = settings;
  wanted.period = getNextQihao(run.gConn);
  if (!dialogs.askExport(wanted))
    return true;
  settings = wanted;
  const int rowCount = countCandidates(run.gConn, settings.period);
  if (rowCount == 0)
    return false;
  LineFile file(path);
  writeRows(run, settings, file, rowCount);
  addStatusLine(run, u"号码导出完成．"_s);
  dialogs.showText(path, decodeText(readFileText(path)));
  return true;
}

std::optional<int> importRizhi(const RunContext& run, ResultFileDialogs& dialogs, ImportSettings& settings,
                               const QString& path) {
  TextLines lines(path, run.ports.events);  // a file that cannot be read must not cost the rows that stand there
  const bool hasRows = run.gConn.value("读取候选号码", "SELECT 1 FROM 日志表 LIMIT 1").has_value();
  if (hasRows && !run.ports.boxes.askToKeep(u"表格中原有的数据要保留吗？"_s))
    deleteRizhi(run, 0);
  ImportSettings wanted = settings;
  if (wanted.period == 0)
    wanted.period = getNextQihao(run.gConn);
  if (!dialogs.askImport(wanted))
    return std::nullopt;
  settings = wanted;
  return insertLines(run, settings, lines);
}

}  // namespace elevenfive
