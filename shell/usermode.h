// One user or several: what frmFirstrun asks once, kept in 用户模式.
#pragma once

namespace elevenfive {

class Store;

/// frmFirstrun's answers.
enum class UserMode { notAsked = 0, one = 1, several = 2 };

/// Writes the mode, also into a table that has lost its row. Throws StoreError.
void storeUserMode(Store& store, int mode);

}  // namespace elevenfive
