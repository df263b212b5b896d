#pragma once

// Members of the file that no record's table names.
namespace archive::key {

inline constexpr char format[] = "format", version[] = "version", saved[] = "saved";
inline constexpr char unit[] = "unit", texts[] = "texts", firmware[] = "firmware", numbers[] = "numbers";
inline constexpr char settings[] = "settings", midiIn[] = "midiIn", expressionPedal[] = "expressionPedal";
inline constexpr char midiDevices[] = "midiDevices", banks[] = "banks", presets[] = "presets";
inline constexpr char number[] = "number";  // of a bank, preset or MIDI device; or around a number out of range
inline constexpr char bytes[] = "bytes";

}  // namespace archive::key

namespace archive {

inline constexpr char formatName[] = "kora-unit";
inline constexpr int formatVersion = 1;

}  // namespace archive
