// The three panels of the main window's StatusBar: 1 tells the state of the history, 2 a running pass, 3 the next period and
// today. At its right end stands the version.
#pragma once

#include <array>

#include "history/statuspanels.h"

class QLabel;
class QStatusBar;

namespace elevenfive {

class Store;

class StatusLine final : public StatusPanels {
 public:
  /// Puts the panels into the bar.
  explicit StatusLine(QStatusBar& bar);

  void setPanel(int panel, const QString& text) override;

  /// `updateStatusLine`: writes panels 1 and 3 from the history. Throws StoreError.
  void update(Store& store);

 private:
  std::array<QLabel*, 4> panels_{};  ///< 1 to 3; slot 0 unused
};

}  // namespace elevenfive
