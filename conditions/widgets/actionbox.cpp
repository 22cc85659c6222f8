#include "conditions/widgets/actionbox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <algorithm>
#include <iterator>

#include "conditions/widgets/wheelguard.h"

namespace elevenfive {

namespace {

/// The keys that choose an entry in a closed box.
constexpr int listKeys[] = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown,
                            Qt::Key_Home, Qt::Key_End,  Qt::Key_Return, Qt::Key_Enter};

/// Whether a key writes a letter, a digit or another visible sign.
bool isVisibleSign(const QKeyEvent& event) {
  return !event.text().isEmpty() && event.text().front().isPrint() && !event.text().front().isSpace();
}

}  // namespace

ActionBox::ActionBox(QWidget* parent) : QComboBox(parent) {
  passWheelOn(*this);
}

void ActionBox::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  const bool opens = std::find(std::begin(listKeys), std::end(listKeys), event->key()) != std::end(listKeys);
  if (!plain || (!opens && !isVisibleSign(*event))) {
    QComboBox::keyPressEvent(event);
    return;
  }
  event->accept();
  showPopup();
  if (!opens)
    view()->keyboardSearch(event->text());
}

}  // namespace elevenfive
