#pragma once

#include "model/controlchanges.h"
#include "model/unitcontent.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// Every value that a unit holds, one by one, as the tables of its records tell (records.h): what compares, describes
// and alters contents goes through here.

/// Which value of a record. The messages that a preset's control changes send count as values, one for each controller
/// of each MIDI device.
struct ValueId
{
    auto operator<=>(const ValueId &) const = default;  // NOLINT(modernize-use-nullptr): it takes the 0 within for one

    int row = 0;   ///< in the record's table, from 0
    int slot = 0;  ///< in an array, from 0; of a control change the MIDI device's number
    int part = 0;  ///< in the table of a record within, from 0; of a control change the controller's number
};

/// Where a walk over a record is.
struct ValuePlace
{
    ValueId id;
    const char *name = nullptr;    ///< the value's, for people
    const char *within = nullptr;  ///< the name of the record within that holds the value, if one does
    bool numbered = false;         ///< whether the value, or the record within, is one of an array
};

/// A value as people see it.
struct ShownValue
{
    ValueId id;
    QString place;  ///< "BANK 3, PRESET 4: LOOP 2"
    QString text;   ///< "TOGGLE", "12", "NONE"
    bool writable = false;
    bool inRange = false;
};

/// Every value of one record of a content, in the order of its table.
std::vector<ShownValue> valuesOf(const UnitContent &content, const RecordId &id);

/// The word for a value of an enumeration or a flag; null for a value that has none.
template <typename Enum>
const QString *labelOf(Enum value)
{
    const auto index = static_cast<std::int64_t>(value) - firstValue<Enum>;
    return index >= 0 && index < labels<Enum>().size() ? &labels<Enum>()[static_cast<int>(index)] : nullptr;
}

/// The word for a number with a meaning of its own in this range, "NONE", "TOGGLE" or "INACTIVE"; else null.
const char *wordFor(int number, const Range &range);

/// The characters of a UTF-8 text; nothing for bytes that are none, or that do not come back from the characters.
std::optional<QString> charactersOf(const std::string &text);

/// A typed name as it is sent and stored: UTF-8, without the control bytes that would break a frame.
std::string nameText(const QString &name);

/// Whether a frame can carry a text: it has none of the bytes that part a frame.
bool fitsFrame(std::string_view text);

/// A text as it stands or, where it would not show what it is (empty, blanks at its ends, control characters, bytes
/// that are not UTF-8), in quotes with escapes.
QString textOf(const std::string &text, const Range &);
QString textOf(int number, const Range &range);
template <typename Enum>
requires(std::is_enum_v<Enum> || std::is_same_v<Enum, bool>) QString textOf(Enum value, const Range &)
{
    const QString *label = labelOf(value);
    return label ? *label : QString::number(static_cast<int>(value));
}

template <typename Value>
bool isInRange(const Value &value, const Range &range)
{
    if constexpr (std::is_same_v<Value, std::string>)
        return fitsFrame(value);
    else if constexpr (std::is_enum_v<Value> || std::is_same_v<Value, bool>)
        return labelOf(value) != nullptr;
    else
        return range.contains(value);
}

/// Whether two values mean the same: equal, or both none.
template <typename Value>
bool isSame(const Value &one, const Value &other, const Range &range)
{
    if constexpr (std::is_same_v<Value, std::uint8_t>)
        return one == other || (range.isNone(one) && range.isNone(other));
    else
        return one == other;
}

/// Whether a write may carry the value. What is out of range may be tried: a newer unit may have told it.
template <typename Row, typename Value>
bool isWritable(const Row &row, const Value &value)
{
    if constexpr (std::is_same_v<Value, std::string>)
        return !row.readOnly && fitsFrame(value);
    else
        return !row.readOnly;
}

namespace values_detail {

inline std::uint8_t valueIn(const Messages &messages, const Messages::key_type &controller)
{
    const auto found = messages.find(controller);
    return found == messages.end() ? inactiveValue : found->second;
}

template <typename List>
void store(List &list, const Messages::key_type &controller, std::uint8_t value)
{
    if constexpr (!std::is_const_v<List>)
        if (valueIn(messagesOf(list), controller) != value)
            setMessage(list, {controller.first, controller.second, value});
}

template <typename Visit, typename... Lists>
void walkControlChanges(ValuePlace place, const Visit &visit, Lists &...lists)
{
    std::set<Messages::key_type> controllers;
    for (const auto &messages : {messagesOf(lists)...})
        for (const auto &message : messages)
            controllers.insert(message.first);
    for (const Messages::key_type &controller : controllers) {
        place.id.slot = controller.first;
        place.id.part = controller.second;
        const auto visitWith = [&](auto... values) {
            visit(place, rowOf<&ControlChangeData::value>(), values...);
            (store(lists, controller, values), ...);
        };
        visitWith(valueIn(messagesOf(lists), controller)...);
    }
}

template <typename Row, typename Visit, typename First, typename... Others>
void walk(ValuePlace place, const Row &row, const Visit &visit, First &first, Others &...others)
{
    using Value = std::remove_const_t<First>;
    if constexpr (HasTable<Value>) {
        place.within = row.name;
        place.id.part = 0;
        forEachField<Value>([&](const auto &inner) {
            place.name = inner.name;
            visit(place, inner, first.*inner.member, others.*inner.member...);
            ++place.id.part;
        });
    } else if constexpr (std::is_same_v<Value, std::vector<ControlChangeData>>) {
        walkControlChanges(place, visit, first, others...);
    } else if constexpr (requires { std::tuple_size<Value>::value; }) {
        place.numbered = true;
        for (std::size_t slot = 0; slot < first.size(); ++slot) {
            place.id.slot = static_cast<int>(slot);
            walk(place, row, visit, first[slot], others[slot]...);
        }
    } else {
        visit(place, row, first, others...);
    }
}

}  // namespace values_detail

/// Calls `visit(place, row, value...)` with every value of one record, or with the same value of several records of the
/// same type. The values of a record that is not const may be altered. A controller to which one of the records sends
/// a control change has a value in all of them, `inactiveValue` where it is sent none.
template <typename Visit, typename First, typename... Others>
void forEachValue(const Visit &visit, First &first, Others &...others)
{
    ValuePlace place;
    forEachField<std::remove_const_t<First>>([&](const auto &row) {
        place.name = row.name;
        values_detail::walk(place, row, visit, first.*row.member, others.*row.member...);
        ++place.id.row;
    });
}
