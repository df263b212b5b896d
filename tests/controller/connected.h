#pragma once

#include "controller/devicecontroller.h"
#include "simulator/unitport.h"
#include "support/wire.h"

#include <QMetaMethod>
#include <QSignalSpy>

#include <gtest/gtest.h>

using Events = std::vector<std::string>;

/// Collects the signals of a controller as their names and arguments: "gotBankAndPresetData 4".
class Recorder
{
public:
    explicit Recorder(const DeviceController &controller)
    {
        const QMetaObject &type = DeviceController::staticMetaObject;
        for (int index = type.methodOffset(); index < type.methodCount(); ++index)
            if (const QMetaMethod method = type.method(index);
                method.methodType() == QMetaMethod::Signal && method.name() != "recordChanged")
                spies.push_back(std::make_unique<QSignalSpy>(&controller, method));
    }

    /// The signals since the last call, in the order of their declarations.
    Events take()
    {
        Events events;
        for (const auto &spy : spies)
            for (; !spy->isEmpty(); spy->removeFirst()) {
                QString event = spy->signal().left(spy->signal().indexOf('('));
                for (const QVariant &argument : spy->first())
                    if (const bool isText = argument.userType() == QMetaType::QString;
                        isText || argument.canConvert<int>())
                        event += ' ' + (isText ? argument.toString() : QString::number(argument.toInt()));
                events.push_back(event.toStdString());
            }
        return events;
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> spies;
};

/// A controller that has found a unit.
class Connected : public testing::Test
{
protected:
    Connected()
    {
        unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
        QObject::connect(&controller, &DeviceController::found, [this](DataFromDevice *found) { data = found; });
        controller.searchDevice();
        unit.recordRequests();
        recorder.take();
    }

    /// Reads bank 4 and all that is no bank.
    void readAll()
    {
        controller.getBankAndPresetData(4);
        controller.getMidiDevicesData();
        controller.getSettings();
        controller.getMidiIn();
        controller.getExpressionPedal();
        controller.getSwitchOut();
        unit.takeRequests();
        recorder.take();
    }

    Events requests()
    {
        Events texts = unit.takeRequests();
        std::transform(texts.begin(), texts.end(), texts.begin(), visible);
        return texts;
    }

    /// The unit's memory with all that the model holds put over it: equal to the unit's while the model is right.
    UnitMemory modelled() const
    {
        UnitMemory memory = unit.memory();
        const auto put = [](auto &record, const auto &slot) {
            if (const auto held = slot.load()) record = *held;
        };
        const auto putEach = [&](auto &records, const auto &slots_) {
            for (std::size_t index = 0; index < records.size(); ++index)
                put(records[index], slots_[index]);
        };
        putEach(memory.banks, data->bankData);
        for (std::size_t bank = 0; bank < memory.presets.size(); ++bank)
            putEach(memory.presets[bank], data->presetData[bank]);
        putEach(memory.midiDevices, data->midiDevices);
        put(memory.deviceInfo, data->deviceInfo);
        put(memory.settings, data->settings);
        put(memory.midiIn, data->midiInData);
        put(memory.expressionPedal, data->expressionPedalData);
        put(memory.switchOuts, data->switchOutData);
        return memory;
    }

    UnitPort unit{musicianContent(), std::chrono::milliseconds(0)};
    DeviceController controller{[this] { return QStringList{QString::fromStdString(unit.location())}; }};
    DataFromDevice *data = nullptr;
    Recorder recorder{controller};
};
