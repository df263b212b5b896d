#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "device/kora.h"
#include "device/transfer.h"

#include <memory>

namespace cli {

/// The unit, found on its port, with progress on the console and an end on a signal.
class ConnectedUnit
{
public:
    /// Searches as the arguments tell. Throws `Failure` when there is no unit, or on a signal.
    ConnectedUnit(const Arguments &arguments, Console &owner);

    const QString &port() const { return location; }
    KORA &device() { return *unit; }

    /// Reads records. Throws `Failure`.
    UnitPart read(const std::set<RecordId> &records);
    /// As `Transfer::write`.
    Transfer::Outcome write(UnitPart &present, const UnitContent &wanted, const std::set<RecordId> &records);

private:
    Transfer transfer(const char *what);

    Console &console;
    QString location;
    std::unique_ptr<KORA> unit;
};

}  // namespace cli
