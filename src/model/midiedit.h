#pragma once

#include "model/records.h"

#include <map>
#include <optional>
#include <vector>

/// What the user made of a preset's messages to one MIDI device. It holds only what was altered, so that it can be put
/// onto whatever the preset holds by the time it is sent.
struct MidiEdit
{
    struct Pedal
    {
        /// 1 to 20, position in the device's controller list, or `none`; nothing when none was chosen
        std::optional<std::uint8_t> controller;
        std::optional<ExpressionPedalCharacteristic> characteristic;
        std::optional<std::uint8_t> toeUp;    ///< 0 to 127
        std::optional<std::uint8_t> toeDown;  ///< 0 to 127
    };

    std::uint8_t device = 1;                      ///< 1 to 10
    std::vector<std::uint8_t> controllers;        ///< the device's defined controllers, as positions in its list
    std::optional<std::uint8_t> program;          ///< 1 to 128 or `none`
    std::map<std::uint8_t, std::uint8_t> values;  ///< by controller: 0 to 127, `toggleValue` or `inactiveValue`
    Pedal pedal;

    /// The program change to be sent; nothing when the preset holds it.
    std::optional<std::uint8_t> programFor(const PresetData &stored) const;
    /// The whole list of control changes to be sent, always 20 records:
    /// - the messages to this device that are inactive now, which tells the unit to drop them,
    /// - all messages to other devices,
    /// - the values of the defined controllers, as far as there are places left,
    /// - fillers, which name no device.
    std::vector<ControlChangeData> controlChangesFor(const PresetData &stored) const;
    /// The pedal assignment to be sent; nothing when it stays with another device or the device has no controllers.
    std::optional<PresetExpressionPedal> pedalFor(const PresetData &stored) const;

    /// The preset as it is once the unit has taken the edit.
    PresetData appliedTo(PresetData preset) const;
};
