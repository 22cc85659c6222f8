// Accounts: who may log on, and what happens to the conditions when the person changes.
//
// Names and passwords are rows of 用户表, as typed and trimmed, and compared to the letter. The account 临时用户 always exists,
// needs no password and never has a file. Faults of files and of the store are thrown; what the rules say is a box.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>

#include "model/ports.h"
#include "model/workspace.h"
#include "shell/userfiles.h"

namespace elevenfive {

inline constexpr QStringView temporaryUser = u"临时用户";

class Users final {
 public:
  using Clock = std::function<QDateTime()>;

  Users(
      Workspace& workspace, Boxes& boxes, FileAccess& files = realFiles(),
      Clock now = [] { return QDateTime::currentDateTime(); });

  /// The entries of Combo_userName.
  [[nodiscard]] QStringList userNames();

  /// The button cmd_newUser: what to do. The caller then empties txtPWD.
  void cmd_newUser();

  /// The button cmdOK with the texts of Combo_userName and txtPWD. True where the user is logged on and the form closes.
  bool cmdOK(const QString& userName, const QString& password);

  /// Everything after a successful logon: date, conditions, gUserName, idle accounts, candidates.
  void logonFinish(const QString& name);

  /// The main database's conditions back to their defaults; 号码特性 stays.
  void resetToDefault();

  /// The user's file into the main database; its box where the file is missing or not sound.
  bool loadUserFile(const QString& name);

  /// The main database's conditions into a new user's file; its box where the template is missing.
  bool saveNewUserFile(const QString& name);

  /// The same for the user logged on; nothing for 临时用户, whom it reports as saved.
  bool saveUserFile(const QString& name);

  /// Deletes the candidates of a period, all of them for 0.
  void clearRunLog(int period);

  /// The main form's caption with several users.
  [[nodiscard]] QString caption(const QString& gTitle) const;

 private:
  bool isRefusedName(const QString& name);
  bool createUser(const QString& name, const QString& password);
  void touch(const QString& name);
  void removeIdleUsers();

  Workspace& workspace_;
  Boxes& boxes_;
  UserFiles userFiles_;
  Clock now_;
};

}  // namespace elevenfive
