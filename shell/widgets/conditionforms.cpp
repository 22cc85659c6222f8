#include "shell/widgets/conditionforms.h"

#include <QTimer>
#include <QWidget>
#include <chrono>
#include <utility>

#include "conditions/conditionmap.h"
#include "conditions/pendingaction.h"
#include "conditions/widgets/conditionview.h"
#include "conditions/widgets/quickform.h"
#include "conditions/widgets/zonepage.h"
#include "history/widgets/historypanel.h"
#include "model/widgets/faultbox.h"

namespace elevenfive {

namespace {

constexpr int conditionsTopTab = 2;
constexpr int picksTab = 1;

/// What a form has left is done after this time even where the window has not become active.
constexpr std::chrono::milliseconds longestActivation{500};

}  // namespace

ConditionForms::ConditionForms(Store& gConn, const QString& templatePath, ConditionView& conditions, const Ports& ports,
                               const Window& window)
    : QObject(window.widget),
      gConn_(gConn),
      conditions_(conditions),
      ports_(ports),
      window_(window),
      zones_(gConn, conditions.panel(), ports.boxes),
      question_(ports.files),
      files_(gConn, conditions.panel(), ports.boxes, ports.inputs, question_, templatePath) {
  connect(&conditions_, &ConditionView::quickSetupWanted, this, &ConditionForms::openQuickSetup);
  connect(&conditions_, &ConditionView::zoneTipWanted, this,
          [this](int k) { withFaultBox(ports_.boxes, [&] { zones_.showTip(k); }); });
  connect(&ports_.busy, &BusyState::changed, this, [this](bool busy) {
    if (!busy && pendingAction_ != 0)
      QMetaObject::invokeMethod(this, &ConditionForms::runPendingAction, Qt::QueuedConnection);
  });
}

void ConditionForms::showConditionTab(int tab) {
  if (conditions_.currentTab() == 0)  // the panel paicu writes as it opens, so it must not come up on the way
    conditions_.selectTab(tab);
  window_.selectTopTab(conditionsTopTab);
  conditions_.selectTab(tab);
}

void ConditionForms::exportConditions() {
  withFaultBox(ports_.boxes, [this] { files_.exportConditions(QDate::currentDate()); });
}

void ConditionForms::importConditions() {
  withFaultBox(ports_.boxes, [this] { files_.importConditions(); });
  showConditionTab(picksTab);  // which paints the number buttons
}

void ConditionForms::restoreDefaults() {
  withFaultBox(ports_.boxes, [this] {
    files_.restoreDefaults();
    showConditionTab(picksTab);
    conditions_.clearPicks();
  });
}

void ConditionForms::openQuickSetup() {
  if (quick_ == nullptr) {
    quick_ = new QuickForm(gConn_, ports_.boxes, window_.widget);
    connect(quick_, &QuickForm::tabWanted, this, &ConditionForms::showConditionTab);
    connect(quick_, &QuickForm::submitted, &conditions_, &ConditionView::reload);
    connect(quick_, &QuickForm::actionLeft, this, &ConditionForms::leaveAction);
    connect(quick_, &QuickForm::pageShown, this, [this](int page) { quickPage_ = page; });
    connect(&ports_.busy, &BusyState::changed, quick_, &QWidget::setDisabled);
  }
  quick_->openAt(quickPage_);
}

void ConditionForms::closeQuickSetup() {
  if (quick_ != nullptr)
    quick_->close();
}

ZonePage* ConditionForms::makeZonePage(QWidget* parent) {
  auto* page = new ZonePage(gConn_, zones_, ports_.boxes, parent);
  connect(page, &ZonePage::countsWanted, this, [this] { showConditionTab(zonesTab); });
  return page;
}

void ConditionForms::recountZones(HistoryPanel& history) {
  if (!zones_.zonesChanged)
    return;
  const BusyScope busy(ports_.busy);
  withFaultBox(ports_.boxes,
               [&] { zones_.recountIfChanged([&](Qihao first, Qihao last) { history.recountZones(first, last); }); });
}

void ConditionForms::leaveAction(int code) {
  pendingAction_ = code;
  closeQuickSetup();
  if (window_.widget->isActiveWindow()) {
    QMetaObject::invokeMethod(this, &ConditionForms::runPendingAction, Qt::QueuedConnection);
    return;
  }
  window_.widget->activateWindow();
  // Where the desktop does not hand the focus back, the window is never told that it is active.
  QTimer::singleShot(longestActivation, this, &ConditionForms::runPendingAction);
}

void ConditionForms::windowActivated() {
  if (quick_ != nullptr)
    quick_->hide();
  if (pendingAction_ != 0)
    QMetaObject::invokeMethod(this, &ConditionForms::runPendingAction, Qt::QueuedConnection);
}

void ConditionForms::runPendingAction() {
  if (ports_.busy.isBusy())
    return;
  const PendingAction* action = pendingActionOf(std::exchange(pendingAction_, 0));
  if (action == nullptr)
    return;
  switch (action->target) {
    case PendingTarget::exportConditions:
      exportConditions();
      break;
    case PendingTarget::importConditions:
      importConditions();
      break;
    case PendingTarget::restoreDefaults:
      restoreDefaults();
      break;
    case PendingTarget::tab:
      showConditionTab(action->tab);
      break;
    case PendingTarget::parityPanel:
      window_.selectTopTab(conditionsTopTab);
      conditions_.showParityPage();
      break;
    case PendingTarget::reductionPanel:
      showConditionTab(reductionTab);
      break;
    case PendingTarget::historyUpdate:
      if (window_.updateHistory)
        window_.updateHistory();
      break;
  }
}

}  // namespace elevenfive
