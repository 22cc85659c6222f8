// The button row of a run, clicked by a command.
#pragma once

#include <QString>
#include <deque>

namespace elevenfive {

class Session;

/// Buttons of the row by index.
enum RunButtonIndex : int {
  buttonExpand = 0,
  buttonRun = 1,
  buttonRefine = 2,
  buttonExport = 3,
  buttonImport = 4,
  buttonDelete = 5,
  buttonCheck = 6,
};

/// Clicks a button with these answers for its input boxes, and prints the status text where nothing was refused.
void clickRunButton(Session& session, RunButtonIndex button, const std::deque<QString>& typed);

}  // namespace elevenfive
