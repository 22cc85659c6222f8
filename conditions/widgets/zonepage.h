// The panel that mnu_newQuJian opens: which numbers belong to which of the four zones.
//
// Every click is in the store at once; the counts of the history follow when the first page is next shown.
#pragma once

#include <QWidget>
#include <array>

#include "conditions/zones.h"

class QButtonGroup;
class QPlainTextEdit;

namespace elevenfive {

class NumberButton;

class ZonePage final : public QWidget {
  Q_OBJECT

 public:
  ZonePage(Store& gConn, Zones& zones, Boxes& boxes, QWidget* parent = nullptr);

  /// Shows the panel as the store has it, with the focus on the current zone.
  void open();

  /// `showZones`: paints the buttons and writes the four zones from the store.
  void reload();

  /// The person wants to set the counts that the zones may have.
  Q_SIGNAL void countsWanted();

 private:
  QWidget* buildFrame();
  QWidget* buildNumbers();
  [[nodiscard]] int zone() const;
  void paintNumbers();

  Store& gConn_;
  Zones& zones_;
  Boxes& boxes_;
  QButtonGroup* current_ = nullptr;
  std::array<NumberButton*, numberCount + 1> buttons_{};  ///< by number
  QPlainTextEdit* text_ = nullptr;
};

}  // namespace elevenfive
