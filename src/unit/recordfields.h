#pragma once

#include "model/records.h"
#include "unit/fielddecoder.h"
#include "unit/fieldencoder.h"
#include "unit/midilists.h"

#include <algorithm>
#include <utility>
#include <vector>

// Which field carries which member, told once for both directions: `Fields` is a FieldEncoder or a FieldDecoder. Each
// line is one row of the protocol's field tables: descriptor, member, values.

template <typename Fields, typename Record>
using RecordIn = typename Fields::template Ref<Record>;

namespace ranges {
inline constexpr ValueRange flag{0, 1};
inline constexpr ValueRange bank{0, bankCount - 1};
inline constexpr ValueRange preset{0, presetCount - 1};
inline constexpr ValueRange midiDevice{1, midiDeviceCount};
inline constexpr ValueRange midiDeviceOrNone{1, midiDeviceCount, none};
inline constexpr ValueRange position{1, controllerCount};
inline constexpr ValueRange positionOrNone{1, controllerCount, none};
inline constexpr ValueRange pedalPosition{0, controllerCount, none};  // 0: none was ever assigned
inline constexpr ValueRange channel{1, 16, none};
inline constexpr ValueRange program{1, 128, none};
inline constexpr ValueRange data{0, 127};
inline constexpr ValueRange dataOrNone{0, 127, none};
inline constexpr ValueRange controlValue{0, 127, toggleValue, inactiveValue};
inline constexpr ValueRange calibration{0, 4095};

/// The values of an enumeration with `labelCount` labels.
template <typename Enum>
constexpr ValueRange ofEnum(int labelCount)
{
    return {firstValue<Enum>, firstValue<Enum> + labelCount - 1};
}
inline constexpr ValueRange footswitch = ofEnum<FootswitchType>(4);
inline constexpr ValueRange loop = ofEnum<LoopType>(4);
inline constexpr ValueRange switchType = ofEnum<SwitchType>(4);
inline constexpr ValueRange wahPadAction = ofEnum<WahPadAction>(3);
inline constexpr ValueRange wahPadSetting = ofEnum<WahPadSetting>(7);
inline constexpr ValueRange clickProtection = ofEnum<ClickProtection>(3);
inline constexpr ValueRange keyboardType = ofEnum<KeyboardType>(2);
inline constexpr ValueRange changeMode = ofEnum<BankPresetChangeMode>(2);
inline constexpr ValueRange changeName = ofEnum<PresetChangeName>(2);
inline constexpr ValueRange pcFunction = ofEnum<MidiInPCFunction>(3);
inline constexpr ValueRange ccFunction = ofEnum<MidiInCCFunction>(2);
inline constexpr ValueRange period = ofEnum<ExpressionPedalPeriod>(5);
inline constexpr ValueRange characteristic = ofEnum<ExpressionPedalCharacteristic>(3);
inline constexpr ValueRange switchOut = ofEnum<SwitchOutSetting>(3);
inline constexpr ValueRange tapTempo = ofEnum<MidiDeviceTapTempo>(3);
inline constexpr ValueRange tapNote = ofEnum<TapTempoNote>(3);
}  // namespace ranges

/// The descriptor `offset` places after `first`.
constexpr char nth(char first, std::size_t offset) { return static_cast<char>(first + static_cast<int>(offset)); }

/// Consecutive fields for the elements of an array.
template <typename Fields, typename Array>
void describeRow(Fields &fields, char first, Array &values, const ValueRange &range)
{
    for (std::size_t i = 0; i < values.size(); ++i)
        fields.number(nth(first, i), values[i], range);
}

/// "RDI"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, DeviceInfo> info)
{
    fields.text('A', info.firstText);
    fields.text('B', info.secondText);
    fields.number('C', info.firmwareMajor, anyNumber);
    fields.number('D', info.firmwareMinor, anyNumber);
    fields.number('E', info.thirdNumber, anyNumber);
    fields.number('F', info.fourthNumber, anyNumber);
}

/// "RBB", "WBB"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, BankData> bank)
{
    fields.text('B', bank.name);
    fields.number('C', bank.wahPad1Action, ranges::wahPadAction);
    fields.number('D', bank.wahPad1PresetNumber, ranges::preset);
    fields.number('E', bank.wahPad2Action, ranges::wahPadAction);
    fields.number('F', bank.wahPad2PresetNumber, ranges::preset);
}

/// Sub-fields A to T of a preset's "G", all control changes the preset holds.
inline void describeControlChanges(FieldEncoder &midi, const PresetData &preset, MidiLists)
{
    const std::size_t count = std::min(preset.controlChanges.size(), maxControlChanges);
    for (std::size_t i = 0; i < count; ++i)
        midi.group(nth('A', i), Presence::Required, [&](FieldEncoder &parts) {
            const ControlChangeData &change = preset.controlChanges[i];
            parts.number('A', change.midiDeviceNumber, ranges::midiDevice);
            parts.number('B', change.controllerNumber, ranges::position);
            parts.number('C', change.value, ranges::controlValue);
        });
}

/// One control change for a preset. It replaces the one of the same device and controller in a merged list; with the
/// inactive value it only drops that one and may address anything.
inline void describeControlChange(FieldDecoder &parts, std::vector<ControlChangeData> &list, MidiLists lists)
{
    int value = 0, device = 0, controller = 0;
    parts.number('C', value, ranges::controlValue);
    const bool drops = value == inactiveValue;
    parts.number('A', device, drops ? anyNumber : ranges::midiDevice);
    parts.number('B', controller, drops ? anyNumber : ranges::position);
    const auto isMet = [&](const ControlChangeData &held) {
        return lists == MidiLists::Merge && held.midiDeviceNumber == device && held.controllerNumber == controller;
    };
    const auto met = std::ranges::find_if(list, isMet);
    const auto newValue = static_cast<std::uint8_t>(value);
    if (drops)
        std::erase_if(list, isMet);
    else if (met != list.end())
        met->value = newValue;
    else
        list.emplace_back(static_cast<std::uint8_t>(device), static_cast<std::uint8_t>(controller), newValue);
}

/// Sub-fields A to T of a preset's "G" make a new list or merge into the stored one. An empty "G" clears a list that is
/// replaced, and a "G" that carries only program changes or the pedal leaves it.
inline void describeControlChanges(FieldDecoder &midi, PresetData &preset, MidiLists lists)
{
    std::vector<ControlChangeData> list;
    bool isGiven = midi.exhausted();
    if (lists == MidiLists::Merge) list = preset.controlChanges;
    for (std::size_t i = 0; i < maxControlChanges; ++i) {
        isGiven = isGiven || midi.offers(nth('A', i));
        midi.group(nth('A', i), Presence::Required,
                   [&](FieldDecoder &parts) { describeControlChange(parts, list, lists); });
    }
    if (list.size() > maxControlChanges) midi.fail(UnitStatus::ListFull);
    if (isGiven) preset.controlChanges = std::move(list);
}

/// Sub-field n of a preset's "G"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, PresetExpressionPedal> pedal)
{
    fields.number('A', pedal.midiDeviceNumber, ranges::midiDeviceOrNone);
    fields.number('B', pedal.controllerNumber, ranges::pedalPosition);
    fields.number('C', pedal.characteristic, ranges::characteristic);
    fields.number('D', pedal.toeUp, ranges::data);
    fields.number('E', pedal.toeDown, ranges::data);
}

/// "RBP", "WBP"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, PresetData> preset, MidiLists lists = MidiLists::Replace)
{
    fields.accompanied("EFG", 'D');
    fields.text('C', preset.name);
    fields.number('D', preset.footswitchFunction, ranges::footswitch);
    fields.group('E', Presence::Required, [&](Fields &parts) {
        parts.number('A', preset.bufferLoop, ranges::loop);
        describeRow(parts, 'B', preset.loops, ranges::loop);
    });
    fields.group('F', Presence::Required,
                 [&](Fields &parts) { describeRow(parts, 'A', preset.switches, ranges::switchType); });
    fields.groups('G', Presence::Optional, [&](Fields &midi) {
        describeControlChanges(midi, preset, lists);
        for (std::size_t slot = 0; slot < preset.programChanges.size(); ++slot)
            if (midi.carries(preset.programChanges[slot] != none))
                midi.number(nth('a', slot), preset.programChanges[slot], ranges::program);
        if (midi.carries(preset.expressionPedal != PresetData().expressionPedal))
            midi.group('n', Presence::Required, [&](Fields &parts) { describe(parts, preset.expressionPedal); });
    });
}

/// "RMD", "WMD"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, MidiDevice> device)
{
    fields.together("FGHIJKLMNOPQRSTUVWXY");
    fields.text('B', device.name);
    fields.number('C', device.channel, ranges::channel);
    fields.number('D', device.sendCCFirst, ranges::flag);
    fields.number('E', device.tapTempo, ranges::tapTempo);
    for (std::size_t slot = 0; slot < device.controllers.size(); ++slot)
        fields.group(nth('F', slot), Presence::Required, [&](Fields &parts) {
            parts.text('A', device.controllers[slot].name);
            parts.number('B', device.controllers[slot].number, ranges::dataOrNone);
        });
    fields.number('a', device.tapController, ranges::position);
    fields.number('b', device.tapControllerValue, ranges::controlValue);
    fields.number('c', device.noteNumber, ranges::data);
    fields.number('d', device.noteType, ranges::tapNote);
}

/// "RMI", "WMI"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, MidiInData> midiIn)
{
    fields.number('A', midiIn.channel, ranges::channel);
    fields.number('B', midiIn.pcFunction, ranges::pcFunction);
    fields.number('C', midiIn.ccFunction, ranges::ccFunction);
}

/// "REP", "WEP"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, ExpressionPedalData> pedal)
{
    fields.number('C', pedal.characteristic, ranges::characteristic);
    fields.number('D', pedal.period, ranges::period);
    fields.number('E', pedal.toeUp, ranges::data);
    fields.number('F', pedal.toeDown, ranges::data);
    if (fields.carriesReadOnly()) {  // the unit measures these itself
        fields.number('G', pedal.calibrationUp, ranges::calibration);
        fields.number('H', pedal.calibrationDown, ranges::calibration);
        fields.number('I', pedal.calibrationInversion, ranges::flag);
    }
    fields.number('J', pedal.midiDeviceNumber, ranges::midiDeviceOrNone);
    fields.number('K', pedal.controllerNumber, ranges::positionOrNone);
}

/// "RSO", "WSO"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, SwitchOutData> data)
{
    describeRow(fields, 'A', data.switchOuts, ranges::switchOut);
}

/// "ROS", "WOS"
template <typename Fields>
void describe(Fields &fields, RecordIn<Fields, Settings> settings)
{
    fields.number('A', settings.bankPresetChangeMode, ranges::changeMode);
    fields.number('B', settings.recallUserBanksOnly, ranges::flag);
    fields.number('C', settings.oneTimeMidiModeSend, ranges::flag);
    fields.number('D', settings.wahPad1, ranges::wahPadSetting);
    fields.number('E', settings.wahPad2, ranges::wahPadSetting);
    fields.number('F', settings.clickProtection, ranges::clickProtection);
    fields.number('G', settings.loopsSplit, ranges::flag);
    if (fields.carriesReadOnly()) {
        int reserved = 0;  // The answer has two more fields, in which the unit reports nothing.
        fields.number('H', reserved, anyNumber);
        fields.number('I', reserved, anyNumber);
    }
    fields.number('J', settings.keyboardType, ranges::keyboardType);
    fields.number('K', settings.presetChangeName, ranges::changeName);
}
