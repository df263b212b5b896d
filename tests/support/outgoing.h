#pragma once

#include "model/controlchanges.h"
#include "model/unitcontent.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

// What goes out by MIDI, worked out in the simplest way: by what things are called, not where they stand.

using OutgoingMessage = std::tuple<std::string, int, std::string, int, int, int>;
/// By footswitch, in order; what holds for the whole unit comes last. Sorted, since a list's order is nobody's promise.
using Outgoing = std::vector<std::vector<OutgoingMessage>>;

inline Messages plainMessages(const PresetData &preset)
{
    Messages messages;
    for (const ControlChangeData &record : preset.controlChanges)
        if (record.value != inactiveValue) messages[{record.midiDeviceNumber, record.controllerNumber}] = record.value;
    return messages;
}

inline Outgoing outgoing(const UnitContent &content)
{
    Outgoing all;
    // "device", channel, "controller", its number, values
    const auto control = [&](int number, int position, int value, int other = 0) {
        static const MidiDevice nobody;
        static const Controller nothing{"none", none};
        const bool isNone = number < 1 || number > midiDeviceCount, isOff = position < 1 || position > controllerCount;
        const MidiDevice &device = isNone ? nobody : content.midiDevices.at(number - 1);
        const Controller &controller = isOff ? nothing : device.controllers.at(position - 1);
        all.back().emplace_back(device.name, device.channel, controller.name, controller.number, value, other);
    };
    for (const auto &bank : content.presets)
        for (const PresetData &preset : bank) {
            all.emplace_back();
            for (const auto &[address, value] : plainMessages(preset))
                control(address.first, address.second, value);
            for (int slot = 0; slot < midiDeviceCount; ++slot)
                if (preset.programChanges.at(slot) != none)
                    all.back().emplace_back(content.midiDevices.at(slot).name, content.midiDevices.at(slot).channel,
                                            "program", 0, preset.programChanges.at(slot), 0);
            const PresetExpressionPedal &pedal = preset.expressionPedal;
            control(pedal.midiDeviceNumber, pedal.controllerNumber, 1000 + pedal.toeUp, pedal.toeDown);
        }
    all.emplace_back();
    control(content.expressionPedal.midiDeviceNumber, content.expressionPedal.controllerNumber, 1000);
    for (int number = 1; number <= midiDeviceCount; ++number)
        control(number, content.midiDevices.at(number - 1).tapController, 2000);
    for (auto &messages : all)
        std::sort(messages.begin(), messages.end());
    return all;
}
