#include "conditions/widgets/valuepage.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include "conditions/conditionpanel.h"
#include "conditions/widgets/changestored.h"
#include "conditions/widgets/chiplist.h"
#include "conditions/widgets/listbuttons.h"
#include "conditions/widgets/tabcaptions.h"
#include "model/store.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(QStringView name, int first, int i) {
  return first < 0 ? name.toString() : u"%1_%2"_s.arg(name).arg(first + i);
}

/// The property of a check box that carries the code which it switches, as text.
constexpr const char* tagProperty = "Tag";

}  // namespace

ValuePage::ValuePage(Store& gConn, ConditionPanel& panel, Boxes& boxes, const ValuePageFacts& facts, QWidget* parent)
    : QWidget(parent), gConn_(gConn), panel_(panel), boxes_(boxes), facts_(facts) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  title_ = new QLabel(this);
  title_->setProperty("heading", true);
  layout->addWidget(title_);

  groups_.resize(static_cast<std::size_t>(facts.lists));
  auto* grid = new QGridLayout;
  const int columns = facts.lists > 1 ? 2 : 1;
  for (int i = 0; i < facts.lists; ++i)
    grid->addWidget(buildGroup(i), i / columns, i % columns);
  layout->addLayout(grid, 1);

  if (!facts.tipName.isEmpty()) {
    tip_ = new QPlainTextEdit(this);
    tip_->setObjectName(facts.tipName.toString());
    tip_->setAccessibleName(u"说明和当前取值"_s);
    tip_->setReadOnly(true);
    tip_->setTabChangesFocus(true);
    tip_->setFixedHeight(fontMetrics().lineSpacing() * 7);
    layout->addWidget(tip_);
  }
}

QWidget* ValuePage::buildGroup(int index) {
  Group& group = groups_[static_cast<std::size_t>(index)];
  auto* frame = new QFrame(this);
  frame->setProperty("card", true);
  auto* column = new QVBoxLayout(frame);
  group.check = new QCheckBox(frame);
  group.check->setObjectName(nameOf(facts_.checkName, facts_.firstCheck, index));
  group.chips = new ChipList(frame);
  group.chips->setObjectName(nameOf(facts_.listName, facts_.firstList, index));
  group.chips->setCompact(facts_.lists > 4);
  const auto buttons = listButtons(*group.chips);

  group.line = new QHBoxLayout;
  group.line->addWidget(group.check);
  group.line->addStretch();
  for (QPushButton* button : buttons)
    group.line->addWidget(button);
  column->addLayout(group.line);
  column->addWidget(group.chips, 1);
  group.chips->setMinimumHeight(fontMetrics().height() * 2);

  connect(group.check, &QCheckBox::toggled, this, [this, index](bool checked) {
    if (panel_.loadingPanel)
      return;
    const QString tag = groups_[static_cast<std::size_t>(index)].check->property(tagProperty).toString();
    changeAndShow(
        boxes_, [&] { panel_.clickTaggedSwitch(tag, checked); }, [this] { showStored(); });
    Q_EMIT tabChanged(tab_);
  });
  connect(group.chips, &ChipList::selectionEdited, this, [this, index] { selectionEdited(index); });
  QWidget* before = group.check;  // the focus goes as the eye does
  for (QPushButton* next : buttons) {
    setTabOrder(before, next);
    before = next;
  }
  setTabOrder(before, group.chips);
  return frame;
}

void ValuePage::addButton(int index, QPushButton* button) {
  Group& group = groups_[static_cast<std::size_t>(index)];
  group.line->insertWidget(1, button);
  setTabOrder(group.check, button);
}

void ValuePage::showTab(int tab) {
  tab_ = tab;
  title_->setText(tabCaption(tab));
  const QScopedValueRollback loading(panel_.loadingPanel, true);
  withFaultBox(boxes_, [&] {
    const auto lists = panel_.fillValueList(tab);
    for (std::size_t i = 0; i < groups_.size() && i < lists.size(); ++i) {
      groups_[i].chips->setChips(lists[i].items, lists[i].selected);
      groups_[i].chips->setAccessibleName(tabCaption(tab) + u" 允许的取值"_s);
    }
    loadSwitches();
    refreshTip(ConditionPanel::helpText(tab).isEmpty() ? tabHelp(tab) : ConditionPanel::helpText(tab) + u"\n\n"_s);
  });
}

void ValuePage::loadSwitches() {
  const QScopedValueRollback loading(panel_.loadingPanel, true);
  const auto switches = panel_.switches(tab_);
  for (std::size_t i = 0; i < groups_.size() && i < switches.size(); ++i) {
    groups_[i].check->setProperty(tagProperty, QString::number(switches[i].code));
    groups_[i].check->setText(switches[i].caption);
    groups_[i].check->setAccessibleName(switches[i].caption);
    groups_[i].check->setChecked(switches[i].checked);
    groups_[i].check->setEnabled(switches[i].enabled);
  }
}

/// Brings the controls of the open tab back to what is stored. The items, and with them the place in a list, stay.
void ValuePage::showStored() {
  const auto lists = panel_.valueLists(tab_);
  for (std::size_t i = 0; i < groups_.size() && i < lists.size(); ++i)
    groups_[i].chips->showSelection(lists[i].selected);
  loadSwitches();
  refreshTip(tip_ != nullptr ? tip_->toPlainText() : QString());
}

void ValuePage::refreshTip(const QString& tip) {
  if (tip_ != nullptr)
    tip_->setPlainText(panel_.updatedTip(tab_, tip));
}

void ValuePage::selectionEdited(int list) {
  if (panel_.loadingPanel)
    return;
  changeAndShow(
      boxes_, [&] { panel_.selectItems(tab_, list, groups_[static_cast<std::size_t>(list)].chips->selection()); },
      [this] { showStored(); });
  Q_EMIT tabChanged(tab_);
}

}  // namespace elevenfive
