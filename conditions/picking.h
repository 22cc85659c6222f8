// Picking numbers: 0 not picked, 1 拖码, 2 胆码 in the rows 1 to 11 of 过滤条件, and 101 to 111 for the second field.
//
// A click is in the store at once and the counting lines follow it. A row that is missing ends the click with MissingData.
#pragma once

#include <QString>

#include "engine/rundriver.h"
#include "model/ports.h"

namespace elevenfive {

class Store;

/// Colours that carry the state of a number button, in the order 0xBBGGRR; the first is the system's button face.
inline constexpr unsigned pickColors[] = {0x8000000F, 49152, 192};

/// How many bankers each field may hold.
inline constexpr int frontDanLimit = 4;
inline constexpr int backDanLimit = 1;

/// Buttons of the second field are the number plus this.
inline constexpr int backFieldOffset = 100;

/// The number buttons as picking touches them.
class PickView {
 public:
  virtual ~PickView() = default;
  /// Paints the button cmm_C7(number) for a pick value 0, 1 or 2.
  virtual void paintPick(int number, int value) = 0;
  /// Whether the caption of cmm_C7(number) is struck through, the mark of a number of low probability.
  [[nodiscard]] virtual bool struckThrough(int number) const {
    (void)number;
    return false;
  }
  /// The period that the marks refer to, as text.
  [[nodiscard]] virtual QString markedPeriod() const { return {}; }
};

class NumberPicking final {
 public:
  NumberPicking(Store& gConn, RunDriver& driver, Boxes& boxes, PickView& view)
      : gConn_(gConn), driver_(driver), boxes_(boxes), view_(view) {}

  /// Picks by field and value.
  struct PickCounts {
    int frontTuo = 0;
    int frontDan = 0;
    int backTuo = 0;
    int backDan = 0;
  };

  /// A click on the button of a number (1 to 11, 101 to 111) in the mode 1 拖码 or 2 胆码, with its questions and limits.
  void clickNumber(int number, int mode);

  void selectAllTuo();      ///< cmd_FX: all eleven become 拖码
  void clearFront();        ///< cmm_clsQ: rows below 40 become 0
  void clearBack();         ///< cmm_clsH: rows 101 to 199 become 0
  void paintPickButtons();  ///< paints all buttons from their rows

  PickCounts countPicks();

  /// What selecting a tab of TabStrip_Qiaqu (back false) or TabStrip_Houqu says.
  void announceMode(int mode, bool back);

 private:
  bool confirmLowChance(int number);
  bool confirmChange(int number, int mode);
  bool tooManyDan(bool back);
  void store(int number, int value);
  void paintField(int firstNumber, int value);

  Store& gConn_;
  RunDriver& driver_;
  Boxes& boxes_;
  PickView& view_;
};

}  // namespace elevenfive
