// A click that changes what is stored, and the screen that may not tell anything else than what is stored.
#pragma once

#include <exception>
#include <utility>

#include "model/widgets/faultbox.h"

namespace elevenfive {

/// Runs what may show no box of its own, as the one that tells the fault has been shown or is to be shown elsewhere.
template <typename Work>
void withoutBox(Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const std::exception&) {
    // The controls stay as they are.
  }
}

/// Runs the change that a click asks for. Where it fails, one box tells the fault, and showStored brings the controls back to
/// what is stored; a fault of that is passed over, as the box has told enough. True where the change is stored.
template <typename Change, typename ShowStored>
bool changeStored(Boxes& boxes, Change&& change, ShowStored&& showStored) {
  if (withFaultBox(boxes, std::forward<Change>(change)))
    return true;
  withoutBox(std::forward<ShowStored>(showStored));
  return false;
}

/// The same where showStored follows either way: for a change that alters more of the screen than the control that was clicked,
/// or that changes nothing where its row is missing.
template <typename Change, typename ShowStored>
void changeAndShow(Boxes& boxes, Change&& change, ShowStored&& showStored) {
  if (changeStored(boxes, std::forward<Change>(change), showStored))
    withFaultBox(boxes, std::forward<ShowStored>(showStored));
}

}  // namespace elevenfive
