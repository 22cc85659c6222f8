#include "conditions/widgets/wheelguard.h"

#include <QEvent>
#include <QWidget>

namespace elevenfive {

namespace {

class WheelGuard final : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::Wheel)
      return false;
    event->ignore();  // filtered and ignored: the parent is asked next
    return true;
  }
};

}  // namespace

void passWheelOn(QWidget& control) {
  control.installEventFilter(new WheelGuard(&control));
}

}  // namespace elevenfive
