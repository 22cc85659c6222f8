// frmJixuan: random tickets for show, modal. They are stored nowhere and change no pick.
#pragma once

#include "model/ports.h"

class QWidget;

namespace elevenfive {

/// Asks how many tickets and shows them; nothing is shown where the answer is no number above 0. The form stands before its
/// tickets are drawn, and events run between the tries of the draw.
void showMachinePick(Inputs& inputs, QWidget* parent);

}  // namespace elevenfive
