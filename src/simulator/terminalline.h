#pragma once

#include "simulator/descriptor.h"

#include <chrono>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>

/// Waiting reads and writes on the master of a pseudo-terminal that a stop request ends at once.
class TerminalLine
{
public:
    /// `master` is a descriptor that does not block; it must stay open as long as the line is used.
    TerminalLine(int master, const std::stop_token &stop);

    // Each gives false when a stop was requested or the line is gone.

    /// Waits for bytes and appends them.
    bool receive(std::string &bytes);
    bool send(std::string_view bytes);
    bool pause(std::chrono::milliseconds time);
    /// Sends `filler` over and over, as fast as a slow serial line would, until bytes arrive.
    bool streamUntilReceived(std::string_view filler);

private:
    /// Waits for one of `events` on the master for at most `timeout` milliseconds (-1: for ever); gives those that
    /// happened.
    short wait(short events, int timeout) const;
    bool stopped() const { return stop_.stop_requested(); }

    int master_;
    std::stop_token stop_;
    Descriptor wakeUp_;
    std::stop_callback<std::function<void()>> onStop_;
};
