#include "model/differences.h"

#include <algorithm>

std::vector<Difference> writable(std::vector<Difference> found)
{
    std::erase_if(found, [](const Difference &difference) { return !difference.writable; });
    return found;
}

std::vector<Difference> differences(const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records)
{
    std::vector<Difference> found;
    for (const RecordId &id : records)
        visitRecords(from, to, id, [&](const auto &held, const auto &wanted) { compare(id, held, wanted, found); });
    return found;
}

std::vector<Difference> writableDifferences(const UnitContent &from, const UnitContent &to,
                                            const std::set<RecordId> &records)
{
    return writable(differences(from, to, records));
}

void apply(const Difference &difference, UnitContent &target, const UnitContent &source)
{
    const auto take = [&](const ValuePlace &place, const auto &, auto &held, const auto &wanted) {
        if (place.id == difference.value) held = wanted;
    };
    visitRecords(target, source, difference.record,
                 [&](auto &held, const auto &wanted) { forEachValue(take, held, wanted); });
}

namespace {

/// "12 banks, 2 MIDI devices, global settings"
QString partsOf(const std::vector<Difference> &differences)
{
    using Kind = RecordId::Kind;
    std::set<int> banks, midiDevices;
    QStringList parts;
    for (const Difference &difference : differences) {
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
    if (!midiDevices.empty()) parts.prepend(places::counted(midiDevices.size(), "MIDI device", "MIDI devices"));
    if (!banks.empty()) parts.prepend(places::counted(banks.size(), "bank", "banks"));
    return parts.join(QStringLiteral(", "));
}

}  // namespace

QString summaryOf(const std::vector<Difference> &differences)
{
    const std::vector<Difference> written = writable(differences);
    if (written.empty()) return QStringLiteral("No value differs");
    return places::counted(written.size(), "value differs in ", "values differ in ") + partsOf(written);
}

QStringList remainingLines(const std::vector<Difference> &remaining)
{
    QStringList lines;
    for (const Difference &difference : remaining)
        lines << QStringLiteral("%1: %2, not %3").arg(difference.place, difference.from, difference.to);
    return lines;
}

QString changeWords(const std::vector<Difference> &differences)
{
    const Difference &first = differences.front();
    if (differences.size() == 1) return QStringLiteral("%1  %2 -> %3").arg(first.place, first.from, first.to);
    const bool inOneRecord = std::ranges::all_of(
        differences, [&](const Difference &difference) { return difference.record == first.record; });
    return places::counted(differences.size(), "value in ", "values in ") +
           (inOneRecord ? places::record(first.record) : partsOf(differences));
}
