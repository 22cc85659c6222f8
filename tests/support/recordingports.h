// The double of all ports: records every text and the order of all calls, and answers from queues.
#pragma once

#include <QStringList>
#include <deque>
#include <functional>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "model/ports.h"

namespace elevenfive {

class RecordingPorts final : public Boxes,
                             public Inputs,
                             public Progress,
                             public Controls,
                             public StatusText,
                             public Events {
 public:
  /// Everything that happened, one line each, in order: "critical [title] text", "ask prompt = answer",
  /// "progress 0..462", "enable Pic_subTouZhu", ...
  QStringList log;

  std::vector<Box> boxes;        ///< as shown
  std::vector<InputBox> inputs;  ///< as asked
  std::deque<Answer> answers;    ///< for the next questions; yes when empty
  std::deque<QString> typed;     ///< for the next input boxes; the default text when empty
  std::map<ControlId, bool> enabled;
  QString status;
  int caretMoves = 0;
  int yields = 0;
  std::function<void(int yields)> onYield;  ///< called at each yield with the count so far, e.g. to ask for a stop
  int minimum = 0;
  int maximum = 0;
  int value = 0;
  bool visible = false;

  Answer show(const Box& box) override;
  QString askText(const InputBox& box) override;
  void setMinimum(int newMinimum) override;
  void setMaximum(int newMaximum) override;
  void setValue(int newValue) override { value = newValue; }
  void setVisible(bool newVisible) override;
  void setEnabled(ControlId control, bool isEnabled) override;
  [[nodiscard]] QString text() const override { return status; }
  void setText(const QString& newText) override { status = newText; }
  void moveCaretToEnd() override { ++caretMoves; }
  void yield() override;

  /// Texts of all boxes shown, in order.
  [[nodiscard]] QStringList boxTexts() const;
};

}  // namespace elevenfive
