#pragma once

#include "model/datafromdevice.h"
#include "model/recordchange.h"

/// Calls `visit` with the model's slot for a record.
template <typename Visit>
void visitSlot(DataFromDevice &model, const RecordId &id, const Visit &visit)
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

/// The record as one that may be kept: `held` itself if it is the same.
template <typename Record>
Shared<Record> sharedOr(const Shared<Record> &held, const Record &record)
{
    return held && *held == record ? held : std::make_shared<const Record>(record);
}

/// What the model holds of these records, as far as they have been read.
inline UnitPart knownPart(DataFromDevice &model, const std::set<RecordId> &records)
{
    UnitPart part;
    for (const RecordId &id : records)
        visitSlot(model, id, [&]<typename Record>(const Snapshot<Record> &slot) {
            const Shared<Record> held = slot.load();
            if (!held) return;
            recordOf<Record>(part.content, id) = *held;
            part.records.insert(id);
        });
    return part;
}
