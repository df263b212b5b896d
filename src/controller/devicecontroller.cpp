#include "controller/devicecontroller.h"

#include "protocol/failure.h"

#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr unsigned int probeTimeout = 1000;    // ms
constexpr unsigned int workingTimeout = 2000;  // ms
constexpr int searchPause = 400;               // ms between two passes over the ports
constexpr int searchPauseStep = 25;            // ms until a stop request is noticed

/// A typed name as it is sent and stored: UTF-8, without the control bytes that would break a frame.
std::string nameText(const QString &name)
{
    std::string text = name.toStdString();
    std::erase_if(text, [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; });
    return text;
}

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
    const MasterFrame request = FrameFactory().readDeviceInfo();
    while (!stopRequested()) {
        for (const QString &location : portLister()) {
            if (stopRequested()) return;
            if (connectTo(location, request)) return;
        }
        for (int waited = 0; waited < searchPause && !stopRequested(); waited += searchPauseStep)
            QThread::msleep(searchPauseStep);
    }
}

bool DeviceController::connectTo(const QString &location, const MasterFrame &request)
{
    try {
        Connection probe(location, probeTimeout);
        std::string anyAnswer;
        probe << request;
        probe >> anyAnswer;
        probe.closeConnection();

        device = std::make_unique<KORA>(std::make_shared<Connection>(location, workingTimeout));
        models.push_back(std::make_unique<DataFromDevice>());
        data = models.back().get();
        getDeviceInfo();
        emit found(data);
        return true;
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
        qDebug("%s", failure->what());
    } catch (...) {
        // Whatever else a foreign device makes of the request: the next port is tried.
    }
    return false;
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

// --- The patterns that all requests follow

template <typename Work>
void DeviceController::attempt(Work work)
{
    if (!device) {
        emit deviceNotConnected();
        return;
    }
    try {
        work();
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
        emit error(QString::fromUtf8(failure->what()));
    } catch (...) {
        emit error(QStringLiteral("Error in communication"));
    }
}

template <typename Record>
void DeviceController::read(Snapshot<Record> DataFromDevice::*slot, std::unique_ptr<Record> (KORA::*operation)(),
                            void (DeviceController::*announce)())
{
    attempt([&] {
        (data->*slot).store((device.get()->*operation)());
        emit(this->*announce)();
    });
}

template <typename Record, typename Alter>
bool DeviceController::change(Snapshot<Record> &slot, Alter alter)
{
    const std::shared_ptr<const Record> stored = slot.load();
    if (!stored) return false;
    Record changed = *stored;
    alter(changed);
    store(slot, std::move(changed));
    return true;
}

template <typename Alter>
void DeviceController::changeBank(int bank, Alter alter)
{
    attempt([&] {
        if (change(data->bankData.at(static_cast<std::size_t>(bank)), alter)) emit gotBankAndPresetData(bank);
    });
}

template <typename Alter>
void DeviceController::changePreset(int bank, int preset, Alter alter)
{
    attempt([&] {
        auto &slot = data->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset));
        if (change(slot, alter)) emit gotBankAndPresetData(bank);
    });
}

template <typename Alter>
void DeviceController::changeMidiDevice(int number, Alter alter)
{
    attempt([&] {
        if (change(data->midiDevices.at(static_cast<std::size_t>(number) - 1), alter)) emit gotMidiDevicesData();
    });
}

template <typename Value, typename Member>
void DeviceController::changeMidiDevice(int number, void (KORA::*operation)(Value, int), Member MidiDevice::*member,
                                        Value value)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        (device.get()->*operation)(value, number);
        record.*member = static_cast<Member>(value);
    });
}

template <typename Record, typename Value, typename Member>
void DeviceController::changeGlobal(Snapshot<Record> DataFromDevice::*slot, void (KORA::*operation)(Value),
                                    Member Record::*member, Value value, void (DeviceController::*announce)())
{
    attempt([&] {
        const auto alter = [&](Record &record) {
            (device.get()->*operation)(value);
            record.*member = static_cast<Member>(value);
        };
        if (change(data->*slot, alter)) emit(this->*announce)();
    });
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
        data->bankData.at(static_cast<std::size_t>(bank)).store(device->getBankData(bank));
        int preset = 0;
        for (auto &slot : data->presetData.at(static_cast<std::size_t>(bank)))
            slot.store(device->getPresetData(bank, preset++));
        emit gotBankAndPresetData(bank);
    });
}

void DeviceController::getMidiDevicesData()
{
    attempt([&] {
        int number = 1;
        for (auto &slot : data->midiDevices)
            slot.store(device->getMidiDevice(number++));
        emit gotMidiDevicesData();
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
        device->changeBankName(record.name, bank);
    });
}

void DeviceController::changePresetName(const QString &name, int bank, int preset)
{
    changePreset(bank, preset, [&](PresetData &record) {
        record.name = nameText(name);
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
    changeBank(bank, [&](BankData &record) {
        record.wahPad1Action = action;
        device->changePresetWahPad1(bank, action);
    });
}

void DeviceController::changePresetWahPad2(int bank, WahPadAction action)
{
    changeBank(bank, [&](BankData &record) {
        record.wahPad2Action = action;
        device->changePresetWahPad2(bank, action);
    });
}

void DeviceController::changePresetNumberWahPad1(int bank, int number)
{
    changeBank(bank, [&](BankData &record) {
        record.wahPad1PresetNumber = static_cast<std::uint8_t>(number);
        device->changePresetNumberWahPad1(bank, number);
    });
}

void DeviceController::changePresetNumberWahPad2(int bank, int number)
{
    changeBank(bank, [&](BankData &record) {
        record.wahPad2PresetNumber = static_cast<std::uint8_t>(number);
        device->changePresetNumberWahPad2(bank, number);
    });
}

// --- MIDI devices

void DeviceController::changeMidiDeviceName(const QString &name, int number)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        record.name = nameText(name);
        device->changeMidiDeviceName(record.name, number);
    });
}

void DeviceController::changeMidiDeviceChannel(int channel, int number)
{
    changeMidiDevice(number, &KORA::changeMidiDeviceChannel, &MidiDevice::channel, channel);
}

void DeviceController::changeSendCCFirst(bool on, int number)
{
    changeMidiDevice(number, &KORA::changeSendCCFirst, &MidiDevice::sendCCFirst, on);
}

void DeviceController::changeTapTempo(MidiDeviceTapTempo mode, int number)
{
    changeMidiDevice(number, &KORA::changeTapTempo, &MidiDevice::tapTempo, mode);
}

void DeviceController::changeTapController(int controller, int number)
{
    changeMidiDevice(number, &KORA::changeTapController, &MidiDevice::tapController, controller);
}

void DeviceController::changeTapControllerValue(int value, int number)
{
    changeMidiDevice(number, &KORA::changeTapControllerValue, &MidiDevice::tapControllerValue, value);
}

void DeviceController::changeNoteNumber(int note, int number)
{
    changeMidiDevice(number, &KORA::changeNoteNumber, &MidiDevice::noteNumber, note);
}

void DeviceController::changeNoteType(TapTempoNote type, int number)
{
    changeMidiDevice(number, &KORA::changeNoteType, &MidiDevice::noteType, type);
}

void DeviceController::controllersNamesOrNumberChanged(int number, const QVector<QString> &names,
                                                       const QVector<int> &numbers)
{
    changeMidiDevice(number, [&](MidiDevice &record) {
        std::vector<std::string> texts;
        for (const QString &name : names)
            texts.push_back(nameText(name));
        const std::vector<int> values(numbers.begin(), numbers.end());
        device->changeControllersNamesAndNumbers(texts, values, number);
        for (std::size_t slot = 0; slot < record.controllers.size(); ++slot)
            record.controllers[slot] = {texts[slot], static_cast<std::uint8_t>(values[slot])};
    });
}

// --- Global settings

void DeviceController::changeLoopsSplit(bool on)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeLoopsSplit, &Settings::loopsSplit, on,
                 &DeviceController::gotSettings);
}

void DeviceController::changeKeyboardType(KeyboardType type)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeKeyboardType, &Settings::keyboardType, type,
                 &DeviceController::gotSettings);
}

void DeviceController::changeClickProtection(ClickProtection level)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeClickProtection, &Settings::clickProtection, level,
                 &DeviceController::gotSettings);
}

void DeviceController::changeOneTimeMidiModeSend(bool on)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeOneTimeMidiModeSend, &Settings::oneTimeMidiModeSend, on,
                 &DeviceController::gotSettings);
}

void DeviceController::changeRecallUserBanksOnly(bool on)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeRecallUserBanksOnly, &Settings::recallUserBanksOnly, on,
                 &DeviceController::gotSettings);
}

void DeviceController::changeBankPresetChangeMode(BankPresetChangeMode mode)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeBankPresetChangeMode, &Settings::bankPresetChangeMode, mode,
                 &DeviceController::gotSettings);
}

void DeviceController::changePresetChangeName(PresetChangeName when)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changePresetChangeName, &Settings::presetChangeName, when,
                 &DeviceController::gotSettings);
}

void DeviceController::changeWahPad1(WahPadSetting setting)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeWahPad1, &Settings::wahPad1, setting,
                 &DeviceController::gotSettings);
}

void DeviceController::changeWahPad2(WahPadSetting setting)
{
    changeGlobal(&DataFromDevice::settings, &KORA::changeWahPad2, &Settings::wahPad2, setting,
                 &DeviceController::gotSettings);
}

// --- MIDI in

void DeviceController::changeChannel(int channel)
{
    changeGlobal(&DataFromDevice::midiInData, &KORA::changeChannel, &MidiInData::channel, channel,
                 &DeviceController::gotMidiIn);
}

void DeviceController::changeCCFunction(MidiInCCFunction function)
{
    changeGlobal(&DataFromDevice::midiInData, &KORA::changeCCFunction, &MidiInData::ccFunction, function,
                 &DeviceController::gotMidiIn);
}

void DeviceController::changePCFunction(MidiInPCFunction function)
{
    changeGlobal(&DataFromDevice::midiInData, &KORA::changePCFunction, &MidiInData::pcFunction, function,
                 &DeviceController::gotMidiIn);
}

// --- Expression pedal

void DeviceController::changePeriod(ExpressionPedalPeriod period)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changePeriod, &ExpressionPedalData::period, period,
                 &DeviceController::gotExpressionPedal);
}

void DeviceController::changeCharacteristic(ExpressionPedalCharacteristic characteristic)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changeCharacteristic,
                 &ExpressionPedalData::characteristic, characteristic, &DeviceController::gotExpressionPedal);
}

void DeviceController::changeToeUp(int value)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changeToeUp, &ExpressionPedalData::toeUp, value,
                 &DeviceController::gotExpressionPedal);
}

void DeviceController::changeToeDown(int value)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changeToeDown, &ExpressionPedalData::toeDown, value,
                 &DeviceController::gotExpressionPedal);
}

void DeviceController::changeMidiDeviceNumber(int number)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changeMidiDeviceNumber,
                 &ExpressionPedalData::midiDeviceNumber, number, &DeviceController::gotExpressionPedal);
}

void DeviceController::changeControllerNumber(int controller)
{
    changeGlobal(&DataFromDevice::expressionPedalData, &KORA::changeControllerNumber,
                 &ExpressionPedalData::controllerNumber, controller, &DeviceController::gotExpressionPedal);
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

void DeviceController::updateFirmware(const QString &path)
{
    if (!device) {
        emit deviceNotConnected();
        return;
    }
    if (!QFileInfo(path).isFile()) {
        emit error(QStringLiteral("File doesn't exist"));
        return;
    }
    try {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) fail(file.errorString().toStdString());
        const QByteArray content = file.readAll();
        if (file.error() != QFileDevice::NoError) fail(file.errorString().toStdString());

        int shownPercent = -1;
        device->installFirmware({content.begin(), content.end()}, [&](int sent, int total) {
            const int percent = 100 * sent / total;
            if (percent > shownPercent) emit updateProgress(shownPercent = percent);
        });
        emit updateComplete();
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
        qDebug("%s", failure->what());
        emit updateFailed();
    } catch (...) {
        emit updateFailed();
    }
}
