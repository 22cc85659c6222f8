// The allowed values of a block as text: runs in brackets, "[20-22] , [25]".
#pragma once

#include <QString>

namespace elevenfive {

class Store;

/// The runs of rows first..last of 过滤条件 whose VALUE is above 0, in plain digits; a run of one value stands alone in its
/// brackets. Empty where nothing is allowed.
QString rangeText(Store& store, int first, int last);

}  // namespace elevenfive
