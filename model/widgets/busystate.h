// Whether long work runs inside a nested event loop, known to the whole window.
//
// While it does, nothing else may start: panels and menus watch changed() and disable what could, and the window does not
// close. Work may nest; only the outermost scope ends the state.
#pragma once

#include <QObject>

namespace elevenfive {

class BusyState final : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  [[nodiscard]] bool isBusy() const noexcept { return depth_ > 0; }

  Q_SIGNAL void changed(bool busy);

  /// Asks the work in progress to stop, as its own stop button would.
  Q_SIGNAL void stopRequested();

 private:
  friend class BusyScope;
  int depth_ = 0;
};

/// Busy for the length of a scope, also where a fault ends it.
class BusyScope final {
 public:
  explicit BusyScope(BusyState& state) : state_(state) {
    if (state_.depth_++ == 0)
      Q_EMIT state_.changed(true);
  }
  ~BusyScope() {
    if (--state_.depth_ == 0)
      Q_EMIT state_.changed(false);
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  BusyState& state_;
};

}  // namespace elevenfive
