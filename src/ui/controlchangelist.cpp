#include "ui/controlchangelist.h"

#include <algorithm>

namespace {

constexpr int places = static_cast<int>(maxControlChanges);
constexpr std::uint8_t fillerDeviceOfPreset0 = 20;  // 0 names no device

}  // namespace

QVector<ControlChangeData> newControlChanges(const std::vector<ControlChangeData> &stored, int deviceNumber,
                                             const QVector<ControllerChoice> &choices, int preset)
{
    const auto device = static_cast<std::uint8_t>(deviceNumber);
    const auto madeInactive = [&](const ControlChangeData &record) {
        return std::any_of(choices.begin(), choices.end(), [&](const ControllerChoice &choice) {
            return choice.controller == record.controllerNumber && choice.value == inactiveValue;
        });
    };

    // A full list is one that an earlier edit sent: until the bank is read again it holds what that edit dropped and
    // filled up with, which would take the places of new messages.
    std::vector<ControlChangeData> before = stored;
    if (before.size() == maxControlChanges)
        std::erase_if(before, [](const ControlChangeData &record) { return record.value == inactiveValue; });

    QVector<ControlChangeData> records;
    records.reserve(places);
    for (const ControlChangeData &record : before)
        if (record.midiDeviceNumber == device && madeInactive(record))
            records << ControlChangeData(device, record.controllerNumber, inactiveValue);
    for (const ControlChangeData &record : before)
        if (record.midiDeviceNumber != device) records << record;
    for (const ControllerChoice &choice : choices)
        if (choice.value != inactiveValue && records.size() < places)
            records << ControlChangeData(device, choice.controller, choice.value);
    const auto fillerDevice = preset == 0 ? fillerDeviceOfPreset0 : static_cast<std::uint8_t>(preset);
    while (records.size() < places)
        records << ControlChangeData(fillerDevice, static_cast<std::uint8_t>(records.size() + 1), inactiveValue);
    return records;
}
