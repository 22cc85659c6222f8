// The focus given back to where it was.
#pragma once

#include <QPointer>
#include <QWidget>

namespace elevenfive {

/// Gives the focus back, at the end of a scope, to the widget of a window that had it: one that is disabled meanwhile loses it.
class KeptFocus final {
 public:
  explicit KeptFocus(const QWidget& window) : focused_(window.focusWidget()) {}
  ~KeptFocus() {
    if (focused_ && focused_->isVisible())
      focused_->setFocus();
  }
  KeptFocus(const KeptFocus&) = delete;
  KeptFocus& operator=(const KeptFocus&) = delete;

 private:
  QPointer<QWidget> focused_;
};

}  // namespace elevenfive
