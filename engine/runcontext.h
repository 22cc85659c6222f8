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

/// A loop over rows in progress: the bar stands from 0 to maximum and is visible, the panel is disabled and the stop button
/// enabled. Leaving the scope, also by a fault, takes all three back.
class LoopScope final {
 public:
  LoopScope(const RunContext& run, int maximum);
  ~LoopScope();
  LoopScope(const LoopScope&) = delete;
  LoopScope& operator=(const LoopScope&) = delete;

  /// The end of one row: lets waiting events run and moves the bar on. False when the loop must end here.
  [[nodiscard]] bool nextRow();

  /// Begins another walk over rows with the bar at its start.
  void restart(int maximum);

 private:
  RunContext run_;
  PanelHold hold_;
  int done_ = 0;
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

/// Two line ends: what parts the lines of the status text.
QString statusBreak();

/// The status text becomes text, with the caret at its end.
void setStatus(const RunContext& run, const QString& text);

/// Adds a line to the status text: two line ends, then the line.
void addStatusLine(const RunContext& run, const QString& line);

}  // namespace elevenfive
