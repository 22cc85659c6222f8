// fraCaizongTip: the panel under the button 下载设置 in which the game in use is chosen.
#pragma once

#include <QFrame>

class QButtonGroup;
class QGridLayout;

namespace elevenfive {

class Boxes;
class Store;

class GamePanel final : public QFrame {
  Q_OBJECT

 public:
  GamePanel(Store& gConn, Boxes& boxes, QWidget* parent);

  /// Reads the games anew, with the one in use selected, and slides open under a button.
  void openUnder(QWidget& button);

 private:
  void showCaizongList();

  Store& gConn_;
  Boxes& boxes_;
  QButtonGroup* games_;
  QGridLayout* grid_;
};

}  // namespace elevenfive
