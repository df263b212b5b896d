#pragma once

#include "unit/unitmemory.h"

/// The memory of a unit that a musician has played for a while: named banks and songs, presets of all four footswitch
/// functions (all of them in every bank), seven MIDI devices in use, accents in some names. Always the same.
UnitMemory musicianContent();
