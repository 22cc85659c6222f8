#include "cli/cliports.h"

#include <ostream>

#include "cli/output.h"
#include "model/programtitle.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

QString kindName(BoxKind kind) {
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

void CliPorts::beginCommand() {
  answers.clear();
  typed.clear();
  refused = false;
  lastText.clear();
}

Answer CliPorts::show(const Box& box) {
  const QString title = box.title.isEmpty() ? gTitle.toString() : box.title;
  printText(err_, u"[%1] "_s.arg(kindName(box.kind)) + title + u": "_s + box.text);
  err_.flush();
  lastText = box.text;
  refused = refused || box.kind == BoxKind::critical;
  if (box.buttons == BoxButtons::ok || answers.empty())
    return Answer::yes;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

QString CliPorts::askText(const InputBox& box) {
  if (typed.empty())
    return box.defaultText;
  QString answer = typed.front();
  typed.pop_front();
  return answer;
}

}  // namespace elevenfive
