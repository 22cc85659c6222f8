// The buttons above a list of values: all, inverted, none.
#pragma once

#include <array>

class QPushButton;

namespace elevenfive {

class ChipList;

/// The buttons cmmAll_, cmmInvert_ and cmmNone_ with the list's name behind; each does in one step what the clicks on its items
/// would. They belong to the list's parent.
std::array<QPushButton*, 3> listButtons(ChipList& list);

}  // namespace elevenfive
