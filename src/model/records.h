#pragma once

#include "model/fieldtable.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
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

namespace range {
inline constexpr Range midi{0, 127};
inline constexpr Range midiOrNone{0, 127, Range::Also::None};
inline constexpr Range controlValue{0, 127, Range::Also::ToggleAndInactive};
inline constexpr Range program{1, 128, Range::Also::None};
inline constexpr Range channel{1, 16, Range::Also::None};
inline constexpr Range preset{0, presetCount - 1};
inline constexpr Range device{1, midiDeviceCount};
inline constexpr Range deviceOrNone{1, midiDeviceCount, Range::Also::None};
/// A place in a MIDI device's list of controllers.
inline constexpr Range position{1, controllerCount};
inline constexpr Range positionOrNone{1, controllerCount, Range::Also::None};
/// As a preset's pedal has it, which begins with 0 for none.
inline constexpr Range pedalPosition{1, controllerCount, Range::Also::NoneOrZero};
inline constexpr Range calibration{0, 4095};
inline constexpr Range any{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
}  // namespace range

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

template <>
struct Table<DeviceInfo>
{
    static constexpr const char *read = "RDI", *write = nullptr, *place = "UNIT";
    static constexpr bool eightBit = false;
    static constexpr std::tuple fields{
        field('A', &DeviceInfo::firstText, "firstText", "FIRST TEXT").setOnTheUnit(),
        field('B', &DeviceInfo::secondText, "secondText", "SECOND TEXT").setOnTheUnit(),
        field('C', &DeviceInfo::firmwareMajor, "firmwareMajor", "FIRMWARE MAJOR", range::any).setOnTheUnit(),
        field('D', &DeviceInfo::firmwareMinor, "firmwareMinor", "FIRMWARE MINOR", range::any).setOnTheUnit(),
        field('E', &DeviceInfo::thirdNumber, "thirdNumber", "THIRD NUMBER", range::any).setOnTheUnit(),
        field('F', &DeviceInfo::fourthNumber, "fourthNumber", "FOURTH NUMBER", range::any).setOnTheUnit(),
    };
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

template <>
struct Table<BankData>
{
    static constexpr const char *read = "RBB", *write = "WBB", *place = "BANK";
    static constexpr bool eightBit = true;
    static constexpr std::tuple fields{
        field('B', &BankData::name, "name", "NAME"),
        field('C', &BankData::wahPad1Action, "wahPad1.action", "WAH PAD 1 ACTION"),
        field('D', &BankData::wahPad1PresetNumber, "wahPad1.preset", "WAH PAD 1 PRESET", range::preset),
        field('E', &BankData::wahPad2Action, "wahPad2.action", "WAH PAD 2 ACTION"),
        field('F', &BankData::wahPad2PresetNumber, "wahPad2.preset", "WAH PAD 2 PRESET", range::preset),
    };
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

template <>
struct Table<ControlChangeData>
{
    static constexpr std::tuple fields{
        field('A', &ControlChangeData::midiDeviceNumber, "device", "MIDI DEVICE", range::device),
        field('B', &ControlChangeData::controllerNumber, "controller", "CONTROLLER", range::position),
        field('C', &ControlChangeData::value, "value", "VALUE", range::controlValue),
    };
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
    std::uint8_t controllerNumber = none;  ///< 1 to 20: position in that device's controller list; 0 or `none`
    ExpressionPedalCharacteristic characteristic = ExpressionPedalCharacteristic::Linear;
    std::uint8_t toeUp = 0;    ///< 0 to 127
    std::uint8_t toeDown = 0;  ///< 0 to 127
};

template <>
struct Table<PresetExpressionPedal>
{
    static constexpr std::tuple fields{
        field('A', &PresetExpressionPedal::midiDeviceNumber, "device", "MIDI DEVICE", range::deviceOrNone),
        field('B', &PresetExpressionPedal::controllerNumber, "controller", "CONTROLLER", range::pedalPosition),
        field('C', &PresetExpressionPedal::characteristic, "characteristic", "CHARACTERISTIC"),
        field('D', &PresetExpressionPedal::toeUp, "toeUp", "TOE UP VALUE", range::midi),
        field('E', &PresetExpressionPedal::toeDown, "toeDown", "TOE DOWN VALUE", range::midi),
    };
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

template <>
struct Table<PresetData>
{
    static constexpr const char *read = "RBP", *write = "WBP", *place = "PRESET";
    static constexpr bool eightBit = false;
    static constexpr std::tuple fields{
        field('C', &PresetData::name, "name", "NAME"),
        field('D', &PresetData::footswitchFunction, "footswitchFunction", "FOOTSWITCH FUNCTION"),
        field('A', &PresetData::bufferLoop, "bufferLoop", "BUFFER").in('E'),
        field('B', &PresetData::loops, "loops", "LOOP").in('E'),
        field('A', &PresetData::switches, "switches", "SWITCH").in('F'),
        field('A', &PresetData::controlChanges, "controlChanges", "CONTROL CHANGE").in('G').mayBeAbsent(),
        field('a', &PresetData::programChanges, "programChanges", "PROGRAM CHANGE OF MIDI", range::program)
            .in('G')
            .mayBeAbsent(),
        field('n', &PresetData::expressionPedal, "expressionPedal", "EXPRESSION PEDAL").in('G').mayBeAbsent(),
    };
};

/// A named controller of a MIDI device.
struct Controller
{
    bool operator==(const Controller &) const = default;

    std::string name;
    std::uint8_t number = none;  ///< MIDI controller number 0 to 127, or `none` while the slot is not defined
};

template <>
struct Table<Controller>
{
    static constexpr std::tuple fields{
        field('A', &Controller::name, "name", "NAME"),
        field('B', &Controller::number, "number", "NUMBER", range::midiOrNone),
    };
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

template <>
struct Table<MidiDevice>
{
    static constexpr const char *read = "RMD", *write = "WMD", *place = "MIDI DEVICE";
    static constexpr bool eightBit = false;
    static constexpr std::tuple fields{
        field('B', &MidiDevice::name, "name", "NAME"),
        field('C', &MidiDevice::channel, "channel", "CHANNEL", range::channel),
        field('D', &MidiDevice::sendCCFirst, "sendCCFirst", "SEND CC FIRST"),
        field('E', &MidiDevice::tapTempo, "tapTempo", "TAP TEMPO"),
        field('F', &MidiDevice::controllers, "controllers", "CONTROLLER"),
        field('a', &MidiDevice::tapController, "tapController", "TAP CONTROLLER", range::position),
        field('b', &MidiDevice::tapControllerValue, "tapControllerValue", "TAP CONTROLLER VALUE", range::controlValue),
        field('c', &MidiDevice::noteNumber, "noteNumber", "TAP TEMPO NOTE NO", range::midi),
        field('d', &MidiDevice::noteType, "noteType", "TAP TEMPO NOTE"),
    };
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

template <>
struct Table<Settings>
{
    static constexpr const char *read = "ROS", *write = "WOS", *place = "SETTINGS";
    static constexpr bool eightBit = true;
    static constexpr std::tuple fields{
        field('A', &Settings::bankPresetChangeMode, "bankPresetChangeMode", "BANK/PRESET CHANGE MODE"),
        field('B', &Settings::recallUserBanksOnly, "recallUserBanksOnly", "RECALL USER BANKS ONLY"),
        field('C', &Settings::oneTimeMidiModeSend, "oneTimeMidiModeSend", "ONE TIME MIDI SEND MODE"),
        field('D', &Settings::wahPad1, "wahPad1", "WAH PAD 1"),
        field('E', &Settings::wahPad2, "wahPad2", "WAH PAD 2"),
        field('F', &Settings::clickProtection, "clickProtection", "CLICK PROTECTION"),
        field('G', &Settings::loopsSplit, "loopsSplit", "LOOP SPLIT"),
        field('J', &Settings::keyboardType, "keyboardType", "KEYBOARD TYPE"),
        field('K', &Settings::presetChangeName, "presetChangeName", "PRESET CHANGE NAME"),
    };
};

/// Modes of the six switch outputs ("RSO"); slot = switch-out number - 1.
struct SwitchOutData
{
    SwitchOutData() = default;
    explicit SwitchOutData(const std::array<SwitchOutSetting, switchOutCount> &settings) : switchOuts(settings) {}
    bool operator==(const SwitchOutData &) const = default;

    std::array<SwitchOutSetting, switchOutCount> switchOuts = filled<switchOutCount>(SwitchOutSetting::Latching);
};

template <>
struct Table<SwitchOutData>
{
    static constexpr const char *read = "RSO", *write = "WSO", *place = "SWITCH OUTS";
    static constexpr bool eightBit = true;
    static constexpr std::tuple fields{field('A', &SwitchOutData::switchOuts, "switchOuts", "SWITCH OUT")};
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

template <>
struct Table<MidiInData>
{
    static constexpr const char *read = "RMI", *write = "WMI", *place = "MIDI IN";
    static constexpr bool eightBit = true;
    static constexpr std::tuple fields{
        field('A', &MidiInData::channel, "channel", "CHANNEL", range::channel),
        field('B', &MidiInData::pcFunction, "pcFunction", "PC FUNCTION"),
        field('C', &MidiInData::ccFunction, "ccFunction", "CC FUNCTION"),
    };
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

template <>
struct Table<ExpressionPedalData>
{
    static constexpr const char *read = "REP", *write = "WEP", *place = "EXPRESSION PEDAL";
    static constexpr bool eightBit = true;
    // onTheFlyMode has no row: the unit does not report it.
    static constexpr std::tuple fields{
        field('C', &ExpressionPedalData::characteristic, "characteristic", "CHARACTERISTIC"),
        field('D', &ExpressionPedalData::period, "period", "PERIOD"),
        field('E', &ExpressionPedalData::toeUp, "toeUp", "TOE UP VALUE", range::midi),
        field('F', &ExpressionPedalData::toeDown, "toeDown", "TOE DOWN VALUE", range::midi),
        field('G', &ExpressionPedalData::calibrationUp, "calibrationUp", "CALIBRATION UP VALUE", range::calibration)
            .setOnTheUnit(),
        field('H', &ExpressionPedalData::calibrationDown, "calibrationDown", "CALIBRATION DOWN VALUE",
              range::calibration)
            .setOnTheUnit(),
        field('I', &ExpressionPedalData::calibrationInversion, "calibrationInversion", "CALIBRATION INVERSION")
            .setOnTheUnit(),
        field('J', &ExpressionPedalData::midiDeviceNumber, "midiDevice", "MIDI DEVICE", range::deviceOrNone),
        field('K', &ExpressionPedalData::controllerNumber, "controller", "CONTROLLER", range::positionOrNone),
    };
};
