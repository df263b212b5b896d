#include "archive/keys.h"
#include "archive/unitfile.h"
#include "model/values.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>
#include <map>
#include <set>

using namespace archive;

namespace {

/// Where a value stands in the file; worked out only when it is refused.
struct Place
{
    QString text() const
    {
        const QString before = outer ? outer->text() : QString();
        if (index >= 0) return QStringLiteral("%1[%2]").arg(before).arg(index);
        return before.isEmpty() ? key : before + '.' + key;
    }
    [[noreturn]] void refuse(const QString &reason) const { throw Error((text() + ": " + reason).toStdString()); }

    const Place *outer = nullptr;
    QString key;
    int index = -1;  ///< in an array, from 0
};

std::optional<int> wholeNumber(const QJsonValue &value, int low, int high)
{
    const double number = value.toDouble(0.5);
    if (number < low || number > high || number != std::floor(number)) return std::nullopt;
    return static_cast<int>(number);
}

/// "a whole number from 1 to 16 or null"
QString expected(const Range &range)
{
    QString text = QStringLiteral("a whole number");
    if (range.low != range::any.low) text += QStringLiteral(" from %1 to %2").arg(range.low).arg(range.high);
    if (range.isNone(none)) text += QStringLiteral(" or null");
    if (range.also == Range::Also::ToggleAndInactive) text += QStringLiteral(", \"TOGGLE\" or \"INACTIVE\"");
    return text + QStringLiteral(" is expected");
}

QJsonObject asObject(const QJsonValue &value, const Place &place)
{
    if (!value.isObject()) place.refuse(QStringLiteral("an object is expected"));
    return value.toObject();
}

QJsonArray asArray(const QJsonValue &value, const Place &place)
{
    if (!value.isArray()) place.refuse(QStringLiteral("an array is expected"));
    return value.toArray();
}

/// The members that an object may have, and those of the objects that lead to keys with a dot.
using Members = std::map<QString, QStringList>;

template <HasTable Record>
Members membersOf(const QStringList &others = {})
{
    Members members;
    for (const QString &other : others)
        members[other];
    forEachField<Record>([&](const auto &row) {
        const QStringList steps = QString::fromLatin1(row.key).split('.');
        members[steps.first()] += steps.mid(1);
    });
    return members;
}

void checkMembers(const QJsonObject &object, const Members &members, const Place &place)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        const Place here{&place, member.key()};
        const auto known = members.find(here.key);
        if (known == members.end()) here.refuse(QStringLiteral("unknown member"));
        if (known->second.isEmpty()) continue;
        const QJsonObject within = asObject(*member, here);
        for (const QString &key : within.keys())
            if (!known->second.contains(key)) Place{&here, key}.refuse(QStringLiteral("unknown member"));
    }
}

// Each `read` returns how many values it took.

int read(std::string &text, const QJsonValue &value, const Range &, const Place &place)
{
    if (value.isString()) {
        text = value.toString().toStdString();
        if (!fitsFrame(text)) place.refuse(QStringLiteral("a text without control characters is expected"));
        return 1;
    }
    const QJsonObject object = value.toObject();
    const QJsonValue told = object.value(QLatin1String(key::bytes));
    const QByteArray hexadecimal = told.toString().toLatin1().toLower();
    const QByteArray bytes = QByteArray::fromHex(hexadecimal);
    if (object.size() != 1 || !told.isString() || bytes.toHex() != hexadecimal)
        place.refuse(QStringLiteral("a text is expected"));
    text = bytes.toStdString();
    return 1;
}

int read(bool &flag, const QJsonValue &value, const Range &, const Place &place)
{
    if (!value.isBool()) place.refuse(QStringLiteral("true or false is expected"));
    flag = value.toBool();
    return 1;
}

template <typename Enum>
requires std::is_enum_v<Enum>
int read(Enum &held, const QJsonValue &value, const Range &, const Place &place)
{
    const int index = value.isString() ? static_cast<int>(labels<Enum>().indexOf(value.toString())) : -1;
    const auto number = wholeNumber(value, range::any.low, range::any.high);
    if (index < 0 && !number)
        place.refuse(QStringLiteral("one of \"%1\" is expected").arg(labels<Enum>().join(QStringLiteral("\", \""))));
    held = number ? static_cast<Enum>(*number) : fromIndex<Enum>(index);
    return 1;
}

/// The number that a value stands for: a word, null, or a number in range, or any number that the type holds if the
/// file says that it is out of range.
template <typename Number>
std::optional<int> numberFrom(const QJsonValue &value, const Range &range)
{
    using Limits = std::numeric_limits<Number>;
    if (value.isNull()) return range.isNone(none) ? std::optional<int>(none) : std::nullopt;
    if (value.isString() && range.also == Range::Also::ToggleAndInactive) {
        for (const int special : {toggleValue, inactiveValue})
            if (value.toString() == QLatin1String(wordFor(special, range))) return special;
    }
    if (value.isObject() && value.toObject().keys() == QStringList(key::number))
        return wholeNumber(value.toObject().value(QLatin1String(key::number)), Limits::min(), Limits::max());
    const auto number = wholeNumber(value, Limits::min(), Limits::max());
    return number && range.contains(*number) ? number : std::nullopt;
}

template <std::integral Number>
int read(Number &held, const QJsonValue &value, const Range &range, const Place &place)
{
    const auto number = numberFrom<Number>(value, range);
    if (!number) place.refuse(expected(range));
    held = static_cast<Number>(*number);
    return 1;
}

template <HasTable Record>
int readRows(Record &record, const QJsonObject &object, const Place &place);

template <HasTable Record>
int read(Record &record, const QJsonValue &value, const Range &, const Place &place)
{
    static const Members members = membersOf<Record>();
    const QJsonObject object = asObject(value, place);
    checkMembers(object, members, place);
    return readRows(record, object, place);
}

template <typename Value, std::size_t Count>
int read(std::array<Value, Count> &values, const QJsonValue &value, const Range &range, const Place &place)
{
    const QJsonArray array = asArray(value, place);
    if (array.size() != static_cast<int>(Count)) place.refuse(QStringLiteral("%1 values are expected").arg(Count));
    int told = 0;
    for (int index = 0; index < array.size(); ++index)
        told += read(values[static_cast<std::size_t>(index)], array.at(index), range, {&place, {}, index});
    return told;
}

int read(std::vector<ControlChangeData> &list, const QJsonValue &value, const Range &range, const Place &place)
{
    constexpr int parts = std::tuple_size_v<decltype(Table<ControlChangeData>::fields)>;
    const QJsonArray array = asArray(value, place);
    if (array.size() > static_cast<int>(maxControlChanges))
        place.refuse(QStringLiteral("at most %1 are expected").arg(maxControlChanges));
    list.clear();
    for (int index = 0; index < array.size(); ++index) {
        const Place here{&place, {}, index};
        if (read(list.emplace_back(), array.at(index), range, here) != parts)
            here.refuse(QStringLiteral("device, controller and value are expected"));
    }
    return 1;
}

QJsonValue memberOf(const QJsonObject &object, const QString &key)
{
    const auto dot = key.indexOf('.');
    return dot < 0 ? object.value(key) : object.value(key.left(dot)).toObject().value(key.mid(dot + 1));
}

template <typename Value>
int readMember(Value &held, const QJsonObject &object, const char *key, const Range &range, const Place &place)
{
    const Place here{&place, QString::fromLatin1(key)};
    const QJsonValue value = memberOf(object, here.key);
    return value.isUndefined() ? 0 : read(held, value, range, here);
}

template <HasTable Record>
int readRows(Record &record, const QJsonObject &object, const Place &place)
{
    int told = 0;
    forEachField<Record>(
        [&](const auto &row) { told += readMember(record.*row.member, object, row.key, row.range, place); });
    return told;
}

int read(DeviceInfo &unit, const QJsonValue &value, const Range &, const Place &place)
{
    static const Members members{{key::texts, {}}, {key::firmware, {}}, {key::numbers, {}}};
    const QJsonObject object = asObject(value, place);
    checkMembers(object, members, place);

    std::array texts{unit.firstText, unit.secondText};
    std::array numbers{unit.thirdNumber, unit.fourthNumber};
    int told = readMember(texts, object, key::texts, {}, place);
    told += readMember(numbers, object, key::numbers, range::any, place);
    std::tie(unit.firstText, unit.secondText) = std::tie(texts[0], texts[1]);
    std::tie(unit.thirdNumber, unit.fourthNumber) = std::tie(numbers[0], numbers[1]);

    const QJsonValue version = object.value(QLatin1String(key::firmware));
    if (version.isUndefined()) return told;
    const QStringList parts = version.toString().split('.');
    bool isMajor = false, isMinor = false;
    unit.firmwareMajor = parts.first().toInt(&isMajor);
    unit.firmwareMinor = parts.last().toInt(&isMinor);
    if (parts.size() != 2 || !isMajor || !isMinor)
        Place{&place, key::firmware}.refuse(QStringLiteral("a text like \"3.17\" is expected"));
    return told + 1;
}

class UnitReader
{
public:
    UnitReader(const QJsonObject &file, const UnitContent &base) : root(file), part{base, {}} {}

    UnitPart take()
    {
        checkHeader();
        UnitContent &content = part.content;
        readRecord(content.deviceInfo, key::unit, {RecordId::Kind::DeviceInfo});
        readRecord(content.settings, key::settings, {RecordId::Kind::Settings});
        readRecord(content.midiIn, key::midiIn, {RecordId::Kind::MidiIn});
        readRecord(content.expressionPedal, key::expressionPedal, {RecordId::Kind::ExpressionPedal});
        note({RecordId::Kind::SwitchOuts}, readRows(content.switchOuts, root, top));

        static const Members deviceMembers = membersOf<MidiDevice>({key::number});
        static const Members bankMembers = membersOf<BankData>({key::number, key::presets});
        static const Members presetMembers = membersOf<PresetData>({key::number});
        forEachNumbered(root, key::midiDevices, range::device, deviceMembers, top,
                        [&](int number, const QJsonObject &object, const Place &place) {
                            readNumbered({RecordId::Kind::MidiDevice, number}, object, place);
                        });
        forEachNumbered(root, key::banks, {0, bankCount - 1}, bankMembers, top,
                        [&](int bank, const QJsonObject &object, const Place &place) {
                            readNumbered({RecordId::Kind::Bank, bank}, object, place);
                            forEachNumbered(object, key::presets, range::preset, presetMembers, place,
                                            [&](int preset, const QJsonObject &inner, const Place &here) {
                                                readNumbered({RecordId::Kind::Preset, bank, preset}, inner, here);
                                            });
                        });
        return std::move(part);
    }

private:
    void checkHeader() const
    {
        static const Members members =
            membersOf<SwitchOutData>({key::format, key::version, key::saved, key::unit, key::settings, key::midiIn,
                                      key::expressionPedal, key::midiDevices, key::banks});
        if (root.value(QLatin1String(key::format)) != QLatin1String(formatName))
            Place{&top, key::format}.refuse(QStringLiteral("\"%1\" is expected").arg(formatName));
        const auto version = wholeNumber(root.value(QLatin1String(key::version)), 1, range::any.high);
        if (version != formatVersion)
            Place{&top, key::version}.refuse(version ? QStringLiteral("a later editor wrote this file")
                                                     : QStringLiteral("a whole number from 1 is expected"));
        checkMembers(root, members, top);
        const QJsonValue saved = root.value(QLatin1String(key::saved));
        if (!saved.isUndefined() && !QDateTime::fromString(saved.toString(), Qt::ISODate).isValid())
            Place{&top, key::saved}.refuse(QStringLiteral("a time like \"2026-11-24T20:12:20Z\" is expected"));
    }

    void note(const RecordId &id, int told)
    {
        if (told > 0) part.records.insert(id);
    }

    template <typename Record>
    void readRecord(Record &record, const char *key, const RecordId &id)
    {
        note(id, readMember(record, root, key, {}, top));
    }

    void readNumbered(const RecordId &id, const QJsonObject &object, const Place &place)
    {
        note(id, visitRecord(part.content, id, [&](auto &record) { return readRows(record, object, place); }));
    }

    /// Calls `visit(number, object, place)` with each object of an array whose objects tell their numbers.
    template <typename Visit>
    static void forEachNumbered(const QJsonObject &outer, const char *key, const Range &range, const Members &members,
                                const Place &place, const Visit &visit)
    {
        const QJsonValue value = outer.value(QLatin1String(key));
        if (value.isUndefined()) return;
        const Place listPlace{&place, key};
        const QJsonArray array = asArray(value, listPlace);
        std::set<int> numbers;
        for (int index = 0; index < array.size(); ++index) {
            const Place here{&listPlace, {}, index};
            const QJsonObject object = asObject(array.at(index), here);
            checkMembers(object, members, here);
            const Place numberPlace{&here, key::number};
            const auto number = wholeNumber(object.value(numberPlace.key), range.low, range.high);
            if (!number) numberPlace.refuse(expected(range));
            if (!numbers.insert(*number).second) numberPlace.refuse(QStringLiteral("%1 is told twice").arg(*number));
            visit(*number, object, here);
        }
    }

    const QJsonObject root;
    const Place top;
    UnitPart part;
};

}  // namespace

UnitPart archive::fromJson(const QByteArray &json, const UnitContent &base)
{
    if (json.size() > maxFileSize) throw Error("the file is too large");
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(json, &problem);
    if (problem.error != QJsonParseError::NoError)
        throw Error(QStringLiteral("line %1: %2")
                        .arg(json.left(problem.offset).count('\n') + 1)
                        .arg(problem.errorString())
                        .toStdString());
    if (!document.isObject()) throw Error("an object is expected");
    return UnitReader(document.object(), base).take();
}
