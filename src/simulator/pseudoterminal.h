#pragma once

#include "simulator/descriptor.h"

#include <string>

/// A serial line without hardware: a pair of connected terminals. The unit reads and writes the master, the editor
/// opens the other side by its path. Destruction hangs up.
class PseudoTerminal
{
public:
    /// Opens a new pair in raw mode; the master does not block. Throws std::system_error when there is none to be had.
    PseudoTerminal();

    int master() const { return master_.get(); }
    /// The path under which the editor opens the line.
    const std::string &location() const { return location_; }

private:
    Descriptor master_;
    Descriptor slave_;  ///< never used; while it is open, a close by the editor is no hang-up for the master
    std::string location_;
};
