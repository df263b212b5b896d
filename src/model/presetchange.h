#pragma once

#include "model/arrangement.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

// One change that is made to many presets. What a preset's function does not allow is not made.

/// Another footswitch function. The states stay as they are.
struct FunctionChange
{
    FootswitchType function;
};

struct LoopChange
{
    int loop;  ///< 1 to 6; 0 for the buffer
    LoopType state;
};

struct SwitchChange
{
    int number;  ///< 1 to 6
    SwitchType state;
};

struct ProgramChange
{
    int device;            ///< 1 to 10
    std::uint8_t program;  ///< 1 to 128, or `none`
};

struct ControlChange
{
    std::uint8_t device;                ///< 1 to 10
    std::uint8_t controller;            ///< 1 to 20
    std::uint8_t value;                 ///< 0 to 127, `toggleValue` or `inactiveValue`
    std::optional<std::uint8_t> where;  ///< only where it has this value so far
};

/// What is not told stays as it is. A pedal that has driven nothing goes from 0 to 127, linear.
struct PedalChange
{
    std::optional<std::uint8_t> device;      ///< 1 to 10, together with a controller
    std::optional<std::uint8_t> controller;  ///< 1 to 20, or `none`, for a pedal that then drives nothing
    std::optional<ExpressionPedalCharacteristic> characteristic;
    std::optional<std::uint8_t> toeUp;    ///< 0 to 127
    std::optional<std::uint8_t> toeDown;  ///< 0 to 127
};

/// A text in names becomes another, wherever it stands.
struct NameChange
{
    std::string text;  ///< not empty
    std::string replacement;
};

using PresetChange =
    std::variant<FunctionChange, LoopChange, SwitchChange, ProgramChange, ControlChange, PedalChange, NameChange>;

enum class ChangeOutcome {
    Same,        ///< there is nothing to change
    Made,        ///< the preset is changed
    NotAllowed,  ///< its function does not allow it
    NoRoom       ///< it would send more control changes than it can hold
};

/// Changes a preset; leaves it as it is unless the outcome is `Made`.
ChangeOutcome makeChange(PresetData &preset, const PresetChange &change);

namespace arrange {

/// The presets of a selection are changed as they are when the turn has come.
Arrangement change(const std::set<RecordId> &selection, const PresetChange &change);

/// What a change would do to a selection.
struct ChangeCount
{
    bool operator==(const ChangeCount &) const = default;

    int presets = 0;     ///< that are changed
    int values = 0;      ///< of them
    int notAllowed = 0;  ///< presets that stay as they are: their function does not allow it
    int noRoom = 0;      ///< presets that stay as they are: they would send too many control changes
};
/// Only presets that are known count.
ChangeCount countOf(const PresetChange &change, const std::set<RecordId> &selection, const UnitPart &part);

}  // namespace arrange
