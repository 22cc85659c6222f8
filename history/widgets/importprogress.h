// The frame FrameJindu: how many lines of how many are done, the stop button of what can be stopped, and the bar of the
// derivation after it.
#pragma once

#include <QFrame>

#include "history/textfiles.h"
#include "model/widgets/qtports.h"

class QLabel;
class QProgressBar;
class QPushButton;

namespace elevenfive {

class ImportProgress final : public QFrame, public LineProgress {
  Q_OBJECT

 public:
  explicit ImportProgress(QWidget* parent = nullptr);

  void show(int lineCount) override;
  void setDone(int lines) override;
  void hide() override;
  [[nodiscard]] bool stopRequested() const override { return stop_; }

  /// Whether the work to come looks at the stop button, which shows only then.
  enum class Stop { offered, none };

  /// Forgets an earlier wish to stop. A wish that comes between this and show() holds.
  void begin(Stop stop) {
    stop_ = false;
    canStop_ = stop == Stop::offered;
  }

  void requestStop() { stop_ = true; }

  /// The bar ProgressBar_TuBiao.
  [[nodiscard]] Progress& derivation() noexcept { return derivation_; }

 private:
  void showParts(bool visible);

  QLabel* done_;
  QLabel* slash_;
  QLabel* total_;
  QLabel* unit_;
  QProgressBar* lineBar_;
  QPushButton* stopButton_;
  QProgressBar* derivationBar_;
  QtProgress lines_;
  QtProgress derivation_;
  QElapsedTimer sinceShown_;
  int lineCount_ = 0;
  bool stop_ = false;
  bool canStop_ = false;
};

}  // namespace elevenfive
