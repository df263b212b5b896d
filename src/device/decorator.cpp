#include "device/decorator.h"

#include "protocol/converter.h"
#include "protocol/failure.h"

#include <type_traits>

namespace {

template <typename Value>
int number(Value value)
{
    return static_cast<int>(value);
}

/// Banks, MIDI in, expression pedal, switch outs and other settings carry the low 8 bits of every number.
template <typename Value>
int low8(Value value)
{
    return static_cast<std::uint8_t>(number(value));
}

template <typename Values>
Field numberedSubFields(char descriptor, char firstSubDescriptor, const Values &values)
{
    Field field(descriptor, Level0);
    for (const auto value : values)
        field.insertSubField(firstSubDescriptor++, number(value));
    return field;
}

char offset(char first, int steps) { return static_cast<char>(first + steps); }

}  // namespace

void Decorator::insertIntoWriteBankSettings_BankName(MasterFrame &frame, const std::string &name) const
{
    frame.addField('B', name);
}

void Decorator::insertIntoWriteBankSettings_WahPad1Action(MasterFrame &frame, WahPadAction action) const
{
    frame.addField('C', low8(action));
}

void Decorator::insertIntoWriteBankSettings_WahPad1PresetNumber(MasterFrame &frame, std::uint8_t preset) const
{
    frame.addField('D', low8(preset));
}

void Decorator::insertIntoWriteBankSettings_WahPad2Action(MasterFrame &frame, WahPadAction action) const
{
    frame.addField('E', low8(action));
}

void Decorator::insertIntoWriteBankSettings_WahPad2PresetNumber(MasterFrame &frame, std::uint8_t preset) const
{
    frame.addField('F', low8(preset));
}

void Decorator::insertIntoWritePresetSettings_PresetName(MasterFrame &frame, const std::string &name) const
{
    frame.addField('C', name);
}

void Decorator::insertIntoWritePresetSettings_FootswitchType(MasterFrame &frame, FootswitchType function) const
{
    frame.addField('D', number(function));
}

void Decorator::insertIntoWritePresetSettings_LoopsData(MasterFrame &frame, LoopType buffer,
                                                        const std::array<LoopType, loopCount> &loops) const
{
    std::vector<LoopType> states{buffer};
    states.insert(states.end(), loops.begin(), loops.end());
    frame.addField(numberedSubFields('E', 'A', states));
}

void Decorator::insertIntoWritePresetSettings_SwitchOutData(MasterFrame &frame,
                                                            const std::array<SwitchType, switchCount> &switches) const
{
    frame.addField(numberedSubFields('F', 'A', switches));
}

void Decorator::insertIntoWritePresetSettings_ControlChangeData(MasterFrame &frame,
                                                                const std::vector<ControlChangeData> &changes) const
{
    Field field('G', Level0);
    char entry = 'A';
    for (const ControlChangeData &change : changes) {
        Field message(entry, Level1);
        message.insertSubField('A', number(change.midiDeviceNumber));
        message.insertSubField('B', number(change.controllerNumber));
        message.insertSubField('C', number(change.value));
        field.insertSubField(message);
        if (entry++ == 'T') break;
    }
    frame.addField(field);
}

void Decorator::insertIntoWritePresetSettings_PresetExpressionPedal(MasterFrame &frame,
                                                                    const PresetExpressionPedal &pedal) const
{
    Field assignment('n', Level1);
    assignment.insertSubField('A', number(pedal.midiDeviceNumber));
    assignment.insertSubField('B', number(pedal.controllerNumber));
    assignment.insertSubField('C', number(pedal.characteristic));
    assignment.insertSubField('D', number(pedal.toeUp));
    assignment.insertSubField('E', number(pedal.toeDown));
    frame.addField(Field('G', assignment, Level0));
}

void Decorator::insertIntoWritePresetSettings_MidiProgramValue(MasterFrame &frame, int slot, int value) const
{
    frame.addField(Field('G', Field(offset('a', slot), value, Level1), Level0));
}

void Decorator::insertIntoWriteMidiDeviceSettings_Text(MasterFrame &frame, const std::string &name) const
{
    frame.addField('B', name);
}

void Decorator::insertIntoWriteMidiDeviceSettings_ChannelNumber(MasterFrame &frame, int channel) const
{
    frame.addField('C', channel);
}

void Decorator::insertIntoWriteMidiDeviceSettings_SendFirstCC(MasterFrame &frame, bool on) const
{
    frame.addField('D', number(on));
}

void Decorator::insertIntoWriteMidiDeviceSettings_MidiDeviceTapTempo(MasterFrame &frame, MidiDeviceTapTempo mode) const
{
    frame.addField('E', number(mode));
}

void Decorator::insertIntoWriteMidiDeviceSettings_ControllerNamesAndNumbers(MasterFrame &frame,
                                                                            const std::vector<std::string> &names,
                                                                            const std::vector<int> &numbers) const
{
    if (names.size() != controllerCount || numbers.size() != controllerCount)
        fail("A MIDI device has exactly 20 controllers");
    for (std::size_t slot = 0; slot < controllerCount; ++slot) {
        Field controller(offset('F', static_cast<int>(slot)), Level0);
        controller.insertSubField('A', names[slot]);
        controller.insertSubField('B', numbers[slot]);
        frame.addField(controller);
    }
}

void Decorator::insertIntoWriteMidiDeviceSettings_ControllerNumber(MasterFrame &frame, int controller) const
{
    frame.addField('a', controller);
}

void Decorator::insertIntoWriteMidiDeviceSettings_ControllerValue(MasterFrame &frame, int value) const
{
    frame.addField('b', value);
}

void Decorator::insertIntoWriteMidiDeviceSettings_TapTempoNoteNumber(MasterFrame &frame, int note) const
{
    frame.addField('c', note);
}

void Decorator::insertIntoWriteMidiDeviceSettings_TapTempoNoteType(MasterFrame &frame, TapTempoNote type) const
{
    frame.addField('d', number(type));
}

void Decorator::insertIntoWriteMidiInSettings_Channel(MasterFrame &frame, std::uint8_t channel) const
{
    frame.addField('A', low8(channel));
}

void Decorator::insertIntoWriteMidiInSettings_MidiInPCFunction(MasterFrame &frame, MidiInPCFunction function) const
{
    frame.addField('B', low8(function));
}

void Decorator::insertIntoWriteMidiInSettings_MidiInCCFunction(MasterFrame &frame, MidiInCCFunction function) const
{
    frame.addField('C', low8(function));
}

void Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalCharacteristic(
    MasterFrame &frame, ExpressionPedalCharacteristic characteristic) const
{
    frame.addField('C', low8(characteristic));
}

void Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalPeriod(MasterFrame &frame,
                                                                             ExpressionPedalPeriod period) const
{
    frame.addField('D', low8(period));
}

void Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalToeUp(MasterFrame &frame, std::uint8_t v) const
{
    frame.addField('E', low8(v));
}

void Decorator::insertIntoWriteExpressionPedalSettings_ExpressionPedalToeDown(MasterFrame &frame, std::uint8_t v) const
{
    frame.addField('F', low8(v));
}

void Decorator::insertIntoWriteExpressionPedalSettings_MidiDeviceNumber(MasterFrame &frame, std::uint8_t device) const
{
    frame.addField('J', low8(device));
}

void Decorator::insertIntoWriteExpressionPedalSettings_ControllerNumber(MasterFrame &frame, std::uint8_t c) const
{
    frame.addField('K', low8(c));
}

void Decorator::insertIntoWriteSwitchOutSettings_SwitchOutSetting(MasterFrame &frame, std::uint8_t switchOut,
                                                                  SwitchOutSetting setting) const
{
    if (switchOut >= 1 && switchOut <= switchOutCount) frame.addField(offset('A', switchOut - 1), low8(setting));
}

void Decorator::insertIntoWriteOtherSettings_BankPresetChangeMode(MasterFrame &frame, BankPresetChangeMode mode) const
{
    frame.addField('A', low8(mode));
}

void Decorator::insertIntoWriteOtherSettings_RecallUsersBankOnlyFlag(MasterFrame &frame, bool on) const
{
    frame.addField('B', number(on));
}

void Decorator::insertIntoWriteOtherSettings_OneTimeModeMidiSendFlag(MasterFrame &frame, bool on) const
{
    frame.addField('C', number(on));
}

void Decorator::insertIntoWriteOtherSettings_WahPad1Setting(MasterFrame &frame, WahPadSetting setting) const
{
    frame.addField('D', low8(setting));
}

void Decorator::insertIntoWriteOtherSettings_WahPad2Setting(MasterFrame &frame, WahPadSetting setting) const
{
    frame.addField('E', low8(setting));
}

void Decorator::insertIntoWriteOtherSettings_ClickProtection(MasterFrame &frame, ClickProtection level) const
{
    frame.addField('F', low8(level));
}

void Decorator::insertIntoWriteOtherSettings_LoopsSplitFlag(MasterFrame &frame, bool on) const
{
    frame.addField('G', number(on));
}

void Decorator::insertIntoWriteOtherSettings_KeyboardType(MasterFrame &frame, KeyboardType type) const
{
    frame.addField('J', low8(type));
}

void Decorator::insertIntoWriteOtherSettings_PresetChangeNameSetting(MasterFrame &frame, PresetChangeName when) const
{
    frame.addField('K', low8(when));
}

void Decorator::insertIntoWriteFirmware_FirmwareData(MasterFrame &frame, int chunkNumber,
                                                     const std::vector<unsigned char> &bytes) const
{
    frame.addField('A', chunkNumber);
    frame.addField('B', Converter::vectorToHexString(bytes));
}

void Decorator::insertIntoWriteFirmware_AllDataSentFlag(MasterFrame &frame) const { frame.addField('C', ""); }

void Decorator::insertIntoWriteFirmware_RestartDevice(MasterFrame &frame) const { frame.addField('D', ""); }
