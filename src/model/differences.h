#pragma once

#include "model/values.h"

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

/// Takes one value over from `source`. A preset's list of control changes may hold more than `maxControlChanges` until
/// those that go are taken over too.
void apply(const Difference &difference, UnitContent &target, const UnitContent &source);

/// "214 values differ in 12 banks, 2 MIDI devices, global settings": the writable ones, a preset's under its bank.
QString summaryOf(const std::vector<Difference> &differences);
