#include "simulator/stopsignals.h"

#include <ctime>

StopSignals::StopSignals()
{
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, &before);
}

StopSignals::~StopSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

bool StopSignals::arriveWithin(std::chrono::seconds time) const
{
    const timespec period{time.count(), 0};
    return ::sigtimedwait(&signals, nullptr, &period) >= 0;
}
