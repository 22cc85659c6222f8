#include "shell/usermode.h"

#include "model/store.h"

namespace elevenfive {

void storeUserMode(Store& store, int mode) {
  if (store.execute("保存用户模式", "UPDATE 用户模式 SET 模式 = ?", mode) == 0)
    store.execute("保存用户模式", "INSERT INTO 用户模式 (模式) VALUES (?)", mode);
}

}  // namespace elevenfive
