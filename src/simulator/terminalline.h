#pragma once

#include "simulator/descriptor.h"

#include <chrono>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>

class PseudoTerminal;

/// Waiting reads and writes of the unit on its pseudo-terminal, which a stop request ends at once.
class TerminalLine
{
public:
    /// The terminal must outlive the line.
    TerminalLine(PseudoTerminal &terminal, const std::stop_token &stop);

    // Each gives false when a stop was requested or the line is gone.

    /// Waits for bytes and appends them.
    bool receive(std::string &bytes);
    /// Sends to the editor; what is sent while it has the line closed is lost.
    bool send(std::string_view bytes);
    bool pause(std::chrono::milliseconds time);
    /// Sends `filler` over and over, as fast as a slow serial line would, until bytes arrive.
    bool streamUntilReceived(std::string_view filler);

private:
    /// Waits for one of `events` on the master, or for the editor to open or close the line, for at most `timeout`
    /// milliseconds (-1: for ever); gives the events that happened on the master.
    short wait(short events, int timeout);
    bool stopped() const { return stopToken.stop_requested(); }

    PseudoTerminal &line;
    std::stop_token stopToken;
    Descriptor wakeUp;
    std::stop_callback<std::function<void()>> onStop;
};
