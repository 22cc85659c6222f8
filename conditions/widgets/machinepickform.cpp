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

/// A ticket's numbers as a row of balls.
QLabel* ticketLabel(int place, const Draw& ticket, QWidget* parent) {
  auto* label = new QLabel(parent);
  QStringList numbers;
  for (const int number : ticket)
    numbers << twoDigits(number);
  label->setObjectName(u"Picture1_%1"_s.arg(place));
  label->setAccessibleName(numbers.join(u' '));
  const int side = label->fontMetrics().height() * 2;
  QPixmap picture(QSize(side * static_cast<int>(numbers.size()), side) * label->devicePixelRatioF());
  picture.setDevicePixelRatio(label->devicePixelRatioF());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(label->font());
  for (int i = 0; i < static_cast<int>(numbers.size()); ++i)
    drawBall(painter, QRectF(i * side + 2, 2, side - 4, side - 4), numbers[i], ballColor(0), Qt::white);
  label->setPixmap(picture);
  return label;
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
    layout->addWidget(ticketLabel(place++, ticket, &form));
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
