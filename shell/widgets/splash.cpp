#include "shell/widgets/splash.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

#include "model/numbers.h"
#include "model/programtitle.h"
#include "model/texts.h"
#include "model/widgets/ball.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

// In device-independent points.
constexpr QSizeF pictureSize(480, 220);
constexpr qreal margin = 32;
constexpr qreal ballSize = 32;

QFont fontOf(int pixels, bool bold) {
  QFont font = QGuiApplication::font();
  font.setPixelSize(pixels);
  font.setBold(bold);
  return font;
}

void drawBalls(QPainter& painter) {
  const qreal step = (pictureSize.width() - 2 * margin - ballSize) / (numberCount - 1);
  for (int number = 1; number <= numberCount; ++number) {
    const QRectF area(margin + (number - 1) * step, 118, ballSize, ballSize);
    drawBall(painter, area, twoDigits(number), ballColor(number % 2 == 0 ? 1 : 0), Qt::white);
  }
}

}  // namespace

QPixmap splashPicture(qreal scale) {
  QPixmap picture((pictureSize * scale).toSize());
  picture.setDevicePixelRatio(scale);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area(QPointF(0, 0), pictureSize);
  QLinearGradient ground(area.topLeft(), area.bottomLeft());
  ground.setColorAt(0, Qt::white);
  ground.setColorAt(1, QColor(0xE3EAF2));
  painter.fillRect(area, ground);
  painter.setPen(QColor(0xB8C4D0));
  painter.drawRect(area.adjusted(0.5, 0.5, -0.5, -0.5));
  painter.setPen(QColor(0x1F2933));
  painter.setFont(fontOf(32, true));
  painter.drawText(QRectF(margin, 32, area.width() - 2 * margin, 48), Qt::AlignLeft | Qt::AlignVCenter,
                   gTitle.toString());
  painter.setPen(QColor(0x616E7C));
  painter.setFont(fontOf(14, false));
  painter.drawText(QRectF(margin, 80, area.width() - 2 * margin, 24), Qt::AlignLeft | Qt::AlignVCenter,
                   u"历史数据、过滤条件、投注号码"_s);
  painter.drawText(QRectF(margin, 172, area.width() - 2 * margin, 24), Qt::AlignLeft | Qt::AlignVCenter,
                   u"正在启动，请稍候..."_s);
  drawBalls(painter);
  return picture;
}

Splash::Splash() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(u"frmInitapp"_s);
  setAttribute(Qt::WA_QuitOnClose, false);
  setWindowTitle(gTitle.toString());
  auto* image = new QLabel(this);
  image->setObjectName(u"ImageInit"_s);
  image->setAccessibleName(u"正在启动"_s);
  image->setPixmap(splashPicture(devicePixelRatioF()));
  image->move(0, 0);
  image->adjustSize();
  setFixedSize(image->size());
  if (const QScreen* where = QGuiApplication::primaryScreen())
    move(where->availableGeometry().center() - rect().center());
}

void Splash::showAtOnce() {
  show();
  repaint();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace elevenfive
