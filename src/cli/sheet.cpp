#include "cli/sheet.h"

#include "model/places.h"
#include "model/values.h"

#include <map>

using namespace cli;

namespace {

using Kind = RecordId::Kind;

constexpr int nameWidth = 26;  // of most settings' names

/// The values of one row of a record's table.
struct Line
{
    QString name;
    std::map<std::pair<int, int>, QString> entries;  ///< by slot and part; without those that say nothing
};

class Sheet
{
public:
    explicit Sheet(const UnitContent &shown) : content(shown) {}

    void add(const RecordId &id)
    {
        const bool isPreset = id.kind == Kind::Preset;
        const QString indent(isPreset ? 2 : 0, ' ');
        QString heading = indent + (isPreset ? QStringLiteral("PRESET %1").arg(id.preset) : places::record(id));
        std::map<int, Line> rows;
        visitRecord(content, id, [&]<typename Record>(const Record &record) {
            if constexpr (requires { record.name; }) heading += "  " + textOf(record.name, {});
            forEachValue([&](const ValuePlace &place, const auto &row,
                             const auto &value) { add(rows[place.id.row], id, place, textOf(value, row.range)); },
                         record);
        });
        if (!isPreset && !lines.isEmpty()) lines << QString();
        lines << heading;
        for (const auto &[row, line] : rows)
            if (line.name != QLatin1String("NAME")) lines << indent + "  " + textOfLine(line);
    }

    QStringList lines;

private:
    void add(Line &line, const RecordId &id, const ValuePlace &place, QString text) const
    {
        line.name = QString::fromLatin1(place.within ? place.within : place.name);
        const bool isMessage = id.kind == Kind::Preset && place.id.row == rowIndexOf<&PresetData::controlChanges>();
        const bool isListed = place.numbered || isMessage;
        if (isListed && (text == QLatin1String("NONE") || text == QLatin1String("\"\""))) return;
        if (place.within && !place.numbered) text = QString::fromLatin1(place.name) + ' ' + text;
        QString &entry = line.entries[{place.id.slot, isMessage ? place.id.part : 0}];
        if (entry.isEmpty())
            entry = isListed ? label(id, place) + ' ' + text : text;
        else
            entry += (isListed ? QStringLiteral(" ") : QStringLiteral(", ")) + text;
    }

    /// What tells one value of a list from the others.
    QString label(const RecordId &id, const ValuePlace &place) const
    {
        if (id.kind != Kind::Preset) return QString::number(place.id.slot + 1);
        if (place.id.row == rowIndexOf<&PresetData::programChanges>()) return deviceName(place.id.slot + 1);
        if (place.id.row != rowIndexOf<&PresetData::controlChanges>()) return QString::number(place.id.slot + 1);
        return deviceName(place.id.slot) + ' ' + controllerName(place.id.slot, place.id.part);
    }

    QString deviceName(int number) const
    {
        const bool isKnown = range::device.contains(number);
        const std::string name = isKnown ? content.midiDevices.at(static_cast<std::size_t>(number) - 1).name : "";
        return name.empty() ? QStringLiteral("MIDI %1").arg(number) : textOf(name, {});
    }

    QString controllerName(int device, int position) const
    {
        const bool isKnown = range::device.contains(device) && range::position.contains(position);
        const std::string name = isKnown ? content.midiDevices.at(static_cast<std::size_t>(device) - 1)
                                               .controllers.at(static_cast<std::size_t>(position) - 1)
                                               .name
                                         : "";
        return name.empty() ? QStringLiteral("CONTROLLER %1").arg(position) : textOf(name, {});
    }

    static QString textOfLine(const Line &line)
    {
        QStringList entries;
        for (const auto &[place, entry] : line.entries)
            entries << entry;
        return line.name.leftJustified(nameWidth) + (entries.isEmpty() ? QStringLiteral("NONE") : entries.join(", "));
    }

    const UnitContent &content;
};

}  // namespace

QStringList cli::sheetOf(const UnitContent &content, const std::set<RecordId> &records)
{
    Sheet sheet(content);
    for (const RecordId &id : records)
        sheet.add(id);
    return sheet.lines;
}
