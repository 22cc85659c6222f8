#include "engine/runcontext.h"

#include <exception>

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

LoopScope::LoopScope(const RunContext& run, int maximum, StopButton stopButton) : run_(run), hold_(run) {
  restart(maximum);
  run_.ports.progress.setVisible(true);
  if (stopButton == StopButton::atOnce)
    allowStop();
}

LoopScope::LoopScope(const RunContext& run) : run_(run), hold_(run) {
  run_.ports.progress.setVisible(true);
  allowStop();
}

void LoopScope::allowStop() {
  run_.ports.controls.setEnabled(ControlId::cmm_stop, true);
}

LoopScope::~LoopScope() {
  run_.ports.progress.setVisible(false);
  run_.ports.controls.setEnabled(ControlId::cmm_stop, false);
}

bool LoopScope::nextRow() {
  run_.ports.events.yield();
  advance();
  return !run_.state.userStop;
}

bool LoopScope::nextRowUncounted() {
  run_.ports.events.yield();
  return !run_.state.userStop;
}

void LoopScope::advance() {
  if (done_ < maximum_)
    run_.ports.progress.setValue(++done_);
}

void LoopScope::restart(int maximum) {
  done_ = 0;
  maximum_ = maximum;
  run_.ports.progress.setMinimum(0);
  run_.ports.progress.setMaximum(maximum);
  run_.ports.progress.setValue(0);
}

QString statusBreak() {
  return u"\r\n\r\n"_s;
}

StageText::StageText(const RunContext& run)
    : run_(run), tip_(run.ports.status.text()), faults_(std::uncaught_exceptions()) {}

StageText::~StageText() {
  if (told_ && std::uncaught_exceptions() > faults_)
    setStatus(run_, tip_);
}

void StageText::tell(const QString& line) {
  told_ = true;
  setStatus(run_, tip_ + statusBreak() + line);
}

void StageText::tellAlone(const QString& line) {
  told_ = true;
  setStatus(run_, statusBreak() + line);
}

void setStatus(const RunContext& run, const QString& text) {
  run.ports.status.setText(text);
  run.ports.status.moveCaretToEnd();
}

void addStatusLine(const RunContext& run, const QString& line) {
  setStatus(run, run.ports.status.text() + statusBreak() + line);
}

void showTip(const RunContext& run, const QString& text, bool append) {
  StatusText& status = run.ports.status;
  status.setText(append ? text + statusBreak() + status.text() : text + statusBreak());
}

}  // namespace elevenfive
