#pragma once

#include "model/unitcontent.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <set>

namespace cli {

enum class Command { Help, Version, Info, Backup, Restore, Compare, Show, Clear, Copy, Swap, Firmware };

/// What the user asks for.
struct Arguments
{
    /// Whether --banks and --only let a record in.
    bool covers(const RecordId &id) const;
    /// The records of a set that they let in.
    std::set<RecordId> covered(const std::set<RecordId> &records) const;

    Command command = Command::Help;
    QStringList operands;  ///< files, or places
    QString port;          ///< empty: search all
    int wait = 10;         ///< seconds
    bool json = false;
    bool quiet = false;
    bool yes = false;
    bool all = false;
    bool dryRun = false;
    bool noSafetyCopy = false;
    std::optional<std::set<int>> banks;                 ///< --banks
    std::optional<std::set<RecordId::Kind>> onlyParts;  ///< --only; a bank stands for its presets as well
};

/// Reads a command line, the program's name first. Throws `Failure` (wrongUsage).
Arguments parseArguments(const QStringList &commandLine);

/// What --help prints, and what the manual page is made of.
QString helpText();
QString versionText();

/// A bank ("7", presets not told) or a preset ("7.3") of a unit. Throws `Failure` (wrongUsage).
struct Slot
{
    int bank = 0;
    std::optional<int> preset;
};
Slot parseSlot(const QString &text);

}  // namespace cli
