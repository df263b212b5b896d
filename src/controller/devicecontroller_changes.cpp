#include "controller/devicecontroller.h"
#include "controller/recordslots.h"
#include "device/answerlength.h"
#include "device/kora.h"
#include "model/values.h"
#include "protocol/failure.h"

#include <algorithm>

namespace {

template <typename Record>
void requireReadable(const Record &record)
{
    if (!isReadable(record)) fail("The name is too long: the unit could not be read any more");
}

/// What announces a global record.
template <typename Record>
inline constexpr void (DeviceController::*announcement)() = nullptr;
template <>
inline constexpr auto announcement<Settings> = &DeviceController::gotSettings;
template <>
inline constexpr auto announcement<MidiInData> = &DeviceController::gotMidiIn;
template <>
inline constexpr auto announcement<ExpressionPedalData> = &DeviceController::gotExpressionPedal;

}  // namespace

// --- The pattern that all changes follow

template <typename Record, typename Alter, typename... Address>
bool DeviceController::change(Snapshot<Record> &slot, Alter alter, Address... address)
{
    if (isReadingFirst && !slot.load()) slot.store(device->read<Record>(address...));
    const std::shared_ptr<const Record> stored = slot.load();
    if (!stored) {
        failure = QStringLiteral("Not read yet");
        return false;
    }
    const RecordId id{kindOf<Record>, address...};
    const auto changed = std::make_shared<Record>(*stored);
    const int unanswered = device->unansweredCount();
    if (const auto failed = caught([&] { alter(*changed); })) {
        if (device->unansweredCount() != unanswered) tellSent(id, stored, Shared<Record>(changed), false);
        fail(*failed);
    }
    slot.store(changed);
    tellSent(id, stored, Shared<Record>(changed));
    return true;
}

template <typename Alter>
void DeviceController::changeBank(int bank, Alter alter)
{
    attempt([&] {
        if (change(data->bankData.at(static_cast<std::size_t>(bank)), alter, bank)) emit gotBankAndPresetData(bank);
    });
}

template <typename Alter>
void DeviceController::changePreset(int bank, int preset, Alter alter)
{
    attempt([&] {
        auto &slot = data->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset));
        if (change(slot, alter, bank, preset)) emit gotBankAndPresetData(bank);
    });
}

template <typename Alter>
void DeviceController::changeMidiDevice(int number, Alter alter)
{
    attempt([&] {
        if (change(data->midiDevices.at(static_cast<std::size_t>(number) - 1), alter, number))
            emit gotMidiDevicesData();
    });
}

template <auto Member, typename Value>
void DeviceController::changeOfBank(int bank, Value value)
{
    changeBank(bank, [&](BankData &record) {
        record.*Member = static_cast<ValueOf<Member>>(value);
        device->change<Member>(value, bank);
    });
}

template <auto Member, typename Value>
void DeviceController::changeOfMidiDevice(int number, Value value)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        record.*Member = static_cast<ValueOf<Member>>(value);
        device->change<Member>(value, number);
    });
}

template <auto Member, typename Value>
void DeviceController::changeGlobal(Value value)
{
    using Record = RecordOf<Member>;
    attempt([&] {
        const auto alter = [&](Record &record) {
            record.*Member = static_cast<ValueOf<Member>>(value);
            device->change<Member>(value);
        };
        if (change(data->*globalSlot<Record>, alter)) emit(this->*announcement<Record>)();
    });
}

template <typename Record>
void DeviceController::changeRow(int row, int value)
{
    forEachMember<Record>([&]<auto Member>() {
        if constexpr (!rowOf<Member>().readOnly)
            if (rowIndexOf<Member>() == row) changeGlobal<Member>(static_cast<ValueOf<Member>>(value));
    });
}

// --- Banks and presets

void DeviceController::changeBankName(const QString &name, int bank)
{
    changeBank(bank, [&](BankData &record) {
        record.name = nameText(name);
        requireReadable(record);
        device->changeBankName(record.name, bank);
    });
}

void DeviceController::changePresetName(const QString &name, int bank, int preset)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.name = nameText(name);
        requireReadable(record);
        device->changePresetName(record.name, bank, preset);
    });
}

void DeviceController::changeFootswitchFunction(FootswitchType function, int bank, int preset)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.footswitchFunction = function;
        device->changeFootswitchFunction(function, bank, preset);
    });
}

void DeviceController::changeLoopType(LoopType type, int bank, int preset, int loop)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.loops.at(static_cast<std::size_t>(loop)) = type;
        device->changeLoopType(record.bufferLoop, record.loops, bank, preset, record.footswitchFunction);
    });
}

void DeviceController::changeBufferLoop(LoopType type, int bank, int preset)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.bufferLoop = type;
        device->changeLoopType(record.bufferLoop, record.loops, bank, preset, record.footswitchFunction);
    });
}

void DeviceController::changeSwitchType(SwitchType type, int bank, int preset, int switchSlot)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.switches.at(static_cast<std::size_t>(switchSlot)) = type;
        device->changeSwitchType(record.switches, bank, preset, record.footswitchFunction);
    });
}

void DeviceController::changeProgramChangeNumber(int bank, int preset, int deviceSlot, int value)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.programChanges.at(static_cast<std::size_t>(deviceSlot)) = static_cast<std::uint8_t>(value);
        device->changeProgramValue(bank, preset, deviceSlot, value, record.footswitchFunction);
    });
}

void DeviceController::changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.expressionPedal = pedal;
        device->changePresetExpressionPedal(bank, preset, pedal, record.footswitchFunction);
    });
}

void DeviceController::changeControlChangeData(int bank, int preset, const QVector<ControlChangeData> &list)
{
    changePreset(bank, preset, [&](PresetData &record) {
        const auto sent = std::min<std::ptrdiff_t>(list.size(), maxControlChanges);
        record.controlChanges.assign(list.begin(), list.begin() + sent);
        device->changeControlChangeData(bank, preset, record.controlChanges, record.footswitchFunction);
    });
}

void DeviceController::changePresetWahPad1(int bank, WahPadAction action)
{
    changeOfBank<&BankData::wahPad1Action>(bank, action);
}

void DeviceController::changePresetWahPad2(int bank, WahPadAction action)
{
    changeOfBank<&BankData::wahPad2Action>(bank, action);
}

void DeviceController::changePresetNumberWahPad1(int bank, int number)
{
    changeOfBank<&BankData::wahPad1PresetNumber>(bank, number);
}

void DeviceController::changePresetNumberWahPad2(int bank, int number)
{
    changeOfBank<&BankData::wahPad2PresetNumber>(bank, number);
}

// --- MIDI devices

void DeviceController::changeMidiDeviceName(const QString &name, int number)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        record.name = nameText(name);
        requireReadable(record);
        device->changeMidiDeviceName(record.name, number);
    });
}

void DeviceController::changeMidiDeviceChannel(int channel, int number)
{
    changeOfMidiDevice<&MidiDevice::channel>(number, channel);
}

void DeviceController::changeSendCCFirst(bool on, int number)
{
    changeOfMidiDevice<&MidiDevice::sendCCFirst>(number, on);
}

void DeviceController::changeTapTempo(MidiDeviceTapTempo mode, int number)
{
    changeOfMidiDevice<&MidiDevice::tapTempo>(number, mode);
}

void DeviceController::changeTapController(int controller, int number)
{
    changeOfMidiDevice<&MidiDevice::tapController>(number, controller);
}

void DeviceController::changeTapControllerValue(int value, int number)
{
    changeOfMidiDevice<&MidiDevice::tapControllerValue>(number, value);
}

void DeviceController::changeNoteNumber(int note, int number)
{
    changeOfMidiDevice<&MidiDevice::noteNumber>(number, note);
}

void DeviceController::changeNoteType(TapTempoNote type, int number)
{
    changeOfMidiDevice<&MidiDevice::noteType>(number, type);
}

void DeviceController::controllersNamesOrNumberChanged(int number, const QVector<QString> &names,
                                                       const QVector<int> &numbers)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        std::vector<std::string> texts;
        for (const QString &name : names)
            texts.push_back(nameText(name));
        const std::vector<int> values(numbers.begin(), numbers.end());
        for (std::size_t slot = 0; slot < std::min(texts.size(), record.controllers.size()); ++slot)
            record.controllers[slot] = {texts[slot], static_cast<std::uint8_t>(values.at(slot))};
        requireReadable(record);
        device->changeControllersNamesAndNumbers(texts, values, number);
    });
}

// --- Global settings

void DeviceController::changeLoopsSplit(bool on) { changeGlobal<&Settings::loopsSplit>(on); }

void DeviceController::changeKeyboardType(KeyboardType type) { changeGlobal<&Settings::keyboardType>(type); }

void DeviceController::changeClickProtection(ClickProtection level) { changeGlobal<&Settings::clickProtection>(level); }

void DeviceController::changeOneTimeMidiModeSend(bool on) { changeGlobal<&Settings::oneTimeMidiModeSend>(on); }

void DeviceController::changeRecallUserBanksOnly(bool on) { changeGlobal<&Settings::recallUserBanksOnly>(on); }

void DeviceController::changeBankPresetChangeMode(BankPresetChangeMode mode)
{
    changeGlobal<&Settings::bankPresetChangeMode>(mode);
}

void DeviceController::changePresetChangeName(PresetChangeName when)
{
    changeGlobal<&Settings::presetChangeName>(when);
}

void DeviceController::changeWahPad1(WahPadSetting setting) { changeGlobal<&Settings::wahPad1>(setting); }

void DeviceController::changeWahPad2(WahPadSetting setting) { changeGlobal<&Settings::wahPad2>(setting); }

// --- MIDI in

void DeviceController::changeChannel(int channel) { changeGlobal<&MidiInData::channel>(channel); }

void DeviceController::changeCCFunction(MidiInCCFunction function) { changeGlobal<&MidiInData::ccFunction>(function); }

void DeviceController::changePCFunction(MidiInPCFunction function) { changeGlobal<&MidiInData::pcFunction>(function); }

// --- Expression pedal

void DeviceController::changePeriod(ExpressionPedalPeriod period)
{
    changeGlobal<&ExpressionPedalData::period>(period);
}

void DeviceController::changeCharacteristic(ExpressionPedalCharacteristic characteristic)
{
    changeGlobal<&ExpressionPedalData::characteristic>(characteristic);
}

void DeviceController::changeToeUp(int value) { changeGlobal<&ExpressionPedalData::toeUp>(value); }

void DeviceController::changeToeDown(int value) { changeGlobal<&ExpressionPedalData::toeDown>(value); }

void DeviceController::changeMidiDeviceNumber(int number)
{
    changeGlobal<&ExpressionPedalData::midiDeviceNumber>(number);
}

void DeviceController::changeControllerNumber(int controller)
{
    changeGlobal<&ExpressionPedalData::controllerNumber>(controller);
}

// --- Any of the three, by its row

void DeviceController::changeSetting(SettingId id, int value)
{
    switch (id.record) {
    case indexOf<Settings, GlobalRecords>():
        return changeRow<Settings>(id.row, value);
    case indexOf<MidiInData, GlobalRecords>():
        return changeRow<MidiInData>(id.row, value);
    default:
        return changeRow<ExpressionPedalData>(id.row, value);
    }
}

// --- Switch outs

void DeviceController::changeSwitchOut(SwitchOutSetting setting, int number)
{
    attempt([&] {
        const auto alter = [&](SwitchOutData &record) {
            record.switchOuts.at(static_cast<std::size_t>(number) - 1) = setting;
            device->changeSwitchOut(setting, number);
        };
        if (change(data->switchOutData, alter)) emit gotSwitchOut();
    });
}
