#include "conditions/widgets/pickpage.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

#include "conditions/widgets/changestored.h"
#include "conditions/widgets/machinepickform.h"
#include "conditions/widgets/wheelguard.h"

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

PickButton::PickButton(int number, QWidget* parent) : NumberButton(number, parent) {
  setPick(0);
}

void PickButton::setPick(int value) {
  pick_ = value >= 0 && value < static_cast<int>(pickNames.size()) ? value : 0;
  setState(pickColors[pick_], pickNames[static_cast<std::size_t>(pick_)].toString());
}

PickPage::PickPage(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent)
    : QWidget(parent), driver_(driver), boxes_(boxes), inputs_(inputs), picking_(gConn, driver, boxes, *this) {
  setObjectName(u"pic_subTiaojian_1"_s);
  tip_ = new QPlainTextEdit(this);
  tip_->setObjectName(u"Text_ChoseNumberTip"_s);
  tip_->setAccessibleName(u"已选号码的个数和组合数"_s);
  tip_->setReadOnly(true);
  tip_->setTabChangesFocus(true);
  tip_->setFixedHeight(fontMetrics().lineSpacing() * 5);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(heading(u"选取号码"_s));
  layout->addWidget(buildField(front_));
  layout->addWidget(tip_);
  layout->addSpacing(fontMetrics().height() / 2);
  layout->addWidget(heading(u"后区选号"_s));
  layout->addWidget(buildField(back_));
  auto* note = new QLabel(u"后区号码只作记录，不参加生成投注号码。"_s, this);
  note->setProperty("note", true);
  layout->addWidget(note);
  layout->addStretch(1);
}

QWidget* PickPage::heading(const QString& text) {
  auto* title = new QLabel(text, this);
  title->setProperty("heading", true);
  return title;
}

QWidget* PickPage::buildField(Field& field) {
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  auto* inside = new QVBoxLayout(card);
  inside->addWidget(buildModes(field));
  inside->addWidget(buildNumbers(field));
  return card;
}

QWidget* PickPage::buildModes(Field& field) {
  const bool back = &field == &back_;
  auto* strip = new QWidget(this);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  field.modes = new QTabBar(strip);
  field.modes->setObjectName(back ? u"TabStrip_Houqu"_s : u"TabStrip_Qiaqu"_s);
  field.modes->setAccessibleName(back ? u"点击后区号码时设为"_s : u"点击号码时设为"_s);
  field.modes->setProperty("modes", true);
  field.modes->addTab(u"拖码"_s);
  field.modes->addTab(u"胆码"_s);
  field.modes->setDrawBase(false);
  field.modes->setExpanding(false);
  passWheelOn(*field.modes);
  row->addWidget(new QLabel(u"点击号码设为："_s, strip));
  row->addWidget(field.modes);
  row->addStretch();
  const auto button = [&](const QString& name, const QString& caption, const QString& tip, auto&& work) {
    QPushButton* made = actionButton(name, caption, tip);
    row->addWidget(made);
    connect(made, &QPushButton::clicked, this, [this, work] { attempt(work); });
  };
  if (back) {
    button(u"cmm_clsH"_s, u"清 空"_s, u"取消所有后区号码的选取"_s, [this] { picking_.clearBack(); });
  } else {
    button(u"cmd_FX_0"_s, u"全 选"_s, u"选取全部号码为拖码"_s, [this] { picking_.selectAllTuo(); });
    button(u"cmm_clsQ"_s, u"清 空"_s, u"取消所有号码的选取"_s, [this] { picking_.clearFront(); });
    button(u"cmm_jixuan"_s, u"机 选"_s, u"随机显示几注号码"_s, [this] { showMachinePick(inputs_, window()); });
  }
  connect(field.modes, &QTabBar::currentChanged, this,
          [this, &field, back] { picking_.announceMode(field.mode(), back); });
  return strip;
}

QWidget* PickPage::buildNumbers(Field& field) {
  const bool back = &field == &back_;
  const int columns = back ? numberCount : buttonColumns;
  auto* area = new QWidget(this);
  auto* grid = new QGridLayout(area);
  grid->setSpacing(fontMetrics().height() / 2);
  for (int number = 1; number <= numberCount; ++number) {
    const int id = back ? number + backFieldOffset : number;
    auto* button = new PickButton(number, area);
    button->setObjectName(u"cmm_C7_%1"_s.arg(id));
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * (back ? 1.1 : 1.6));
    large.setBold(true);
    button->setFont(large);
    button->setFixedSize(button->sizeHint());
    grid->addWidget(button, (number - 1) / columns, (number - 1) % columns);
    field.buttons[static_cast<std::size_t>(number)] = button;
    connect(button, &QAbstractButton::clicked, this,
            [this, id, &field] { attempt([&] { picking_.clickNumber(id, field.mode()); }); });
  }
  grid->setColumnStretch(columns, 1);
  return area;
}

int PickPage::Field::mode() const {
  return modes->currentIndex() + 1;
}

/// The button of a row 1 to 11 or 101 to 111; nullptr for others.
PickButton* PickPage::buttonOf(int id) const {
  const bool back = id > backFieldOffset;
  const int number = back ? id - backFieldOffset : id;
  return isNumber(number) ? (back ? back_ : front_).buttons[static_cast<std::size_t>(number)] : nullptr;
}

void PickPage::clearPicks() {
  withFaultBox(boxes_, [this] {
    picking_.clearBack();
    picking_.clearFront();
  });
}

void PickPage::attempt(const std::function<void()>& change) {
  changeStored(boxes_, change, [this] { picking_.paintPickButtons(); });
}

void PickPage::reload() {
  withFaultBox(boxes_, [this] { load(); });
}

void PickPage::load() {
  picking_.paintPickButtons();
  driver_.showXuanhaoTip();
}

void PickPage::setChoseNumberTip(const QString& text) {
  tip_->setPlainText(text);
}

void PickPage::paintPick(int number, int value) {
  if (PickButton* button = buttonOf(number))
    button->setPick(value);
}

bool PickPage::struckThrough(int number) const {
  const PickButton* button = buttonOf(number);
  return button != nullptr && button->font().strikeOut();
}

}  // namespace elevenfive
