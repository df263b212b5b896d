#include "controller/devicecontroller.h"

#include "controller/recordslots.h"
#include "controller/unitsearch.h"
#include "device/answerlength.h"
#include "device/kora.h"
#include "link/connection.h"
#include "model/values.h"
#include "protocol/failure.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

template <typename Record>
void store(Snapshot<Record> &slot, Record record)
{
    slot.store(std::make_shared<const Record>(std::move(record)));
}

template <typename Array>
void requireIndex(const Array &records, int index)
{
    static_cast<void>(records.at(static_cast<std::size_t>(index)));  // out of range: ends the request as an error
}

/// The unit would take a name of any length, but then it could never tell the record again.
template <typename Record>
void requireReadable(const Record &record)
{
    if (answerLength(record) > Connection::maxFrameLength)
        fail("The name is too long: the unit could not be read any more");
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

DeviceController::DeviceController(PortLister listPorts, QObject *parent)
    : QObject(parent), portLister(listPorts ? std::move(listPorts) : PortLister(systemPortLocations))
{
    registerMetaTypes();
}

DeviceController::~DeviceController() = default;

void DeviceController::searchDevice()
{
    device.reset();
    const auto stopRequested = [this] { return thread()->isInterruptionRequested(); };
    const auto location = findUnit(portLister, stopRequested, timeouts.probe, timeouts.searchPause);
    if (!location) return;
    device = std::make_unique<KORA>(std::make_shared<Connection>(*location, timeouts.working));
    const auto lastInfo = data ? data->deviceInfo.load() : nullptr;
    models.push_back(std::make_unique<DataFromDevice>());
    data = models.back().get();
    getDeviceInfo();
    const auto info = data->deviceInfo.load();
    const bool isOnLastPort = std::exchange(lastLocation, *location) == *location;
    if (!isOnLastPort || !info || !lastInfo || *info != *lastInfo) listHandling = ListHandling::Unknown;
    mergedPresets.clear();
    emit found(data);
}

void DeviceController::getDeviceInfo()
{
    attempt([this] {
        store(data->deviceInfo, DeviceInfo());
        store(data->deviceInfo, device->getDeviceInfo());
        device->checkConnection();
    });
}

void DeviceController::closeDevice() { device.reset(); }

void DeviceController::releaseSuperseded(DataFromDevice *current)
{
    const auto shown =
        std::find_if(models.begin(), models.end(), [current](const auto &model) { return model.get() == current; });
    if (shown != models.end()) models.erase(models.begin(), shown);
}

QString DeviceController::takeFailure() { return std::exchange(failure, QString()); }

void DeviceController::report(const QString &message)
{
    failure = message;
    emit error(message);
}

// --- The patterns that all requests follow

template <typename Work>
void DeviceController::attempt(Work work)
{
    if (!device) {
        failure = QStringLiteral("No unit is connected");
        emit deviceNotConnected();
        return;
    }
    if (const auto message = caught(work)) report(QString::fromStdString(*message));
}

template <typename Record>
void DeviceController::read(Snapshot<Record> DataFromDevice::*slot, std::unique_ptr<Record> (KORA::*operation)(),
                            void (DeviceController::*announce)())
{
    if (isSkippingReads) return;
    attempt([&] {
        (data->*slot).store((device.get()->*operation)());
        emit(this->*announce)();
    });
}

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

template <typename Record, std::size_t... Row>
void DeviceController::changeRow(int row, int value, std::index_sequence<Row...> /*rows*/)
{
    const auto tryRow = [&]<std::size_t Each>(std::integral_constant<std::size_t, Each>) {
        constexpr auto setting = std::get<Each>(Table<Record>::fields);
        if constexpr (!setting.readOnly)
            if (static_cast<int>(Each) == row)
                changeGlobal<setting.member>(static_cast<ValueOf<setting.member>>(value));
    };
    (tryRow(std::integral_constant<std::size_t, Row>()), ...);
}

// --- Reads

void DeviceController::getBankName(int bank)
{
    attempt([&] {
        requireIndex(data->bankData, bank);
        emit gotBankName(QString::fromStdString(device->getBankName(bank)));
    });
}

void DeviceController::getPresetName(int bank, int preset)
{
    attempt([&] {
        requireIndex(data->presetData, bank);
        requireIndex(data->presetData.front(), preset);
        emit gotPresetName(QString::fromStdString(device->getPresetName(bank, preset)), preset);
    });
}

void DeviceController::getFootswitchFunction(int bank, int preset)
{
    attempt([&] {
        requireIndex(data->presetData, bank);
        requireIndex(data->presetData.front(), preset);
        emit gotFootswitchFunction(device->getFootswitchFunction(bank, preset), preset);
    });
}

void DeviceController::getBankAndPresetData(int bank)
{
    attempt([&] {
        requireIndex(data->bankData, bank);
        if (isSkippingReads) return;
        data->bankData.at(static_cast<std::size_t>(bank)).store(device->getBankData(bank));
        int preset = 0;
        for (auto &slot : data->presetData.at(static_cast<std::size_t>(bank))) {
            if (isSkippingReads) return;
            slot.store(device->getPresetData(bank, preset++));
        }
        emit gotBankAndPresetData(bank);
    });
}

void DeviceController::getMidiDevicesData()
{
    attempt([&] {
        int number = 1;
        for (auto &slot : data->midiDevices) {
            if (isSkippingReads) return;
            slot.store(device->getMidiDevice(number++));
        }
        emit gotMidiDevicesData();
    });
}

void DeviceController::readUnknown(const std::set<RecordId> &records)
{
    attempt([&] {
        Transfer unit(*device, {[](int, int) {}, [this] { return isSkippingReads.load(); }});
        UnitPart part = knownPart(*data, records);
        const Transfer::Outcome outcome = unit.readUnknown(part, records);
        publish(part, records);
        if (outcome.failure) fail(*outcome.failure);
    });
}

void DeviceController::getSettings()
{
    read(&DataFromDevice::settings, &KORA::getSettings, &DeviceController::gotSettings);
}

void DeviceController::getMidiIn()
{
    read(&DataFromDevice::midiInData, &KORA::getMidiInData, &DeviceController::gotMidiIn);
}

void DeviceController::getExpressionPedal()
{
    read(&DataFromDevice::expressionPedalData, &KORA::getExpressionPedalData, &DeviceController::gotExpressionPedal);
}

void DeviceController::getSwitchOut()
{
    read(&DataFromDevice::switchOutData, &KORA::getSwitchOutData, &DeviceController::gotSwitchOut);
}

void DeviceController::getExpressionPedalData()
{
    // Nothing to read: a preset's pedal assignment comes with its preset.
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

void DeviceController::changeSetting(SettingId id, int value)
{
    const auto rowsOf = []<typename Record>(Record *) {
        return std::make_index_sequence<std::tuple_size_v<decltype(Table<Record>::fields)>>();
    };
    switch (id.record) {
    case 0:
        return changeRow<Settings>(id.row, value, rowsOf(static_cast<Settings *>(nullptr)));
    case 1:
        return changeRow<MidiInData>(id.row, value, rowsOf(static_cast<MidiInData *>(nullptr)));
    default:
        return changeRow<ExpressionPedalData>(id.row, value, rowsOf(static_cast<ExpressionPedalData *>(nullptr)));
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

// --- Firmware

namespace {

/// What a file holds, but never more than one byte over what an image can have.
std::vector<unsigned char> readImage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) fail(file.errorString().toStdString());
    if (file.size() > static_cast<qint64>(KORA::maxFirmwareSize)) fail("The firmware image is too large");
    const QByteArray content = file.read(KORA::maxFirmwareSize + 1);
    if (file.error() != QFileDevice::NoError) fail(file.errorString().toStdString());
    return {content.begin(), content.end()};
}

}  // namespace

void DeviceController::updateFirmware(const QString &path)
{
    if (!device) {
        failure = QStringLiteral("No unit is connected");
        emit deviceNotConnected();
        return;
    }
    if (!QFileInfo(path).isFile()) return report(QStringLiteral("File doesn't exist"));
    const auto failed = caught([&] {
        int shownPercent = -1;
        device->installFirmware(readImage(path), [&](int sent, int total) {
            const int percent = 100 * sent / total;
            if (percent > shownPercent) emit updateProgress(shownPercent = percent);
        });
        emit updateComplete();
    });
    if (!failed) return;
    qDebug("%s", failed->c_str());
    emit updateFailed();
}
