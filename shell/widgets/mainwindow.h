// The one window in which the person works: three tabs over their pages, the menu bar that offers the same places by name,
// and the status bar.
//
// It owns the panels, the run driver and the ports that are widgets; boxes, input lines and dialogs are handed in, so that
// tests answer them. While long work runs in a nested event loop everything that could start other work is disabled, and a
// wish to close waits: the work is asked to stop, and the window closes after it.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>

#include "acquire/catalogue.h"
#include "acquire/pageloader.h"
#include "engine/rundriver.h"
#include "model/ports.h"
#include "model/widgets/busystate.h"
#include "model/widgets/dialogports.h"
#include "model/widgets/qtports.h"
#include "shell/userswitch.h"
#include "shell/widgets/statusline.h"

class QStackedWidget;
class QTabBar;

namespace elevenfive {

class ConditionForms;
class ConditionView;
class HistoryPanel;
class HistoryUpdate;
class ResultFileDialogs;
class RunPanel;
class Workspace;
class ZonePage;
enum class MenuAction;

/// How the window asks the person, for its life.
struct WindowPorts {
  Boxes& boxes;
  Inputs& inputs;
  FileDialogs& files;
  TextViewer& texts;
  PageLoaderFactory loaders = {};  ///< of web pages; empty: the page process beside the program
};

class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// Makes the panels, and reads the history into its grid. Throws StoreError where it cannot be read.
  MainWindow(Workspace& workspace, const WindowPorts& ports);
  ~MainWindow() override;

  const QString appPath;  ///< the program folder

  void layoutHistoryGrid();

  /// Fills the panels for the first time: the first tab, the next period in the entry row, the status bar. Throws StoreError
  /// where the history cannot be read.
  void initMainPanels();

  /// Reads draws from the web into the history page, as cmmUpdateHistory_2 does.
  void updateHistory();

  /// Selects a tab of TabStrip_Top, 1 to 3, and does what a click on it does.
  void selectTopTab(int tab);

  /// Whether a wish to close is granted, in place of the window's own question.
  void setLeave(std::function<bool()> leave) { leave_ = std::move(leave); }

  /// What the menu entry that changes the user does; UserSwitch::end ends the window with nothing asked.
  void setSwitchUser(std::function<UserSwitch()> switchUser) { switchUser_ = std::move(switchUser); }

  /// A form that closes leaves the code of what the window is to do once it is active (conditions/pendingaction.h).
  void leaveAction(int code);

  /// Fills the box of the common groups with the period that is next now.
  void fillZdyGroups();

  /// Shows or hides the menu mnu_User.
  void showUserMenu(bool visible);

  /// From here on nothing in the window uses the workspace, which may be gone; only boxes may still stand over it.
  void releaseData();

  /// The one through which both places of the window choose the game.
  [[nodiscard]] Catalogue& catalogue() noexcept { return catalogue_; }

  [[nodiscard]] RunDriver& driver() noexcept { return *driver_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class View;

  void buildBody();
  void buildMenus();
  void connectPanels();
  void topTabShown(int tab);
  void showSubFrame(int index);
  void runMenuAction(MenuAction action, int argument);
  void runButton(int index);
  void busyChanged(bool busy);
  void updateStatusLine();
  void switchUser();
  void closeChartMode();
  void buildConditionForms();
  void runConditionAction(MenuAction action);

  Workspace& workspace_;
  WindowPorts ports_;
  Catalogue catalogue_;
  QtEvents events_;
  QtControls controls_;
  BusyState busy_;
  StatusLine statusLine_;
  std::unique_ptr<View> view_;
  std::unique_ptr<ResultFileDialogs> dialogs_;
  std::unique_ptr<RunDriver> driver_;

  QTabBar* topTabs_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  HistoryPanel* history_ = nullptr;
  HistoryUpdate* update_ = nullptr;
  ConditionView* conditions_ = nullptr;
  RunPanel* run_ = nullptr;
  ConditionForms* forms_ = nullptr;
  QStackedWidget* asides_ = nullptr;  ///< Frm_Sub(5): pages without a tab, reached from the menu
  ZonePage* zones_ = nullptr;
  std::function<bool()> leave_;
  std::function<UserSwitch()> switchUser_;
  bool exitNoAsk_ = false;  ///< 退出系统 was chosen: the close asks nothing
  bool historyDeleted_ = false;
  bool closeAfterWork_ = false;
  bool skippedPage_ = false;  ///< a page was turned to while its rows were being written
};

}  // namespace elevenfive
