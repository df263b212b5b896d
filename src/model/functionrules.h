#pragma once

#include "model/enumerations.h"

#include <array>

// What the footswitch function of a preset allows.

/// How many of the states ON, OFF, TOGGLE, INACTIVE, taken in this order, each `FootswitchType` allows: P, S, L, M.
using AllowedStates = std::array<int, 4>;
/// Of the buffer and the loops (`LoopType`), of the switches (`SwitchType`).
template <typename State>
inline constexpr AllowedStates allowedStates{};
template <>
inline constexpr AllowedStates allowedStates<LoopType>{2, 0, 4, 0};
template <>
inline constexpr AllowedStates allowedStates<SwitchType>{2, 4, 0, 0};

/// Whether the state of that combo-box row is one of the allowed ones.
constexpr bool allows(const AllowedStates &allowed, FootswitchType function, int index)
{
    const int row = toIndex(function);
    return row >= 0 && row < static_cast<int>(allowed.size()) && index >= 0 &&
           index < allowed[static_cast<std::size_t>(row)];
}

/// Whether a preset of this function sends MIDI messages at all.
constexpr bool sendsMidi(FootswitchType function)
{
    return function == FootswitchType::Preset || function == FootswitchType::MidiModifier;
}
