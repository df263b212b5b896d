#pragma once

#include "model/unitcontent.h"

#include <QString>

struct ValuePlace;

/// Where a value stands in the unit, for people: "BANK 3, PRESET 4", "MIDI DEVICE 2".
namespace places {

/// Banks count from 0.
inline QString bank(int bank) { return QStringLiteral("BANK %1").arg(bank); }
/// Presets count from 0.
inline QString preset(int bank, int preset) { return QStringLiteral("BANK %1, PRESET %2").arg(bank).arg(preset); }
/// MIDI devices count from 1.
inline QString midiDevice(int number) { return QStringLiteral("MIDI DEVICE %1").arg(number); }
inline QString midiMessages(int bankIndex, int presetIndex, int device)
{
    return QStringLiteral("%1: MIDI %2").arg(preset(bankIndex, presetIndex)).arg(device);
}

/// "1 bank", "12 banks"
inline QString counted(std::size_t count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

/// "SETTINGS", "MIDI DEVICE 2", "BANK 3", "BANK 3, PRESET 4"
QString record(const RecordId &id);
/// "SETTINGS: KEYBOARD TYPE", "MIDI DEVICE 2, CONTROLLER 5: NAME", "BANK 3, PRESET 4: MIDI 1 CONTROLLER 3", "SWITCH OUT
/// 2"
QString value(const RecordId &id, const ValuePlace &place);

}  // namespace places
