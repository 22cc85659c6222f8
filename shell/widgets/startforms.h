// The forms of the start: the user mode on the first run, the logon, and the choice of the game.
//
// Each is modal over its parent. False means that the person chose 退出系统 or shut the form.
#pragma once

#include "model/ports.h"

class QWidget;

namespace elevenfive {

class Catalogue;
class Users;

/// frmFirstrun: one user or several.
bool askUserModeForm(int& gUserMode, QWidget* parent);

/// frmODBCLogon: open until a user is logged on.
bool logOnForm(Users& users, Boxes& boxes, QWidget* parent);

/// frmDB: which game's draws are kept. No game is preselected; a click puts a game in use at once.
void chooseGameForm(Catalogue& catalogue, Boxes& boxes, QWidget* parent);

}  // namespace elevenfive
