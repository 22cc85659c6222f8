// The reader of the header that tells which piece of a file came, over any bytes: two counts or a fault, nothing else, and what
// was read can be written and read again.
#include <cstddef>
#include <cstdint>

#include "acquire/contentrange.h"
#include "acquire/downloaderror.h"
#include "fuzz/check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace elevenfive;
  using namespace Qt::StringLiterals;
  const QString header = QString::fromLatin1(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  try {
    const ContentRange range = readContentRange(header);
    fuzz::demand(range.rangeEnd >= 0 && range.totalSize >= 0, "counts are not negative");
    const ContentRange again =
        readContentRange(u"bytes 0-%1/%2"_s.arg(QString::number(range.rangeEnd), QString::number(range.totalSize)));
    fuzz::demand(again.rangeEnd == range.rangeEnd && again.totalSize == range.totalSize,
                 "a plain header reads the same");
  } catch (const DownloadError& fault) {
    fuzz::demand(!fault.message().isEmpty() && fault.message().size() < 200, "a fault is one short sentence");
  }
  return 0;
}
