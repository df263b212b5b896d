#include "archive/keys.h"
#include "archive/unitfile.h"
#include "model/values.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <map>

using namespace archive;

namespace {

QJsonValue written(const std::string &text, const Range &)
{
    if (const auto characters = fitsFrame(text) ? charactersOf(text) : std::nullopt) return *characters;
    return QJsonObject{{key::bytes, QString::fromLatin1(QByteArray::fromStdString(text).toHex())}};
}

QJsonValue written(bool flag, const Range &) { return flag; }

template <typename Enum>
requires std::is_enum_v<Enum> QJsonValue written(Enum value, const Range &)
{
    const QString *label = labelOf(value);
    return label ? QJsonValue(*label) : QJsonValue(static_cast<int>(value));
}

QJsonValue written(int number, const Range &range)
{
    if (number == none && range.isNone(number)) return QJsonValue::Null;
    if (!range.contains(number)) return QJsonObject{{key::number, number}};
    const char *word = range.also == Range::Also::ToggleAndInactive ? wordFor(number, range) : nullptr;
    return word ? QJsonValue(QLatin1String(word)) : QJsonValue(number);
}

template <HasTable Record>
void writeRows(QJsonObject &object, const Record &record);

template <HasTable Record>
QJsonValue written(const Record &record, const Range &)
{
    QJsonObject object;
    writeRows(object, record);
    return object;
}

template <typename List>
requires requires(const List &list) { list.size(); }
QJsonValue written(const List &list, const Range &range)
{
    QJsonArray values;
    for (const auto &value : list)
        values.append(written(value, range));
    return values;
}

template <HasTable Record>
void writeRows(QJsonObject &object, const Record &record)
{
    forEachField<Record>([&](const auto &row) {
        const QLatin1String name(row.key);
        const QJsonValue value = written(record.*row.member, row.range);
        const auto dot = name.indexOf(QLatin1Char('.'));
        if (dot < 0) {
            object.insert(name, value);
            return;
        }
        QJsonObject within = object.value(name.left(dot)).toObject();
        within.insert(name.mid(dot + 1), value);
        object.insert(name.left(dot), within);
    });
}

QJsonObject writtenUnit(const DeviceInfo &unit)
{
    return {
        {key::texts, QJsonArray{written(unit.firstText, {}), written(unit.secondText, {})}},
        {key::firmware, QStringLiteral("%1.%2").arg(unit.firmwareMajor).arg(unit.firmwareMinor)},
        {key::numbers, QJsonArray{unit.thirdNumber, unit.fourthNumber}},
    };
}

/// Objects by the numbers that they tell of themselves.
using Numbered = std::map<int, QJsonObject>;

QJsonArray inOrder(const Numbered &objects)
{
    QJsonArray array;
    for (const auto &[number, object] : objects)
        array.append(object);
    return array;
}

QJsonObject numbered(int number) { return {{key::number, number}}; }

}  // namespace

QByteArray archive::jsonText(const QJsonObject &object)
{
    const QByteArray json = QJsonDocument(object).toJson();
    QByteArray result;
    int copied = 0;
    for (int place = 0, length = 1; place < json.size(); place += length) {
        const auto lead = static_cast<unsigned char>(json[place]);
        length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        if (lead < 0x7F) continue;  // a string's control characters are told by their numbers already
        const QString character = QString::fromUtf8(json.constData() + place, length);
        if (QChar::isPrint(character.toUcs4().value(0))) continue;
        result += json.mid(copied, place - copied);
        for (const QChar unit : character)
            result += "\\u" + QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
        copied = place + length;
    }
    return result.isEmpty() ? json : result + json.mid(copied);
}

QJsonObject archive::toObject(const UnitPart &part, const QDateTime &saved)
{
    QJsonObject root{
        {key::format, formatName}, {key::version, formatVersion}, {key::saved, saved.toUTC().toString(Qt::ISODate)}};
    Numbered midiDevices, banks;
    std::map<int, Numbered> presets;
    for (const RecordId &id : part.records) {
        const auto writeInto = [&](QJsonObject &object) {
            visitRecord(part.content, id, [&](const auto &record) { writeRows(object, record); });
        };
        const auto write = [&](const char *key) {
            QJsonObject object;
            writeInto(object);
            root.insert(QLatin1String(key), object);
        };
        switch (id.kind) {
        case RecordId::Kind::DeviceInfo:
            root.insert(QLatin1String(key::unit), writtenUnit(part.content.deviceInfo));
            break;
        case RecordId::Kind::Settings:
            write(key::settings);
            break;
        case RecordId::Kind::MidiIn:
            write(key::midiIn);
            break;
        case RecordId::Kind::ExpressionPedal:
            write(key::expressionPedal);
            break;
        case RecordId::Kind::SwitchOuts:
            writeInto(root);
            break;
        case RecordId::Kind::MidiDevice:
            writeInto(midiDevices.emplace(id.number, numbered(id.number)).first->second);
            break;
        case RecordId::Kind::Bank:
            writeInto(banks.emplace(id.number, numbered(id.number)).first->second);
            break;
        case RecordId::Kind::Preset:
            banks.emplace(id.number, numbered(id.number));
            writeInto(presets[id.number].emplace(id.preset, numbered(id.preset)).first->second);
            break;
        }
    }
    for (const auto &[bank, objects] : presets)
        banks[bank].insert(QLatin1String(key::presets), inOrder(objects));
    if (!midiDevices.empty()) root.insert(QLatin1String(key::midiDevices), inOrder(midiDevices));
    if (!banks.empty()) root.insert(QLatin1String(key::banks), inOrder(banks));
    return root;
}

QByteArray archive::toJson(const UnitPart &part, const QDateTime &saved) { return jsonText(toObject(part, saved)); }
