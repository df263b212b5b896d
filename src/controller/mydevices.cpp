#include "controller/mydevices.h"

#include "archive/unitfile.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

MyDevices::MyDevices(QString devicesFolder) : place(std::move(devicesFolder)) {}

QString MyDevices::usualFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/devices");
}

QString MyDevices::pathFor(const std::string &name) const
{
    static const QRegularExpression unfit(QStringLiteral(R"([^\w +-])"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    constexpr int longest = 60;  // letters; the longest ones still fit any file system
    const QString fit = QString::fromStdString(name).replace(unfit, QStringLiteral("_")).left(longest).trimmed();
    return QStringLiteral("%1/%2.kora").arg(place, fit.isEmpty() ? QStringLiteral("no name") : fit);
}

QString MyDevices::save(const MidiDevice &device) const
{
    UnitPart part;
    part.content.midiDevices.front() = device;
    part.records = {{RecordId::Kind::MidiDevice, 1}};
    return archive::trySaving(pathFor(device.name), part);
}

MidiDevice MyDevices::deviceIn(const UnitPart &part)
{
    for (const RecordId &id : part.records)
        if (id.kind == RecordId::Kind::MidiDevice) return recordOf<MidiDevice>(part.content, id);
    throw archive::Error("There is no MIDI device in it");
}
