#pragma once

#include "cli/connectedunit.h"
#include "cli/differencelist.h"

namespace cli {

/// Makes some records of the unit as wanted: tells what differs, asks if it is to, saves what the unit holds, writes,
/// and tells what was read back.
class Change
{
public:
    /// `held` is what the unit holds now, as far as it is known: that is what is saved.
    Change(const Arguments &given, Console &owner, ConnectedUnit &connected, UnitPart held);

    /// Returns a `Status`, or throws `Failure`.
    int make(const UnitContent &wanted, const std::set<RecordId> &records);

private:
    void write(const UnitContent &wanted, const std::set<RecordId> &records);
    /// Tells the results, once nothing more is written.
    void tell(int written, const std::vector<Difference> &remaining) const;

    const Arguments &arguments;
    Console &console;
    ConnectedUnit &unit;
    UnitPart present;
    std::vector<Difference> planned;
};

/// Throws `Failure` unless the question is answered with yes. Where there is no terminal, --yes is the answer.
void askFirst(const Arguments &arguments, Console &console, const QString &question);
/// Throws `Failure` when `askFirst` could not ask.
void requireAnswer(const Arguments &arguments);

/// Saves a safety copy, unless none is wanted. If it cannot be made, asks on a terminal; else throws `Failure`.
void saveSafetyCopy(const Arguments &arguments, Console &console, const UnitPart &part);

}  // namespace cli
