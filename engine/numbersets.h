// Sets of numbers as 号码特性 divides them. Its rows are read anew by each pass, so a change of zones or groups counts at once.
#pragma once

#include <QStringList>
#include <array>
#include <vector>

#include "model/numbers.h"

namespace elevenfive {

class Store;

/// Which numbers belong to a set, by number; slot 0 is unused.
using NumberSet = std::array<bool, numberCount + 1>;

/// The sets of these columns of 号码特性, in their order. Throws StoreError for a name that is no boolean column of the table.
std::vector<NumberSet> readNumberSets(Store& store, const QStringList& columns);

/// The set of one column.
NumberSet readNumberSet(Store& store, const QString& column);

/// How many of the five numbers belong to the set.
int countIn(const NumberSet& set, const Draw& numbers);

}  // namespace elevenfive
