// The panels of the main window's StatusBar, as the history writes them.
#pragma once

#include <QString>

namespace elevenfive {

/// Panels count from 1: 1 and 3 tell the state of the history, 2 the progress of a running pass.
class StatusPanels {
 public:
  static constexpr int runningPass = 2;

  virtual ~StatusPanels() = default;
  virtual void setPanel(int panel, const QString& text) = 0;
};

}  // namespace elevenfive
