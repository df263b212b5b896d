#pragma once

#include "model/unitcontent.h"

/// A MIDI device, or one of its controllers.
struct MidiTarget
{
    int device = 1;      ///< 1 to 10
    int controller = 0;  ///< 1 to 20, position in the device's list; 0 for the device as a whole
};

/// Whether a preset sends a control change or its expression pedal there, or a program change to the device as a whole.
bool sendsTo(const PresetData &preset, const MidiTarget &target);
/// The known presets that do.
std::set<RecordId> usesOf(const UnitPart &part, const MidiTarget &target);
/// The places in a device's list, from 1, of the controllers that have a number.
std::vector<std::uint8_t> definedControllers(const MidiDevice &device);
/// Whether a preset's expression pedal drives a controller of a device.
bool drivesController(const PresetExpressionPedal &pedal);
