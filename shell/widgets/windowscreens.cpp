#include "shell/widgets/windowscreens.h"

#include <QDesktopServices>
#include <QShortcut>
#include <QUrl>
#include <utility>

#include "conditions/pendingaction.h"
#include "model/programtitle.h"
#include "model/widgets/gridview.h"
#include "shell/widgets/startforms.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

void WindowScreens::showSplash() {
  splash_ = std::make_unique<Splash>();
  splash_->showAtOnce();
}

void WindowScreens::bindHistory(Workspace& workspace) {
  window_ = std::make_unique<MainWindow>(workspace, ports_);
  windowMade_(*window_);
  if (!helpFile_.isEmpty())
    QObject::connect(new QShortcut(QKeySequence::HelpContents, window_.get()), &QShortcut::activated, window_.get(),
                     [file = helpFile_] { QDesktopServices::openUrl(QUrl::fromLocalFile(file)); });
}

/// Balls are painted: those of the draws and of the run get their colours, and no images are read. No page shows a special
/// ball.
void WindowScreens::loadBallImages(const std::vector<BallColors>& colors) {
  for (const QString& name : {u"TDBGridHistory"_s, u"TDBGrid_RZ"_s})
    if (auto* grid = window_->findChild<GridView*>(name))
      for (const BallColors& ball : colors)
        grid->balls().setColor(ball.number, ballColor(ball.basic));
}

void WindowScreens::showMainForm() {
  if (splash_)
    splash_->hide();
  window_->show();
  splash_.reset();
}

bool WindowScreens::askUserMode(int& gUserMode) {
  return askUserModeForm(gUserMode, window_.get());
}

void WindowScreens::showUserMenu(bool visible) {
  window_->showUserMenu(visible);
}

LogOn WindowScreens::logOn(Users& users) {
  return logOnForm(users, ports_.boxes, window_.get());
}

void WindowScreens::setUserCaption(const Users& users) {
  window_->setWindowTitle(users.caption(gTitle.toString()));
}

void WindowScreens::chooseGame() {
  wantsDraws_ = chooseGameForm(window_->catalogue(), ports_.boxes, window_.get());
}

/// The last step of the start. What frmDB has left is done behind it, when the window can be closed in the midst of it.
void WindowScreens::fillZdyGroups() {
  window_->fillZdyGroups();
  if (!std::exchange(wantsDraws_, false))
    return;
  constexpr int drawsOfTheGame = 16;
  static_assert(pendingActionOf(drawsOfTheGame)->target == PendingTarget::historyUpdate);
  window_->leaveAction(drawsOfTheGame);
}

void WindowScreens::unload(const QString& form) {
  if (splash_ && splash_->objectName() == form)
    splash_.reset();
  if (window_ == nullptr)
    return;
  if (auto* open = window_->findChild<QWidget*>(form))
    open->close();
}

void WindowScreens::releaseData() {
  splash_.reset();
  if (window_ != nullptr)
    window_->releaseData();
}

}  // namespace elevenfive
