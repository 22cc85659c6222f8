#include <QDate>

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

}  // namespace

void importHistoryText(Store& store, const QString& path, bool showMessage, const HistoryImportPorts& ports) {
  TextLines text(path, ports.events);
  if (text.count() == 0) {
    if (showMessage)
      ports.boxes.plain(u"没有数据，无法导入！"_s);
    return;
  }
  readLines(store, text, ports);
  try {
    calcHistoryAttr(store, 1, getNextQihao(store), &ports.derivation, ports.events, ports.panels);
  } catch (const NumberFault&) {
    // A draw with a number 0, which a lenient line may leave, ends the derivation in silence: the draws themselves are in.
  }
  if (ports.reloadHistoryGrid)
    ports.reloadHistoryGrid();
  if (showMessage)
    ports.boxes.information(u"导入完成!"_s);
}

}  // namespace elevenfive
