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
    /// Readable when `followEditor` has something to do.
    int editorEvents() const { return events_.get(); }
    /// Takes note of the editor's opens and closes since the last call. What was sent but not read when the editor
    /// closed the line is lost, as on a real line; a pseudo-terminal alone would keep it for the next open.
    void followEditor();
    /// Whether the editor had the line open when it was last followed.
    bool isOpen() const { return opens_ > 0; }
    /// The path under which the editor opens the line.
    const std::string &location() const { return location_; }

private:
    Descriptor master_;
    std::string location_;
    Descriptor slave_;  ///< while it is open, a close by the editor is no hang-up for the master
    Descriptor events_;
    int opens_ = 0;
};
