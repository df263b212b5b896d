#pragma once

#include <QStringList>

#include <array>
#include <cstdint>

// The values below are the ones the unit sends and takes. Beside each enumeration stand the texts under which the user
// sees its values: the first label belongs to `firstValue`, every further one counts one up.

template <typename Enum>
inline constexpr std::array<const char *, 0> labelTexts{};
template <>
inline constexpr std::array labelTexts<bool>{"NO", "YES"};

enum class FootswitchType : std::int32_t { Preset = 0, SwitchModifier = 1, LoopModifier = 2, MidiModifier = 3 };
template <>
inline constexpr std::array labelTexts<FootswitchType>{"P - PRESET", "S - SWITCH MODIFIER", "L - LOOP MODIFIER",
                                                       "M - MIDI MODIFIER"};

enum class LoopType : std::int32_t { On = 1, Off = 2, Toggle = 3, Inactive = 4 };
template <>
inline constexpr std::array labelTexts<LoopType>{"ON", "OFF", "TOGGLE", "INACTIVE"};

enum class SwitchType : std::int32_t { On = 1, Off = 2, Toggle = 3, Inactive = 4 };
template <>
inline constexpr std::array labelTexts<SwitchType>{"ON", "OFF", "TOGGLE", "INACTIVE"};

enum class WahPadAction : std::int32_t { Add = 1, TurnLoopOn = 2, ChangeToPreset = 3 };
template <>
inline constexpr std::array labelTexts<WahPadAction>{"ADD", "TURN LOOP ON", "CHANGE TO PRESET"};

enum class WahPadSetting : std::int32_t { Loop1 = 1, Loop2, Loop3, Loop4, Loop5, Loop6, Inactive = 7 };
template <>
inline constexpr std::array labelTexts<WahPadSetting>{"LOOP 1", "LOOP 2", "LOOP 3",  "LOOP 4",
                                                      "LOOP 5", "LOOP 6", "INACTIVE"};

enum class ClickProtection : std::int32_t { Low = 1, Mid = 2, High = 3 };
template <>
inline constexpr std::array labelTexts<ClickProtection>{"LOW", "MID", "HIGH"};

enum class KeyboardType : std::int32_t { Qwerty = 1, Azerty = 2 };
template <>
inline constexpr std::array labelTexts<KeyboardType>{"QWERTY", "AZERTY"};

enum class BankPresetChangeMode : std::int32_t { Direct = 1, Indirect = 2 };
template <>
inline constexpr std::array labelTexts<BankPresetChangeMode>{"DIRECT", "INDIRECT"};

enum class PresetChangeName : std::int32_t { Always = 1, PresetOnly = 2 };
template <>
inline constexpr std::array labelTexts<PresetChangeName>{"ALWAYS", "PRESET ONLY"};

enum class MidiInPCFunction : std::int32_t { Unused = 1, Bank1To10 = 2, BankAndPreset = 3 };
template <>
inline constexpr std::array labelTexts<MidiInPCFunction>{"UNUSED", "BANK 1-10", "BANK + PRESET"};

enum class MidiInCCFunction : std::int32_t { Unused = 1, NumberBankValuePreset = 2 };
template <>
inline constexpr std::array labelTexts<MidiInCCFunction>{"UNUSED", "NUMBER-BANK, VALUE-PRESET"};

enum class ExpressionPedalPeriod : std::int32_t { Ms4 = 1, Ms8 = 2, Ms16 = 3, Ms32 = 4, Ms64 = 5 };
template <>
inline constexpr std::array labelTexts<ExpressionPedalPeriod>{"4 [ms] ", "8 [ms] ", "16 [ms]", "32 [ms]", "64 [ms]"};

enum class ExpressionPedalCharacteristic : std::int32_t { FastSlow = 1, Linear = 2, SlowFast = 3 };
template <>
inline constexpr std::array labelTexts<ExpressionPedalCharacteristic>{"FAST/SLOW", "LINEAR", "SLOW/FAST"};

enum class SwitchOutSetting : std::int32_t { Latching = 1, Pulse = 2, Momentary = 3 };
template <>
inline constexpr std::array labelTexts<SwitchOutSetting>{"LATCHING", "PULSE", "MOMENTARY"};

enum class MidiDeviceTapTempo : std::int32_t { Unused = 1, TapCtrl = 2, TapTempoNote = 3 };
template <>
inline constexpr std::array labelTexts<MidiDeviceTapTempo>{"UNUSED", "TAP CTRL", "TAP TEMPO NOTE"};

enum class TapTempoNote : std::int32_t { On = 1, Off = 2, Toggle = 3 };
template <>
inline constexpr std::array labelTexts<TapTempoNote>{"ON", "OFF", "TOGGLE"};

/// The value of an enumeration's first label; every further label counts one up.
template <typename Enum>
inline constexpr int firstValue = 1;
template <>
inline constexpr int firstValue<FootswitchType> = 0;
template <>
inline constexpr int firstValue<bool> = 0;

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

/// The labels in combo-box order.
template <typename Enum>
const QStringList &labels()
{
    static const QStringList texts = [] {
        QStringList list;
        for (const char *label : labelTexts<Enum>)
            list << QString::fromLatin1(label);
        return list;
    }();
    return texts;
}
