#include <QSaveFile>
#include <limits>

#include "history/drawrows.h"
#include "history/historytable.h"
#include "history/textfiles.h"
#include "model/errors.h"
#include "model/ownfiles.h"
#include "model/texts.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QByteArray exportLine(const DrawRow& row) {
  return (QString::number(row.qihao) + u' ' + drawText(row.numbers, u" "_s) + u"\r\n"_s).toUtf8();
}

}  // namespace

int exportHistoryText(Store& store, const QString& path, LineProgress& lines, Events& events) {
  demandForeignFile(path);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    throw FileError(u"无法写入文件 %1。"_s.arg(path));
  const LineProgressShown shown(lines, countHistory(store));
  DrawRows rows(store, std::numeric_limits<Qihao>::min(), std::numeric_limits<Qihao>::max());
  int done = 0;
  while (const std::optional<DrawRow> row = rows.next()) {
    file.write(exportLine(*row));
    lines.setDone(++done);
    events.yield();
  }
  if (!file.commit())
    throw FileError(u"无法写入文件 %1，原有的文件没有改动。"_s.arg(path));
  return done;
}

}  // namespace elevenfive
