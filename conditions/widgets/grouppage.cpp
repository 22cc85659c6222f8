#include "conditions/widgets/grouppage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include "conditions/conditionmap.h"
#include "conditions/conditionpanel.h"
#include "conditions/widgets/actionbox.h"
#include "conditions/widgets/changestored.h"
#include "conditions/widgets/chiplist.h"
#include "conditions/widgets/listbuttons.h"
#include "conditions/widgets/pickpage.h"
#include "conditions/widgets/wheelguard.h"
#include "model/navigators.h"
#include "model/store.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView groupHelp =
    u"怎样使用自定义组：\n"
    u"第一步：选择一个自定义组；\n"
    u"第二步：点击号码，放进本组，再点一次取出，也可以从“常用分组”中选择；\n"
    u"第三步：选择本组允许开出的个数，选择后本组自动使用；\n"
    u"第四步：点击“修改自定义组名称”，改为容易识别的名称；\n"
    u"第五步：点击“设置下一组”，继续设置其它的组。\n\n"
    u"例如把 ０１ 和 １１ 放在一组，就代表尾数为 1 的号码。";

QPushButton* actionButton(const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption);
  button->setObjectName(name);
  button->setAccessibleName(caption);
  return button;
}

}  // namespace

GroupPage::GroupPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, Inputs& inputs, QWidget* parent)
    : QWidget(parent), gConn_(gConn), panel_(panel), boxes_(boxes), groups_(gConn, panel, boxes, inputs) {
  auto* title = new QLabel(conditionTab(groupsTab)->caption.toString(), this);
  title->setProperty("heading", true);
  tabs_ = new QTabBar(this);
  tabs_->setObjectName(u"TabStrip_ZDYchose"_s);
  tabs_->setAccessibleName(u"自定义组"_s);
  tabs_->setExpanding(false);
  tabs_->setUsesScrollButtons(true);
  passWheelOn(*tabs_);
  for (int k = 1; k <= zdyGroupCount; ++k)
    tabs_->addTab(zdyColumn(k));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(title);
  layout->addWidget(tabs_);
  layout->addWidget(buildEditor());
  auto* below = new QHBoxLayout;
  below->addWidget(buildList(), 2);
  below->addWidget(buildHelp(), 1);
  layout->addLayout(below, 1);
  connect(tabs_, &QTabBar::currentChanged, this, [this] {
    lines_->setCurrentRow(tabs_->currentIndex());
    withFaultBox(boxes_, [this] { showGroup(); });
  });
  fillCommonGroups();
}

QWidget* GroupPage::buildList() {
  lines_ = new QListWidget(this);
  lines_->setObjectName(u"List_ZDY"_s);
  lines_->setAccessibleName(u"全部自定义组"_s);
  lines_->setUniformItemSizes(true);
  connect(lines_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0)
      tabs_->setCurrentIndex(row);
  });
  return lines_;
}

QWidget* GroupPage::buildHelp() {
  auto* help = new QPlainTextEdit(this);
  help->setObjectName(u"Text_ZDYhelp"_s);
  help->setAccessibleName(u"怎样使用自定义组"_s);
  help->setReadOnly(true);
  help->setTabChangesFocus(true);
  help->setPlainText(groupHelp.toString());
  return help;
}

QWidget* GroupPage::buildEditor() {
  auto* card = new QFrame(this);
  card->setProperty("card", true);
  alias_ = new QLabel(card);
  alias_->setObjectName(u"Label_ZDYname"_s);
  alias_->setProperty("heading", true);
  alias_->setTextFormat(Qt::PlainText);
  common_ = new ActionBox(card);
  common_->setObjectName(u"ComboZDYcyfz"_s);
  common_->setAccessibleName(commonGroupsCaption.toString());
  common_->setPlaceholderText(commonGroupsCaption.toString());
  common_->setMinimumContentsLength(16);
  QPushButton* rename = actionButton(u"cmmChangeZDYname"_s, u"修改自定义组名称"_s);
  QPushButton* emptyOne = actionButton(u"cmm_EmptyZDY_1"_s, u"清空当前组"_s);
  QPushButton* emptyAll = actionButton(u"cmm_EmptyZDY_0"_s, u"清空全部自定义组"_s);
  QPushButton* next = actionButton(u"cmmZDYnext"_s, u"设置下一组"_s);
  auto* line = new QHBoxLayout;
  line->addWidget(alias_);
  line->addStretch();
  for (QWidget* widget : std::initializer_list<QWidget*>{common_, rename, emptyOne, emptyAll, next})
    line->addWidget(widget);
  auto* column = new QVBoxLayout(card);
  column->addLayout(line);
  column->addWidget(buildNumbers());
  column->addWidget(buildCounts());

  connect(common_, &QComboBox::activated, this, &GroupPage::chooseCommon);
  connect(rename, &QPushButton::clicked, this, [this] {
    change([this] {
      groups_.rename(group(), [this] {
        showGroup();
        showLines();
      });
    });
  });
  connect(emptyOne, &QPushButton::clicked, this, [this] { change([this] { groups_.clearZdyGroup(group()); }); });
  connect(emptyAll, &QPushButton::clicked, this, [this] {
    change([this] { groups_.clearAll(); });
    selectGroup(1);
  });
  connect(next, &QPushButton::clicked, this, [this] { selectGroup(std::min(group() + 1, zdyGroupCount)); });
  return card;
}

QWidget* GroupPage::buildNumbers() {
  auto* field = new QWidget(this);
  auto* row = new QHBoxLayout(field);
  row->setContentsMargins(0, 0, 0, 0);
  for (int number = 1; number <= numberCount; ++number) {
    auto* button = new PickButton(number, field);
    button->setObjectName(u"cmm_ZDY_%1"_s.arg(number));
    button->setFixedSize(button->sizeHint());
    members_[static_cast<std::size_t>(number)] = button;
    row->addWidget(button);
    connect(button, &QAbstractButton::clicked, this,
            [this, number] { change([&] { groups_.clickMember(group(), number); }); });
  }
  row->addStretch();
  return field;
}

QWidget* GroupPage::buildCounts() {
  auto* field = new QWidget(this);
  use_ = new QCheckBox(field);
  use_->setObjectName(u"Check_Zdy"_s);
  counts_ = new ChipList(field);
  counts_->setObjectName(u"List_ZDYset"_s);
  counts_->setAccessibleName(u"允许开出个数"_s);
  counts_->setFixedHeight(fontMetrics().height() * 3);
  auto* line = new QHBoxLayout;
  line->addWidget(use_);
  line->addStretch();
  countControls_ = {counts_};
  for (QPushButton* button : listButtons(*counts_)) {
    line->addWidget(button);
    countControls_.push_back(button);
  }
  auto* column = new QVBoxLayout(field);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(line);
  column->addWidget(counts_);
  connect(use_, &QCheckBox::toggled, this, [this](bool checked) {
    if (!panel_.loadingPanel)
      change([&] { groups_.clickUse(group(), checked); });
  });
  connect(counts_, &ChipList::selectionEdited, this, &GroupPage::countsEdited);
  return field;
}

void GroupPage::countsEdited() {
  if (panel_.loadingPanel)
    return;
  changeAndShow(
      boxes_, [this] { groups_.selectCounts(group(), counts_->selection()); }, [this] { showCounts(); });
  Q_EMIT tabChanged(groupsTab);
}

/// What a click on a count may have changed.
void GroupPage::showCounts() {
  const CustomGroups::GroupState state = groups_.showZdyGroup(group());
  counts_->showSelection(state.counts);
  showSwitch(state);
  showLines();
}

template <typename Work>
void GroupPage::change(Work&& work) {
  changeAndShow(boxes_, std::forward<Work>(work), [this] {
    showGroup();
    showLines();
  });
  Q_EMIT tabChanged(groupsTab);
}

int GroupPage::group() const {
  return tabs_->currentIndex() + 1;
}

void GroupPage::selectGroup(int k) {
  lines_->setCurrentRow(k - 1);
}

void GroupPage::showGroup() {
  const CustomGroups::GroupState state = groups_.showZdyGroup(group());
  alias_->setText(groups_.getZdyAlias(group()));
  for (int number = 1; number <= numberCount; ++number) {
    const bool member = state.members[static_cast<std::size_t>(number)];
    PickButton& button = *members_[static_cast<std::size_t>(number)];
    button.setState(pickColors[member ? 1 : 0], member ? u"在本组中"_s : u"不在本组中"_s);
  }
  counts_->setChips(zdyCountItems(), state.counts);
  for (QWidget* widget : countControls_)
    widget->setEnabled(state.countsEnabled);
  showSwitch(state);
  common_->setCurrentIndex(-1);
}

void GroupPage::showSwitch(const CustomGroups::GroupState& state) {
  panel_.loadingPanel = true;
  use_->setText(zdySwitchCaption(group()));
  use_->setAccessibleName(use_->text());
  use_->setChecked(state.used);
  use_->setEnabled(state.useEnabled);
  panel_.loadingPanel = false;
}

void GroupPage::showLines() {
  const QSignalBlocker quiet(lines_);
  const QStringList lines = groups_.fillZdyList();
  if (lines_->count() != lines.size()) {
    lines_->clear();
    lines_->addItems(lines);
  }
  for (int i = 0; i < lines_->count(); ++i) {
    lines_->item(i)->setText(lines[i]);
    lines_->item(i)->setToolTip(lines[i].toHtmlEscaped());  // a long line is cut at the list's edge
  }
  lines_->setCurrentRow(group() - 1);
}

void GroupPage::fillCommonGroups() {
  withFaultBox(boxes_, [this] {
    const QStringList entries = commonGroupEntries(getNextQihao(gConn_));
    common_->clear();
    common_->addItems(entries);
    common_->setCurrentIndex(-1);
  });
}

void GroupPage::chooseCommon(int index) {
  const QString entry = common_->itemText(index);
  change([&] { groups_.chooseCommon(group(), entry); });
}

void GroupPage::reload() {
  groups_.freeSwitches();
  withFaultBox(boxes_, [this] {
    showGroup();
    showLines();
  });
}

}  // namespace elevenfive
