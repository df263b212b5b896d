#include "controller/devicecontroller.h"
#include "controller/recordslots.h"
#include "device/kora.h"
#include "link/connection.h"
#include "protocol/failure.h"

#include <QThread>

void DeviceController::readRecords(const std::set<RecordId> &records) { transfer(UnitPart(), records, nullptr); }

void DeviceController::writeRecords(const TransferOrder &order)
{
    transfer(*order.present, order.records, order.wanted.get());
}

Transfer::Watch DeviceController::transferWatch()
{
    isStoppingTransfer = false;
    return {[this](int done, int total) { emit transferProgress(done, total); },
            [this] { return isStoppingTransfer || thread()->isInterruptionRequested(); }};
}

void DeviceController::conduct(TransferEnd &end, const std::function<Transfer::Outcome()> &work)
{
    if (!device) {
        end.failure = QString::fromLatin1(noUnit);
        return;
    }
    const Transfer::Outcome outcome = work();
    end.stopped = outcome.stopped;
    if (outcome.failure) end.failure = QString::fromStdString(*outcome.failure);
}

void DeviceController::tellLoss(const TransferEnd &end)
{
    if (end.failure == QLatin1String(receivingTimeout)) tellFailure(end.failure);
}

void DeviceController::transfer(const UnitPart &present, const std::set<RecordId> &records, const UnitContent *wanted)
{
    TransferReport report;
    auto part = std::make_shared<UnitPart>(present);
    report.unit = part;
    conduct(report, [&] {
        Transfer unit(*device, transferWatch());
        Transfer::Outcome outcome = wanted ? unit.readUnknown(*part, records) : unit.read(*part, records);
        Written written{*part, wanted, std::nullopt};
        if (wanted && !outcome.failure && !outcome.stopped) {
            outcome = unit.write(*part, *wanted, records);
            written.unclear = outcome.unclear;
        }
        report.written = outcome.written;
        publish(*part, records, wanted ? &written : nullptr);
        return outcome;
    });
    tellLoss(report);
    emit transferred(report);
}

Transfer::Outcome DeviceController::remake(UnitPart &part, const std::set<RecordId> &records,
                                           const std::function<UnitContent(const UnitPart &present)> &compose)
{
    const Connection::Hold hold = device->hold();
    Transfer unit(*device, transferWatch());
    if (Transfer::Outcome outcome = unit.read(part, records); outcome.failure || outcome.stopped) return outcome;
    const UnitContent wanted = compose(part);
    unit.makeExact(listHandling);
    Transfer::Outcome outcome = unit.write(part, wanted, records);
    listHandling = unit.listHandling();
    return outcome;
}

void DeviceController::arrange(const Arrangement &arrangement)
{
    ArrangementReport report;
    report.words = arrangement.words;
    conduct(report, [&] {
        const std::set<RecordId> &records = arrangement.records;
        UnitPart part, before;
        UnitContent wanted;
        Transfer::Outcome outcome = remake(part, records, [&](const UnitPart &present) {
            before = present;
            wanted = present.content;
            arrangement.alter(wanted);
            report.values = static_cast<int>(writableDifferences(before.content, wanted, records).size());
            return wanted;
        });
        const bool isComposed = !before.records.empty();
        if (isComposed) report.remaining = writableDifferences(part.content, wanted, records);
        const Written written{before, &wanted, outcome.unclear};
        publish(part, records, isComposed ? &written : nullptr);
        return outcome;
    });
    tellLoss(report);
    emit arranged(report);
}

void DeviceController::publish(const UnitPart &part, const std::set<RecordId> &records, const Written *written)
{
    std::set<RecordId::Kind> kinds;
    std::set<int> banks;
    for (const RecordId &id : records) {
        if (!part.records.contains(id)) continue;
        visitSlot(*data, id, [&]<typename Record>(Snapshot<Record> &slot) {
            const Record &record = recordOf<Record>(part.content, id);
            const Shared<Record> held = slot.load();
            const Shared<Record> now = sharedOr(held, record);
            slot.store(now);
            if constexpr (!std::is_same_v<Record, DeviceInfo>) {
                if (!written) return;
                const Record &before = recordOf<Record>(written->before.content, id);
                if (before != record) tellRead(id, sharedOr(held, before), now);
                if (written->unclear == id)
                    tellRead(id, now, sharedOr(held, recordOf<Record>(*written->wanted, id)), false);
            }
        });
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
