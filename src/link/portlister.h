#pragma once

#include <QStringList>

#include <functional>

/// Lists the system locations of the serial ports on which a unit may answer ("/dev/ttyACM0"), in the order in which
/// they are to be tried.
using PortLister = std::function<QStringList()>;

/// Every serial port that the system reports, unfiltered and in its order.
QStringList systemPortLocations();
