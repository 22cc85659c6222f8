// Brings a slow engine and a store into the same state, and tells the rows of both as text.
#pragma once

#include <QStringList>

#include "engine/runstate.h"
#include "tests/engine/slowengine.h"

namespace elevenfive {
class Store;
}

namespace elevenfive::slow {

/// The history, conditions, memberships, aliases and the match setting as the store holds them now.
void readSettings(Store& store, SlowEngine& engine);

/// The rows as the store holds them now.
void readRows(Store& store, SlowEngine& engine);

/// All rows in the order of `ID`: ID, 序号, 期号, numbers, 过滤标记, 缩水标记, 精选标记, 临时数据; "-" where a mark is empty.
QStringList rowTexts(const SlowEngine& engine);
QStringList rowTexts(Store& store);

/// The rows "ID VALUE" of 过滤条件.
QStringList valueTexts(const SlowEngine& engine);
QStringList valueTexts(Store& store);

}  // namespace elevenfive::slow
