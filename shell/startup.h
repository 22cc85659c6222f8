// The order in which the program comes up and goes down.
//
// The window (or a test's double) is the Screens; this owns the order, the texts and the data's life. start() gives the open
// workspace, or nothing where the program is to end; whatever was wrong has been said by then. close() ends the run.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "model/fileaccess.h"
#include "model/ports.h"
#include "model/workspace.h"
#include "shell/users.h"
#include "shell/userswitch.h"

namespace elevenfive {

/// Colours of a number's ball, as indexes into the list of ball images.
struct BallColors {
  int number;
  int basic;
  int special;
};

/// The balls of the game's numbers from BallColor, whose first row is of number 1; fewer than numberCount where the table has
/// fewer rows.
std::vector<BallColors> readBallColors(Store& store);

/// How frmODBCLogon was left.
enum class LogOn {
  done,  ///< a user is logged on
  shut,  ///< the form was shut
  end,   ///< 退出系统
};

/// What a start and a close do on the screen, in the order of their calls.
class Screens {
 public:
  virtual ~Screens() = default;

  // The start.
  virtual void showSplash() = 0;                                           ///< frmInitapp; Form_main is hidden
  virtual void setHelpFile(const QString& path) = 0;                       ///< what F1 shows
  virtual void bindHistory(Workspace& workspace) = 0;                      ///< TDBGridHistory on 历史记录
  virtual void loadBallImages(const std::vector<BallColors>& colors) = 0;  ///< Img_Bred, Img_Bblue
  virtual void loadMissBallImages() = 0;                                   ///< YLFX_QiuImg
  virtual void layoutHistoryGrid() = 0;
  virtual void initMainPanels() = 0;
  virtual void showMainForm() = 0;                      ///< and the splash goes
  virtual bool askUserMode(int& gUserMode) = 0;         ///< frmFirstrun; false: 退出系统
  virtual void showUserMenu(bool visible) = 0;          ///< mnu_User
  virtual LogOn logOn(Users& users) = 0;                ///< frmODBCLogon
  virtual void setUserCaption(const Users& users) = 0;  ///< gTitle and the user's name
  virtual void showChartMode() = 0;                     ///< Option_TorD(1)
  virtual void chooseGame() = 0;                        ///< frmDB
  virtual void fillZdyGroups() = 0;

  // The close.
  virtual void unload(const QString& form) = 0;  ///< a form that may be open
  virtual void releaseData() = 0;                ///< no panel may use the workspace from here on
};

/// frmFirstrun's answers.
enum class UserMode { notAsked = 0, one = 1, several = 2 };

class Startup final {
 public:
  Startup(const Workspace::Folders& folders, Boxes& boxes, Screens& screens, FileAccess& files = realFiles());
  ~Startup();

  /// Brings the program up. False where it is to end, with nothing packed; where a logon had already changed the accounts,
  /// the next start keeps that in Bak and tells where.
  bool start();

  /// Ends the run; asks first unless exitNoAsk is set. False where the window stays: the answer was No, or the user's
  /// conditions could not be saved and the user would rather stay.
  bool close(bool exitNoAsk);

  /// After a start that gave true, until a close that gave true.
  [[nodiscard]] Workspace& workspace() { return *workspace_; }
  [[nodiscard]] Users& users() { return *users_; }

  /// The menu entry mnu_UserQiehuan up to the caption; the window then selects the first tab and loads the conditions.
  /// Where 退出系统 was chosen the window then ends at once with nothing saved, by quit(). A form that is merely shut leaves
  /// the old user logged on.
  UserSwitch switchUser();

  /// 退出系统: the run ends with nothing saved or packed. What was entered since the start is not lost by it: the next start
  /// finds it as it finds the work of a run that was cut off, keeps it in Bak and tells where.
  void quit();

 private:
  bool openWorkspace();
  void fail();
  void dropSplash();
  bool showProgram();
  bool openMainDb();
  bool loadBalls();
  bool askForUserMode();
  bool logOnUser();
  void offerGames();
  bool saveConditions(const QString& question);
  void tellNotices(const QStringList& notices);
  void putDataBack();

  Workspace::Folders folders_;
  Boxes& boxes_;
  Screens& screens_;
  FileAccess& files_;
  std::unique_ptr<Workspace> workspace_;
  std::unique_ptr<Users> users_;
};

}  // namespace elevenfive
