// frmInitapp: what stands on the screen while the data is unpacked and the window is made.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace elevenfive {

class Splash final : public QWidget {
  Q_OBJECT

 public:
  /// As large as its one picture, ImageInit, in the middle of the screen.
  Splash();

  /// Shows it and paints it before anything else is done.
  void showAtOnce();
};

/// The picture of the splash, drawn for a scale of the screen.
QPixmap splashPicture(qreal scale);

}  // namespace elevenfive
