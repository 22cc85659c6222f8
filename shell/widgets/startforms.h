// The forms of the start: the user mode on the first run, the logon, and the choice of the game.
//
// Each is modal over its parent.
#pragma once

#include "acquire/catalogue.h"
#include "model/ports.h"
#include "shell/startup.h"

class QWidget;

namespace elevenfive {

/// frmFirstrun: one user or several. False means that the person chose 退出系统 or shut the form.
bool askUserModeForm(int& gUserMode, QWidget* parent);

/// frmODBCLogon: open until a user is logged on.
LogOn logOnForm(Users& users, Boxes& boxes, QWidget* parent);

/// frmDB: which game's draws are kept. No game is preselected; a click puts a game in use at once. True where 确定 was
/// chosen, which asks for the game's draws; the games clicked stay in use either way.
bool chooseGameForm(Catalogue& catalogue, Boxes& boxes, QWidget* parent);

}  // namespace elevenfive
