#include "tests/support/recordingports.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString nameOf(BoxKind kind) {
  switch (kind) {
    case BoxKind::plain:
      return u"plain"_s;
    case BoxKind::information:
      return u"info"_s;
    case BoxKind::critical:
      return u"critical"_s;
    case BoxKind::question:
      return u"question"_s;
  }
  return {};
}

}  // namespace

Answer RecordingPorts::show(const Box& box) {
  boxes.push_back(box);
  log << u"%1 [%2] %3"_s.arg(nameOf(box.kind), box.title, box.text);
  if (box.buttons == BoxButtons::ok || answers.empty())
    return Answer::yes;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

QString RecordingPorts::askText(const InputBox& box) {
  inputs.push_back(box);
  QString answer = box.defaultText;
  if (!typed.empty()) {
    answer = typed.front();
    typed.pop_front();
  }
  log << u"ask [%1] %2 = %3"_s.arg(box.title, box.prompt, answer);
  return answer;
}

void RecordingPorts::setMinimum(int newMinimum) {
  minimum = newMinimum;
}

void RecordingPorts::setMaximum(int newMaximum) {
  maximum = newMaximum;
}

void RecordingPorts::setVisible(bool newVisible) {
  visible = newVisible;
  log << (visible ? u"progress %1..%2"_s.arg(minimum).arg(maximum) : u"progress hidden"_s);
}

void RecordingPorts::setEnabled(ControlId control, bool isEnabled) {
  enabled[control] = isEnabled;
  log << u"%1 %2"_s.arg(isEnabled ? u"enable"_s : u"disable"_s, controlName(control));
}

void RecordingPorts::yield() {
  ++yields;
  if (onYield)
    onYield(yields);
}

QStringList RecordingPorts::boxTexts() const {
  QStringList texts;
  for (const Box& box : boxes)
    texts << box.text;
  return texts;
}

}  // namespace elevenfive
