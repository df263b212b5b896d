#include "link/portlister.h"

#include <QSerialPortInfo>

QStringList systemPortLocations()
{
    QStringList locations;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts())
        locations << port.systemLocation();
    return locations;
}
