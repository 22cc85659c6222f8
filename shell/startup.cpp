#include "shell/startup.h"

#include <QFileInfo>

#include "model/errors.h"
#include "model/navigators.h"
#include "model/numbers.h"

namespace elevenfive {

namespace {

using namespace Qt::StringLiterals;

/// Behind what kept the database from being opened or shown.
constexpr QStringView missingFileAdvice = u"(文件丢失,需要重新安装!)";

/// Forms that may be open at the close, in the order in which they go.
constexpr QStringView closingForms[] = {u"frmFromFile", u"frmInitapp", u"frmToFile", u"Frm_kuaisusizi"};

}  // namespace

std::vector<BallColors> readBallColors(Store& store) {
  std::vector<BallColors> colors;
  Statement query =
      store.query("读取球的颜色", "SELECT 基本号, 特别号 FROM BallColor ORDER BY 号码 LIMIT ?", numberCount);
  for (int number = 1; query.next(); ++number)
    colors.push_back({number, query.integer(0), query.integer(1)});
  return colors;
}

Startup::Startup(const Workspace::Folders& folders, Boxes& boxes, Screens& screens, FileAccess& files)
    : folders_(folders), boxes_(boxes), screens_(screens), files_(files) {}

Startup::~Startup() = default;

bool Startup::start() {
  if (!openWorkspace())
    return false;
  bool shown = false;
  try {
    if (!openMainDb() || !loadBalls()) {
      tellNotices(workspace_->notices());
      fail();
      return false;
    }
    screens_.loadMissBallImages();
    screens_.layoutHistoryGrid();
    screens_.initMainPanels();
    screens_.showMainForm();
    shown = true;
    if (!showProgram()) {
      fail();
      return false;
    }
  } catch (const Error& fault) {
    if (!shown)
      dropSplash();
    boxes_.critical(fault.message());
    if (!shown) {  // without a window nobody could end it
      tellNotices(workspace_->notices());
      fail();
      return false;
    }
    // The window stays as far as it got.
  }
  return true;
}

/// From the main form on; false where 退出系统 was chosen.
bool Startup::showProgram() {
  tellNotices(workspace_->notices());
  if (!askForUserMode() || !logOnUser())
    return false;
  screens_.showChartMode();
  offerGames();
  screens_.fillZdyGroups();
  return true;
}

/// What the start has moved or kept, which also one that fails has to tell: the next one knows of nothing.
void Startup::tellNotices(const QStringList& notices) {
  for (const QString& notice : notices)
    boxes_.critical(notice);
}

bool Startup::openWorkspace() {
  bool unpacked = false;
  const auto showSplash = [&] {
    unpacked = true;
    screens_.showSplash();
  };
  const auto setHelp = [this] {
    if (QFileInfo(folders_.helpFile()).isFile())
      screens_.setHelpFile(folders_.helpFile());
  };
  const Workspace::Options options{&files_, showSplash, setHelp};
  try {
    workspace_ = std::make_unique<Workspace>(folders_, options);
  } catch (const AlreadyRunning& fault) {
    boxes_.information(fault.message());
  } catch (const StoreError& fault) {
    if (unpacked) {  // the working database was there, but could not be opened
      dropSplash();
      boxes_.information(fault.message() + missingFileAdvice.toString());
    } else {
      boxes_.critical(fault.message());
    }
  } catch (const Error& fault) {
    if (unpacked)
      dropSplash();
    boxes_.critical(fault.message());
  }
  if (!workspace_) {
    tellNotices(*options.notices);
    return false;
  }
  users_ = std::make_unique<Users>(*workspace_, boxes_, files_);
  return true;
}

bool Startup::openMainDb() {
  try {
    screens_.bindHistory(*workspace_);
    screens_.layoutHistoryGrid();
    return true;
  } catch (const Error& fault) {
    dropSplash();
    boxes_.information(fault.message() + missingFileAdvice.toString());
    return false;
  }
}

bool Startup::loadBalls() {
  const std::vector<BallColors> colors = readBallColors(workspace_->gConn);
  if (colors.size() < std::size_t{numberCount}) {
    dropSplash();
    boxes_.plain(u"程序初始化出错,即将退出。。。"_s);
    return false;
  }
  screens_.loadBallImages(colors);
  return true;
}

bool Startup::askForUserMode() {
  int& mode = workspace_->gUserMode;
  if (mode != static_cast<int>(UserMode::notAsked))
    return true;
  mode = static_cast<int>(UserMode::one);
  if (!screens_.askUserMode(mode))
    return false;
  workspace_->gConn.execute("保存用户模式", "UPDATE 用户模式 SET 模式 = ?", mode);
  return true;
}

bool Startup::logOnUser() {
  const bool several = workspace_->gUserMode >= static_cast<int>(UserMode::several);
  screens_.showUserMenu(several);
  if (!several)
    return true;
  if (screens_.logOn(*users_) != LogOn::done)
    return false;
  screens_.setUserCaption(*users_);
  return true;
}

void Startup::offerGames() {
  if (getNextQihao(workspace_->gConn) >= 2)
    return;
  boxes_.plain(u"历史开奖数据库中无记录，请选择相应的开奖数据添加！"_s);
  screens_.chooseGame();
}

UserSwitch Startup::switchUser() {
  const QString name = workspace_->gUserName;
  if (!saveConditions(u"用户“%1”的过滤条件没有保存，仍要切换用户吗？"_s))
    return UserSwitch::stayed;
  const LogOn left = screens_.logOn(*users_);
  if (left == LogOn::end)
    return UserSwitch::end;
  screens_.setUserCaption(*users_);
  // A logon that failed behind its new account has changed the user, however the form was left.
  return left == LogOn::done || workspace_->gUserName != name ? UserSwitch::done : UserSwitch::stayed;
}

bool Startup::close(bool exitNoAsk) {
  if (!exitNoAsk && !boxes_.ask(u"确认要退出吗？"_s))
    return false;
  if (!saveConditions(u"用户“%1”的过滤条件没有保存，仍要退出吗？"_s))
    return false;
  for (const QStringView form : closingForms)
    screens_.unload(form.toString());
  screens_.releaseData();
  putDataBack();
  users_.reset();
  workspace_.reset();
  return true;
}

bool Startup::saveConditions(const QString& question) {
  const QString name = workspace_->gUserName;
  if (workspace_->gUserMode <= static_cast<int>(UserMode::one) || name.isEmpty())
    return true;
  try {
    if (users_->saveUserFile(name))
      return true;
  } catch (const Error& fault) {
    boxes_.critical(fault.message());
  }
  return boxes_.ask(question.arg(name));
}

/// What cannot be put back is tried as often as the person likes. Otherwise it stays in the temporary folder, and the next
/// start keeps it in Bak; where it was removed from there, the workspace has kept it in Bak and the box says so.
void Startup::putDataBack() {
  for (;;) {
    try {
      workspace_->close();
      return;
    } catch (const Error& fault) {
      boxes_.critical(fault.message());
    }
    if (!boxes_.ask(u"数据没有写回，要再试一次吗？"_s))
      return;
  }
}

void Startup::quit() {
  screens_.releaseData();
  users_.reset();
  workspace_->leave();
  workspace_.reset();
}

/// A start that comes to nothing. The user mode may have been chosen, which can be asked again; where a logon has got further
/// than that, an account may have been made or have gone with its file.
void Startup::fail() {
  screens_.releaseData();
  users_.reset();
  if (workspace_->gUserName.isEmpty())
    workspace_->abandon();
  else
    workspace_->leave();
  workspace_.reset();
}

/// Before a box of a start that fails: the splash would lie over it.
void Startup::dropSplash() {
  screens_.unload(u"frmInitapp"_s);
}

}  // namespace elevenfive
