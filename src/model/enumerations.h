#pragma once

#include <QStringList>

#include <cstdint>

// The values below are the ones the unit sends and takes; the labels that the user sees stand in enumerations.cpp.

enum class FootswitchType : std::int32_t { Preset = 0, SwitchModifier = 1, LoopModifier = 2, MidiModifier = 3 };
enum class LoopType : std::int32_t { On = 1, Off = 2, Toggle = 3, Inactive = 4 };
enum class SwitchType : std::int32_t { On = 1, Off = 2, Toggle = 3, Inactive = 4 };
enum class WahPadAction : std::int32_t { Add = 1, TurnLoopOn = 2, ChangeToPreset = 3 };
enum class WahPadSetting : std::int32_t { Loop1 = 1, Loop2, Loop3, Loop4, Loop5, Loop6, Inactive = 7 };
enum class ClickProtection : std::int32_t { Low = 1, Mid = 2, High = 3 };
enum class KeyboardType : std::int32_t { Qwerty = 1, Azerty = 2 };
enum class BankPresetChangeMode : std::int32_t { Direct = 1, Indirect = 2 };
enum class PresetChangeName : std::int32_t { Always = 1, PresetOnly = 2 };
enum class MidiInPCFunction : std::int32_t { Unused = 1, Bank1To10 = 2, BankAndPreset = 3 };
enum class MidiInCCFunction : std::int32_t { Unused = 1, NumberBankValuePreset = 2 };
enum class ExpressionPedalPeriod : std::int32_t { Ms4 = 1, Ms8 = 2, Ms16 = 3, Ms32 = 4, Ms64 = 5 };
enum class ExpressionPedalCharacteristic : std::int32_t { FastSlow = 1, Linear = 2, SlowFast = 3 };
enum class SwitchOutSetting : std::int32_t { Latching = 1, Pulse = 2, Momentary = 3 };
enum class MidiDeviceTapTempo : std::int32_t { Unused = 1, TapCtrl = 2, TapTempoNote = 3 };
enum class TapTempoNote : std::int32_t { On = 1, Off = 2, Toggle = 3 };

/// The value of an enumeration's first label; every further label counts one up.
template <typename Enum>
inline constexpr int firstValue = 1;
template <>
inline constexpr int firstValue<FootswitchType> = 0;

/// The combo-box row that shows a value, from 0. A value that the enumeration lacks gives a row that no box has.
template <typename Enum>
constexpr int toIndex(Enum value)
{
    return static_cast<int>(value) - firstValue<Enum>;
}

/// The value that a combo-box row (from 0) stands for.
template <typename Enum>
constexpr Enum fromIndex(int index)
{
    return static_cast<Enum>(index + firstValue<Enum>);
}

/// The texts under which the user sees an enumeration's values, in combo-box order.
template <typename Enum>
const QStringList &labels();

template <>
const QStringList &labels<FootswitchType>();
template <>
const QStringList &labels<LoopType>();
template <>
const QStringList &labels<SwitchType>();
template <>
const QStringList &labels<WahPadAction>();
template <>
const QStringList &labels<WahPadSetting>();
template <>
const QStringList &labels<ClickProtection>();
template <>
const QStringList &labels<KeyboardType>();
template <>
const QStringList &labels<BankPresetChangeMode>();
template <>
const QStringList &labels<PresetChangeName>();
template <>
const QStringList &labels<MidiInPCFunction>();
template <>
const QStringList &labels<MidiInCCFunction>();
template <>
const QStringList &labels<ExpressionPedalPeriod>();
template <>
const QStringList &labels<ExpressionPedalCharacteristic>();
template <>
const QStringList &labels<SwitchOutSetting>();
template <>
const QStringList &labels<MidiDeviceTapTempo>();
template <>
const QStringList &labels<TapTempoNote>();
/// "NO" (false) and "YES" (true).
template <>
const QStringList &labels<bool>();
template <>
inline constexpr int firstValue<bool> = 0;
