// A click that changes what is stored, and the screen that may not tell anything else than what is stored.
#pragma once

#include <exception>
#include <utility>

#include "model/widgets/faultbox.h"

namespace elevenfive {

/// Runs the change that a click asks for. Where it fails, one box tells the fault, and showStored brings the controls back to
/// what is stored; a fault of that is passed over, as the box has told enough. True where the change is stored.
template <typename Change, typename ShowStored>
bool changeStored(Boxes& boxes, Change&& change, ShowStored&& showStored) {
  if (withFaultBox(boxes, std::forward<Change>(change)))
    return true;
  try {
    std::forward<ShowStored>(showStored)();
  } catch (const std::exception&) {
    // The first box stays the only one.
  }
  return false;
}

/// The same for a change that alters more of the screen than the control that was clicked: showStored follows it either way.
template <typename Change, typename ShowStored>
void changeAndShow(Boxes& boxes, Change&& change, ShowStored&& showStored) {
  if (changeStored(boxes, std::forward<Change>(change), showStored))
    withFaultBox(boxes, std::forward<ShowStored>(showStored));
}

}  // namespace elevenfive
