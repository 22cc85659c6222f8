#include "engine/runcontext.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

PanelHold::PanelHold(const RunContext& run) : run_(run) {
  if (run_.state.panelHolds++ == 0)
    run_.ports.controls.setEnabled(ControlId::Pic_subTouZhu, false);
}

PanelHold::~PanelHold() {
  if (--run_.state.panelHolds == 0)
    run_.ports.controls.setEnabled(ControlId::Pic_subTouZhu, true);
}

LoopScope::LoopScope(const RunContext& run, int maximum) : run_(run), hold_(run) {
  restart(maximum);
  run_.ports.progress.setVisible(true);
  run_.ports.controls.setEnabled(ControlId::cmm_stop, true);
}

LoopScope::~LoopScope() {
  run_.ports.progress.setVisible(false);
  run_.ports.controls.setEnabled(ControlId::cmm_stop, false);
}

bool LoopScope::nextRow() {
  run_.ports.events.yield();
  run_.ports.progress.setValue(++done_);
  return !run_.state.userStop;
}

void LoopScope::restart(int maximum) {
  done_ = 0;
  run_.ports.progress.setMinimum(0);
  run_.ports.progress.setMaximum(maximum);
  run_.ports.progress.setValue(0);
}

QString statusBreak() {
  return u"\r\n\r\n"_s;
}

void setStatus(const RunContext& run, const QString& text) {
  run.ports.status.setText(text);
  run.ports.status.moveCaretToEnd();
}

void addStatusLine(const RunContext& run, const QString& line) {
  setStatus(run, run.ports.status.text() + statusBreak() + line);
}

}  // namespace elevenfive
