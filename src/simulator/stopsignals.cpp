#include "simulator/stopsignals.h"

#include <ctime>

StopSignals::StopSignals()
{
    sigemptyset(&awaited);
    sigaddset(&awaited, SIGINT);
    sigaddset(&awaited, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &awaited, &before);
}

StopSignals::~StopSignals() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

bool StopSignals::arriveWithin(std::chrono::seconds time) const
{
    const timespec period{time.count(), 0};
    return ::sigtimedwait(&awaited, nullptr, &period) >= 0;
}
