#pragma once

#include "model/records.h"

#include <array>
#include <cstdint>
#include <vector>

/// Everything that a unit keeps while it is switched off.
struct UnitMemory
{
    bool operator==(const UnitMemory &) const = default;

    DeviceInfo deviceInfo;
    std::array<BankData, bankCount> banks;                               ///< by bank index
    std::array<std::array<PresetData, presetCount>, bankCount> presets;  ///< by bank, then preset index
    std::array<MidiDevice, midiDeviceCount> midiDevices;                 ///< slot = device number - 1
    MidiInData midiIn;
    ExpressionPedalData expressionPedal;
    SwitchOutData switchOuts;
    Settings settings;
    std::vector<std::uint8_t> firmware;  ///< the image installed last
};
