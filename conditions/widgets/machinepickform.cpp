#include "conditions/widgets/machinepickform.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QRandomGenerator>
#include <QVBoxLayout>

#include "conditions/machinepick.h"
#include "model/texts.h"
#include "model/widgets/ball.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

/// A number as a ball.
QLabel* ballLabel(int place, int number, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(u"Img_jixuan_red_%1"_s.arg(place));
  label->setAccessibleName(twoDigits(number));
  const int side = label->fontMetrics().height() * 2;
  QPixmap picture(QSize(side, side) * label->devicePixelRatioF());
  picture.setDevicePixelRatio(label->devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(label->font());
  drawBall(painter, QRectF(2, 2, side - 4, side - 4), twoDigits(number), ballColor(0), Qt::white);
  painter.end();
  label->setPixmap(picture);
  return label;
}

/// A ticket's numbers as a row of balls. Balls are counted through all tickets, places from 1.
QWidget* ticketRow(int place, const Draw& ticket, QWidget* parent) {
  auto* row = new QWidget(parent);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  QStringList numbers;
  int ball = (place - 1) * static_cast<int>(ticket.size());
  for (const int number : ticket) {
    numbers << twoDigits(number);
    layout->addWidget(ballLabel(++ball, number, row));
  }
  layout->addStretch();
  row->setObjectName(u"Picture1_%1"_s.arg(place));
  row->setAccessibleName(numbers.join(u' '));
  return row;
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
  int place = 1;
  for (const Draw& ticket : machinePick(count, [] { return QRandomGenerator::global()->generateDouble(); }))
    layout->addWidget(ticketRow(place++, ticket, &form));
  auto* ok = new QPushButton(u"确 定"_s, &form);
  ok->setObjectName(u"cmdOK"_s);
  ok->setAccessibleName(u"确定"_s);
  ok->setDefault(true);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(ok);
  layout->addLayout(row);
  QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
  form.exec();
}

}  // namespace elevenfive
