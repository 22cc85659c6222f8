#include "conditions/widgets/conditionview.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "conditions/widgets/grouppage.h"
#include "conditions/widgets/pickpage.h"
#include "conditions/widgets/settingpages.h"
#include "conditions/widgets/tabcaptions.h"
#include "conditions/widgets/valuepage.h"
#include "model/widgets/ball.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<ValuePageFacts, 5> valuePages{{
    {2, 10, u"List_TiaoJian", -1, 1, u"Check_useTiaojiao", 1, u"Text_tiaojianTip"},
    {11, 13, u"List_TJ", 0, 2, u"Check_useTiaojiao", 2, u""},
    {14, 14, u"List_QJ", 1, 4, u"Check_useTiaojiao", 4, u""},
    {15, 15, u"List_DingweiNumber", 1, 7, u"Check_useDingWeiTiaojiao", 30, u""},
    {16, 21, u"List_TiaojianElse", -1, 1, u"Check_useTiaojiao_else", -1, u"Text_elseTiaojianTip"},
}};

constexpr int positionTab = 15;
constexpr int groupsTab = 22;
constexpr int matchTab = 23;
constexpr int reductionTab = 24;
constexpr int summaryTab = 25;

/// A dot in the highlight colour, or nothing of the same size.
QIcon markIcon(bool inUse, const QWidget& widget) {
  const int side = widget.fontMetrics().height() / 2;
  QPixmap picture(QSize(side, side) * widget.devicePixelRatioF());
  picture.setDevicePixelRatio(widget.devicePixelRatioF());
  picture.fill(Qt::transparent);
  if (inUse) {
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(rgbOfBgr(49152)));
    painter.drawEllipse(QRectF(0.5, 0.5, side - 1, side - 1));
  }
  QIcon icon;
  for (const auto mode : {QIcon::Normal, QIcon::Selected, QIcon::Active})
    icon.addPixmap(picture, mode);
  return icon;
}

}  // namespace

ConditionView::ConditionView(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent)
    : QWidget(parent), gConn_(gConn), boxes_(boxes), driver_(driver), panel_(gConn, &driver.state()) {
  setObjectName(u"Frm_Sub_1"_s);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(buildTabs());
  pages_ = new QStackedWidget(this);
  layout->addWidget(pages_, 1);
  buildPages(inputs);
  connect(tabs_, &QListWidget::currentRowChanged, this, [this](int row) { showTab(row + 1); });
  tabs_->setCurrentRow(0);
}

QWidget* ConditionView::buildTabs() {
  auto* strip = new QWidget(this);
  find_ = new QLineEdit(strip);
  find_->setObjectName(u"Text_findTab"_s);
  find_->setAccessibleName(u"查找条件"_s);
  find_->setPlaceholderText(u"查找条件…"_s);
  find_->setClearButtonEnabled(true);
  tabs_ = new QListWidget(strip);
  tabs_->setObjectName(u"TabStrip_TiaoJian"_s);
  tabs_->setAccessibleName(u"过滤条件"_s);
  tabs_->setUniformItemSizes(true);
  tabs_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const int side = fontMetrics().height() / 2;
  tabs_->setIconSize({side, side});
  for (int tab = 1; tab <= conditionTabCount; ++tab) {
    new QListWidgetItem(tabCaption(tab), tabs_);
  }
  tabs_->installEventFilter(this);
  count_ = new QLabel(strip);
  count_->setObjectName(u"Label_Zhushu"_s);
  count_->setAccessibleName(u"全部号码组合"_s);
  count_->setProperty("note", true);
  count_->setWordWrap(true);
  auto* column = new QVBoxLayout(strip);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(find_);
  column->addWidget(tabs_, 1);
  column->addWidget(count_);
  strip->setFixedWidth(fontMetrics().height() * 12);
  connect(find_, &QLineEdit::textChanged, this, &ConditionView::findTab);
  connect(find_, &QLineEdit::returnPressed, tabs_, qOverload<>(&QWidget::setFocus));
  return strip;
}

bool ConditionView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabs_ && event->type() == QEvent::Resize)
    fitTabs();
  return QWidget::eventFilter(watched, event);
}

void ConditionView::fitTabs() {
  const int text = tabs_->fontMetrics().height();
  const int room = (tabs_->height() - 2 * tabs_->frameWidth() - 2) / conditionTabCount;
  const int height = std::clamp(room, text + 1, text * 3 / 2);
  for (int row = 0; row < tabs_->count(); ++row)
    tabs_->item(row)->setSizeHint({0, height});
}

void ConditionView::buildPages(Inputs& inputs) {
  pageOfTab_.resize(conditionTabCount + 1);
  pickPage_ = new PickPage(gConn_, driver_, boxes_, inputs, pages_);
  pageOfTab_[1] = pickPage_;
  pages_->addWidget(pickPage_);
  int index = 2;
  for (const ValuePageFacts& facts : valuePages) {
    auto* page = new ValuePage(gConn_, panel_, boxes_, facts, pages_);
    page->setObjectName(u"pic_subTiaojian_%1"_s.arg(index++));
    connect(page, &ValuePage::tabChanged, this, &ConditionView::markTab);
    pages_->addWidget(page);
    for (int tab = facts.firstTab; tab <= facts.lastTab; ++tab)
      pageOfTab_[static_cast<std::size_t>(tab)] = page;
    if (facts.firstTab == positionTab) {
      tolerance_ = new PositionTolerance(panel_, boxes_, page);
      page->layout()->addWidget(tolerance_);
    }
  }
  addPage(groupsTab, groupPage_ = new GroupPage(gConn_, panel_, boxes_, inputs, pages_));
  addPage(matchTab, matchPage_ = new MatchPage(panel_, boxes_, pages_));
  addPage(reductionTab, reductionPage_ = new ReductionPage(panel_, boxes_, pages_));
  addPage(summaryTab, summaryPage_ = new SummaryPage(gConn_, boxes_, pages_));
  connect(groupPage_, &GroupPage::tabChanged, this, &ConditionView::markTab);
  connect(matchPage_, &MatchPage::tabChanged, this, &ConditionView::markTab);
  connect(reductionPage_, &ReductionPage::tabChanged, this, &ConditionView::markTab);
}

void ConditionView::addPage(int tab, QWidget* page) {
  page->setObjectName(u"pic_subTiaojian_%1"_s.arg(pages_->count() + 1));
  pageOfTab_[static_cast<std::size_t>(tab)] = page;
  pages_->addWidget(page);
}

void ConditionView::selectTab(int tab) {
  tabs_->setCurrentRow(tab - 1);
}

int ConditionView::currentTab() const {
  return tabs_->currentRow() + 1;
}

void ConditionView::showTab(int tab) {
  if (tab < 1)
    return;
  QWidget* page = pageOfTab_[static_cast<std::size_t>(tab)];
  if (auto* values = qobject_cast<ValuePage*>(page))
    values->showTab(tab);
  if (page == pickPage_)
    pickPage_->reload();
  if (tab == positionTab)
    tolerance_->reload();
  if (page == groupPage_)
    groupPage_->reload();
  if (page == matchPage_)
    matchPage_->reload();
  if (page == reductionPage_)
    reductionPage_->reload();
  if (page == summaryPage_)
    summaryPage_->reload();
  pages_->setCurrentWidget(page);
}

void ConditionView::reload() {
  showTab(currentTab());
  for (int tab = 1; tab <= conditionTabCount; ++tab)
    markTab(tab);
}

void ConditionView::markTab(int tab) {
  bool inUse = false;
  withFaultBox(boxes_, [&] { inUse = tab > 1 && panel_.tabInUse(tab); });
  tabs_->item(tab - 1)->setIcon(markIcon(inUse, *this));
  tabs_->item(tab - 1)->setToolTip(inUse ? u"使用中"_s : QString());
}

void ConditionView::findTab(const QString& text) {
  int first = -1;
  for (int row = 0; row < tabs_->count(); ++row) {
    const bool matches = tabs_->item(row)->text().remove(u' ').contains(text.trimmed(), Qt::CaseInsensitive);
    tabs_->item(row)->setHidden(!matches);
    if (matches && first < 0)
      first = row;
  }
  if (first >= 0 && tabs_->item(tabs_->currentRow())->isHidden())
    tabs_->setCurrentRow(first);
}

void ConditionView::setChoseNumberTip(const QString& text) {
  pickPage_->setChoseNumberTip(text);
  count_->setText(text.section(u'\n', -1).trimmed());
}

}  // namespace elevenfive
