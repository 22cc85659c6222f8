// The four zones: parts of the number range whose counts tab 14 of the condition panel limits.
//
// Membership stands in the columns 区间1 to 区间4 of 号码特性. A number may stand in several zones or in none, a zone may be
// empty. A change makes the stored zone counts of the history stale: zonesChanged asks for a recount.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "model/numbers.h"
#include "model/ports.h"

namespace elevenfive {

class ConditionPanel;
class Store;

inline constexpr int zoneCount = 4;

/// Colour of a member's button, in the order 0xBBGGRR.
inline constexpr unsigned zoneMemberColor = 0xC0C0C0;

/// The code that switches the filter of zone k (1 to 4).
constexpr int zoneCode(int k) {
  return k + 15;
}

/// The numbers of zone k, ascending.
std::vector<int> zoneMembers(Store& store, int k);

/// " 区间k：", an ideographic space and the members in full-width digits, each with two blanks behind it; "无号码" where there
/// are none.
QString zoneText(Store& store, int k);

class Zones final {
 public:
  Zones(Store& gConn, ConditionPanel& panel, Boxes& boxes) : gConn_(gConn), panel_(panel), boxes_(boxes) {}

  bool zonesChanged = false;

  /// The text of Text_QujianHuafen: the four zone texts, each with a line end. A number's button is grey where it is a member
  /// of any zone.
  QString showZones();

  /// A click on cmm_QujianHuafen(number) while zone k is the current one: puts the number in or takes it out.
  void clickNumber(int k, int number);

  /// cmm_CLSQujianHuafen: empties all zones and switches the four zone filters off. The allowed counts stay. show brings the
  /// panel up to date before the reminder stands over it.
  void clear(const std::function<void()>& show = {});

  /// cmm_QujianTip(k): shows the zone's text.
  void showTip(int k);

  /// What is due when the first top tab is selected: where zones have changed, recount is called with the first and the last
  /// period of the history, and the change counts as done.
  void recountIfChanged(const std::function<void(Qihao first, Qihao last)>& recount);

 private:
  Store& gConn_;
  ConditionPanel& panel_;
  Boxes& boxes_;
};

}  // namespace elevenfive
