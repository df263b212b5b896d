#pragma once

#include "model/places.h"
#include "model/values.h"

#include <QStringList>

/// One value that two contents hold differently.
struct Difference
{
    RecordId record;
    ValueId value;
    QString place;           ///< "BANK 3, PRESET 4: LOOP 2"
    QString from;            ///< what the first content holds, for people
    QString to;              ///< what the second one holds
    bool writable = false;   ///< false for what is set on the unit itself, and for text that no frame can carry
    bool setOnUnit = false;  ///< the unit's identity and calibration
};

/// What differs in these records, in their order and that of their tables. Control changes are compared by what they
/// send to each controller, whatever their order.
std::vector<Difference> differences(const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records);

/// Those of them that can be written.
std::vector<Difference> writable(std::vector<Difference> found);
std::vector<Difference> writableDifferences(const UnitContent &from, const UnitContent &to,
                                            const std::set<RecordId> &records);

/// Adds what differs in one record.
template <typename Record>
void compare(const RecordId &id, const Record &from, const Record &to, std::vector<Difference> &found)
{
    const auto add = [&](const ValuePlace &place, const auto &row, const auto &held, const auto &wanted) {
        if (isSame(held, wanted, row.range)) return;
        found.push_back({id, place.id, places::value(id, place), textOf(held, row.range), textOf(wanted, row.range),
                         isWritable(row, wanted), row.readOnly});
    };
    if (from != to) forEachValue(add, from, to);
}

/// Takes one value over from `source`. A preset's list of control changes may hold more than `maxControlChanges` until
/// those that go are taken over too.
void apply(const Difference &difference, UnitContent &target, const UnitContent &source);

/// "214 values differ in 12 banks, 2 MIDI devices, global settings": the writable ones, a preset's under its bank.
QString summaryOf(const std::vector<Difference> &differences);

/// What the first content holds, not what was wanted, a line a value: "BANK 3, PRESET 4: LOOP 2: OFF, not TOGGLE".
QStringList remainingLines(const std::vector<Difference> &remaining);

/// What was changed, for people: "BANK 3, PRESET 4: LOOP 2  OFF -> TOGGLE", "3 values in BANK 3, PRESET 4", "14 values
/// in 2 banks, MIDI in".
QString changeWords(const std::vector<Difference> &differences);
