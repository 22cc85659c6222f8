// What every step of a run is handed, and the scopes that keep the screen right while a step is at work.
#pragma once

#include <QString>

#include "engine/runports.h"
#include "engine/runstate.h"

namespace elevenfive {

class Store;

/// References for the length of one call.
struct RunContext {
  Store& gConn;
  RunPorts& ports;
  RunState& state;
};

/// Keeps the panel of the run's buttons disabled. Scopes may stand in each other: a stage inside a button's click does not
/// open the panel before the click is done.
class PanelHold final {
 public:
  explicit PanelHold(const RunContext& run);
  ~PanelHold();
  PanelHold(const PanelHold&) = delete;
  PanelHold& operator=(const PanelHold&) = delete;

 private:
  RunContext run_;
};

/// When the stop button of a loop is enabled: at once, or later by allowStop.
enum class StopButton { atOnce, later };

/// A loop over rows in progress: the bar stands from 0 to maximum and is visible, the panel is disabled and the stop button
/// enabled. Leaving the scope, also by a fault, takes all three back.
class LoopScope final {
 public:
  LoopScope(const RunContext& run, int maximum, StopButton stopButton = StopButton::atOnce);
  /// Shows the bar as it stands; restart gives it its ends once there is something to walk over.
  explicit LoopScope(const RunContext& run);
  ~LoopScope();

  /// Enables the stop button of a loop that has shown its bar before there was anything to stop.
  void allowStop();

  LoopScope(const LoopScope&) = delete;
  LoopScope& operator=(const LoopScope&) = delete;

  /// The end of one row: lets waiting events run and moves the bar on. False when the loop must end here.
  [[nodiscard]] bool nextRow();

  /// The same for a row that the bar does not count.
  [[nodiscard]] bool nextRowUncounted();

  /// Moves the bar on by one, not beyond its end.
  void advance();

  /// Begins another walk over rows with the bar at its start.
  void restart(int maximum);

 private:
  RunContext run_;
  PanelHold hold_;
  int done_ = 0;
  int maximum_ = 0;
};

/// Lets waiting events run now and then while rows are written about which all is decided: a stop that comes then is seen, and
/// the writing goes on to its end.
class SparseYield final {
 public:
  explicit SparseYield(Events& events) : events_(events) {}

  /// The end of one row.
  void row() {
    if (++rows_ % rowsBetweenYields == 0)
      events_.yield();
  }

 private:
  static constexpr int rowsBetweenYields = 256;
  Events& events_;
  int rows_ = 0;
};

/// A control that works only inside a scope, or only outside it.
class EnabledWhile final {
 public:
  EnabledWhile(Controls& controls, ControlId control) : controls_(controls), control_(control) {
    controls_.setEnabled(control_, true);
  }
  ~EnabledWhile() { controls_.setEnabled(control_, false); }
  EnabledWhile(const EnabledWhile&) = delete;
  EnabledWhile& operator=(const EnabledWhile&) = delete;

 private:
  Controls& controls_;
  ControlId control_;
};

/// A stop that is asked for inside a scope ends with it, however it ends.
class StopCleared final {
 public:
  explicit StopCleared(RunState& state) : state_(state) {}
  ~StopCleared() { state_.userStop = false; }
  StopCleared(const StopCleared&) = delete;
  StopCleared& operator=(const StopCleared&) = delete;

 private:
  RunState& state_;
};

/// Two line ends: what parts the lines of the status text.
QString statusBreak();

/// The line of one stage behind the status text that it met. A fault in the stage takes the line away again; after a stop it
/// stays, so that the text tells where the run ended.
class StageText final {
 public:
  explicit StageText(const RunContext& run);
  ~StageText();
  StageText(const StageText&) = delete;
  StageText& operator=(const StageText&) = delete;

  /// The line takes the place of the one that the stage told before.
  void tell(const QString& line);

  /// The same with nothing ahead of it.
  void tellAlone(const QString& line);

 private:
  RunContext run_;
  QString tip_;  ///< the text before the stage
  int faults_;   ///< in flight when the stage began
  bool told_ = false;
};

/// The status text becomes text, with the caret at its end.
void setStatus(const RunContext& run, const QString& text);

/// Adds a line to the status text: two line ends, then the line.
void addStatusLine(const RunContext& run, const QString& line);

/// append false: the status text becomes text and an empty line; true: text stands ahead of the old one. The caret stays.
void showTip(const RunContext& run, const QString& text, bool append);

}  // namespace elevenfive
