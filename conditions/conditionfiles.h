// Condition-set files: saving all that is set as a file, loading such a file, and going back to the factory values.
//
// A file is a copy of the template, a small database of the four tables of a condition set. Of a file that is loaded a copy in
// the temporary folder is read, so nothing is written beside it, and nothing but values is taken from it.
#pragma once

#include <QDate>
#include <QString>

#include "model/ports.h"

namespace elevenfive {

class ConditionPanel;
class Store;

inline constexpr QStringView conditionFileExtension = u"Vorex";
inline constexpr QStringView conditionFileLabel = u"过滤条件";

/// Asks for a file; the window shows its dialog, the companion answers with an argument.
class FileQuestion {
 public:
  virtual ~FileQuestion() = default;
  /// The chosen path, empty where the dialog was cancelled. action is "open" or "save".
  virtual QString OpenSaveDialog(const QString& action, const QString& title, const QString& extension,
                                 const QString& label, const QString& defaultName) = 0;
};

class ConditionFiles final {
 public:
  /// templatePath: the template in the program folder.
  ConditionFiles(Store& gConn, ConditionPanel& panel, Boxes& boxes, Inputs& inputs, FileQuestion& files,
                 const QString& templatePath)
      : gConn_(gConn), panel_(panel), boxes_(boxes), inputs_(inputs), files_(files), templatePath_(templatePath) {}

  /// The menu entry daocu. The template takes the present conditions, whatever follows, and a copy of it goes to the chosen
  /// path. True where a file was written; a template that is missing or not sound shows its box before any question. Throws
  /// FileError or StoreError where the template or the file cannot be written; the old one then still stands.
  bool exportConditions(const QDate& today);

  /// The menu entry daoru. False where no file was chosen or none is there. A file of another shape shows its box; what was
  /// copied until then stays. Throws StoreError where the main database lacks rows or takes no changes. The caller then paints
  /// the number buttons again and shows the picking page.
  bool importConditions();

  /// The menu entry huanyuan. The caller then shows the picking page and runs clearBack and clearFront: no number stays picked.
  void restoreDefaults();

 private:
  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
  Inputs& inputs_;
  FileQuestion& files_;
  QString templatePath_;
};

}  // namespace elevenfive
