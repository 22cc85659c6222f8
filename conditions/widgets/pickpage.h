// The first tab of the condition panel: eleven number buttons, the mode in which a click picks, and the counting lines; below
// them the second field of the same kind.
#pragma once

#include <QWidget>
#include <array>
#include <functional>

#include "conditions/picking.h"
#include "conditions/widgets/numberbutton.h"
#include "model/ports.h"

class QPlainTextEdit;
class QTabBar;

namespace elevenfive {

/// A number button whose colour tells how the number is picked.
class PickButton final : public NumberButton {
  Q_OBJECT

 public:
  explicit PickButton(int number, QWidget* parent = nullptr);

  /// 0 not picked, 1 拖码, 2 胆码.
  void setPick(int value);
  [[nodiscard]] int pick() const noexcept { return pick_; }

 private:
  int pick_ = 0;
};

class PickPage final : public QWidget, public PickView {
  Q_OBJECT

 public:
  PickPage(Store& gConn, RunDriver& driver, Boxes& boxes, Inputs& inputs, QWidget* parent = nullptr);

  /// Paints the buttons and tells the counting lines anew from the store. Throws StoreError.
  void load();

  /// The same, with a box for a fault.
  void reload();

  void setChoseNumberTip(const QString& text);

  /// No number of either field stays picked.
  void clearPicks();

  void paintPick(int number, int value) override;
  [[nodiscard]] bool struckThrough(int number) const override;

 private:
  /// The buttons of one field and the mode in which they pick.
  struct Field {
    QTabBar* modes = nullptr;
    std::array<PickButton*, numberCount + 1> buttons{};  ///< by number
    [[nodiscard]] int mode() const;                      ///< 1 拖码, 2 胆码
  };

  QWidget* heading(const QString& text);
  QWidget* buildField(Field& field);
  QWidget* buildModes(Field& field);
  QWidget* buildNumbers(Field& field);
  [[nodiscard]] PickButton* buttonOf(int id) const;

  /// Runs a change of the picks. A fault is told in one box, and the buttons show again what is stored.
  void attempt(const std::function<void()>& change);

  RunDriver& driver_;
  Boxes& boxes_;
  Inputs& inputs_;
  NumberPicking picking_;
  Field front_;
  Field back_;
  QPlainTextEdit* tip_ = nullptr;
};

}  // namespace elevenfive
