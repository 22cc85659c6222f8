// The button row of a run, clicked by a command.
#pragma once

#include <QString>
#include <deque>
#include <optional>

#include "engine/resultfiles.h"

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

/// The dialogs of the result files, answered by a command.
class ResultFileAnswers final : public ResultFileDialogs {
 public:
  ExportSettings exported;
  ImportSettings imported;
  QString path;  ///< of the file that goes out or comes in

  bool askExport(ExportSettings& settings) override;
  bool askImport(ImportSettings& settings) override;
  QString askOpenFile() override { return path; }
  [[nodiscard]] QString workingFile(const QString&) const override { return path; }
  void showText(const QString&, const QString&) override {}
};

/// Clicks a button with these answers for its input boxes and prints the status text. Throws Refused where the operation said
/// no: where success is given, that is any other text in the last box, an empty one standing for no box at all.
void clickRunButton(Session& session, RunButtonIndex button, const std::deque<QString>& typed,
                    const std::optional<QString>& success = {});

}  // namespace elevenfive
