// How 切换用户 ended.
#pragma once

namespace elevenfive {

enum class UserSwitch {
  done,    ///< a user is logged on, the same one perhaps: the conditions are that user's now
  stayed,  ///< nobody logged on; everything is as it was
  end,     ///< 退出系统 was chosen
};

}  // namespace elevenfive
