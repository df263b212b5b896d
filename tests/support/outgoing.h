#pragma once

#include "model/controlchanges.h"
#include "model/unitcontent.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

// What goes out by MIDI, worked out in the simplest way: by what things are called, not where they stand.

/// Device, its channel, controller, its number, value, another value.
using OutgoingMessage = std::tuple<std::string, int, std::string, int, int, int>;

inline Messages plainMessages(const PresetData &preset)
{
    Messages messages;
    for (const ControlChangeData &record : preset.controlChanges)
        if (record.value != inactiveValue) messages[{record.midiDeviceNumber, record.controllerNumber}] = record.value;
    return messages;
}

/// By footswitch, sorted; what holds for the whole unit comes last.
inline std::vector<std::vector<OutgoingMessage>> outgoing(const UnitContent &content)
{
    std::vector<std::vector<OutgoingMessage>> all(1);
    const auto control = [&](unsigned number, unsigned position, int value, int other = 0) {
        static const MidiDevice nobody;
        static const Controller nothing{"none", none};
        const MidiDevice &device = number - 1 < 10 ? content.midiDevices[number - 1] : nobody;
        const Controller &controller = position - 1 < 20 ? device.controllers[position - 1] : nothing;
        all.back().emplace_back(device.name, device.channel, controller.name, controller.number, value, other);
    };
    for (const auto &bank : content.presets)
        for (const PresetData &preset : bank) {
            for (const auto &[address, value] : plainMessages(preset))
                control(address.first, address.second, value);
            for (unsigned number = 1; number <= midiDeviceCount; ++number)
                if (preset.programChanges[number - 1] != none)
                    control(number, 0, 1000, preset.programChanges[number - 1]);
            const PresetExpressionPedal &pedal = preset.expressionPedal;
            control(pedal.midiDeviceNumber, pedal.controllerNumber, 2000 + pedal.toeUp, pedal.toeDown);
            std::sort(all.back().begin(), all.back().end());
            all.emplace_back();
        }
    control(content.expressionPedal.midiDeviceNumber, content.expressionPedal.controllerNumber, 3000);
    for (unsigned number = 1; number <= midiDeviceCount; ++number)
        control(number, content.midiDevices[number - 1].tapController, 4000);
    std::sort(all.back().begin(), all.back().end());
    return all;
}
