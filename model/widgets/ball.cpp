#include "model/widgets/ball.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QRadialGradient>

#include "model/texts.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

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

namespace {

/// A ball in the middle of a cell, transparent around it. It is drawn once for each look and the screen's own resolution:
/// circles drawn anew for every cell would take half the time in which a grid is painted.
QPixmap ballPicture(const QPainter& painter, const QSize& cell, int number, const QColor& color) {
  const qreal ratio = painter.device()->devicePixelRatioF();
  const QString key =
      u"ball %1 %2 %3 %4 %5 "_s.arg(number).arg(color.rgba()).arg(cell.width()).arg(cell.height()).arg(ratio) +
      painter.font().key();
  QPixmap picture;
  if (QPixmapCache::find(key, &picture))
    return picture;
  picture = QPixmap(cell * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter drawing(&picture);
  drawing.setFont(painter.font());
  const qreal margin = cell.height() / 12.0;
  drawBall(drawing, QRectF(QPointF(), cell).adjusted(margin, margin, -margin, -margin), twoDigits(number), color,
           Qt::white);
  drawing.end();
  QPixmapCache::insert(key, picture);
  return picture;
}

}  // namespace

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
  painter->drawPixmap(option.rect.topLeft(),
                      ballPicture(*painter, option.rect.size(), number, own.isValid() ? own : ballColor(0)));
}

}  // namespace elevenfive
