#pragma once

#include "simulator/descriptor.h"

#include <string>

/// A serial line without hardware: a pair of connected terminals. The unit reads and writes the master, the editor
/// opens the other side by its path. Destruction hangs up, but the system gives the path to nobody else yet: an editor
/// that has not noticed would find another unit there.
class PseudoTerminal
{
public:
    /// So many of a program's paths stay taken after their lines have hung up, each by one open file.
    static constexpr std::size_t keptPaths = 8;

    /// Opens a new pair in raw mode; the master does not block. Throws std::system_error when there is none to be had.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    int master() const { return masterEnd.get(); }
    /// Readable when `followEditor` has something to do.
    int editorEvents() const { return openEvents.get(); }
    /// Takes note of the editor's opens and closes since the last call. What was sent but not read when the editor
    /// closed the line is lost, as on a real line; a pseudo-terminal alone would keep it for the next open.
    void followEditor();
    /// Whether the editor had the line open when it was last followed.
    bool isOpen() const { return openCount > 0; }
    /// The path under which the editor opens the line.
    const std::string &location() const { return path; }

private:
    Descriptor masterEnd;
    std::string path;
    Descriptor slaveEnd;  ///< while it is open, a close by the editor is no hang-up for the master
    Descriptor openEvents;
    int openCount = 0;
};
