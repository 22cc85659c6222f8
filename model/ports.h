// How the operations speak to the person and to the event loop.
//
// | port       | who implements it                         | what it is for
// | Boxes      | window: QMessageBox; CLI: standard error  | messages and questions, texts exactly as given
// | Inputs     | window: QInputDialog; CLI: arguments      | one line of text with a default
// | Progress   | window: a bar; CLI: nothing               | minimum, value, maximum, visible
// | Controls   | window: widgets; CLI: nothing             | enabled state of panels, buttons and menu entries
// | StatusText | window: TextChaoZuoTip; CLI: a string     | the running account of a run
// | Events     | window: QCoreApplication; CLI: nothing    | yield after each row, so that a stop can be asked for
//
// Logic is handed these and never opens a dialog itself; the recording double of the tests asserts every text and the order
// of the questions.
#pragma once

#include <QString>

namespace elevenfive {

enum class BoxKind { plain, information, critical, question };

/// What the person chose; a box with one button gives yes, a question that is closed gives what its `closed` says.
enum class Answer { yes, no };

/// The buttons of a box.
enum class BoxButtons { ok, yesNo, okCancel };

struct Box {
  BoxKind kind = BoxKind::plain;
  QString title;  ///< empty: the program's own
  QString text;
  BoxButtons buttons = BoxButtons::ok;
  bool destructive = false;    ///< a yes deletes what cannot be had back: Enter alone must not be a yes
  Answer closed = Answer::no;  ///< what Escape and closing the question answer: the side that loses nothing
};

class Boxes {
 public:
  virtual ~Boxes() = default;
  virtual Answer show(const Box& box) = 0;

  // The usual boxes, with the program's title.
  void plain(const QString& text) { show({BoxKind::plain, {}, text, BoxButtons::ok}); }
  void information(const QString& text) { show({BoxKind::information, {}, text, BoxButtons::ok}); }
  void critical(const QString& text) { show({BoxKind::critical, {}, text, BoxButtons::ok}); }
  bool ask(const QString& text) { return show({BoxKind::question, {}, text, BoxButtons::yesNo}) == Answer::yes; }
  bool askToDelete(const QString& text) {
    return show({BoxKind::question, {}, text, BoxButtons::yesNo, true}) == Answer::yes;
  }
  /// A no deletes what cannot be had back, so closing the question keeps it.
  bool askToKeep(const QString& text) {
    return show({BoxKind::question, {}, text, BoxButtons::yesNo, false, Answer::yes}) == Answer::yes;
  }
};

struct InputBox {
  QString title;  ///< empty: the program's own
  QString prompt;
  QString defaultText;
};

class Inputs {
 public:
  virtual ~Inputs() = default;
  /// The line as typed; empty where the box was cancelled.
  virtual QString askText(const InputBox& box) = 0;
};

class Progress {
 public:
  virtual ~Progress() = default;
  virtual void setMinimum(int minimum) = 0;
  virtual void setMaximum(int maximum) = 0;
  virtual void setValue(int value) = 0;
  virtual void setVisible(bool visible) = 0;
};

/// Controls whose state the operations change.
enum class ControlId {
  Pic_subTouZhu,    ///< the panel of the run's buttons
  cmm_stop,         ///< the stop button of a run
  mnu_UserQiehuan,  ///< the menu entry that changes the user
  FrameHkaijian,    ///< the entry strip of the history panel
};

/// The control's own name, which is also its objectName in the window.
QString controlName(ControlId control);

class Controls {
 public:
  virtual ~Controls() = default;
  virtual void setEnabled(ControlId control, bool enabled) = 0;
};

class StatusText {
 public:
  virtual ~StatusText() = default;
  [[nodiscard]] virtual QString text() const = 0;
  virtual void setText(const QString& text) = 0;
  virtual void moveCaretToEnd() = 0;
};

class Events {
 public:
  virtual ~Events() = default;
  /// Lets waiting events run; what the person does meanwhile must be safe at the very line that calls this.
  virtual void yield() = 0;
};

/// Disables a control for the length of a scope; a fault enables it again.
class DisabledWhile final {
 public:
  DisabledWhile(Controls& controls, ControlId control) : controls_(controls), control_(control) {
    controls_.setEnabled(control_, false);
  }
  ~DisabledWhile() { controls_.setEnabled(control_, true); }
  DisabledWhile(const DisabledWhile&) = delete;
  DisabledWhile& operator=(const DisabledWhile&) = delete;

 private:
  Controls& controls_;
  ControlId control_;
};

}  // namespace elevenfive
