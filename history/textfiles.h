// Draws from and to text files, one draw a line: the period, then five numbers.
#pragma once

#include <QString>

#include "model/ports.h"

namespace elevenfive {

class Store;

/// The frame FrameJindu with its two labels and the button CmmDaoruStop.
class LineProgress {
 public:
  virtual ~LineProgress() = default;
  virtual void show(int lineCount) = 0;  ///< shows the frame; Label_jindu(1)
  virtual void setDone(int lines) = 0;   ///< Label_jindu(0)
  virtual void hide() = 0;
  [[nodiscard]] virtual bool stopRequested() const = 0;  ///< CmmDaoruStop was clicked since show()
};

struct HistoryImportPorts {
  Boxes& boxes;
  LineProgress& lines;
  Progress& derivation;  ///< ProgressBar_TuBiao
  Events& events;
};

/// Reads a text file into the history and derives the whole table again. Loose separators, UTF-8 or GB18030; bad lines are
/// passed over in silence. Throws FileError where the file cannot be read.
void importHistoryText(Store& store, const QString& path, bool showMessage, const HistoryImportPorts& ports);

/// Writes all draws to a file, "11031510 01 02 03 04 05" and CR LF a line, and returns their number. The old file is replaced
/// only by a complete new one.
int exportHistoryText(Store& store, const QString& path, LineProgress& lines, Events& events);

}  // namespace elevenfive
