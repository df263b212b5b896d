#include "model/places.h"

#include "model/values.h"

QString places::record(const RecordId &id)
{
    switch (id.kind) {
    case RecordId::Kind::DeviceInfo:
        return QString::fromLatin1(Table<DeviceInfo>::place);
    case RecordId::Kind::Settings:
        return QString::fromLatin1(Table<Settings>::place);
    case RecordId::Kind::MidiIn:
        return QString::fromLatin1(Table<MidiInData>::place);
    case RecordId::Kind::ExpressionPedal:
        return QString::fromLatin1(Table<ExpressionPedalData>::place);
    case RecordId::Kind::SwitchOuts:
        return QString::fromLatin1(Table<SwitchOutData>::place);
    case RecordId::Kind::MidiDevice:
        return midiDevice(id.number);
    case RecordId::Kind::Bank:
        return bank(id.number);
    case RecordId::Kind::Preset:
        break;
    }
    return preset(id.number, id.preset);
}

QString places::value(const RecordId &id, const ValuePlace &place)
{
    using Kind = RecordId::Kind;
    if (id.kind == Kind::Preset && place.id.row == rowIndexOf<&PresetData::controlChanges>())
        return midiMessages(id.number, id.preset, place.id.slot) + QStringLiteral(" CONTROLLER %1").arg(place.id.part);

    const auto numbered = [&](const char *name) {
        const QString word = QString::fromLatin1(name);
        return place.numbered ? QStringLiteral("%1 %2").arg(word).arg(place.id.slot + 1) : word;
    };
    if (place.within) return record(id) + ", " + numbered(place.within) + ": " + QString::fromLatin1(place.name);
    // Switch outs name themselves.
    return id.kind == Kind::SwitchOuts ? numbered(place.name) : record(id) + ": " + numbered(place.name);
}
