// The reader of result lines over any bytes, and its agreement with what an export writes.
#include <QStringList>
#include <cstddef>
#include <cstdint>

#include "engine/resultline.h"
#include "fuzz/check.h"
#include "model/texts.h"

namespace elevenfive::fuzz {

namespace {

using namespace Qt::StringLiterals;

void checkLine(const QString& line, ImportFormat format) {
  const std::optional<Draw> numbers = importedNumbers(line, format);
  if (!numbers)
    return;
  for (const int number : *numbers)
    demand(number >= 0 && number <= 255, "a row holds what fits into it");
  demand(importedNumbers(u"  "_s + line + u" "_s, format) == numbers, "blanks around a line count for nothing");

  // What was read goes out and comes in again.
  ExportSettings settings;
  settings.xuhao = format == ImportFormat::xuhaoHaoma;
  settings.qihao = format == ImportFormat::qihaoHaoma;
  demand(importedNumbers(exportLine(settings, 1, 11031510, *numbers), format) == numbers, "an export reads back");
}

void checkSeparator(const QString& separator) {
  ExportSettings settings;
  settings.xuhao = true;
  settings.qihao = true;
  settings.separator = separator;
  const QString line = exportLine(settings, 12, 11031510, {1, 2, 3, 4, 11});
  demand(line.startsWith(u"12  11031510 01"_s), "the fields in front stay whatever the separator");
  demand(!line.endsWith(u' '), "no blank ends a line");
  demand(!line.contains(u'#'), "no mark of a hidden blank stays");
}

}  // namespace

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace elevenfive::fuzz;
  const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString text = elevenfive::decodeText(bytes);
  for (const QString& line : text.split(u'\n')) {
    checkLine(line, elevenfive::ImportFormat::haoma);
    checkLine(line, elevenfive::ImportFormat::qihaoHaoma);
    checkLine(line, elevenfive::ImportFormat::xuhaoHaoma);
  }
  checkSeparator(text);
  return 0;
}
