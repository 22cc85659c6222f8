// What the start and the close show, with the one window: it comes to be when the history is bound, and lives until this goes.
#pragma once

#include <functional>
#include <memory>

#include "shell/startup.h"
#include "shell/widgets/mainwindow.h"
#include "shell/widgets/splash.h"

namespace elevenfive {

class WindowScreens final : public Screens {
 public:
  /// windowMade is told the window before anything is shown over it.
  WindowScreens(const WindowPorts& ports, std::function<void(MainWindow&)> windowMade)
      : ports_(ports), windowMade_(std::move(windowMade)) {}

  [[nodiscard]] MainWindow* window() const { return window_.get(); }

  void showSplash() override;
  void setHelpFile(const QString& path) override { helpFile_ = path; }
  void bindHistory(Workspace& workspace) override;
  void loadBallImages(const std::vector<BallColors>& colors) override;
  void loadMissBallImages() override {}
  void layoutHistoryGrid() override { window_->layoutHistoryGrid(); }
  void initMainPanels() override { window_->initMainPanels(); }
  void showMainForm() override;
  bool askUserMode(int& gUserMode) override;
  void showUserMenu(bool visible) override;
  LogOn logOn(Users& users) override;
  void setUserCaption(const Users& users) override;
  void showChartMode() override {}  // the window has the data mode only
  void chooseGame() override;
  void fillZdyGroups() override;

  void unload(const QString& form) override;
  void releaseData() override;

 private:
  WindowPorts ports_;
  std::function<void(MainWindow&)> windowMade_;
  std::unique_ptr<Splash> splash_;
  std::unique_ptr<MainWindow> window_;
  QString helpFile_;         ///< empty where there is none
  bool wantsDraws_ = false;  ///< 确定 was chosen in frmDB
};

}  // namespace elevenfive
