// Asks for a condition-set file with the window's dialogs.
#pragma once

#include "conditions/conditionfiles.h"
#include "model/widgets/dialogports.h"

namespace elevenfive {

class DialogFileQuestion final : public FileQuestion {
 public:
  explicit DialogFileQuestion(FileDialogs& dialogs) : dialogs_(dialogs) {}

  /// An action that is not "open", whatever its case, saves; a name to save under that has no extension gets ".exe".
  QString OpenSaveDialog(const QString& action, const QString& title, const QString& extension, const QString& label,
                         const QString& defaultName) override;

 private:
  FileDialogs& dialogs_;
};

}  // namespace elevenfive
