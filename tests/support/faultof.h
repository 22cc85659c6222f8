// What a call throws, as the sentence that a user would be told.
#pragma once

#include <QString>

namespace elevenfive {

/// The sentence of the fault of this kind that the call throws, "no fault" where it returns. Others pass through.
template <typename Fault, typename Call>
QString faultOf(Call&& call) {
  try {
    call();
  } catch (const Fault& fault) {
    return fault.message();
  }
  return QStringLiteral("no fault");
}

}  // namespace elevenfive
