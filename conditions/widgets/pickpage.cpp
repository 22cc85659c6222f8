#include "conditions/widgets/pickpage.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

#include "conditions/widgets/machinepickform.h"
#include "model/errors.h"
#include "model/texts.h"
#include "model/widgets/ball.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 3> pickNames{u"未选", u"拖码", u"胆码"};
constexpr int buttonColumns = 6;

QPushButton* actionButton(const QString& name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setAccessibleName(tip);
  button->setToolTip(tip);
  return button;
}

}  // namespace

PickButton::PickButton(int number, QWidget* parent) : QAbstractButton(parent), number_(number) {
  setObjectName(u"cmm_C7_%1"_s.arg(number));
  setText(twoDigits(number));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setCursor(Qt::PointingHandCursor);
  setPick(0);
}

void PickButton::setPick(int value) {
  pick_ = value >= 0 && value < static_cast<int>(pickNames.size()) ? value : 0;
  setAccessibleName(u"号码 %1 %2"_s.arg(twoDigits(number_), pickNames[static_cast<std::size_t>(pick_)]));
  setToolTip(accessibleName());
  update();
}

unsigned PickButton::backColor() const {
  return pickColors[pick_];
}

QSize PickButton::sizeHint() const {
  const int side = fontMetrics().height() * 5 / 2;
  return {side, side};
}

void PickButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF area = QRectF(rect()).adjusted(4, 4, -4, -4);
  const bool picked = pick_ != 0;
  QColor color = picked ? QColor(rgbOfBgr(backColor())) : palette().color(QPalette::Button);
  if (underMouse() && isEnabled())
    color = color.lighter(picked ? 112 : 104);
  if (isDown())
    color = color.darker(115);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(picked ? QPen(Qt::NoPen) : QPen(palette().color(QPalette::Mid), 1));
  painter.setBrush(color);
  painter.drawEllipse(area);
  painter.setPen(picked ? QColor(Qt::white) : palette().color(QPalette::ButtonText));
  painter.drawText(area, Qt::AlignCenter, text());
  painter.setBrush(Qt::NoBrush);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawEllipse(area.adjusted(-2.5, -2.5, 2.5, 2.5));
  }
}

PickPage::PickPage(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent)
    : QWidget(parent), driver_(driver), boxes_(boxes), inputs_(inputs), picking_(gConn, driver, boxes, *this) {
  setObjectName(u"pic_subTiaojian_1"_s);
  auto* title = new QLabel(u"选取号码"_s, this);
  title->setProperty("heading", true);
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  auto* inside = new QVBoxLayout(card);
  inside->addWidget(buildModes());
  inside->addWidget(buildNumbers());

  tip_ = new QPlainTextEdit(this);
  tip_->setObjectName(u"Text_ChoseNumberTip"_s);
  tip_->setAccessibleName(u"已选号码的个数和组合数"_s);
  tip_->setReadOnly(true);
  tip_->setTabChangesFocus(true);
  tip_->setFixedHeight(fontMetrics().lineSpacing() * 6);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(title);
  layout->addWidget(card);
  layout->addWidget(tip_);
  layout->addStretch(1);
}

QWidget* PickPage::buildModes() {
  auto* strip = new QWidget(this);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  modes_ = new QTabBar(strip);
  modes_->setObjectName(u"TabStrip_Qiaqu"_s);
  modes_->setAccessibleName(u"点击号码时设为"_s);
  modes_->addTab(u"拖码"_s);
  modes_->addTab(u"胆码"_s);
  modes_->setDrawBase(false);
  modes_->setExpanding(false);
  QPushButton* all = actionButton(u"cmd_FX_0"_s, u"全 选"_s, u"选取全部号码为拖码"_s);
  QPushButton* none = actionButton(u"cmm_clsQ"_s, u"清 空"_s, u"取消所有号码的选取"_s);
  QPushButton* machine = actionButton(u"cmm_jixuan"_s, u"机 选"_s, u"随机显示几注号码"_s);
  row->addWidget(new QLabel(u"点击号码设为："_s, strip));
  row->addWidget(modes_);
  row->addStretch();
  row->addWidget(all);
  row->addWidget(none);
  row->addWidget(machine);

  connect(modes_, &QTabBar::currentChanged, this, [this] { picking_.announceMode(mode(), false); });
  connect(all, &QPushButton::clicked, this, [this] { attempt([this] { picking_.selectAllTuo(); }); });
  connect(none, &QPushButton::clicked, this, [this] { attempt([this] { picking_.clearFront(); }); });
  connect(machine, &QPushButton::clicked, this,
          [this] { withFaultBox(boxes_, [this] { showMachinePick(inputs_, window()); }); });
  return strip;
}

QWidget* PickPage::buildNumbers() {
  auto* field = new QWidget(this);
  auto* grid = new QGridLayout(field);
  grid->setSpacing(fontMetrics().height() / 2);
  for (int number = 1; number <= numberCount; ++number) {
    auto* button = new PickButton(number, field);
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    button->setFont(large);
    button->setFixedSize(button->sizeHint());
    grid->addWidget(button, (number - 1) / buttonColumns, (number - 1) % buttonColumns);
    buttons_[static_cast<std::size_t>(number)] = button;
    connect(button, &QAbstractButton::clicked, this,
            [this, number] { attempt([&] { picking_.clickNumber(number, mode()); }); });
  }
  grid->setColumnStretch(buttonColumns, 1);
  return field;
}

int PickPage::mode() const {
  return modes_->currentIndex() + 1;
}

void PickPage::attempt(const std::function<void()>& change) {
  if (withFaultBox(boxes_, change))
    return;
  try {
    picking_.paintPickButtons();
  } catch (const Error&) {
    // Where the picks cannot be read either, the box of the first fault has told enough.
  }
}

void PickPage::reload() {
  withFaultBox(boxes_, [this] {
    picking_.paintPickButtons();
    driver_.showXuanhaoTip();
  });
}

void PickPage::setChoseNumberTip(const QString& text) {
  tip_->setPlainText(text);
}

void PickPage::paintPick(int number, int value) {
  if (number >= 1 && number <= numberCount)  // the second field has no buttons in this game
    buttons_[static_cast<std::size_t>(number)]->setPick(value);
}

bool PickPage::struckThrough(int number) const {
  return number >= 1 && number <= numberCount && buttons_[static_cast<std::size_t>(number)]->font().strikeOut();
}

}  // namespace elevenfive
