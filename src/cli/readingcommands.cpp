#include "archive/unitfile.h"
#include "cli/backupfile.h"
#include "cli/commands.h"
#include "cli/connectedunit.h"
#include "cli/differencelist.h"
#include "cli/failure.h"
#include "cli/sheet.h"
#include "model/values.h"

#include <QJsonDocument>

#include <algorithm>

using namespace cli;

namespace {

/// What a file tells, without the time at which it was saved.
QJsonObject asObject(const UnitPart &part)
{
    QJsonObject object = QJsonDocument::fromJson(archive::toJson(part, {})).object();
    object.remove(QStringLiteral("saved"));
    return object;
}

/// The records of a unit's part that are asked for; banks that the file does not have cannot be shown.
UnitPart partToShow(const Arguments &arguments, Console &console)
{
    if (arguments.operands[0] != QLatin1String("unit")) {
        UnitPart part = BackupFile(arguments.operands[0]).part();
        part.records = arguments.covered(part.records);
        if (part.records.empty()) throw Failure{fileFailed, arguments.operands[0] + ": tells nothing of these banks"};
        return part;
    }
    const std::set<RecordId> wanted = arguments.covered(allRecords());
    std::set<RecordId> needed = wanted;
    for (int number = 1; number <= midiDeviceCount; ++number)
        needed.insert({RecordId::Kind::MidiDevice, number});  // whose names a preset's messages are shown by
    UnitPart part = ConnectedUnit(arguments, console).read(needed);
    part.records = wanted;
    return part;
}

int tellDifferences(Console &console, const UnitContent &from, const UnitContent &to, const std::set<RecordId> &records)
{
    const DifferenceList list(from, to, records);
    console.object({{"differences", toJson(list.counted)}, {"setOnUnit", toJson(list.setOnUnit)}});
    for (const Difference &difference : list.counted)
        console.show(lineOf(difference));
    if (!list.setOnUnit.empty()) console.show(QStringLiteral("SET ON THE UNIT, NOT COUNTED:"));
    for (const Difference &difference : list.setOnUnit)
        console.show(lineOf(difference));
    if (!list.counted.empty()) throw Failure{differs, summaryOfAll(list.counted)};
    console.report(summaryOfAll(list.counted));
    return done;
}

int compareFiles(Console &console, const BackupFile &first, const BackupFile &second)
{
    // What one of them leaves out is as in the other.
    const UnitPart to = second.part(first.part().content);
    const UnitPart from = first.part(to.content);
    std::set<RecordId> both;
    std::ranges::set_intersection(from.records, to.records, std::inserter(both, both.end()));
    if (both.empty()) throw Failure{fileFailed, QStringLiteral("The files tell nothing of the same parts")};
    return tellDifferences(console, from.content, to.content, both);
}

}  // namespace

int cli::info(const Arguments &arguments, Console &console)
{
    ConnectedUnit unit(arguments, console);
    const UnitPart part = unit.read({{RecordId::Kind::DeviceInfo}});
    const DeviceInfo &told = part.content.deviceInfo;
    QJsonObject object = asObject(part).value(QStringLiteral("unit")).toObject();
    object.insert(QStringLiteral("port"), unit.port());
    console.object(object);
    console.show(QStringLiteral("Port:      %1").arg(unit.port()));
    console.show(QStringLiteral("Texts:     %1, %2").arg(textOf(told.firstText, {}), textOf(told.secondText, {})));
    console.show(QStringLiteral("Firmware:  %1.%2").arg(told.firmwareMajor).arg(told.firmwareMinor));
    console.show(QStringLiteral("Numbers:   %1, %2").arg(told.thirdNumber).arg(told.fourthNumber));
    return done;
}

int cli::backup(const Arguments &arguments, Console &console)
{
    const QString &path = arguments.operands[0];
    const UnitPart part = ConnectedUnit(arguments, console).read(arguments.covered(allRecords()));
    if (path == QLatin1String("-")) {
        console.content(archive::toJson(part, QDateTime::currentDateTimeUtc()));
        return done;
    }
    writeBackup(path, part);
    const int records = static_cast<int>(part.records.size());
    console.object({{"file", path}, {"records", records}});
    console.report(QStringLiteral("%1 holds %2 records of the unit.").arg(path).arg(records));
    return done;
}

int cli::compare(const Arguments &arguments, Console &console)
{
    const BackupFile file(arguments.operands[0]);
    if (arguments.operands.size() > 1) return compareFiles(console, file, BackupFile(arguments.operands[1]));
    const UnitPart unit = ConnectedUnit(arguments, console).read(file.part().records);
    return tellDifferences(console, unit.content, file.part(unit.content).content, unit.records);
}

int cli::show(const Arguments &arguments, Console &console)
{
    const UnitPart part = partToShow(arguments, console);
    if (console.isJson()) console.object(asObject(part));
    for (const QString &line : sheetOf(part.content, part.records))
        console.show(line);
    return done;
}
