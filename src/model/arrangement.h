#pragma once

#include "model/unitcontent.h"

#include <QString>

#include <functional>
#include <set>

/// A change of many records at once, as a plain alteration of a content: presets and banks that are copied, moved,
/// cleared. It is made from what the unit holds when its turn has come.
struct Arrangement
{
    QString words;               ///< for people: "MOVE BANK 99 TO 0"
    std::set<RecordId> records;  ///< all that it looks at or alters
    /// Alters these records and nothing else. Copies of it may run on several threads.
    std::function<void(UnitContent &content)> alter;
};

// Arrangements of banks and presets. A selection is a set of records: a preset's, or those of `recordsOfBank` for a
// whole bank. Numbers out of range throw `std::out_of_range`.
namespace arrange {

/// A selection for people: "BANK 3", "3 BANKS", "BANK 3, PRESET 4", "12 PRESETS".
QString nameOf(const std::set<RecordId> &selection);

/// Presets and banks become empty.
Arrangement clear(const std::set<RecordId> &selection);
/// What was copied, pasted from a bank or preset on: whole banks one after the other, presets in reading order. What
/// was cut is cleared where it stood, but for what is pasted there. What finds no place is left out.
Arrangement paste(const UnitPart &copied, const RecordId &target, const std::set<RecordId> &cut = {});
/// How many banks or presets of a copy find no place when it is pasted there.
int leftOut(const std::set<RecordId> &copied, const RecordId &target);
/// Each of the selected banks or presets changes places with one from `target` on. Only where `canSwap` holds.
Arrangement swap(const std::set<RecordId> &selection, const RecordId &target);
/// Whether they can: all of them find a place, banks with banks and presets with presets, and the two do not overlap.
bool canSwap(const std::set<RecordId> &selection, const RecordId &target);
/// Presets of one place stand in another, too, as they are when the turn has come.
Arrangement copy(const std::set<RecordId> &selection, const RecordId &target);
/// The banks stand together from bank `to` on, in their order; the banks between shift.
Arrangement moveBanks(const std::set<int> &banks, int to);
/// The banks from `at` on shift by one; the last one goes.
Arrangement insertEmptyBank(int at);
/// The banks go, those behind them move up, and empty ones follow at the end.
Arrangement removeBanks(const std::set<int> &banks);

}  // namespace arrange
