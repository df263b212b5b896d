#include "model/differences.h"

#include "model/places.h"

#include <QStringList>

namespace {

QString counted(std::size_t count, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

}  // namespace

std::vector<Difference> differences(const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records)
{
    std::vector<Difference> found;
    for (const RecordId &id : records) {
        const auto compare = [&](const ValuePlace &place, const auto &row, const auto &held, const auto &wanted) {
            if (isSame(held, wanted, row.range)) return;
            found.push_back({id, place.id, places::value(id, place), textOf(held, row.range), textOf(wanted, row.range),
                             isWritable(row, wanted), row.readOnly});
        };
        visitRecords(from, to, id, [&](const auto &held, const auto &wanted) {
            if (held != wanted) forEachValue(compare, held, wanted);
        });
    }
    return found;
}

void apply(const Difference &difference, UnitContent &target, const UnitContent &source)
{
    const auto take = [&](const ValuePlace &place, const auto &, auto &held, const auto &wanted) {
        if (place.id == difference.value) held = wanted;
    };
    visitRecords(target, source, difference.record,
                 [&](auto &held, const auto &wanted) { forEachValue(take, held, wanted); });
}

QString summaryOf(const std::vector<Difference> &differences)
{
    using Kind = RecordId::Kind;
    std::size_t count = 0;
    std::set<int> banks, midiDevices;
    QStringList parts;
    for (const Difference &difference : differences) {
        if (!difference.writable) continue;
        ++count;
        const RecordId &id = difference.record;
        QString part;
        switch (id.kind) {
        case Kind::Preset:
        case Kind::Bank:
            banks.insert(id.number);
            break;
        case Kind::MidiDevice:
            midiDevices.insert(id.number);
            break;
        case Kind::Settings:
            part = QStringLiteral("global settings");
            break;
        case Kind::MidiIn:
            part = QStringLiteral("MIDI in");
            break;
        case Kind::ExpressionPedal:
            part = QStringLiteral("expression pedal");
            break;
        case Kind::SwitchOuts:
            part = QStringLiteral("switch outs");
            break;
        case Kind::DeviceInfo:
            break;
        }
        if (!part.isEmpty() && !parts.contains(part)) parts << part;
    }
    if (count == 0) return QStringLiteral("No value differs");
    if (!midiDevices.empty()) parts.prepend(counted(midiDevices.size(), "MIDI device", "MIDI devices"));
    if (!banks.empty()) parts.prepend(counted(banks.size(), "bank", "banks"));
    return counted(count, "value differs in ", "values differ in ") + parts.join(QStringLiteral(", "));
}
