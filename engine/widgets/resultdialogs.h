// The dialogs of the result files: frmToFile and frmFromFile, and the ways to a file and to the text window.
#pragma once

#include <QPointer>
#include <QWidget>

#include "engine/resultfiles.h"
#include "model/widgets/dialogports.h"

namespace elevenfive {

class QtResultFileDialogs final : public ResultFileDialogs {
 public:
  /// Working files stand in the program's folder.
  QtResultFileDialogs(const QString& programFolder, Boxes& boxes, FileDialogs& files, TextViewer& texts,
                      QWidget* parent)
      : programFolder_(programFolder), boxes_(boxes), files_(files), texts_(texts), parent_(parent) {}

  bool askExport(ExportSettings& settings) override;
  bool askImport(ImportSettings& settings) override;
  QString askOpenFile() override;
  [[nodiscard]] QString workingFile(const QString& name) const override;
  void showText(const QString& path, const QString& text) override;

 private:
  QString programFolder_;
  Boxes& boxes_;
  FileDialogs& files_;
  TextViewer& texts_;
  QPointer<QWidget> parent_;
};

}  // namespace elevenfive
