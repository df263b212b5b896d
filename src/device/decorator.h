#pragma once

#include "model/records.h"
#include "protocol/masterframe.h"

#include <algorithm>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// How the value of a member is handed over: a small number as an `int`, so that the record's table decides what
/// becomes of one out of range.
template <typename Value>
using Passed = std::conditional_t<std::is_same_v<Value, std::uint8_t>, int, Value>;

/// Puts setting values into a write frame, where the table of their record tells (model/records.h). Text is written
/// unchanged; it must be free of control bytes.
class Decorator
{
public:
    virtual ~Decorator() = default;

    /// Appends the field of a member: `insert<&Settings::keyboardType>(frame, type)`. Each value of an array or list
    /// has a field of its own; a list's values after the 20th are not sent. Members of the same group, named together,
    /// share its field.
    template <auto Member, auto... Others>
    void insert(MasterFrame &frame, const Passed<ValueOf<Member>> &value,
                const Passed<ValueOf<Others>> &...others) const;
    /// Appends the field of one value of an array; slots count from 0.
    template <auto Member>
    void insertSlot(MasterFrame &frame, int slot, const Passed<typename ValueOf<Member>::value_type> &value) const;

    // Banks
    void insertIntoWriteBankSettings_BankName(MasterFrame &frame, const std::string &name) const
    {
        insert<&BankData::name>(frame, name);
    }
    void insertIntoWriteBankSettings_WahPad1Action(MasterFrame &frame, WahPadAction action) const
    {
        insert<&BankData::wahPad1Action>(frame, action);
    }
    void insertIntoWriteBankSettings_WahPad1PresetNumber(MasterFrame &frame, std::uint8_t preset) const
    {
        insert<&BankData::wahPad1PresetNumber>(frame, preset);
    }
    void insertIntoWriteBankSettings_WahPad2Action(MasterFrame &frame, WahPadAction action) const
    {
        insert<&BankData::wahPad2Action>(frame, action);
    }
    void insertIntoWriteBankSettings_WahPad2PresetNumber(MasterFrame &frame, std::uint8_t preset) const
    {
        insert<&BankData::wahPad2PresetNumber>(frame, preset);
    }

    // Presets
    void insertIntoWritePresetSettings_PresetName(MasterFrame &frame, const std::string &name) const
    {
        insert<&PresetData::name>(frame, name);
    }
    void insertIntoWritePresetSettings_FootswitchType(MasterFrame &frame, FootswitchType function) const
    {
        insert<&PresetData::footswitchFunction>(frame, function);
    }
    void insertIntoWritePresetSettings_LoopsData(MasterFrame &frame, LoopType buffer,
                                                 const std::array<LoopType, loopCount> &loops) const
    {
        insert<&PresetData::bufferLoop, &PresetData::loops>(frame, buffer, loops);
    }
    void insertIntoWritePresetSettings_SwitchOutData(MasterFrame &frame,
                                                     const std::array<SwitchType, switchCount> &switches) const
    {
        insert<&PresetData::switches>(frame, switches);
    }
    void insertIntoWritePresetSettings_ControlChangeData(MasterFrame &frame,
                                                         const std::vector<ControlChangeData> &changes) const
    {
        insert<&PresetData::controlChanges>(frame, changes);
    }
    void insertIntoWritePresetSettings_PresetExpressionPedal(MasterFrame &frame,
                                                             const PresetExpressionPedal &pedal) const
    {
        insert<&PresetData::expressionPedal>(frame, pedal);
    }
    /// The program for the MIDI device of a slot, 0 to 9.
    void insertIntoWritePresetSettings_MidiProgramValue(MasterFrame &frame, int slot, int value) const
    {
        insertSlot<&PresetData::programChanges>(frame, slot, value);
    }

    // MIDI devices
    void insertIntoWriteMidiDeviceSettings_Text(MasterFrame &frame, const std::string &name) const
    {
        insert<&MidiDevice::name>(frame, name);
    }
    void insertIntoWriteMidiDeviceSettings_ChannelNumber(MasterFrame &frame, int channel) const
    {
        insert<&MidiDevice::channel>(frame, channel);
    }
    void insertIntoWriteMidiDeviceSettings_SendFirstCC(MasterFrame &frame, bool on) const
    {
        insert<&MidiDevice::sendCCFirst>(frame, on);
    }
    void insertIntoWriteMidiDeviceSettings_MidiDeviceTapTempo(MasterFrame &frame, MidiDeviceTapTempo mode) const
    {
        insert<&MidiDevice::tapTempo>(frame, mode);
    }
    /// All controllers of a device. Fails unless there are exactly 20 names and 20 numbers.
    void insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers(MasterFrame &frame,
                                                                     const std::vector<std::string> &names,
                                                                     const std::vector<int> &numbers) const;
    void insertIntoWriteMidiDeviceSettings_ControllerNumber(MasterFrame &frame, int controller) const
    {
        insert<&MidiDevice::tapController>(frame, controller);
    }
    void insertIntoWriteMidiDeviceSettings_ControllerValue(MasterFrame &frame, int value) const
    {
        insert<&MidiDevice::tapControllerValue>(frame, value);
    }
    void insertIntoWriteMidiDeviceSettings_TapTempoNoteNumber(MasterFrame &frame, int note) const
    {
        insert<&MidiDevice::noteNumber>(frame, note);
    }
    void insertIntoWriteMidiDeviceSettings_TapTempoNoteType(MasterFrame &frame, TapTempoNote type) const
    {
        insert<&MidiDevice::noteType>(frame, type);
    }

    // MIDI in
    void insertIntoWriteMidiInSettings_Channel(MasterFrame &frame, std::uint8_t channel) const
    {
        insert<&MidiInData::channel>(frame, channel);
    }
    void insertIntoWriteMidiInSettings_MidiInPCFunction(MasterFrame &frame, MidiInPCFunction function) const
    {
        insert<&MidiInData::pcFunction>(frame, function);
    }
    void insertIntoWriteMidiInSettings_MidiInCCFunction(MasterFrame &frame, MidiInCCFunction function) const
    {
        insert<&MidiInData::ccFunction>(frame, function);
    }

    // Expression pedal
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalCharacteristic(
        MasterFrame &frame, ExpressionPedalCharacteristic characteristic) const
    {
        insert<&ExpressionPedalData::characteristic>(frame, characteristic);
    }
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalPeriod(MasterFrame &frame,
                                                                      ExpressionPedalPeriod period) const
    {
        insert<&ExpressionPedalData::period>(frame, period);
    }
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalToeUp(MasterFrame &frame, std::uint8_t value) const
    {
        insert<&ExpressionPedalData::toeUp>(frame, value);
    }
    void insertIntoWriteExpressionPedalSettings_ExpressionPedalToeDown(MasterFrame &frame, std::uint8_t value) const
    {
        insert<&ExpressionPedalData::toeDown>(frame, value);
    }
    void insertIntoWriteExpressionPedalSettings_MidiDeviceNumber(MasterFrame &frame, std::uint8_t device) const
    {
        insert<&ExpressionPedalData::midiDeviceNumber>(frame, device);
    }
    void insertIntoWriteExpressionPedalSettings_ControllerNumber(MasterFrame &frame, std::uint8_t controller) const
    {
        insert<&ExpressionPedalData::controllerNumber>(frame, controller);
    }

    // Switch outs
    /// The mode of a switch out by its number, 1 to 6; any other number appends nothing.
    void insertIntoWriteSwitchOutSettings_SwitchOutSetting(MasterFrame &frame, std::uint8_t switchOut,
                                                           SwitchOutSetting setting) const
    {
        if (switchOut >= 1 && switchOut <= switchOutCount)
            insertSlot<&SwitchOutData::switchOuts>(frame, switchOut - 1, setting);
    }

    // Other settings
    void insertIntoWriteOtherSettings_BankPresetChangeMode(MasterFrame &frame, BankPresetChangeMode mode) const
    {
        insert<&Settings::bankPresetChangeMode>(frame, mode);
    }
    void insertIntoWriteOtherSettings_RecallUsersBankOnlyFlag(MasterFrame &frame, bool on) const
    {
        insert<&Settings::recallUserBanksOnly>(frame, on);
    }
    void insertIntoWriteOtherSettings_OneTimeModeMidiSendFlag(MasterFrame &frame, bool on) const
    {
        insert<&Settings::oneTimeMidiModeSend>(frame, on);
    }
    void insertIntoWriteOtherSettings_WahPad1Setting(MasterFrame &frame, WahPadSetting setting) const
    {
        insert<&Settings::wahPad1>(frame, setting);
    }
    void insertIntoWriteOtherSettings_WahPad2Setting(MasterFrame &frame, WahPadSetting setting) const
    {
        insert<&Settings::wahPad2>(frame, setting);
    }
    void insertIntoWriteOtherSettings_ClickProtection(MasterFrame &frame, ClickProtection level) const
    {
        insert<&Settings::clickProtection>(frame, level);
    }
    void insertIntoWriteOtherSettings_LoopsSplitFlag(MasterFrame &frame, bool on) const
    {
        insert<&Settings::loopsSplit>(frame, on);
    }
    void insertIntoWriteOtherSettings_KeyboardType(MasterFrame &frame, KeyboardType type) const
    {
        insert<&Settings::keyboardType>(frame, type);
    }
    void insertIntoWriteOtherSettings_PresetChangeNameSetting(MasterFrame &frame, PresetChangeName when) const
    {
        insert<&Settings::presetChangeName>(frame, when);
    }

    // Firmware: these fields are told here, as no record holds them
    /// A (chunk number, from 1), B (the bytes as hexadecimal text)
    void insertIntoWriteFirmware_FirmwareData(MasterFrame &frame, int chunkNumber,
                                              const std::vector<unsigned char> &bytes) const;
    void insertIntoWriteFirmware_AllDataSentFlag(MasterFrame &frame) const { frame.addField('C', ""); }
    void insertIntoWriteFirmware_RestartDevice(MasterFrame &frame) const { frame.addField('D', ""); }

private:
    template <auto Member, typename Append>
    static void inItsGroup(MasterFrame &frame, Append append);
    template <typename Record, typename Target, typename Value>
    static void append(Target &target, char letter, const Value &value);

    // A frame takes top-level fields, a field takes those of the level below its own.
    template <typename... Content>
    static void add(MasterFrame &frame, Content &&...content)
    {
        frame.addField(std::forward<Content>(content)...);
    }
    template <typename... Content>
    static void add(Field &field, Content &&...content)
    {
        field.insertSubField(std::forward<Content>(content)...);
    }
    static FieldLevel levelIn(const MasterFrame &) { return Level0; }
    static FieldLevel levelIn(const Field &field) { return static_cast<FieldLevel>(field.getLevel() + 1); }
};

template <auto Member, auto... Others>
void Decorator::insert(MasterFrame &frame, const Passed<ValueOf<Member>> &value,
                       const Passed<ValueOf<Others>> &...others) const
{
    static_assert(((rowOf<Member>().group != 0 && rowOf<Others>().group == rowOf<Member>().group) && ...));
    inItsGroup<Member>(frame, [&](auto &target) {
        append<RecordOf<Member>>(target, rowOf<Member>().letter, value);
        (append<RecordOf<Member>>(target, rowOf<Others>().letter, others), ...);
    });
}

template <auto Member>
void Decorator::insertSlot(MasterFrame &frame, int slot,
                           const Passed<typename ValueOf<Member>::value_type> &value) const
{
    inItsGroup<Member>(frame, [&](auto &target) {
        append<RecordOf<Member>>(target, static_cast<char>(rowOf<Member>().letter + slot), value);
    });
}

/// Lets `append` work on the frame itself, or on a new field of the group that the member's row names.
template <auto Member, typename Append>
void Decorator::inItsGroup(MasterFrame &frame, Append append)
{
    constexpr auto row = rowOf<Member>();
    static_assert(!row.readOnly, "no write carries it");
    if constexpr (row.group == 0) {
        append(frame);
    } else {
        Field group(row.group, Level0);
        append(group);
        frame.addField(std::move(group));
    }
}

/// Appends a value of `Record` under its letter, an array or a list under consecutive letters.
template <typename Record, typename Target, typename Value>
void Decorator::append(Target &target, char letter, const Value &value)
{
    if constexpr (std::is_same_v<Value, std::string>) {
        add(target, letter, value);
    } else if constexpr (HasTable<Value>) {
        Field part(letter, levelIn(target));
        forEachField<Value>([&](const auto &row) { append<Record>(part, row.letter, value.*row.member); });
        add(target, std::move(part));
    } else if constexpr (requires { value.size(); }) {
        for (const auto &each : std::span(value).first(std::min(value.size(), maxControlChanges)))
            append<Record>(target, letter++, each);
    } else {
        const int number = static_cast<int>(value);
        add(target, letter, Table<Record>::eightBit ? static_cast<std::uint8_t>(number) : number);
    }
}
