#include "conditions/widgets/numberbutton.h"

#include <QPainter>

#include "model/texts.h"
#include "model/widgets/ball.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// Fills darker than this bear white figures.
constexpr int lightFill = 150;

}  // namespace

NumberButton::NumberButton(int number, QWidget* parent) : QAbstractButton(parent), number_(number) {
  setText(twoDigits(number));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
}

void NumberButton::setState(unsigned color, const QString& words) {
  color_ = color;
  setAccessibleName(u"号码 %1 %2"_s.arg(text(), words));
  setToolTip(accessibleName());
  update();
}

QSize NumberButton::sizeHint() const {
  const int side = fontMetrics().height() * 5 / 2;
  return {side, side};
}

void NumberButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF area = QRectF(rect()).adjusted(4, 4, -4, -4);
  const bool filled = color_ != buttonFace;
  QColor color = filled ? QColor(rgbOfBgr(color_)) : palette().color(QPalette::Button);
  const QColor figures =
      filled && color.lightness() < lightFill ? QColor(Qt::white) : palette().color(QPalette::ButtonText);
  if (underMouse() && isEnabled())
    color = color.lighter(filled ? 112 : 104);
  if (isDown())
    color = color.darker(115);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(filled ? QPen(Qt::NoPen) : QPen(palette().color(QPalette::Mid), 1));
  painter.setBrush(color);
  painter.drawEllipse(area);
  painter.setPen(figures);
  painter.drawText(area, Qt::AlignCenter, text());
  painter.setBrush(Qt::NoBrush);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawEllipse(area.adjusted(-2.5, -2.5, 2.5, 2.5));
  }
}

}  // namespace elevenfive
