// The first tab of the condition panel: eleven number buttons, the mode in which a click picks, and the counting lines.
#pragma once

#include <QAbstractButton>
#include <QWidget>
#include <array>
#include <functional>

#include "conditions/picking.h"
#include "model/ports.h"

class QPlainTextEdit;
class QTabBar;

namespace elevenfive {

/// A round number button whose colour tells how the number is picked.
class PickButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit PickButton(int number, QWidget* parent = nullptr);

  /// 0 not picked, 1 拖码, 2 胆码.
  void setPick(int value);
  [[nodiscard]] int pick() const noexcept { return pick_; }

  /// The button's colour in the order 0xBBGGRR; 0x8000000F stands for the palette's button face.
  [[nodiscard]] unsigned backColor() const;

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int number_;
  int pick_ = 0;
};

class PickPage final : public QWidget, public PickView {
  Q_OBJECT

 public:
  PickPage(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent = nullptr);

  /// Paints the buttons and tells the counting lines anew from the store.
  void reload();

  void setChoseNumberTip(const QString& text);

  void paintPick(int number, int value) override;
  [[nodiscard]] bool struckThrough(int number) const override;

 private:
  QWidget* buildModes();
  QWidget* buildNumbers();
  [[nodiscard]] int mode() const;

  /// Runs a change of the picks. A fault is told in one box, and the buttons show again what is stored.
  void attempt(const std::function<void()>& change);

  RunDriver& driver_;
  Boxes& boxes_;
  Inputs& inputs_;
  NumberPicking picking_;
  QTabBar* modes_ = nullptr;
  std::array<PickButton*, numberCount + 1> buttons_{};  ///< by number
  QPlainTextEdit* tip_ = nullptr;
};

}  // namespace elevenfive
