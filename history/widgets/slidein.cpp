#include "history/widgets/slidein.h"

#include <QEvent>
#include <algorithm>

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int stepPixels = 500 / 15;  ///< 500 twips
constexpr int intervalMs = 15;

}  // namespace

SlideIn::SlideIn(QWidget* strip, QWidget* parent) : QWidget(parent), strip_(strip), timer_(this) {
  strip_->setParent(this);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  timer_.setObjectName(u"TimerHuadong"_s);
  timer_.setInterval(intervalMs);
  connect(&timer_, &QTimer::timeout, this, &SlideIn::step);
}

void SlideIn::start() {
  strip_->move(-strip_->width(), 0);
  timer_.start();
}

void SlideIn::step() {
  strip_->move(std::min(strip_->x() + stepPixels, 0), 0);
  if (strip_->x() == 0)
    timer_.stop();
}

QSize SlideIn::sizeHint() const {
  return strip_->sizeHint();
}

QSize SlideIn::minimumSizeHint() const {
  return strip_->minimumSizeHint();
}

bool SlideIn::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest)  // the strip needs another size
    updateGeometry();
  return QWidget::event(event);
}

void SlideIn::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  strip_->resize(size());
}

}  // namespace elevenfive
