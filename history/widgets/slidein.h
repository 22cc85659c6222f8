// A place for a strip that can slide into view from the left, to show where to type.
#pragma once

#include <QTimer>
#include <QWidget>

namespace elevenfive {

class SlideIn final : public QWidget {
  Q_OBJECT

 public:
  /// Takes the strip in, which then fills this widget.
  explicit SlideIn(QWidget* strip, QWidget* parent = nullptr);

  /// Puts the strip out of view to the left and lets it come back. Once more while it slides: from the start.
  void start();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void step();

  QWidget* strip_;
  QTimer timer_;  ///< TimerHuadong
};

}  // namespace elevenfive
