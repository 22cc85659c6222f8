// The header by which a web server tells which piece of a file it sent: "bytes 0-20480/40961".
#pragma once

#include <QString>
#include <QStringView>

namespace elevenfive {

struct ContentRange {
  qint64 rangeEnd = 0;   ///< the last byte of the piece, counted from 0
  qint64 totalSize = 0;  ///< bytes of the whole file
};

/// Reads the header: behind its first "-", or from its start where it has none, the number before the first "/" and the number
/// behind it. Blanks around a number do not matter. Throws DownloadError where the "/" or a number is missing, a size of "*"
/// included, and where a number does not fit 64 bits.
ContentRange readContentRange(QStringView header);

}  // namespace elevenfive
