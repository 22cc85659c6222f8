// The third page of the window, Frm_Sub(2): the seven buttons of a run, its status text, progress and stop button, and the
// grid of the candidates and survivors.
#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "engine/runports.h"
#include "model/ports.h"
#include "model/widgets/qtports.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;

namespace elevenfive {

class GridView;
class Store;

class RunPanel final : public QWidget, public StatusText {
  Q_OBJECT

 public:
  explicit RunPanel(Store& gConn, QWidget* parent = nullptr);

  [[nodiscard]] Progress& progress() noexcept { return progress_; }
  [[nodiscard]] QWidget* buttonPanel() const;
  [[nodiscard]] QPushButton* stopButton() const { return stop_; }

  /// Reads 日志表 again into the grid. Throws StoreError.
  void showRizhiGrid();
  /// Marks the numbers of a draw in the grid until it is read again: they stay balls, the others become plain.
  void showDrawnNumbers(const Draw& draw);
  [[nodiscard]] std::optional<Qihao> currentQihao() const;
  [[nodiscard]] QString rongcuoTipCaption() const;

  /// Clicks the button of an index, where the panel is enabled.
  void clickButton(int index);

  Q_SIGNAL void runRequested(int index);
  Q_SIGNAL void stopRequested();

  // The status text TextChaoZuoTip; it keeps its line ends as they were given.
  [[nodiscard]] QString text() const override { return statusText_; }
  void setText(const QString& text) override;
  void moveCaretToEnd() override;

 private:
  QWidget* buildButtons();
  QWidget* buildProgress();
  void setUpGridColumns();

  QWidget* buttonPanel_ = nullptr;
  std::vector<QPushButton*> buttons_;
  QPushButton* stop_ = nullptr;
  QProgressBar* bar_ = nullptr;
  QtProgress progress_;
  GridView* grid_ = nullptr;
  QPlainTextEdit* status_ = nullptr;
  QLabel* rongcuoTip_ = nullptr;
  QLabel* count_ = nullptr;
  QString statusText_;
  QString shownLines_;  ///< the same as it stands in the widget, a line feed a line end
  int rowHeight_ = 0;   ///< of the grid, in pixels, while no draw is marked in it
};

}  // namespace elevenfive
