#include <QDate>
#include <exception>
#include <optional>
#include <utility>

#include "history/derivation.h"
#include "history/historyline.h"
#include "history/historytable.h"
#include "history/pass.h"
#include "history/textfiles.h"
#include "history/textlines.h"
#include "model/errors.h"
#include "model/navigators.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

void readLines(Store& store, TextLines& text, const HistoryImportPorts& ports) {
  const LineProgressShown shown(ports.lines, text.count());
  const QDate today = QDate::currentDate();
  HistoryWriter writer(store);
  HistoryLineReader reader;
  PassTransaction transaction(store);
  QString line;
  int done = 0;
  while (!ports.lines.stopRequested() && text.next(line)) {
    if (const std::optional<HistoryLine> draw = reader.read(line)) {
      writer.write(draw->qihao, today, draw->numbers);
      transaction.rowDone();
    }
    ports.lines.setDone(++done);
    ports.events.yield();
  }
  transaction.commit();
}

/// The lines of a file; nothing where it cannot be opened, which is as good as a file without lines.
std::optional<TextLines> linesOf(const QString& path, Events& events) {
  try {
    return std::optional<TextLines>(std::in_place, path, events);
  } catch (const FileError&) {
    return std::nullopt;
  }
}

void derive(Store& store, const HistoryImportPorts& ports) {
  try {
    calcHistoryAttr(store, 1, getNextQihao(store), &ports.derivation, ports.events, ports.panels);
  } catch (const NumberFault&) {
    // A draw with a number 0, which a lenient line may leave, ends the derivation in silence: the draws themselves are in.
  }
}

template <typename Step>
std::exception_ptr faultOf(Step&& step) {
  try {
    std::forward<Step>(step)();
    return nullptr;
  } catch (const Error&) {
    return std::current_exception();
  }
}

}  // namespace

void importHistoryText(Store& store, const QString& path, bool showMessage, const HistoryImportPorts& ports) {
  std::optional<TextLines> text = linesOf(path, ports.events);
  if (!text || text->count() == 0) {
    if (showMessage)
      ports.boxes.plain(u"没有数据，无法导入！"_s);
    return;
  }
  // What a fault leaves in the table is derived and shown like the whole of it, and told last.
  std::exception_ptr fault = faultOf([&] { readLines(store, *text, ports); });
  const std::exception_ptr derivationFault = faultOf([&] { derive(store, ports); });
  if (ports.reloadHistoryGrid)
    ports.reloadHistoryGrid();
  if (!fault)
    fault = derivationFault;
  if (fault)
    std::rethrow_exception(fault);
  if (showMessage)
    ports.boxes.information(u"导入完成!"_s);
}

}  // namespace elevenfive
