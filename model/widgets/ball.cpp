#include "model/widgets/ball.h"

#include <QApplication>
#include <QPainter>
#include <QRadialGradient>

#include "model/texts.h"

namespace elevenfive {

QColor ballColor(int index) {
  static constexpr std::array<QRgb, 5> colors{0xFFC8372D, 0xFF2B6CB0, 0xFF2E8B57, 0xFF7A8490, 0xFF7C4DBC};
  return QColor(index >= 0 && index < static_cast<int>(colors.size()) ? colors[static_cast<std::size_t>(index)]
                                                                      : colors[0]);
}

void drawBall(QPainter& painter, const QRectF& area, const QString& text, const QColor& color,
              const QColor& textColor) {
  const qreal diameter = std::min(area.width(), area.height());
  QRectF circle(0, 0, diameter, diameter);
  circle.moveCenter(area.center());

  QRadialGradient shade(circle.center() - QPointF(diameter * 0.18, diameter * 0.22), diameter * 0.75);
  shade.setColorAt(0, color.lighter(128));
  shade.setColorAt(0.55, color);
  shade.setColorAt(1, color.darker(112));

  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shade);
  painter.drawEllipse(circle);
  QFont font = painter.font();
  font.setPixelSize(std::max(1, qRound(diameter * 0.52)));
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(textColor);
  painter.drawText(circle, Qt::AlignCenter, text);
  painter.restore();
}

void BallDelegate::setColor(int number, const QColor& color) {
  colors_.at(static_cast<std::size_t>(number)) = color;
}

void BallDelegate::showOnly(const Draw& numbers) {
  plain_.fill(true);
  for (const int number : numbers)
    plain_.at(static_cast<std::size_t>(number)) = false;
}

void BallDelegate::showAll() {
  plain_.fill(false);
}

QString BallDelegate::displayText(const QVariant& value, const QLocale& locale) const {
  const int number = value.toInt();
  return isNumber(number) ? twoDigits(number) : QStyledItemDelegate::displayText(value, locale);
}

void BallDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int number = index.data().toInt();
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool ball = isNumber(number) && !plain_[static_cast<std::size_t>(number)];
  if (ball)
    cell.text.clear();
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, option.widget);
  if (!ball)
    return;

  const QColor& own = colors_[static_cast<std::size_t>(number)];
  const qreal margin = option.rect.height() / 12.0;
  drawBall(*painter, QRectF(option.rect).adjusted(margin, margin, -margin, -margin), twoDigits(number),
           own.isValid() ? own : ballColor(0), Qt::white);
}

}  // namespace elevenfive
