#pragma once

#include <chrono>
#include <csignal>

/// SIGINT and SIGTERM, held back so that they can be waited for: by the thread that makes this object and by every
/// thread that is started while it lives.
class StopSignals
{
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

    /// Whether one came within this time.
    bool arriveWithin(std::chrono::seconds time) const;

private:
    sigset_t awaited;
    sigset_t before;  ///< what the thread held back until then
};
