#include "shell/widgets/mainwindow.h"

#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabBar>
#include <QVBoxLayout>

#include "acquire/widgets/caizongtip.h"
#include "conditions/widgets/conditionview.h"
#include "conditions/widgets/wheelguard.h"
#include "conditions/widgets/zonepage.h"
#include "engine/widgets/resultdialogs.h"
#include "engine/widgets/runpanel.h"
#include "history/widgets/historypanel.h"
#include "model/programtitle.h"
#include "model/widgets/faultbox.h"
#include "model/widgets/keptfocus.h"
#include "model/workspace.h"
#include "shell/widgets/conditionforms.h"
#include "shell/widgets/historyupdate.h"
#include "shell/widgets/menumap.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QStringView, 3> topCaptions{u" 历史开奖数据 ", u" 设置过滤条件 ", u" 生成投注号码 "};
constexpr QSize smallestWindow(1180, 720);
constexpr int asidesFrame = 5;  ///< the frame without a tab

}  // namespace

/// The window as a run sees it.
class MainWindow::View final : public RunView {
 public:
  explicit View(MainWindow& window) : window_(window) {}

  void showRizhiGrid() override { window_.run_->showRizhiGrid(); }
  [[nodiscard]] std::optional<Qihao> currentQihao() const override { return window_.run_->currentQihao(); }
  [[nodiscard]] QString rongcuoTipCaption() const override { return window_.run_->rongcuoTipCaption(); }
  void showDrawnNumbers(const Draw& draw) override { window_.run_->showDrawnNumbers(draw); }
  void showPickingPage() override {
    window_.selectTopTab(2);
    window_.conditions_->selectTab(1);
  }
  void setChoseNumberTip(const QString& text) override {
    if (window_.conditions_ != nullptr)
      window_.conditions_->setChoseNumberTip(text);
  }

 private:
  MainWindow& window_;
};

MainWindow::MainWindow(Workspace& workspace, const WindowPorts& ports)
    : appPath(workspace.folders().program),
      workspace_(workspace),
      ports_(ports),
      catalogue_(workspace.gConn),
      statusLine_(*statusBar()),
      view_(std::make_unique<View>(*this)) {
  setObjectName(u"Form_main"_s);
  setWindowTitle(gTitle.toString());
  run_ = new RunPanel(workspace_.gConn, this);
  dialogs_ = std::make_unique<QtResultFileDialogs>(appPath, ports_.boxes, ports_.files, ports_.texts, this);
  driver_ = std::make_unique<RunDriver>(workspace_.gConn, RunPorts{ports_.boxes, ports_.inputs, run_->progress(),
                                                                   controls_, *run_, events_, *view_, dialogs_.get()});
  history_ =
      new HistoryPanel(workspace_.gConn, appPath,
                       {ports_.boxes, ports_.inputs, ports_.files, ports_.texts, events_, statusLine_, busy_}, this);
  update_ =
      new HistoryUpdate(workspace_.gConn, *history_,
                        {ports_.boxes, ports_.inputs, events_, statusLine_, busy_, appPath, ports_.loaders}, this);
  conditions_ = new ConditionView(workspace_.gConn, *driver_, ports_.boxes, ports_.inputs, this);
  buildBody();
  buildConditionForms();
  buildMenus();
  connectPanels();
  closeChartMode();
  resize(smallestWindow);
}

MainWindow::~MainWindow() = default;

void MainWindow::layoutHistoryGrid() {
  history_->layoutColumns();
}

void MainWindow::initMainPanels() {
  showSubFrame(0);
  conditions_->loadNumbers();
  history_->offerNextPeriod();
  statusLine_.update(workspace_.gConn);
}

void MainWindow::buildBody() {
  auto* body = new QWidget(this);
  body->setObjectName(u"Pic_Main"_s);
  topTabs_ = new QTabBar(body);
  topTabs_->setObjectName(u"TabStrip_Top"_s);
  topTabs_->setAccessibleName(u"主页面"_s);
  topTabs_->setExpanding(false);
  topTabs_->setDrawBase(false);
  passWheelOn(*topTabs_);
  topTabs_->ensurePolished();  // tabs are measured once, as they are added
  for (const QStringView caption : topCaptions)
    topTabs_->addTab(caption.toString());
  pages_ = new QStackedWidget(body);
  pages_->addWidget(history_);
  pages_->addWidget(conditions_);
  pages_->addWidget(run_);
  auto* layout = new QVBoxLayout(body);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(topTabs_);
  layout->addWidget(pages_, 1);
  setCentralWidget(body);
}

void MainWindow::buildMenus() {
  for (const Menu& fact : menus) {
    QMenu* menu = menuBar()->addMenu(fact.caption.toString());
    menu->setObjectName(fact.name.toString());
    for (const MenuEntry& entry : menuEntries) {
      if (entry.menu != fact.name)
        continue;
      if (entry.separatorBefore)
        menu->addSeparator();
      QAction* action = menu->addAction(entry.caption.toString());
      action->setObjectName(entry.index < 0 ? entry.name.toString() : u"%1_%2"_s.arg(entry.name).arg(entry.index));
      connect(action, &QAction::triggered, this, [this, &entry] { runMenuAction(entry.action, entry.argument); });
      if (entry.action == MenuAction::switchUser)
        controls_.add(ControlId::mnu_UserQiehuan, action);
    }
    const bool hasEntries = !menu->isEmpty();
    const bool ofUsers = fact.name == u"mnu_User";
    menu->menuAction()->setVisible(ofUsers ? workspace_.gUserMode >= 2 : hasEntries || fact.name == u"mnu_Help");
  }
}

void MainWindow::connectPanels() {
  controls_.add(ControlId::Pic_subTouZhu, run_->buttonPanel());
  controls_.add(ControlId::cmm_stop, run_->stopButton());
  controls_.add(ControlId::FrameHkaijian, history_->entryStrip());
  connect(topTabs_, &QTabBar::currentChanged, this, [this](int index) { topTabShown(index + 1); });
  connect(&busy_, &BusyState::changed, this, &MainWindow::busyChanged);
  connect(&busy_, &BusyState::changed, run_->buttonPanel(), &QWidget::setDisabled);
  connect(run_, &RunPanel::runRequested, this, &MainWindow::runButton);
  connect(run_, &RunPanel::stopRequested, this, [this] { driver_->cmm_stop_Click(); });
  connect(&busy_, &BusyState::stopRequested, this, [this] {
    if (run_->stopButton()->isEnabled())  // a wish kept for later would end a run that has not begun
      driver_->cmm_stop_Click();
  });
  auto* caizongTip = new CaizongTip(catalogue_, ports_.boxes, this);
  connect(history_, &HistoryPanel::gameChooserWanted, caizongTip, &CaizongTip::openBelow);
  connect(topTabs_, &QTabBar::currentChanged, caizongTip, &QWidget::hide);
  connect(&busy_, &BusyState::changed, caizongTip, &QWidget::hide);
  connect(history_, &HistoryPanel::historyChanged, this, &MainWindow::updateStatusLine);
  connect(history_, &HistoryPanel::drawsDeleted, this, [this] { historyDeleted_ = true; });
}

void MainWindow::selectTopTab(int tab) {
  if (topTabs_->currentIndex() == tab - 1)
    topTabShown(tab);
  else
    topTabs_->setCurrentIndex(tab - 1);
}

/// Shows the frame Frm_Sub(index) and hides the others.
void MainWindow::showSubFrame(int index) {
  if (index == asidesFrame)
    pages_->setCurrentWidget(asides_);
  else
    pages_->setCurrentIndex(index);
}

void MainWindow::topTabShown(int tab) {
  showSubFrame(tab - 1);
  if (busy_.isBusy()) {  // a look at another page; its rows are being written
    skippedPage_ = true;
    return;
  }
  skippedPage_ = false;
  if (tab == 1)
    forms_->recountZones(*history_);
  withFaultBox(ports_.boxes, [&] {
    if (tab == 2 && historyDeleted_) {
      historyDeleted_ = false;  // before the yield, in which the tab may be clicked again
      events_.yield();
      ports_.boxes.plain(u"之前有删除记录的操作,需要刷新数据..."_s);
    }
    if (tab == 2)
      conditions_->reload();
    if (tab == 3)
      run_->showRizhiGrid();
    driver_->showXuanhaoTip();
  });
}

void MainWindow::runMenuAction(MenuAction action, int argument) {
  switch (action) {
    case MenuAction::exit:
      close();
      break;
    case MenuAction::historyEntry:
      selectTopTab(1);
      ports_.boxes.plain(u"请输入开奖号码,然后点击“添加记录”"_s);
      history_->focusEntry();
      break;
    case MenuAction::historyDataMode:
      selectTopTab(1);
      history_->selectDataMode(argument == 1);
      break;
    case MenuAction::historyRange:
      selectTopTab(1);
      history_->selectHistoryMode(argument == 1);
      break;
    case MenuAction::conditionTab:
      selectTopTab(2);
      conditions_->selectTab(argument % 100);
      break;
    case MenuAction::parityPage:
      selectTopTab(2);
      conditions_->showParityPage();
      break;
    case MenuAction::restoreDefaults:
    case MenuAction::exportConditions:
    case MenuAction::importConditions:
    case MenuAction::zonePage:
      runConditionAction(action);
      break;
    case MenuAction::historyUpdate:
      selectTopTab(1);
      updateHistory();
      break;
    case MenuAction::sources:
      update_->showSources();
      break;
    case MenuAction::run:
      selectTopTab(3);
      run_->clickButton(argument);
      break;
    case MenuAction::switchUser:
      switchUser();
      break;
  }
}

void MainWindow::updateHistory() {
  update_->updateHistory();
}

void MainWindow::runButton(int index) {
  if (busy_.isBusy())
    return;
  const KeptFocus focus(*this);
  const BusyScope busy(busy_);
  const KeptEnabled stopButton(controls_, ControlId::cmm_stop);
  withFaultBox(ports_.boxes, [&] { driver_->cmmTouZhu_Click(index); });
  driver_->state().userStop = false;  // a stop that came behind the last loop
}

void MainWindow::busyChanged(bool busy) {
  menuBar()->setDisabled(busy);
  conditions_->setDisabled(busy);
  asides_->setDisabled(busy);
  if (busy)
    return;
  if (closeAfterWork_) {
    closeAfterWork_ = false;
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
  } else if (skippedPage_) {
    topTabShown(topTabs_->currentIndex() + 1);
  }
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (busy_.isBusy()) {
    closeAfterWork_ = true;
    Q_EMIT busy_.stopRequested();
    event->ignore();
    return;
  }
  bool leaves = exitNoAsk_;
  if (!leaves)
    withFaultBox(ports_.boxes, [&] { leaves = leave_ ? leave_() : ports_.boxes.ask(u"确认要退出吗？"_s); });
  event->setAccepted(leaves);
}

void MainWindow::switchUser() {
  UserSwitch result = UserSwitch::stayed;
  if (!switchUser_ || !withFaultBox(ports_.boxes, [&] { result = switchUser_(); }) || result == UserSwitch::stayed)
    return;
  if (result == UserSwitch::end) {
    exitNoAsk_ = true;
    close();
    return;
  }
  forms_->closeQuickSetup();  // it may hold what another user typed
  selectTopTab(1);
  conditions_->selectTab(1);
  conditions_->reload();
}

void MainWindow::buildConditionForms() {
  forms_ = new ConditionForms(workspace_.gConn, workspace_.folders().templateFile(), *conditions_,
                              {ports_.boxes, ports_.inputs, ports_.files, busy_},
                              {this, [this](int tab) { selectTopTab(tab); },
                               [this] {
                                 if (auto* update = findChild<QAction*>(u"mnu_AutoUpdate"_s))
                                   update->trigger();
                               }});
  asides_ = new QStackedWidget(this);
  asides_->setObjectName(u"Frm_Sub_%1"_s.arg(asidesFrame));
  zones_ = forms_->makeZonePage(asides_);
  asides_->addWidget(zones_);
  pages_->addWidget(asides_);
  // A click on the tab that is selected leads back from a page without a tab.
  connect(topTabs_, &QTabBar::tabBarClicked, this, [this](int index) {
    if (index == topTabs_->currentIndex() && pages_->currentWidget() == asides_)
      topTabShown(index + 1);
  });
}

void MainWindow::leaveAction(int code) {
  forms_->leaveAction(code);
}

void MainWindow::fillZdyGroups() {
  conditions_->fillCommonGroups();
}

void MainWindow::runConditionAction(MenuAction action) {
  if (action == MenuAction::restoreDefaults)
    forms_->restoreDefaults();
  if (action == MenuAction::exportConditions)
    forms_->exportConditions();
  if (action == MenuAction::importConditions)
    forms_->importConditions();
  if (action == MenuAction::zonePage) {
    asides_->setCurrentWidget(zones_);
    showSubFrame(asidesFrame);
    zones_->open();
  }
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && forms_ != nullptr)
    forms_->windowActivated();
}

void MainWindow::showUserMenu(bool visible) {
  findChild<QMenu*>(u"mnu_User"_s)->menuAction()->setVisible(visible);
}

void MainWindow::releaseData() {
  forms_->forgetAction();
  centralWidget()->hide();
  menuBar()->setDisabled(true);
}

/// The chart of the number distribution is not drawn: its mode cannot be chosen.
void MainWindow::closeChartMode() {
  const QString tip = u"本版本不提供号码分布图，请使用“数据”模式。"_s;
  if (auto* option = history_->findChild<QRadioButton*>(u"Option_TorD_1"_s)) {
    option->setEnabled(false);
    option->setToolTip(tip);
  }
  if (auto* action = findChild<QAction*>(u"mnu_HistoryTubiao"_s)) {
    action->setEnabled(false);
    action->setToolTip(tip);
    findChild<QMenu*>(u"mnu_History"_s)->setToolTipsVisible(true);
  }
}

void MainWindow::updateStatusLine() {
  withFaultBox(ports_.boxes, [this] { statusLine_.update(workspace_.gConn); });
}

}  // namespace elevenfive
