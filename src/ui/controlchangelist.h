#pragma once

#include "model/records.h"

#include <QVector>

#include <vector>

/// What the user chose for a controller of the device that the editor was opened for.
struct ControllerChoice
{
    std::uint8_t controller;  ///< 1 to 20: position in the device's controller list
    std::uint8_t value;       ///< 0 to 127, `toggleValue` or `inactiveValue`
};

/// The control changes to be sent for a preset (0 to 9) whose messages to one device (1 to 10) were edited:
/// - the messages to this device that were made inactive, which tells the unit to drop them,
/// - all messages to other devices,
/// - the values chosen, as far as there are places left,
/// - fillers without effect up to 20 records.
QVector<ControlChangeData> newControlChanges(const std::vector<ControlChangeData> &stored, int deviceNumber,
                                             const QVector<ControllerChoice> &choices, int preset);
