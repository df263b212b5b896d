#pragma once

#include "model/records.h"

#include <QString>

/// The name of a controller, else the number that it sends, else its place in the list, which counts from 1.
QString controllerName(const MidiDevice &definition, int position);

/// What a preset sends to a MIDI device, in few words: "PC 12, MIX = 64, DECAY toggles, PEDAL: MIX 0 to 127". Empty
/// when it sends nothing. `device` is 1 to 10.
QString midiSummary(const PresetData &preset, int device, const MidiDevice &definition);
