#include "archive/workingfile.h"

#include "archive/keys.h"
#include "archive/unitfile.h"
#include "model/differences.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <map>

using namespace archive;

namespace {

QJsonObject allMembers(const UnitContent &content)
{
    return toObject({content, allRecords()}, QDateTime::currentDateTimeUtc());
}

bool isOfNumbered(const QString &key)
{
    return key == QLatin1String(key::midiDevices) || key == QLatin1String(key::banks) ||
           key == QLatin1String(key::presets);
}

std::map<int, QJsonObject> byNumber(const QJsonValue &array)
{
    std::map<int, QJsonObject> objects;
    for (const auto &element : array.toArray()) {
        const QJsonObject object = element.toObject();
        objects.emplace(object.value(QLatin1String(key::number)).toInt(), object);
    }
    return objects;
}

QJsonObject kept(const QJsonObject &now, const QJsonObject &opened, const QJsonObject &told);

QJsonArray keptNumbered(const QJsonValue &now, const QJsonValue &opened, const QJsonValue &told)
{
    QJsonArray array;
    std::map<int, QJsonObject> before = byNumber(opened), toldOnes = byNumber(told);
    for (auto &[number, object] : byNumber(now)) {
        QJsonObject members = object;
        members.remove(QLatin1String(key::number));
        members = kept(members, before[number], toldOnes[number]);
        if (members.isEmpty() && toldOnes[number].isEmpty()) continue;
        members.insert(QLatin1String(key::number), number);
        array.append(members);
    }
    return array;
}

/// Of all members those that the file told, and those that have changed.
QJsonObject kept(const QJsonObject &now, const QJsonObject &opened, const QJsonObject &told)
{
    QJsonObject members;
    for (auto member = now.begin(); member != now.end(); ++member) {
        const QString key = member.key();
        const QJsonValue before = opened.value(key), toldOne = told.value(key);
        QJsonValue value = *member;
        const bool isChanged = value != before;
        if (!isChanged && toldOne.isUndefined()) continue;
        if (isOfNumbered(key))
            value = keptNumbered(value, before, toldOne);
        else if (value.isObject())
            value = kept(value.toObject(), before.toObject(), toldOne.toObject());
        members.insert(key, value);
    }
    return members;
}

/// A text with bytes that part a frame would make the frame unreadable.
void requireTellable(const UnitPart &part)
{
    const DeviceInfo &unit = part.content.deviceInfo;
    if (!fitsFrame(unit.firstText) || !fitsFrame(unit.secondText)) throw Error("no unit can tell unit.texts");
    for (const Difference &value : differences(emptyContent(), part.content, part.records))
        if (!value.writable && !value.setOnUnit)
            throw Error(QStringLiteral("no unit can tell %1: %2").arg(value.place, value.to).toStdString());
}

}  // namespace

WorkingFile::WorkingFile(QString path, QByteArray bytes, QJsonObject toldMembers, UnitContent content)
    : place(std::move(path)), held(std::move(bytes)), told(std::move(toldMembers)), opened(std::move(content)),
      openedObject(allMembers(opened))
{}

WorkingFile WorkingFile::open(const QString &path)
{
    const QByteArray bytes = readBytes(path);
    try {
        const UnitPart part = fromJson(bytes, emptyContent());
        requireTellable(part);
        return {path, bytes, QJsonDocument::fromJson(bytes).object(), part.content};
    } catch (const Error &error) {
        throw Error(QFileInfo(path).fileName().toStdString() + ": " + error.what());
    }
}

WorkingFile WorkingFile::create(const QString &path)
{
    UnitPart part{emptyContent(), allRecords()};
    part.records.erase({RecordId::Kind::DeviceInfo});
    WorkingFile file(path, {}, toObject(part, QDateTime::currentDateTimeUtc()), part.content);
    file.save(part.content);
    return file;
}

bool WorkingFile::isChangedByOthers() const { return QFileInfo::exists(place) && readBytes(place) != held; }

void WorkingFile::saveAs(const QString &path, const UnitContent &now)
{
    const QByteArray bytes = jsonText(kept(allMembers(now), openedObject, told));
    writeBytes(path, bytes);
    held = bytes;
    place = path;
}
