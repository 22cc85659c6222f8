// Result rows to and from text files: the buttons 导出 and 导入.
//
// A file that goes out takes the place of an older one only when it is complete. What comes in is not sorted: a row keeps the
// order of its line, and a run works on it as it stands. Faults of a file throw FileError, those of the table StoreError. A file
// that cannot be opened leaves the table as it was; after a later fault no row of the file stands in it, but rows that were not
// to be kept are gone, since they go before the dialog comes.
#pragma once

#include <QString>
#include <optional>

#include "engine/resultline.h"
#include "engine/runcontext.h"

namespace elevenfive {

struct ImportSettings {
  ImportFormat format = ImportFormat::haoma;
  Qihao period = 0;  ///< of the rows, with every format
};

/// The dialogs of the result files, and where their texts are shown.
class ResultFileDialogs {
 public:
  virtual ~ResultFileDialogs() = default;
  /// frmToFile; false where it was cancelled.
  virtual bool askExport(ExportSettings& settings) = 0;
  /// frmFromFile; false where it was cancelled.
  virtual bool askImport(ImportSettings& settings) = 0;
  /// The file to read; empty where none was chosen.
  virtual QString askOpenFile() = 0;
  /// Where a working file of this name stands.
  [[nodiscard]] virtual QString workingFile(const QString& name) const = 0;
  /// Shows an exported text to the person, who may copy, save or print it.
  virtual void showText(const QString& path, const QString& text) = 0;
};

/// Whether the period typed into one of the two dialogs is long enough; where not, the message says what is wanted.
bool acceptFilePeriod(const QString& typed, Boxes& boxes);

/// Asks what to export and writes the period's rows to the working file of this name, then shows it. False where the period
/// has no rows; true where the dialog was cancelled. The settings are kept for the next time, but for the period, which is the
/// next one.
bool exportRizhi(const RunContext& run, ResultFileDialogs& dialogs, ExportSettings& settings, const QString& name);

/// Reads a file into 日志表 after the questions what becomes of the rows that stand there and what the file holds. Returns how
/// many rows came in; nothing where the dialog was cancelled.
std::optional<int> importRizhi(const RunContext& run, ResultFileDialogs& dialogs, ImportSettings& settings,
                               const QString& path);

}  // namespace elevenfive
