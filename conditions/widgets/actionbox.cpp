#include "conditions/widgets/actionbox.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <algorithm>
#include <iterator>

#include "conditions/widgets/wheelguard.h"

namespace elevenfive {

namespace {

/// The keys that choose an entry in a closed box, and those that open its list.
constexpr int listKeys[] = {Qt::Key_Up,  Qt::Key_Down,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
                            Qt::Key_End, Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Space,    Qt::Key_F4};

/// Whether a key writes a letter, a digit or another visible sign.
bool isVisibleSign(const QKeyEvent& event) {
  return !event.text().isEmpty() && event.text().front().isPrint() && !event.text().front().isSpace();
}

/// Alt with an arrow, which opens the list of any box.
bool asksForTheList(const QKeyEvent& event) {
  return (event.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier &&
         (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down);
}

}  // namespace

ActionBox::ActionBox(QWidget* parent) : QComboBox(parent) {
  passWheelOn(*this);
}

void ActionBox::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
  const bool opens = std::find(std::begin(listKeys), std::end(listKeys), event->key()) != std::end(listKeys);
  const bool searches = plain && !opens && isVisibleSign(*event);
  if (!searches && !(plain && opens) && !asksForTheList(*event)) {
    event->ignore();  // QComboBox would choose by most of the others, whatever is held with them
    return;
  }
  event->accept();
  showPopup();
  if (searches)
    view()->keyboardSearch(event->text());
}

}  // namespace elevenfive
