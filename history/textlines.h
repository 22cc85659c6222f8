// The lines of a text file of any size, in memory that does not grow with it.
//
// The file is gone through twice: once to count its lines and to tell its encoding, UTF-8 with or without a byte order mark,
// else GB18030; then line by line. Lines end in CR LF or LF. A line of more than 64 KiB is no text that a person keeps: it
// counts, and comes as an empty one.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringDecoder>

#include "model/ports.h"

namespace elevenfive {

class TextLines final {
 public:
  /// Opens the file and counts its lines; throws FileError where it cannot be read.
  TextLines(const QString& path, Events& events);

  /// How many lines there are; what stands behind the last line end counts where it is not empty.
  [[nodiscard]] int count() const { return count_; }

  /// The next line without its line end; false at the end of the file.
  bool next(QString& line);

 private:
  void scan(Events& events);
  bool readBlock();
  [[nodiscard]] QString decoded(QByteArrayView bytes);

  QFile file_;
  QByteArray block_;
  qsizetype position_ = 0;
  int count_ = 0;
  QStringDecoder gb18030_;
  bool isUtf8_ = true;
};

}  // namespace elevenfive
