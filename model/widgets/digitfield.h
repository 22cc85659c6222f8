// A field for digits only, which selects its text when it gets the focus.
#pragma once

#include <QLineEdit>

namespace elevenfive {

class DigitField final : public QLineEdit {
  Q_OBJECT

 public:
  /// maximumLength is the most digits it takes; the width follows from it.
  explicit DigitField(int maximumLength, QWidget* parent = nullptr);

 protected:
  void focusInEvent(QFocusEvent* event) override;
};

}  // namespace elevenfive
