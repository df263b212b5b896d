#pragma once

#include "link/portlister.h"

#include <QString>

#include <functional>
#include <optional>

/// How long a unit is waited for, in milliseconds; shorter times are for tests.
struct Timeouts
{
    unsigned int probe = 1000;       ///< for the answer of a port that is tried
    unsigned int working = 2000;     ///< for the answer of the unit that was found
    unsigned int searchPause = 400;  ///< between two passes over the ports
};

/// Sends the unit's information command to each port that `listPorts` names, in its order, over and over, and returns
/// the first port that answers with any frame within `timeout` milliseconds. Nothing once `stop` says so, which is
/// asked before every pass, before every port and during the pause of `pause` milliseconds between two passes.
std::optional<QString> findUnit(const PortLister &listPorts, const std::function<bool()> &stop, unsigned int timeout,
                                unsigned int pause);
