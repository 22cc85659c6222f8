#include "conditions/widgets/conditionview.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "conditions/conditionmap.h"
#include "conditions/widgets/changestored.h"
#include "conditions/widgets/grouppage.h"
#include "conditions/widgets/paritypage.h"
#include "conditions/widgets/pickpage.h"
#include "conditions/widgets/settingpages.h"
#include "conditions/widgets/tabcaptions.h"
#include "conditions/widgets/valuepage.h"
#include "conditions/zones.h"
#include "model/widgets/ball.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<ValuePageFacts, 5> valuePages{{
    {2, 10, u"List_TiaoJian", -1, 1, u"Check_useTiaojiao", 1, u"Text_tiaojianTip"},
    {11, 13, u"List_TJ", 0, 2, u"Check_useTiaojiao", 2, u""},
    {zonesTab, zonesTab, u"List_QJ", 1, 4, u"Check_useTiaojiao", 4, u""},
    {positionsTab, positionsTab, u"List_DingweiNumber", 1, positionCount, u"Check_useDingWeiTiaojiao", positionCode(1),
     u""},
    {16, 21, u"List_TiaojianElse", -1, 1, u"Check_useTiaojiao_else", -1, u"Text_elseTiaojianTip"},
}};

/// A dot, or nothing of the same size.
QPixmap markPicture(const QColor& color, bool inUse, const QWidget& widget) {
  const int side = widget.fontMetrics().height() / 2;
  QPixmap picture(QSize(side, side) * widget.devicePixelRatioF());
  picture.setDevicePixelRatio(widget.devicePixelRatioF());
  picture.fill(Qt::transparent);
  if (inUse) {
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QRectF(0.5, 0.5, side - 1, side - 1));
  }
  return picture;
}

/// The mark of what is in use: green, and white on a selected row and on a button that is down.
QIcon markIcon(bool inUse, const QWidget& widget) {
  const QPixmap green = markPicture(QColor(rgbOfBgr(49152)), inUse, widget);
  QIcon icon(green);
  icon.addPixmap(green, QIcon::Active);
  const QPixmap white = markPicture(Qt::white, inUse, widget);
  icon.addPixmap(white, QIcon::Selected);
  icon.addPixmap(white, QIcon::Normal, QIcon::On);
  icon.addPixmap(white, QIcon::Active, QIcon::On);
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
  tabs_->setCurrentRow(0);  // its numbers are loaded by a step of the start
  shownTab_ = firstConditionTab;
  pages_->setCurrentWidget(pickPage_);
  connect(tabs_, &QListWidget::itemSelectionChanged, this, &ConditionView::selectionChanged);
  addShortcuts();
}

QWidget* ConditionView::buildTabs() {
  auto* strip = new QWidget(this);
  find_ = new QLineEdit(strip);
  find_->setObjectName(u"Text_findTab"_s);
  find_->setAccessibleName(u"查找条件"_s);
  find_->setPlaceholderText(u"查找条件…"_s);
  find_->setClearButtonEnabled(true);
  find_->setToolTip(u"输入名称或拼音首字母 (Ctrl+F)，用 Ctrl+PgUp 和 Ctrl+PgDn 换页"_s);
  find_->installEventFilter(this);
  tabs_ = new QListWidget(strip);
  tabs_->setObjectName(u"TabStrip_TiaoJian"_s);
  tabs_->setAccessibleName(u"过滤条件"_s);
  tabs_->setUniformItemSizes(true);
  tabs_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  const int side = fontMetrics().height() / 2;
  tabs_->setIconSize({side, side});
  for (int tab = 1; tab <= lastConditionTab; ++tab) {
    new QListWidgetItem(tabCaption(tab), tabs_);
  }
  tabs_->installEventFilter(this);
  parity_ = new QPushButton(u"排除特定的单双组合"_s, strip);
  parity_->setObjectName(u"cmmPaicu"_s);
  parity_->setProperty("small", true);
  parity_->setCheckable(true);
  parity_->setIconSize({side, side});
  connect(parity_, &QPushButton::clicked, this, &ConditionView::showParityPage);
  count_ = new QLabel(strip);
  count_->setObjectName(u"Label_Zhushu"_s);
  count_->setAccessibleName(u"全部号码组合"_s);
  count_->setProperty("note", true);
  count_->setWordWrap(true);
  auto* quick = new QPushButton(u"过滤条件快速设置"_s, strip);
  quick->setObjectName(u"cmm_kuaisusezi"_s);
  quick->setAccessibleName(quick->text());
  quick->setProperty("small", true);
  connect(quick, &QPushButton::clicked, this, &ConditionView::quickSetupWanted);
  auto* column = new QVBoxLayout(strip);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  column->addWidget(find_);
  column->addWidget(tabs_, 1);
  column->addWidget(parity_);
  column->addWidget(count_);
  column->addWidget(quick);
  strip->setFixedWidth(fontMetrics().height() * 12);
  connect(find_, &QLineEdit::textChanged, this, &ConditionView::findTab);
  connect(find_, &QLineEdit::returnPressed, tabs_, qOverload<>(&QWidget::setFocus));
  return strip;
}

bool ConditionView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabs_ && event->type() == QEvent::Resize)
    fitTabs();
  if (watched == find_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
    tabs_->setFocus();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ConditionView::fitTabs() {
  const int text = tabs_->fontMetrics().height();
  const int room = (tabs_->height() - 2 * tabs_->frameWidth() - 2) / lastConditionTab;
  const int height = std::clamp(room, text - 1, text * 3 / 2);
  for (int row = 0; row < tabs_->count(); ++row)
    tabs_->item(row)->setSizeHint({0, height});
}

void ConditionView::buildPages(Inputs& inputs) {
  pageOfTab_.resize(lastConditionTab + 1);
  pickPage_ = new PickPage(gConn_, driver_, boxes_, inputs, pages_);
  pageOfTab_[1] = pickPage_;
  pages_->addWidget(pickPage_);
  int index = 2;
  for (const ValuePageFacts& facts : valuePages) {
    auto* page = new ValuePage(gConn_, panel_, boxes_, facts, pages_);
    page->setObjectName(u"pic_subTiaojian_%1"_s.arg(index++));
    connect(page, &ValuePage::tabChanged, this, &ConditionView::tabClicked);
    pages_->addWidget(page);
    for (int tab = facts.firstTab; tab <= facts.lastTab; ++tab)
      pageOfTab_[static_cast<std::size_t>(tab)] = page;
    if (facts.firstTab == zonesTab)
      addZoneTips(*page);
    if (facts.firstTab == positionsTab) {
      tolerance_ = new PositionTolerance(panel_, boxes_, page);
      page->layout()->addWidget(tolerance_);
    }
  }
  addPage(groupsTab, groupPage_ = new GroupPage(gConn_, panel_, boxes_, inputs, pages_));
  addPage(matchTab, matchPage_ = new MatchPage(panel_, boxes_, pages_));
  addPage(reductionTab, reductionPage_ = new ReductionPage(panel_, boxes_, pages_));
  addPage(summaryTab, summaryPage_ = new SummaryPage(gConn_, panel_, boxes_, pages_));
  connect(groupPage_, &GroupPage::tabChanged, this, &ConditionView::tabClicked);
  connect(matchPage_, &MatchPage::tabChanged, this, &ConditionView::tabClicked);
  connect(reductionPage_, &ReductionPage::tabChanged, this, &ConditionView::tabClicked);
  parityPage_ = new ParityPage(gConn_, panel_, boxes_, pages_);
  pages_->addWidget(parityPage_);
  connect(parityPage_, &ParityPage::changed, this, [this] { withoutBox([this] { markParity(); }); });
}

void ConditionView::addZoneTips(ValuePage& page) {
  for (int k = 1; k <= zoneCount; ++k) {
    auto* tip = new QPushButton(u"查看号码"_s, &page);
    tip->setObjectName(u"cmm_QujianTip_%1"_s.arg(k));
    tip->setAccessibleName(u"查看区间%1的号码"_s.arg(k));
    tip->setToolTip(tip->accessibleName());
    tip->setProperty("small", true);
    connect(tip, &QPushButton::clicked, this, [this, k] { Q_EMIT zoneTipWanted(k); });
    page.addButton(k - 1, tip);
  }
}

void ConditionView::addShortcuts() {
  const auto add = [this](const QKeySequence& keys, auto&& work) {
    auto* shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, work);
  };
  add(QKeySequence::Find, [this] {
    find_->setFocus(Qt::ShortcutFocusReason);
    find_->selectAll();
  });
  add(Qt::CTRL | Qt::Key_PageDown, [this] { stepTab(1); });
  add(Qt::CTRL | Qt::Key_PageUp, [this] { stepTab(-1); });
}

/// To the next tab in a direction that the search has not hidden; from the parity panel, to the first.
void ConditionView::stepTab(int step) {
  int row = shownTab_ > 0 ? shownTab_ - 1 + step : 0;
  while (row >= 0 && row < tabs_->count() && tabs_->item(row)->isHidden())
    row += step;
  if (row >= 0 && row < tabs_->count())
    tabs_->setCurrentRow(row);
}

void ConditionView::addPage(int tab, QWidget* page) {
  page->setObjectName(u"pic_subTiaojian_%1"_s.arg(pages_->count() + 1));
  pageOfTab_[static_cast<std::size_t>(tab)] = page;
  pages_->addWidget(page);
}

void ConditionView::selectTab(int tab) {
  if (tab < firstConditionTab || tab > lastConditionTab)
    return;
  if (tabs_->item(tab - 1)->isHidden())
    find_->clear();
  tabs_->setCurrentRow(tab - 1);
}

void ConditionView::showParityPage() {
  shownTab_ = 0;
  tabs_->clearSelection();
  parityPage_->open();
  pages_->setCurrentWidget(parityPage_);
  parity_->setChecked(true);
}

/// The focus alone makes a row current, so that the selection decides; there is always one, unless the parity panel shows.
void ConditionView::selectionChanged() {
  const QList<QListWidgetItem*> selected = tabs_->selectedItems();
  if (!selected.isEmpty())
    showTab(tabs_->row(selected.constFirst()) + 1);
  else if (shownTab_ > 0)
    tabs_->item(shownTab_ - 1)->setSelected(true);
}

void ConditionView::showTab(int tab) {
  if (tab < 1)
    return;
  shownTab_ = tab;
  QWidget* page = pageOfTab_[static_cast<std::size_t>(tab)];
  if (auto* values = qobject_cast<ValuePage*>(page))
    values->showTab(tab);
  if (page == pickPage_)
    pickPage_->reload();
  if (tab == positionsTab)
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
  parity_->setChecked(false);
}

void ConditionView::reload() {
  showTab(currentTab());
  if (pages_->currentWidget() == parityPage_)
    parityPage_->open();
  withFaultBox(boxes_, [this] {  // one for all: what ails one mark mostly ails the others too
    for (int tab = firstConditionTab; tab <= lastConditionTab; ++tab)
      markTab(tab);
    markParity();
  });
}

/// The page has told what went wrong with the click.
void ConditionView::tabClicked(int tab) {
  withoutBox([&] { markTab(tab); });
}

void ConditionView::markTab(int tab) {
  const bool inUse = tab > 1 && panel_.tabInUse(tab);
  tabs_->item(tab - 1)->setIcon(markIcon(inUse, *this));
  tabs_->item(tab - 1)->setToolTip(inUse ? u"使用中"_s : QString());
  tabs_->item(tab - 1)->setData(Qt::AccessibleTextRole, tabCaption(tab) + (inUse ? u" 使用中"_s : QString()));
}

void ConditionView::markParity() {
  const bool inUse = parityPage_->inUse();
  parity_->setIcon(markIcon(inUse, *this));
  parity_->setToolTip(inUse ? u"使用中"_s : QString());
  parity_->setAccessibleName(parity_->text() + (inUse ? u" 使用中"_s : QString()));
}

void ConditionView::findTab(const QString& text) {
  int first = -1;
  for (int row = 0; row < tabs_->count(); ++row) {
    const bool matches = tabMatches(row + 1, text);
    tabs_->item(row)->setHidden(!matches);
    if (matches && first < 0)
      first = row;
  }
  if (first >= 0 && shownTab_ > 0 && tabs_->item(shownTab_ - 1)->isHidden())
    tabs_->setCurrentRow(first);
}

void ConditionView::fillCommonGroups() {
  groupPage_->fillCommonGroups();
}

void ConditionView::loadNumbers() {
  pickPage_->load();
}

void ConditionView::clearPicks() {
  pickPage_->clearPicks();
}

void ConditionView::setChoseNumberTip(const QString& text) {
  pickPage_->setChoseNumberTip(text);
  count_->setText(text.section(u'\n', -1).trimmed());
}

}  // namespace elevenfive
