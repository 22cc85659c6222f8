// A number as a ball, drawn as vectors so that it is sharp at every scale.
#pragma once

#include <QColor>
#include <QStyledItemDelegate>
#include <array>

#include "model/numbers.h"

class QPainter;
class QRectF;

namespace elevenfive {

/// A colour given as a number in the order 0xBBGGRR.
constexpr QRgb rgbOfBgr(unsigned bgr) {
  return 0xFF000000U | ((bgr & 0xFFU) << 16U) | (bgr & 0xFF00U) | ((bgr >> 16U) & 0xFFU);
}

/// The colours of 基本号 in BallColor: 0 red, 1 blue, 2 green, 3 grey, 4 purple; others show as red.
QColor ballColor(int index);

/// Draws the ball of a text in the largest circle that fits the rectangle's middle.
void drawBall(QPainter& painter, const QRectF& area, const QString& text, const QColor& color, const QColor& textColor);

/// Shows the number of a cell as a ball; cells that hold no number 1..11 show as text. Numbers have two digits either way.
class BallDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void setColor(int number, const QColor& color);

  /// Only these numbers are balls, the others plain text; showAll() ends that.
  void showOnly(const Draw& numbers);
  void showAll();

  [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  std::array<bool, 12> plain_{};
  std::array<QColor, 12> colors_{};  ///< by number; an invalid colour is red
};

}  // namespace elevenfive
