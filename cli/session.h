// One run of the companion: the open workspace with the operations' objects over it, and where its output goes.
//
// The data is opened by the first command that needs it and stays open until close(), so that what lives "until the program
// ends" lives through a whole batch.
#pragma once

#include <QString>
#include <QStringList>
#include <exception>
#include <functional>
#include <iosfwd>
#include <memory>

#include "cli/cliports.h"
#include "cli/runclick.h"
#include "conditions/conditionpanel.h"
#include "conditions/customgroups.h"
#include "conditions/picking.h"
#include "conditions/zones.h"
#include "engine/rundriver.h"
#include "model/workspace.h"
#include "shell/users.h"

namespace elevenfive {

/// An operation was refused and has told so in a box of its own: the call ends with status 1 and no further word.
class Refused final : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "refused"; }
};

/// The open workspace and what the window's panels hold over it.
struct OpenProgram {
  OpenProgram(const Workspace::Folders& folders, const Workspace::Options& options, CliPorts& ports,
              ResultFileDialogs& dialogs);

  Workspace workspace;
  RunDriver driver;
  ConditionPanel panel;
  NumberPicking picking;
  CustomGroups groups;
  Zones zones;
  Users users;
  const QStringList
      commonEntries;  ///< the entries of ComboZDYcyfz, with the period that was next when the data was opened
};

class Session final {
 public:
  /// fillsFolder: the program folder is the window's own, which is filled where nothing stands in it yet.
  Session(Workspace::Folders folders, bool fillsFolder, std::ostream& out, std::ostream& err);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  [[nodiscard]] const Workspace::Folders& folders() const noexcept { return folders_; }
  [[nodiscard]] std::ostream& out() noexcept { return out_; }
  [[nodiscard]] CliPorts& ports() noexcept { return ports_; }
  [[nodiscard]] ResultFileAnswers& resultFiles() noexcept { return resultFiles_; }

  /// Opens the data where that has not been done.
  [[nodiscard]] OpenProgram& program();
  [[nodiscard]] Store& store() { return program().workspace.gConn; }

  /// Tells what the opening has moved or kept, once; behind its fault where it failed.
  void tellNotices();

  /// Whether the version notice was asked for, once a session.
  bool noticeDone = false;

  /// Runs an action; throws Refused where one of its boxes said no.
  void run(const std::function<void(Session&)>& action);

  /// Saves the conditions of the user who is logged on, where one is. Throws Refused where they were not saved.
  void saveUser();

  /// Saves the user's conditions and puts the data back where it has changed, as the window's close does. Throws where that fails; nothing is lost then.
  void close();

 private:
  Workspace::Folders folders_;
  bool fillsFolder_;
  std::ostream& out_;
  CliPorts ports_;
  ResultFileAnswers resultFiles_;
  std::unique_ptr<OpenProgram> program_;
  std::shared_ptr<QStringList> notices_;  ///< of an opening, not told yet
};

}  // namespace elevenfive
