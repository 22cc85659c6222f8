// A box whose entries do something at once, and which rests on none of them.
//
// Only a choice from the open list counts. While the list is closed the keys that would choose open it: arrows and their like
// as it is, letters and digits at the entry that begins with them. Held with Ctrl, Alt or Meta they do nothing, but Alt with an
// arrow up or down opens it. The wheel chooses nothing.
#pragma once

#include <QComboBox>

namespace elevenfive {

class ActionBox final : public QComboBox {
  Q_OBJECT

 public:
  explicit ActionBox(QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace elevenfive
