#pragma once

#include "model/records.h"

#include <map>

/// What the user made of a MIDI device's list of controllers. It holds only what was altered, so that it can be put
/// onto whatever the list holds by the time it is sent.
struct ControllerEdit
{
    std::map<std::size_t, std::string> names;     ///< by slot, from 0; UTF-8
    std::map<std::size_t, std::uint8_t> numbers;  ///< by slot, from 0; 0 to 127 or `none`

    MidiDevice appliedTo(MidiDevice device) const
    {
        for (const auto &[slot, name] : names)
            device.controllers.at(slot).name = name;
        for (const auto &[slot, number] : numbers)
            device.controllers.at(slot).number = number;
        return device;
    }
};
