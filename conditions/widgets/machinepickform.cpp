#include "conditions/widgets/machinepickform.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>
#include <QVBoxLayout>
#include <vector>

#include "conditions/machinepick.h"
#include "model/texts.h"
#include "model/widgets/ball.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// The side of a ball, in pixels of the screen.
int sideOf(const QLabel& label) {
  return label.fontMetrics().height() * 2;
}

/// Gives a place of a ticket the ball of a number.
void showBall(QLabel& label, int number) {
  const int side = sideOf(label);
  QPixmap picture(QSize(side, side) * label.devicePixelRatioF());
  picture.setDevicePixelRatio(label.devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(label.font());
  drawBall(painter, QRectF(2, 2, side - 4, side - 4), twoDigits(number), ballColor(0), Qt::white);
  painter.end();
  label.setPixmap(picture);
  label.setAccessibleName(twoDigits(number));
}

/// The tickets of the form, empty until they are drawn. Tickets and, through all of them, balls are counted from 1.
class TicketRows final {
 public:
  TicketRows(int count, QWidget& form, QVBoxLayout& layout) {
    for (int k = 1; k <= count; ++k)
      layout.addWidget(addTicket(k, form));
  }

  void show(const std::vector<Draw>& tickets) {
    std::size_t ball = 0;
    for (std::size_t k = 0; k < tickets.size(); ++k) {
      QStringList numbers;
      for (const int number : tickets[k]) {
        showBall(*balls_.at(ball++), number);
        numbers << twoDigits(number);
      }
      tickets_.at(k)->setAccessibleName(numbers.join(u' '));
    }
  }

 private:
  QWidget* addTicket(int k, QWidget& form) {
    auto* ticket = new QWidget(&form);
    ticket->setObjectName(u"Picture1_%1"_s.arg(k));
    auto* row = new QHBoxLayout(ticket);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < drawSize; ++i) {
      auto* ball = new QLabel(ticket);
      balls_.push_back(ball);
      ball->setObjectName(u"Img_jixuan_red_%1"_s.arg(balls_.size()));
      ball->setFixedSize(sideOf(*ball), sideOf(*ball));
      row->addWidget(ball);
    }
    row->addStretch();
    tickets_.push_back(ticket);
    return ticket;
  }

  std::vector<QWidget*> tickets_;
  std::vector<QLabel*> balls_;
};

/// A random fraction from 0 to below 1; events run before it is drawn.
double nextFraction() {
  QCoreApplication::processEvents();
  return QRandomGenerator::global()->generateDouble();
}

}  // namespace

void showMachinePick(Inputs& inputs, QWidget* parent) {
  const int count = machineTicketCount(inputs.askText(machinePickQuestion()));
  if (count <= 0)
    return;
  QDialog form(parent);
  form.setObjectName(u"frmJixuan"_s);
  form.setWindowTitle(u"机 选"_s);
  auto* layout = new QVBoxLayout(&form);
  TicketRows tickets(count, form, *layout);
  auto* ok = new QPushButton(u"确 定"_s, &form);
  ok->setObjectName(u"cmdOK"_s);
  ok->setAccessibleName(u"确定"_s);
  ok->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(ok);
  layout->addLayout(row);
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  QTimer timer(&form);
  timer.setObjectName(u"Timer1"_s);
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, &form, [&] { tickets.show(machinePick(count, nextFraction)); });
  timer.start(0);
  form.exec();
}

}  // namespace elevenfive
