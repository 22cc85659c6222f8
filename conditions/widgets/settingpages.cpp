#include "conditions/widgets/settingpages.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include "conditions/conditionmap.h"
#include "conditions/conditionsummary.h"
#include "conditions/widgets/changestored.h"
#include "conditions/widgets/tabcaptions.h"
#include "conditions/widgets/wheelguard.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr int positionOptions = 5;  ///< tolerances 0 to 4

/// Checks the button of an id alone; a group without that id shows none.
void checkOnly(QButtonGroup& group, int id) {
  group.setExclusive(false);
  for (QAbstractButton* button : group.buttons())
    button->setChecked(group.id(button) == id);
  group.setExclusive(true);
}

/// A page with the caption of its tab above a card; gives the card's layout.
QVBoxLayout* cardOf(QWidget* page, int tab) {
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* title = new QLabel(tabCaption(tab), page);
  title->setProperty("heading", true);
  auto* card = new QFrame(page);
  card->setProperty("card", true);
  layout->addWidget(title);
  layout->addWidget(card);
  layout->addStretch(1);
  return new QVBoxLayout(card);
}

}  // namespace

PositionTolerance::PositionTolerance(ConditionPanel& panel, Boxes& boxes, QWidget* parent)
    : QFrame(parent), panel_(panel), boxes_(boxes), options_(new QButtonGroup(this)) {
  setProperty("card", true);
  auto* row = new QHBoxLayout(this);
  row->addWidget(new QLabel(u"定位过滤容错条件个数："_s, this));
  for (int i = 0; i < positionOptions; ++i) {
    auto* option = new QRadioButton(QString::number(i), this);
    option->setObjectName(u"Option_DingweiRongcuo_%1"_s.arg(i));
    option->setAccessibleName(u"定位过滤容错条件个数 %1"_s.arg(i));
    options_->addButton(option, i);
    row->addWidget(option);
  }
  row->addStretch();
  connect(options_, &QButtonGroup::idClicked, this, [this](int id) {
    changeAndShow(
        boxes_, [&] { panel_.setPositionTolerance(id); }, [this] { showStored(); });
  });
}

void PositionTolerance::reload() {
  withFaultBox(boxes_, [this] { showStored(); });
}

void PositionTolerance::showStored() {
  checkOnly(*options_, panel_.positionTolerance());
}

MatchPage::MatchPage(ConditionPanel& panel, Boxes& boxes, QWidget* parent)
    : QWidget(parent), panel_(panel), boxes_(boxes) {
  QVBoxLayout* card = cardOf(this, matchTab);
  use_ = new QCheckBox(matchCaption.toString(), this);
  use_->setObjectName(u"Check_Historyguolu"_s);
  use_->setAccessibleName(u"使用历史数据过滤"_s);
  periods_ = box(u"Combo_HistoryGuoLu_0"_s, u"最近期数"_s, mostMatchPeriods, ConditionPanel::MatchField::minimum);
  match_ = box(u"Combo_PiPei"_s, u"最大匹配值"_s, mostMatches, ConditionPanel::MatchField::match);
  newest_ = box(u"Combo_HistoryGuoLu_1"_s, u"最大值"_s, mostMatchPeriods, ConditionPanel::MatchField::maximum);
  newest_->hide();  // a field of the row that no filter reads: it has no place in the line
  auto* line = new QHBoxLayout;
  line->addWidget(new QLabel(u"过滤掉最近："_s, this));
  line->addWidget(periods_);
  line->addWidget(new QLabel(u"期内，"_s, this));
  line->addWidget(new QLabel(u"最大匹配值为"_s, this));
  line->addWidget(match_);
  line->addWidget(new QLabel(u"及以上的号码"_s, this));
  line->addStretch();
  card->addWidget(use_);
  card->addLayout(line);
  connect(use_, &QCheckBox::toggled, this, [this](bool checked) {
    if (panel_.loadingPanel)
      return;
    changeAndShow(
        boxes_, [&] { panel_.setMatchUsed(checked); }, [this] { showStored(); });
    Q_EMIT tabChanged(matchTab);
  });
}

QComboBox* MatchPage::box(const QString& name, const QString& accessibleName, int last,
                          ConditionPanel::MatchField field) {
  auto* made = new QComboBox(this);
  made->setObjectName(name);
  made->setAccessibleName(accessibleName);
  passWheelOn(*made);
  for (int value = 1; value <= last; ++value)
    made->addItem(QString::number(value), value);
  connect(made, &QComboBox::currentIndexChanged, this, [this, field](int index) {
    if (!panel_.loadingPanel && index >= 0)
      changeAndShow(
          boxes_, [&] { panel_.setMatchField(field, index + 1); }, [this] { showStored(); });
  });
  return made;
}

void MatchPage::reload() {
  withFaultBox(boxes_, [this] { showStored(); });
}

void MatchPage::showStored() {
  const QScopedValueRollback loading(panel_.loadingPanel, true);
  const ConditionPanel::MatchState state = panel_.matchState();
  use_->setChecked(state.used);
  periods_->setCurrentIndex(periods_->findData(state.minimum));
  newest_->setCurrentIndex(newest_->findData(state.maximum));
  match_->setCurrentIndex(match_->findData(state.match));
}

ReductionPage::ReductionPage(ConditionPanel& panel, Boxes& boxes, QWidget* parent)
    : QWidget(parent), panel_(panel), boxes_(boxes), types_(new QButtonGroup(this)) {
  QVBoxLayout* card = cardOf(this, reductionTab);
  for (int i = 0; i < static_cast<int>(std::size(reductionTypes)); ++i) {
    const QString caption = reductionTypes[static_cast<std::size_t>(i)].toString();
    auto* option = new QRadioButton(caption, this);
    option->setObjectName(u"Option_ShuoSuiLeiXing_%1"_s.arg(firstReductionType + i));
    option->setAccessibleName(u"缩水类型 "_s + caption);
    types_->addButton(option, firstReductionType + i);
    card->addWidget(option);
  }
  optimise_ = new QCheckBox(this);
  optimise_->setObjectName(u"Check_auto"_s);
  auto* note = new QLabel(u"提示，这里的保Ｎ型是对整注号码（包含蓝球号码）进行缩水的。"_s, this);
  note->setObjectName(u"Label_ShuoSuiTip"_s);
  note->setProperty("note", true);
  card->addSpacing(fontMetrics().height() / 2);
  card->addWidget(note);
  card->addSpacing(fontMetrics().height() / 2);
  card->addWidget(optimise_);
  connect(types_, &QButtonGroup::idClicked, this, [this](int id) {
    changeAndShow(
        boxes_, [&] { panel_.setReductionType(id); }, [this] { showStored(); });
    Q_EMIT tabChanged(reductionTab);
  });
  connect(optimise_, &QCheckBox::toggled, this, [this](bool checked) {
    if (panel_.loadingPanel)
      return;
    changeAndShow(
        boxes_, [&] { panel_.clickSwitch(optimiseCode_, checked); }, [this] { showStored(); });
    Q_EMIT tabChanged(reductionTab);
  });
}

void ReductionPage::reload() {
  withFaultBox(boxes_, [this] { showStored(); });
}

void ReductionPage::showStored() {
  const QScopedValueRollback loading(panel_.loadingPanel, true);
  checkOnly(*types_, panel_.reductionType());
  for (const ConditionPanel::SwitchState& state : panel_.switches(reductionTab)) {
    optimiseCode_ = state.code;
    optimise_->setText(state.caption);
    optimise_->setAccessibleName(state.caption);
    optimise_->setChecked(state.checked);
  }
}

SummaryPage::SummaryPage(Store& gConn, ConditionPanel& panel, Boxes& boxes, QWidget* parent)
    : QWidget(parent), gConn_(gConn), panel_(panel), boxes_(boxes) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* title = new QLabel(tabCaption(summaryTab), this);
  title->setProperty("heading", true);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName(u"Text_TiaoJianList"_s);
  text_->setAccessibleName(u"全部过滤条件"_s);
  text_->setReadOnly(true);
  text_->setTabChangesFocus(true);
  layout->addWidget(title);
  layout->addWidget(text_, 1);
}

void SummaryPage::reload() {
  withFaultBox(boxes_, [this] { text_->setPlainText(buildConditionSummary(gConn_, panel_.run())); });
  text_->verticalScrollBar()->setValue(0);
}

}  // namespace elevenfive
