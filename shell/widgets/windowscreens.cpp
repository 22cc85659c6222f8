#include "shell/widgets/windowscreens.h"

#include "model/programtitle.h"
#include "shell/widgets/startforms.h"

namespace elevenfive {

void WindowScreens::bindHistory(Workspace& workspace) {
  window_ = std::make_unique<MainWindow>(workspace, ports_);
  windowMade_(*window_);
}

void WindowScreens::showMainForm() {
  window_->show();
}

bool WindowScreens::askUserMode(int& gUserMode) {
  return askUserModeForm(gUserMode, window_.get());
}

void WindowScreens::showUserMenu(bool visible) {
  window_->showUserMenu(visible);
}

bool WindowScreens::logOn(Users& users) {
  return logOnForm(users, ports_.boxes, window_.get());
}

void WindowScreens::setUserCaption(const Users& users) {
  window_->setWindowTitle(users.caption(gTitle.toString()));
}

void WindowScreens::chooseGame(Catalogue& catalogue) {
  chooseGameForm(catalogue, ports_.boxes, window_.get());
}

void WindowScreens::unload(const QString& form) {
  if (window_ == nullptr)
    return;
  if (auto* open = window_->findChild<QWidget*>(form))
    open->close();
}

void WindowScreens::releaseData() {
  if (window_ != nullptr)
    window_->releaseData();
}

}  // namespace elevenfive
