// The window under measurement: data of its own, and the clock from a click to the painted answer.
#pragma once

#include <QTemporaryDir>

#include "bench/measure.h"
#include "bench/synthetichistory.h"
#include "bench/windowtools.h"
#include "history/textfiles.h"
#include "model/workspace.h"
#include "shell/widgets/mainwindow.h"

namespace elevenfive {

struct QuietImport final : Boxes, LineProgress, Progress, Events {
  Answer show(const Box&) override { return Answer::yes; }
  void show(int) override {}
  void setDone(int) override {}
  void hide() override {}
  [[nodiscard]] bool stopRequested() const override { return false; }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool) override {}
  void yield() override {}
};

/// A data folder with a derived history of that many draws, and the text it was read from.
class Data final {
 public:
  explicit Data(int draws) {
    Workspace::create(folders, false);
    writeHistory(text, draws);
    Workspace workspace(folders);
    QuietImport quiet;
    importHistoryText(workspace.gConn, text, false, {quiet, quiet, quiet, quiet});
    workspace.gConn.execute("bench", "UPDATE 用户模式 SET 模式 = 1");
    workspace.close();
  }

 private:
  QTemporaryDir folder_;

 public:
  const DataFolders folders{folder_.filePath(QStringLiteral("program")), folder_.filePath(QStringLiteral("temporary"))};
  const QString text = folder_.filePath(QStringLiteral("history.txt"));
  const QString copy = folder_.filePath(QStringLiteral("copy.db"));  ///< free for a floor
};

/// The window over data of its own, shown and painted.
class Bench final {
 public:
  explicit Bench(const Data& data)
      : workspace(data.folders), window(workspace, {person, person, person, person}), copy(data.copy) {
    workspace.gConn.execute("bench", "VACUUM INTO ?", copy);
    window.layoutHistoryGrid();
    window.initMainPanels();
    window.show();
    paints.settle();
  }
  ~Bench() { workspace.abandon(); }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  template <typename Control>
  Control& the(const QString& name) {
    return control<Control>(window, name);
  }

  /// Adds the time of a piece of work until it is painted.
  template <typename Work>
  void time(Times& times, Work&& work) {
    const Stopwatch watch(times);
    work();
    paints.settle();
  }

  /// Adds the time of painting a widget as it stands, with all below it.
  void timePainting(Times& times, QWidget& widget) {
    time(times, [&] {
      widget.update();
      for (QWidget* part : widget.findChildren<QWidget*>())
        part->update();
    });
  }

  PaintCount paints;
  QuietPerson person;
  Workspace workspace;
  MainWindow window;
  QString copy;
};

}  // namespace elevenfive
