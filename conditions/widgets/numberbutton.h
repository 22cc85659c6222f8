// A round button for one number, whose colour tells the number's state.
#pragma once

#include <QAbstractButton>

namespace elevenfive {

/// The colour of a number without any state, in the order 0xBBGGRR; it stands for the palette's button face.
inline constexpr unsigned buttonFace = 0x8000000F;

class NumberButton : public QAbstractButton {
  Q_OBJECT

 public:
  /// The caption is the number in two digits.
  explicit NumberButton(int number, QWidget* parent = nullptr);

  /// A colour in the order 0xBBGGRR or buttonFace, and what it says in words.
  void setState(unsigned color, const QString& words);

  /// The button's colour in the order 0xBBGGRR.
  [[nodiscard]] unsigned backColor() const noexcept { return color_; }

  [[nodiscard]] int number() const noexcept { return number_; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int number_;
  unsigned color_ = buttonFace;
};

}  // namespace elevenfive
