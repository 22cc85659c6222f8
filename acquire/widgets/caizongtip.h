// The drop panel fraCaizongTip, which chooses the game whose draws are kept: the button that opens it stands on the history
// page. A click on a game puts it in use at once; the draws in the history stay.
#pragma once

#include <QFrame>
#include <QPointer>
#include <QPropertyAnimation>

class QButtonGroup;
class QGridLayout;

namespace elevenfive {

class Boxes;
class Catalogue;

class CaizongTip final : public QFrame {
  Q_OBJECT

 public:
  /// Lies over its parent, hidden at first.
  CaizongTip(Catalogue& catalogue, Boxes& boxes, QWidget* parent);

  /// Fills in the games, selects the one in use, and slides open centred below a button, which it follows from then on. A
  /// fault shows one box instead.
  void openBelow(QWidget* button);

  /// Hides the panel and gives the focus back to the button.
  void shut();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showCaizongList();
  [[nodiscard]] QSize fullSize() const;
  void centre();
  void slideOpen();

  Catalogue& catalogue_;
  Boxes& boxes_;
  QWidget* content_;
  QGridLayout* grid_;
  QButtonGroup* games_;
  QPointer<QWidget> button_;
  QPropertyAnimation slide_;
};

}  // namespace elevenfive
