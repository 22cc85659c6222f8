// The ports of the operations as the window implements them with Qt.
#pragma once

#include <QAction>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <map>
#include <optional>

#include "model/ports.h"
#include "model/widgets/dialogports.h"

class QProgressBar;

namespace elevenfive {

/// Message boxes and input lines over a parent window, modal.
class QtBoxes final : public Boxes {
 public:
  explicit QtBoxes(QWidget* parent = nullptr) : parent_(parent) {}
  void setParent(QWidget* parent) { parent_ = parent; }
  Answer show(const Box& box) override;

 private:
  QPointer<QWidget> parent_;
};

class QtInputs final : public Inputs {
 public:
  explicit QtInputs(QWidget* parent = nullptr) : parent_(parent) {}
  void setParent(QWidget* parent) { parent_ = parent; }
  QString askText(const InputBox& box) override;

 private:
  QPointer<QWidget> parent_;
};

class QtFileDialogs final : public FileDialogs {
 public:
  explicit QtFileDialogs(QWidget* parent = nullptr) : parent_(parent) {}
  void setParent(QWidget* parent) { parent_ = parent; }
  QString openFile(const QString& title, const QString& filter) override;
  QString saveFile(const QString& title, const QString& filter, const QString& defaultName) override;

 private:
  QPointer<QWidget> parent_;
};

/// A progress bar that is repainted at most every few milliseconds, whatever the number of its steps. It goes with the next
/// turn of the event loop: work that hides it between two stages, and shows it again at once, neither lets it flicker nor has
/// the whole window laid out anew each time.
class QtProgress final : public Progress {
 public:
  explicit QtProgress(QProgressBar& bar);
  void setMinimum(int minimum) override;
  void setMaximum(int maximum) override;
  void setValue(int value) override;
  void setVisible(bool visible) override;

 private:
  QProgressBar& bar_;
  QTimer hiding_;
  QElapsedTimer sinceShown_;
};

/// Enabled states of widgets and menu entries.
class QtControls final : public Controls {
 public:
  void add(ControlId control, QWidget* widget) { widgets_[control] = widget; }
  void add(ControlId control, QAction* action) { actions_[control] = action; }
  void setEnabled(ControlId control, bool enabled) override;

 private:
  friend class KeptEnabled;
  std::optional<ControlId> kept_;  ///< once enabled it stays so
  std::map<ControlId, QPointer<QWidget>> widgets_;
  std::map<ControlId, QPointer<QAction>> actions_;
};

/// A control that is enabled inside this scope stays so until the scope ends. Work that disables it between its stages then
/// neither loses a click that spans two of them nor throws the focus off the control.
class KeptEnabled final {
 public:
  KeptEnabled(QtControls& controls, ControlId control) : controls_(controls), control_(control) {
    controls_.kept_ = control;
  }
  ~KeptEnabled() {
    controls_.kept_.reset();
    controls_.setEnabled(control_, false);
  }
  KeptEnabled(const KeptEnabled&) = delete;
  KeptEnabled& operator=(const KeptEnabled&) = delete;

 private:
  QtControls& controls_;
  ControlId control_;
};

/// Runs the event loop at most every few milliseconds, so that a yield after each row costs no more than a look at the
/// clock, and yet a click on a stop button is seen well within 50 ms.
class QtEvents final : public Events {
 public:
  static constexpr int intervalMs = 16;
  void yield() override;

 private:
  QElapsedTimer sinceRun_;
};

}  // namespace elevenfive
