#include "acquire/widgets/caizongtip.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "acquire/catalogue.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int gameColumns = 3;
constexpr int slideMs = 150;

}  // namespace

CaizongTip::CaizongTip(Catalogue& catalogue, Boxes& boxes, QWidget* parent)
    : QFrame(parent),
      catalogue_(catalogue),
      boxes_(boxes),
      content_(new QWidget(this)),
      grid_(new QGridLayout),
      games_(new QButtonGroup(this)),
      slide_(this, "size") {
  setObjectName(u"fraCaizongTip"_s);
  setAccessibleName(u"选择彩票种类"_s);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  hide();
  auto* warning = new QLabel(u"要下载的数据比较多，可能需要几分钟时间，请耐心等待！"_s, content_);
  warning->setObjectName(u"cmmTisi"_s);
  auto* check = new QCheckBox(u"不再提示,以后按同样选择"_s, content_);
  check->setObjectName(u"CheckTip"_s);
  check->setAccessibleName(check->text());
  auto* ok = new QPushButton(u"确 定"_s, content_);
  ok->setObjectName(u"cmmCaizongOK"_s);
  ok->setAccessibleName(ok->text());
  auto* closing = new QHBoxLayout;
  closing->addWidget(check);
  closing->addStretch();
  closing->addWidget(ok);
  grid_->setHorizontalSpacing(fontMetrics().height());
  auto* layout = new QVBoxLayout(content_);
  layout->addLayout(grid_);
  layout->addWidget(warning);
  layout->addLayout(closing);
  connect(ok, &QPushButton::clicked, this, &CaizongTip::shut);
  connect(games_, &QButtonGroup::idClicked, this,
          [this](int game) { withFaultBox(boxes_, [&] { catalogue_.selectCaizong(game); }); });
  slide_.setDuration(slideMs);
}

void CaizongTip::openBelow(QWidget* button) {
  if (!withFaultBox(boxes_, [this] { showCaizongList(); }))
    return;
  button_ = button;
  for (QWidget* over = button; over != nullptr && over != parentWidget(); over = over->parentWidget())
    over->installEventFilter(this);  // once, however often it is asked for
  centre();
  slideOpen();
  show();
  raise();
  QAbstractButton* current = games_->checkedButton();
  if (current == nullptr)
    current = games_->buttons().value(0);
  if (current != nullptr)
    current->setFocus();
}

void CaizongTip::showCaizongList() {
  const std::vector<GameOption> games = catalogue_.showCaizongList();
  qDeleteAll(games_->buttons());
  for (int at = 0; const GameOption& game : games) {
    auto* option = new QRadioButton(game.name, content_);
    option->setObjectName(u"OptionSSC_%1"_s.arg(game.index));
    option->setAccessibleName(game.name);
    option->setChecked(game.inUse);
    games_->addButton(option, game.index);
    grid_->addWidget(option, at / gameColumns, at % gameColumns);
    ++at;
  }
  QWidget* before = nullptr;  // the games come before what stands below them
  for (QAbstractButton* option : games_->buttons()) {
    if (before != nullptr)
      setTabOrder(before, option);
    before = option;
  }
  if (before != nullptr) {
    setTabOrder(before, findChild<QWidget*>(u"CheckTip"_s));
    setTabOrder(findChild<QWidget*>(u"CheckTip"_s), findChild<QWidget*>(u"cmmCaizongOK"_s));
  }
}

QSize CaizongTip::fullSize() const {
  return content_->sizeHint() + QSize(2 * frameWidth(), 2 * frameWidth());
}

void CaizongTip::centre() {
  const int width = fullSize().width();
  const QPoint below = button_->mapTo(parentWidget(), QPoint(button_->width() / 2, button_->height()));
  const int rightmost = std::max(0, parentWidget()->width() - width);
  move(std::clamp(below.x() - width / 2, 0, rightmost), below.y());
}

void CaizongTip::slideOpen() {
  const QSize full = fullSize();
  slide_.stop();
  slide_.setStartValue(QSize(full.width(), 0));
  slide_.setEndValue(full);
  slide_.start();
}

bool CaizongTip::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Move && isVisible() && button_ != nullptr)
    centre();
  return QFrame::eventFilter(watched, event);
}

void CaizongTip::shut() {
  hide();
  if (button_ != nullptr)
    button_->setFocus();
}

void CaizongTip::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  // The content hangs on the lower edge, so that it slides out from under the button.
  const QSize full = content_->sizeHint();
  content_->setGeometry(frameWidth(), height() - frameWidth() - full.height(), full.width(), full.height());
}

void CaizongTip::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    shut();
  else
    QFrame::keyPressEvent(event);
}

}  // namespace elevenfive
