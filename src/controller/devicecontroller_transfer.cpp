#include "controller/devicecontroller.h"
#include "device/kora.h"
#include "protocol/failure.h"

#include <QThread>

namespace {

/// Calls `visit` with the model's slot for a record.
template <typename Visit>
void visitSlot(DataFromDevice &model, const RecordId &id, Visit visit)
{
    const auto number = static_cast<std::size_t>(id.number);
    switch (id.kind) {
    case RecordId::Kind::DeviceInfo:
        return visit(model.deviceInfo);
    case RecordId::Kind::Settings:
        return visit(model.settings);
    case RecordId::Kind::MidiIn:
        return visit(model.midiInData);
    case RecordId::Kind::ExpressionPedal:
        return visit(model.expressionPedalData);
    case RecordId::Kind::SwitchOuts:
        return visit(model.switchOutData);
    case RecordId::Kind::MidiDevice:
        return visit(model.midiDevices.at(number - 1));
    case RecordId::Kind::Bank:
        return visit(model.bankData.at(number));
    case RecordId::Kind::Preset:
        return visit(model.presetData.at(number).at(static_cast<std::size_t>(id.preset)));
    }
}

template <typename Record, typename Other>
void storeIfSame(Snapshot<Record> &slot, const Other &record)
{
    if constexpr (std::is_same_v<Record, Other>) slot.store(std::make_shared<const Record>(record));
}

}  // namespace

void DeviceController::readRecords(const std::set<RecordId> &records)
{
    transfer(UnitPart(), records, [&](Transfer &unit, UnitPart &part) { return unit.read(part, records); });
}

void DeviceController::writeRecords(const TransferOrder &order)
{
    transfer(*order.present, order.records,
             [&](Transfer &unit, UnitPart &part) { return unit.write(part, *order.wanted, order.records); });
}

void DeviceController::transfer(const UnitPart &present, const std::set<RecordId> &records,
                                const std::function<Transfer::Outcome(Transfer &transfer, UnitPart &part)> &work)
{
    TransferReport report;
    auto part = std::make_shared<UnitPart>(present);
    report.unit = part;
    isStoppingTransfer = false;
    if (device) {
        Transfer unit(*device, {[this](int done, int total) { emit transferProgress(done, total); },
                                [this] { return isStoppingTransfer || thread()->isInterruptionRequested(); }});
        Transfer::Outcome outcome = work(unit, *part);
        report.written = std::move(outcome.written);
        report.stopped = outcome.stopped;
        if (outcome.failure) report.failure = QString::fromStdString(*outcome.failure);
        publish(*part, records);
    } else {
        report.failure = QStringLiteral("No unit is connected");
    }
    if (report.failure == QLatin1String(receivingTimeout)) this->report(report.failure);  // the unit is lost
    emit transferred(report);
}

void DeviceController::publish(const UnitPart &part, const std::set<RecordId> &records)
{
    std::set<RecordId::Kind> kinds;
    std::set<int> banks;
    for (const RecordId &id : records) {
        if (!part.records.contains(id)) continue;
        visitRecord(part.content, id,
                    [&](const auto &record) { visitSlot(*data, id, [&](auto &slot) { storeIfSame(slot, record); }); });
        kinds.insert(id.kind);
        if (id.kind == RecordId::Kind::Bank || id.kind == RecordId::Kind::Preset) banks.insert(id.number);
    }
    if (kinds.contains(RecordId::Kind::Settings)) emit gotSettings();
    if (kinds.contains(RecordId::Kind::MidiIn)) emit gotMidiIn();
    if (kinds.contains(RecordId::Kind::MidiDevice)) emit gotMidiDevicesData();
    if (kinds.contains(RecordId::Kind::ExpressionPedal)) emit gotExpressionPedal();
    if (kinds.contains(RecordId::Kind::SwitchOuts)) emit gotSwitchOut();
    for (const int bank : banks)
        emit gotBankAndPresetData(bank);
}
