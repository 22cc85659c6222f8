// The ports of a session without a screen: boxes go to standard error, questions are answered Yes unless the command
// says otherwise, input boxes take the command's arguments, progress and controls are nobody's business.
//
// A critical box, and being led to the picking page, mean that an operation could not do what it was asked: `refused` keeps
// that until the next command begins.
#pragma once

#include <QString>
#include <deque>
#include <iosfwd>

#include "conditions/picking.h"
#include "engine/runports.h"
#include "history/textfiles.h"
#include "model/ports.h"

namespace elevenfive {

class CliPorts final : public Boxes,
                       public Inputs,
                       public Progress,
                       public Controls,
                       public StatusText,
                       public Events,
                       public RunView,
                       public PickView {
 public:
  explicit CliPorts(std::ostream& err) : err_(err) {}

  std::deque<Answer> answers;  ///< for the next questions
  std::deque<QString> typed;   ///< for the next input boxes; the default text when empty
  bool refused = false;
  QString lastText;        ///< of the last box
  QString choseNumberTip;  ///< the counting lines of the picks as last written

  /// Forgets what an earlier command left for questions that were not asked.
  void beginCommand();

  /// Prints "[kind] title: text".
  Answer show(const Box& box) override;
  QString askText(const InputBox& box) override;

  [[nodiscard]] QString text() const override { return status_; }
  void setText(const QString& text) override { status_ = text; }
  void moveCaretToEnd() override {}

  void setMinimum(int) override {}
  void setMaximum(int) override {}
  void setValue(int) override {}
  void setVisible(bool) override {}
  void setEnabled(ControlId, bool) override {}
  void yield() override {}

  void showRizhiGrid() override {}
  [[nodiscard]] std::optional<Qihao> currentQihao() const override { return std::nullopt; }
  [[nodiscard]] QString rongcuoTipCaption() const override { return {}; }
  void showPickingPage() override { refused = true; }
  void setChoseNumberTip(const QString& tip) override { choseNumberTip = tip; }

  void paintPick(int, int) override {}

 private:
  std::ostream& err_;
  QString status_;
};

/// The frame of an import or export: nobody looks at it, nobody stops it.
class CliLineProgress final : public LineProgress {
 public:
  void show(int) override {}
  void setDone(int) override {}
  void hide() override {}
  [[nodiscard]] bool stopRequested() const override { return false; }
};

}  // namespace elevenfive
