#pragma once

#include <QString>

namespace cli {

/// What the program exits with.
enum Status : int {
    done = 0,        ///< also: nothing differs
    differs = 1,     ///< something differs, was not read back as written, or was not to be done when asked
    wrongUsage = 2,  ///< what was asked for cannot be understood, or needs a terminal
    noUnit = 3,
    unitFailed = 4,  ///< the unit refused, or the line failed
    fileFailed = 5,  ///< a file or the output cannot be read or written, or is no backup
    signalled = 128  ///< and the number of the signal
};

/// Thrown, by value, to end a command.
struct Failure
{
    int status;
    QString reason;  ///< for the user, one line; empty when there is nobody to tell
};

}  // namespace cli
