#include "acquire/widgets/gamepanel.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "acquire/catalogue.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int gameColumns = 3;
constexpr int slideMs = 120;

}  // namespace

GamePanel::GamePanel(Store& gConn, Boxes& boxes, QWidget* parent)
    : QFrame(parent, Qt::Popup), gConn_(gConn), boxes_(boxes), games_(new QButtonGroup(this)), grid_(new QGridLayout) {
  setObjectName(u"fraCaizongTip"_s);
  setAccessibleName(u"选择彩票种类"_s);
  setFrameShape(QFrame::StyledPanel);
  auto* warning = new QLabel(u"要下载的数据比较多，可能需要几分钟时间，请耐心等待！"_s, this);
  warning->setObjectName(u"cmmTisi"_s);
  auto* again = new QCheckBox(u"不再提示,以后按同样选择"_s, this);
  again->setObjectName(u"CheckTip"_s);
  auto* ok = new QPushButton(u"确 定"_s, this);
  ok->setObjectName(u"cmmCaizongOK"_s);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid_);
  layout->addWidget(warning);
  layout->addWidget(again);
  layout->addWidget(ok, 0, Qt::AlignRight);
  connect(ok, &QPushButton::clicked, this, &QWidget::hide);
  connect(games_, &QButtonGroup::idClicked, this,
          [this](int game) { withFaultBox(boxes_, [&] { Catalogue(gConn_).selectCaizong(game); }); });
}

void GamePanel::showCaizongList() {
  for (const GameOption& game : Catalogue(gConn_).showCaizongList()) {
    QAbstractButton* option = games_->button(game.index);
    if (option == nullptr) {
      option = new QRadioButton(this);
      option->setObjectName(u"OptionSSC_%1"_s.arg(game.index));
      const auto place = static_cast<int>(games_->buttons().size());
      games_->addButton(option, game.index);
      grid_->addWidget(option, place / gameColumns, place % gameColumns);
    }
    option->setText(game.name);
    option->setAccessibleName(game.name);
    option->setChecked(game.inUse);
  }
}

void GamePanel::openUnder(QWidget& button) {
  if (!withFaultBox(boxes_, [this] { showCaizongList(); }))
    return;
  const QSize size = sizeHint();
  QPoint place = button.mapToGlobal(QPoint(0, button.height()));
  if (const QScreen* where = button.screen())
    place.setX(
        std::clamp(place.x(), where->availableGeometry().left(),
                   std::max(where->availableGeometry().left(), where->availableGeometry().right() - size.width())));
  setGeometry(QRect(place, QSize(size.width(), 1)));
  show();
  auto* slide = new QPropertyAnimation(this, "geometry", this);
  slide->setDuration(slideMs);
  slide->setStartValue(QRect(place, QSize(size.width(), 1)));
  slide->setEndValue(QRect(place, size));
  slide->start(QAbstractAnimation::DeleteWhenStopped);
}

}  // namespace elevenfive
