#pragma once

#include "model/enumerations.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

// What the unit holds, record by record. Names are UTF-8 text.

inline constexpr int bankCount = 100;
inline constexpr int presetCount = 10;  ///< presets of a bank
inline constexpr int midiDeviceCount = 10;
inline constexpr int controllerCount = 20;  ///< named controllers of a MIDI device
inline constexpr int loopCount = 6;         ///< besides the buffer loop
inline constexpr int switchCount = 6;
inline constexpr int switchOutCount = 6;
inline constexpr std::size_t maxControlChanges = 20;  ///< control changes of a preset

/// "None" in every 8-bit field that names a MIDI channel, device, controller or program number.
inline constexpr std::uint8_t none = 255;
/// A control-change value that toggles between two values instead of setting one.
inline constexpr std::uint8_t toggleValue = 254;
/// A control-change value that sends nothing; written, it makes the unit drop the message.
inline constexpr std::uint8_t inactiveValue = 255;

/// Identity of the unit ("RDI"). The meanings of the two texts and of the last two numbers are the unit's own.
struct DeviceInfo
{
    DeviceInfo() = default;
    DeviceInfo(std::string first, std::string second, int major, int minor, int third, int fourth)
        : firstText(std::move(first)), secondText(std::move(second)), firmwareMajor(major), firmwareMinor(minor),
          thirdNumber(third), fourthNumber(fourth)
    {}
    virtual ~DeviceInfo() = default;
    bool operator==(const DeviceInfo &) const = default;

    std::string firstText;           ///< field A
    std::string secondText;          ///< field B
    std::int32_t firmwareMajor = 0;  ///< field C
    std::int32_t firmwareMinor = 0;  ///< field D
    std::int32_t thirdNumber = 0;    ///< field E
    std::int32_t fourthNumber = 0;   ///< field F
};

/// One bank ("RBB"): its name and what its two wah pads do.
struct BankData
{
    BankData() = default;
    BankData(std::string bankName, WahPadAction action1, std::uint8_t preset1, WahPadAction action2,
             std::uint8_t preset2)
        : name(std::move(bankName)), wahPad1Action(action1), wahPad1PresetNumber(preset1), wahPad2Action(action2),
          wahPad2PresetNumber(preset2)
    {}
    bool operator==(const BankData &) const = default;

    std::string name;
    WahPadAction wahPad1Action = WahPadAction::Add;
    std::uint8_t wahPad1PresetNumber = 0;  ///< 0 to 9
    WahPadAction wahPad2Action = WahPadAction::Add;
    std::uint8_t wahPad2PresetNumber = 0;  ///< 0 to 9
};

/// One control-change message of a preset.
struct ControlChangeData
{
    ControlChangeData() = default;
    ControlChangeData(std::uint8_t device, std::uint8_t controller, std::uint8_t newValue)
        : midiDeviceNumber(device), controllerNumber(controller), value(newValue)
    {}
    virtual ~ControlChangeData() = default;
    bool operator==(const ControlChangeData &) const = default;

    std::uint8_t midiDeviceNumber = none;  ///< 1 to 10
    std::uint8_t controllerNumber = none;  ///< 1 to 20: position in that device's controller list
    std::uint8_t value = inactiveValue;    ///< 0 to 127, `toggleValue` or `inactiveValue`
};

/// What the expression pedal drives while a preset is on.
struct PresetExpressionPedal
{
    PresetExpressionPedal() = default;
    PresetExpressionPedal(std::uint8_t device, std::uint8_t controller, ExpressionPedalCharacteristic curve,
                          std::uint8_t up, std::uint8_t down)
        : midiDeviceNumber(device), controllerNumber(controller), characteristic(curve), toeUp(up), toeDown(down)
    {}
    virtual ~PresetExpressionPedal() = default;
    bool operator==(const PresetExpressionPedal &) const = default;

    std::uint8_t midiDeviceNumber = none;  ///< 1 to 10, or `none`
    std::uint8_t controllerNumber = none;  ///< 1 to 20: position in that device's controller list, or `none`
    ExpressionPedalCharacteristic characteristic = ExpressionPedalCharacteristic::Linear;
    std::uint8_t toeUp = 0;    ///< 0 to 127
    std::uint8_t toeDown = 0;  ///< 0 to 127
};

/// `Count` times the same value.
template <std::size_t Count, typename Value>
constexpr std::array<Value, Count> filled(Value value)
{
    std::array<Value, Count> values{};
    values.fill(value);
    return values;
}

/// One preset of a bank ("RBP").
struct PresetData
{
    PresetData() = default;
    PresetData(std::string presetName, FootswitchType function, LoopType buffer,
               const std::array<LoopType, loopCount> &loopStates,
               const std::array<SwitchType, switchCount> &switchStates, std::vector<ControlChangeData> changes,
               const std::array<std::uint8_t, midiDeviceCount> &programs, const PresetExpressionPedal &pedal)
        : name(std::move(presetName)), footswitchFunction(function), bufferLoop(buffer), loops(loopStates),
          switches(switchStates), controlChanges(std::move(changes)), programChanges(programs), expressionPedal(pedal)
    {}
    bool operator==(const PresetData &) const = default;

    std::string name;
    FootswitchType footswitchFunction = FootswitchType::Preset;
    LoopType bufferLoop = LoopType::Off;
    std::array<LoopType, loopCount> loops = filled<loopCount>(LoopType::Off);
    std::array<SwitchType, switchCount> switches = filled<switchCount>(SwitchType::Off);
    std::vector<ControlChangeData> controlChanges;  ///< at most `maxControlChanges`
    /// 1 to 128 or `none`; slot = device number - 1
    std::array<std::uint8_t, midiDeviceCount> programChanges = filled<midiDeviceCount>(none);
    PresetExpressionPedal expressionPedal{none, 0, ExpressionPedalCharacteristic::Linear, 0, 0};
};

/// A named controller of a MIDI device.
struct Controller
{
    bool operator==(const Controller &) const = default;

    std::string name;
    std::uint8_t number = none;  ///< MIDI controller number 0 to 127, or `none` while the slot is not defined
};

/// One external MIDI device ("RMD", device numbers 1 to 10).
struct MidiDevice
{
    MidiDevice() = default;
    MidiDevice(std::string deviceName, std::uint8_t midiChannel, bool ccFirst, MidiDeviceTapTempo tapMode,
               std::array<Controller, controllerCount> namedControllers, std::uint8_t tapPosition,
               std::uint8_t tapValue, std::uint8_t note, TapTempoNote tapNote)
        : name(std::move(deviceName)), channel(midiChannel), sendCCFirst(ccFirst), tapTempo(tapMode),
          controllers(std::move(namedControllers)), tapController(tapPosition), tapControllerValue(tapValue),
          noteNumber(note), noteType(tapNote)
    {}
    bool operator==(const MidiDevice &) const = default;

    std::string name;
    std::uint8_t channel = none;  ///< 1 to 16, or `none`
    bool sendCCFirst = false;     ///< control changes go out before the program change
    MidiDeviceTapTempo tapTempo = MidiDeviceTapTempo::Unused;
    std::array<Controller, controllerCount> controllers;
    std::uint8_t tapController = 1;                   ///< 1 to 20: position in `controllers`
    std::uint8_t tapControllerValue = inactiveValue;  ///< 0 to 127, `toggleValue` or `inactiveValue`
    std::uint8_t noteNumber = 0;                      ///< 0 to 127
    TapTempoNote noteType = TapTempoNote::Off;
};

/// Global settings ("ROS").
struct Settings
{
    bool operator==(const Settings &) const = default;

    BankPresetChangeMode bankPresetChangeMode = BankPresetChangeMode::Direct;
    bool recallUserBanksOnly = false;
    bool oneTimeMidiModeSend = false;
    WahPadSetting wahPad1 = WahPadSetting::Inactive;
    WahPadSetting wahPad2 = WahPadSetting::Inactive;
    ClickProtection clickProtection = ClickProtection::Low;
    bool loopsSplit = false;
    KeyboardType keyboardType = KeyboardType::Qwerty;
    PresetChangeName presetChangeName = PresetChangeName::Always;
};

/// Modes of the six switch outputs ("RSO"); slot = switch-out number - 1.
struct SwitchOutData
{
    SwitchOutData() = default;
    explicit SwitchOutData(const std::array<SwitchOutSetting, switchOutCount> &settings) : switchOuts(settings) {}
    bool operator==(const SwitchOutData &) const = default;

    std::array<SwitchOutSetting, switchOutCount> switchOuts = filled<switchOutCount>(SwitchOutSetting::Latching);
};

/// MIDI IN settings ("RMI").
struct MidiInData
{
    MidiInData() = default;
    MidiInData(std::uint8_t midiChannel, MidiInPCFunction pc, MidiInCCFunction cc)
        : channel(midiChannel), pcFunction(pc), ccFunction(cc)
    {}
    bool operator==(const MidiInData &) const = default;

    std::uint8_t channel = none;  ///< 1 to 16, or `none`
    MidiInPCFunction pcFunction = MidiInPCFunction::Unused;
    MidiInCCFunction ccFunction = MidiInCCFunction::Unused;
};

/// Global expression pedal settings ("REP").
struct ExpressionPedalData
{
    ExpressionPedalData() = default;
    ExpressionPedalData(ExpressionPedalCharacteristic curve, ExpressionPedalPeriod samplingPeriod, std::uint8_t up,
                        std::uint8_t down, std::uint16_t calibratedUp, std::uint16_t calibratedDown, bool inverted,
                        std::uint8_t device, std::uint8_t controller, bool onTheFly)
        : characteristic(curve), period(samplingPeriod), toeUp(up), toeDown(down), calibrationUp(calibratedUp),
          calibrationDown(calibratedDown), calibrationInversion(inverted), midiDeviceNumber(device),
          controllerNumber(controller), onTheFlyMode(onTheFly)
    {}
    bool operator==(const ExpressionPedalData &) const = default;

    ExpressionPedalCharacteristic characteristic = ExpressionPedalCharacteristic::Linear;
    ExpressionPedalPeriod period = ExpressionPedalPeriod::Ms4;
    std::uint8_t toeUp = 0;                ///< 0 to 127
    std::uint8_t toeDown = 0;              ///< 0 to 127
    std::uint16_t calibrationUp = 0;       ///< 0 to 4095, set on the unit
    std::uint16_t calibrationDown = 0;     ///< 0 to 4095, set on the unit
    bool calibrationInversion = false;     ///< set on the unit
    std::uint8_t midiDeviceNumber = none;  ///< 1 to 10, or `none`
    std::uint8_t controllerNumber = none;  ///< 1 to 20: position in that device's controller list, or `none`
    bool onTheFlyMode = false;             ///< the unit does not report it
};
