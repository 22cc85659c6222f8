// Doubles and shortcuts for the tests of the history.
#pragma once

#include <QFile>
#include <QStringList>
#include <stdexcept>

#include "history/statuspanels.h"
#include "history/textfiles.h"
#include "tests/support/recordingports.h"
#include "tests/support/testworkspace.h"

namespace elevenfive {

/// Records the frame of an import or export; asks for a stop once stopAfter lines are done.
class RecordingLines final : public LineProgress {
 public:
  QStringList log;
  int done = 0;
  int stopAfter = -1;  ///< -1: never

  void show(int lineCount) override { log << QStringLiteral("show %1").arg(lineCount); }
  void setDone(int lines) override { done = lines; }
  void hide() override { log << QStringLiteral("hide after %1").arg(done); }
  [[nodiscard]] bool stopRequested() const override { return stopAfter >= 0 && done >= stopAfter; }
};

class RecordingPanels final : public StatusPanels {
 public:
  QStringList log;  ///< "panel: text"
  void setPanel(int panel, const QString& text) override { log << QStringLiteral("%1:%2").arg(panel).arg(text); }
};

/// All ports of an import in one place.
struct ImportDoubles {
  RecordingPorts ports;
  RecordingLines lines;
  RecordingPanels panels;
  [[nodiscard]] HistoryImportPorts all() { return {ports, lines, ports, ports, &panels}; }
};

/// Writes a file of the workspace's folder and returns its path.
inline QString writeFile(const TestWorkspace& workspace, const QByteArray& content) {
  const QString path = workspace.folders.program + QStringLiteral("/draws.txt");
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
    throw std::runtime_error("cannot write the test's file");
  return path;
}

/// Lets the store's file grow by this many pages and no more, as a full disk would.
inline void limitGrowth(Store& store, int pages) {
  const int now = store.value("test", "PRAGMA page_count").value_or(0);
  store.executeScript("test", "PRAGMA max_page_count = " + std::to_string(now + pages));
}

}  // namespace elevenfive
