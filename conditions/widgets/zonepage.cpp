#include "conditions/widgets/zonepage.h"

#include <QButtonGroup>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "conditions/widgets/numberbutton.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView zoneHelp =
    u"区间就是把 01 到 11 这些号码分成几段，过滤时可以规定每一段里开出几个号码。\n\n"
    u"例如分成三个区间：区间1 为 01 到 04，区间2 为 05 到 08，区间3 为 09 到 11，区间4 不用。\n\n"
    u"步骤：\n"
    u"1. 先点击“清空重新划分”；\n"
    u"2. 选择当前区间；\n"
    u"3. 点击号码，放进当前区间，再点一次取出；\n"
    u"4. 换下一个区间，重复步骤 2 和 3。";

QPlainTextEdit* readOnlyText(const QString& name, const QString& accessibleName, QWidget* parent) {
  auto* text = new QPlainTextEdit(parent);
  text->setObjectName(name);
  text->setAccessibleName(accessibleName);
  text->setReadOnly(true);
  text->setTabChangesFocus(true);
  return text;
}

}  // namespace

ZonePage::ZonePage(Store& gConn, Zones& zones, Boxes& boxes, QWidget* parent)
    : QWidget(parent), gConn_(gConn), zones_(zones), boxes_(boxes) {
  auto* title = new QLabel(u"重新划分区间"_s, this);
  title->setProperty("heading", true);
  text_ = readOnlyText(u"Text_QujianHuafen"_s, u"各区间的号码"_s, this);
  text_->setFixedHeight(fontMetrics().lineSpacing() * 6);
  QPlainTextEdit* help = readOnlyText(u"Text_FenQuTip"_s, u"怎样划分区间"_s, this);
  help->setPlainText(zoneHelp.toString());
  help->setMinimumHeight(fontMetrics().lineSpacing() * 10);
  auto* counts = new QPushButton(u"设置“区间过滤”的过滤条件"_s, this);
  counts->setObjectName(u"cmmQujianGuolv"_s);
  counts->setAccessibleName(counts->text());
  auto* below = new QHBoxLayout;
  below->addWidget(counts);
  below->addStretch();

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title);
  layout->addWidget(buildFrame());
  layout->addWidget(text_);
  layout->addLayout(below);
  layout->addWidget(help, 1);
  connect(counts, &QPushButton::clicked, this, &ZonePage::countsWanted);
}

QWidget* ZonePage::buildFrame() {
  auto* frame = new QFrame(this);
  frame->setObjectName(u"Frame_QJnumber"_s);
  frame->setProperty("card", true);
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel(u"当前区间："_s, frame));
  current_ = new QButtonGroup(this);
  for (int k = 1; k <= zoneCount; ++k) {
    auto* option = new QRadioButton(u"区间%1"_s.arg(k), frame);
    option->setObjectName(u"Option_QujianDingyi_%1"_s.arg(k));
    option->setAccessibleName(u"当前区间 "_s + option->text());
    current_->addButton(option, k);
    row->addWidget(option);
  }
  current_->button(1)->setChecked(true);
  auto* clear = new QPushButton(u"清空重新划分"_s, frame);
  clear->setObjectName(u"cmm_CLSQujianHuafen"_s);
  clear->setAccessibleName(clear->text());
  row->addStretch();
  row->addWidget(clear);
  auto* column = new QVBoxLayout(frame);
  column->addLayout(row);
  column->addWidget(buildNumbers());
  connect(clear, &QPushButton::clicked, this, [this] {
    withFaultBox(boxes_, [this] { zones_.clear([this] { reload(); }); });
    reload();
  });
  return frame;
}

QWidget* ZonePage::buildNumbers() {
  auto* field = new QWidget(this);
  auto* row = new QHBoxLayout(field);
  row->setContentsMargins(0, 0, 0, 0);
  for (int number = 1; number <= numberCount; ++number) {
    auto* button = new NumberButton(number, field);
    button->setObjectName(u"cmm_QujianHuafen_%1"_s.arg(number));
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setBold(true);
    button->setFont(large);
    button->setFixedSize(button->sizeHint());
    buttons_[static_cast<std::size_t>(number)] = button;
    row->addWidget(button);
    connect(button, &QAbstractButton::clicked, this, [this, number] {
      withFaultBox(boxes_, [&] { zones_.clickNumber(zone(), number); });
      reload();
    });
  }
  row->addStretch();
  return field;
}

int ZonePage::zone() const {
  return current_->checkedId();
}

void ZonePage::open() {
  reload();
  current_->checkedButton()->setFocus();
}

void ZonePage::reload() {
  withFaultBox(boxes_, [this] {
    paintNumbers();
    text_->setPlainText(zones_.showZones());
  });
}

void ZonePage::paintNumbers() {
  std::array<QStringList, numberCount + 1> zonesOf;
  for (int k = 1; k <= zoneCount; ++k)
    for (const int number : zoneMembers(gConn_, k))
      if (isNumber(number))
        zonesOf[static_cast<std::size_t>(number)] << u"区间%1"_s.arg(k);
  for (int number = 1; number <= numberCount; ++number) {
    const QStringList& in = zonesOf[static_cast<std::size_t>(number)];
    buttons_[static_cast<std::size_t>(number)]->setState(in.isEmpty() ? buttonFace : zoneMemberColor,
                                                         in.isEmpty() ? u"不在任何区间"_s : u"在"_s + in.join(u'、'));
  }
}

}  // namespace elevenfive
