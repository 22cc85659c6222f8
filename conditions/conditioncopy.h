// Copies a condition set from one store to another: the four tables of the template, by position.
//
// Both sides are read in the same order and row k of the source goes to row k of the target; only values are written, rows and
// columns of the target stay. The source may be a file of unknown origin: of each table it is checked that it is a real table
// of the expected shape and that every value is a whole number; nothing else of the file is used.
#pragma once

namespace elevenfive {

class DamagedData;
class Store;

/// Throws DamagedData where a table of a condition set has more or fewer rows than a fresh one. Rows go by position, so one
/// more or less would shift all behind it.
void demandAllRows(Store& store);

/// The same of the main database, as a StoreError: then no file is to blame.
void demandOwnRows(Store& gConn);

/// Tells damage that was found in the main database's own conditions as a StoreError.
[[noreturn]] void raiseOwnDamage(const DamagedData& damage);

/// Copies 过滤条件, 过滤条件使用情况, 号码特性 and 历史数据过滤, in this order. A source with fewer rows overwrites the first rows
/// only, one without any nothing; one that lacks a table, has more rows than the target or values that the target cannot hold
/// throws DamagedData, a fault of either store StoreError. What was copied until then stays. Columns of 号码特性 go by their
/// place behind the two keys, those of the other tables by name.
void copyConditionSet(Store& source, Store& target);

/// Copies the factory values of the main database into 过滤条件 and 过滤条件使用情况. Throws StoreError with nothing changed where
/// one of these tables, or another of a set, has more or fewer rows than a fresh one.
void copyFactoryConditions(Store& store);

}  // namespace elevenfive
