// The ports of a session without a screen: boxes go to standard error, questions are answered Yes unless the command
// says otherwise, input boxes keep their default, progress and controls are nobody's business.
#pragma once

#include <QString>
#include <deque>
#include <iosfwd>

#include "model/ports.h"

namespace elevenfive {

class CliPorts final : public Boxes, public Inputs, public Progress, public Controls, public StatusText, public Events {
 public:
  explicit CliPorts(std::ostream& err) : err_(err) {}

  /// Answers for the next questions, in order.
  std::deque<Answer> answers;

  /// Prints "[kind] title: text".
  Answer show(const Box& box) override;
  QString askText(const InputBox& box) override { return box.defaultText; }
  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool) override {}
  void setEnabled(ControlId, bool) override {}
  [[nodiscard]] QString text() const override { return status_; }
  void setText(const QString& text) override { status_ = text; }
  void moveCaretToEnd() override {}
  void yield() override {}

 private:
  std::ostream& err_;
  QString status_;
};

}  // namespace elevenfive
