// Reading and writing the rows of conditions: values by `ID`, switches by code.
#pragma once

#include "engine/runstate.h"

namespace elevenfive {

class Store;

/// Loads the rows first..last of 过滤条件 into tiaojianValue, one slot a row, from slot (first modulo 10) on. Slots not reached
/// keep what an earlier load left.
void loadTiaojianValues(Store& store, RunState& state, int first, int last);

/// Writes one value to the rows first..last of 过滤条件.
void fillTiaojianValues(Store& store, int first, int last, int value);

/// The value of one row of 过滤条件; 0 where there is none.
int conditionValue(Store& store, int id);

/// Whether a condition is in use: its switch holds exactly 1.
bool conditionInUse(Store& store, int code);

/// How many counted conditions are in use: those that the tolerance may forgive. The 间距 stages that do not run, the position
/// switches and the optimisation box are not among them.
int countRongcuoTiaojian(Store& store);

}  // namespace elevenfive
