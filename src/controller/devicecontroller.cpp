#include "controller/devicecontroller.h"

#include "controller/recordslots.h"
#include "device/kora.h"
#include "link/connection.h"
#include "model/values.h"
#include "protocol/failure.h"

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

void requirePreset(const DataFromDevice &model, int bank, int preset)
{
    requireIndex(model.presetData, bank);
    requireIndex(model.presetData.front(), preset);
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

void DeviceController::tellFailure(const QString &message)
{
    failure = message;
    emit error(message);
}

bool DeviceController::requireUnit()
{
    if (device) return true;
    failure = QString::fromLatin1(noUnit);
    emit deviceNotConnected();
    return false;
}

void DeviceController::attempt(const std::function<void()> &work)
{
    if (!requireUnit()) return;
    if (const auto message = caught(work)) tellFailure(QString::fromStdString(*message));
}

// --- Reads

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
        requirePreset(*data, bank, preset);
        emit gotPresetName(QString::fromStdString(device->getPresetName(bank, preset)), preset);
    });
}

void DeviceController::getFootswitchFunction(int bank, int preset)
{
    attempt([&] {
        requirePreset(*data, bank, preset);
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

void DeviceController::getExpressionPedalData() {}
