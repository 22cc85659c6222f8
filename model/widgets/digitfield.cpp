#include "model/widgets/digitfield.h"

#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QTimer>

namespace elevenfive {

using namespace Qt::StringLiterals;

DigitField::DigitField(int maximumLength, QWidget* parent) : QLineEdit(parent) {
  setValidator(new QRegularExpressionValidator(QRegularExpression(u"[0-9]*"_s), this));
  setMaxLength(maximumLength);
  setAlignment(Qt::AlignCenter);
  setFixedWidth(fontMetrics().horizontalAdvance(u'0') * (maximumLength + 3));
}

void DigitField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  // A mouse press places the caret after the focus has come, so the selection waits until it has.
  QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

}  // namespace elevenfive
