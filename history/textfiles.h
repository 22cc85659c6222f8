// Draws from and to text files, one draw a line: the period, then five numbers.
#pragma once

#include <QString>
#include <functional>

#include "history/statuspanels.h"
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

/// Shows the frame for the length of a scope; a fault hides it too.
class LineProgressShown final {
 public:
  LineProgressShown(LineProgress& lines, int lineCount) : lines_(lines) { lines_.show(lineCount); }
  ~LineProgressShown() { lines_.hide(); }
  LineProgressShown(const LineProgressShown&) = delete;
  LineProgressShown& operator=(const LineProgressShown&) = delete;

 private:
  LineProgress& lines_;
};

struct HistoryImportPorts {
  Boxes& boxes;
  LineProgress& lines;
  Progress& derivation;  ///< ProgressBar_TuBiao
  Events& events;
  StatusPanels* panels = nullptr;
  std::function<void()> reloadHistoryGrid =
      {};  ///< called when all is in, or a fault has ended it, before that is told
};

/// Reads a text file into the history under today's date and derives the whole table again, also after a stop. Loose
/// separators, UTF-8 or GB18030; bad lines are passed over in silence, see history/historyline.h. A draw takes the place of an
/// older one of its period. Memory does not grow with the file, and a yield follows each line.
///
/// A file that cannot be opened is one without data. A stored draw that cannot be derived ends the derivation in silence, not
/// the import. Throws StoreError where the store cannot be written and FileError where the file ends in a read error; the
/// rows stored until then stay, are derived where that can be, and reloadHistoryGrid is called for them too.
void importHistoryText(Store& store, const QString& path, bool showMessage, const HistoryImportPorts& ports);

/// Writes all draws to a file, "11031510 01 02 03 04 05" and CR LF a line, and returns their number. The old file is replaced
/// only by a complete new one; throws FileError where that cannot be written.
int exportHistoryText(Store& store, const QString& path, LineProgress& lines, Events& events);

}  // namespace elevenfive
