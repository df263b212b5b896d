#pragma once

#include "model/enumerations.h"

#include <tuple>
#include <type_traits>

// A setting is data: each record has a `Table` (in records.h) with one row for each of its members. What goes over the
// wire, into a file or before people's eyes is made from the rows.

/// "None" in every 8-bit field that names a MIDI channel, device, controller or program number.
inline constexpr std::uint8_t none = 255;
/// A control-change value that toggles between two values instead of setting one.
inline constexpr std::uint8_t toggleValue = 254;
/// A control-change value that sends nothing; written, it makes the unit drop the message.
inline constexpr std::uint8_t inactiveValue = 255;

/// The numbers that a member may hold. Enumerations and flags hold what has a label.
struct Range
{
    enum class Also : std::uint8_t { NothingElse, None, NoneOrZero, ToggleAndInactive };

    int low = 0;
    int high = 0;
    Also also = Also::NothingElse;

    constexpr bool contains(int number) const
    {
        return (number >= low && number <= high) || isNone(number) ||
               (also == Also::ToggleAndInactive && (number == toggleValue || number == inactiveValue));
    }
    /// Whether a number stands for none here.
    constexpr bool isNone(int number) const
    {
        return ((also == Also::None || also == Also::NoneOrZero) && number == none) ||
               (also == Also::NoneOrZero && number == 0);
    }
};

/// One row of a record's table.
template <typename Record, typename Member>
struct FieldOf
{
    char letter;  ///< on the wire; an array's values take this letter and those that follow it
    Member Record::*member;
    const char *key;        ///< in a file
    const char *name;       ///< for people; an array's values are told apart by a number from 1 behind it
    Range range{};          ///< of numbers
    char group = 0;         ///< the top-level field that this one is a sub-field of; 0: it is top-level itself
    bool optional = false;  ///< the unit leaves out what says nothing
    bool readOnly = false;  ///< set on the unit; a write does not carry it

    constexpr FieldOf in(char groupLetter) const
    {
        FieldOf row = *this;
        row.group = groupLetter;
        return row;
    }
    constexpr FieldOf mayBeAbsent() const
    {
        FieldOf row = *this;
        row.optional = true;
        return row;
    }
    constexpr FieldOf setOnTheUnit() const
    {
        FieldOf row = *this;
        row.readOnly = true;
        return row;
    }
};

template <typename Record, typename Member>
constexpr FieldOf<Record, Member> field(char letter, Member Record::*member, const char *key, const char *name,
                                        Range range = {})
{
    return {letter, member, key, name, range};
}

/// What is told of a record. `fields` is a tuple of rows in the order of the wire; a record with a command of its own
/// also has `read` and `write` (the commands), `place` (its name for people) and `eightBit` (whether its numbers go out
/// reduced to their low 8 bits).
template <typename Record>
struct Table;

template <typename Type>
concept HasTable = requires
{
    Table<Type>::fields;
};

template <typename Pointer>
struct MemberPointer;
template <typename RecordType, typename ValueType>
struct MemberPointer<ValueType RecordType::*>
{
    using Record = RecordType;
    using Value = ValueType;
};
template <auto Member>
using RecordOf = typename MemberPointer<decltype(Member)>::Record;
template <auto Member>
using ValueOf = typename MemberPointer<decltype(Member)>::Value;

template <auto Member, typename Record, typename Value>
constexpr bool isRowOf(const FieldOf<Record, Value> &row)
{
    if constexpr (std::is_same_v<Value Record::*, decltype(Member)>)
        return row.member == Member;
    else
        return false;
}

/// The row of a member: `rowOf<&Settings::keyboardType>()`.
template <auto Member, std::size_t Index = 0>
constexpr auto rowOf()
{
    constexpr auto row = std::get<Index>(Table<RecordOf<Member>>::fields);
    if constexpr (isRowOf<Member>(row))
        return row;
    else
        return rowOf<Member, Index + 1>();
}

/// The place of a member's row in its table, from 0.
template <auto Member, std::size_t Index = 0>
constexpr int rowIndexOf()
{
    if constexpr (isRowOf<Member>(std::get<Index>(Table<RecordOf<Member>>::fields)))
        return static_cast<int>(Index);
    else
        return rowIndexOf<Member, Index + 1>();
}

/// The place of a type in a tuple, from 0.
template <typename Type, typename Tuple, std::size_t Index = 0>
constexpr int indexOf()
{
    if constexpr (std::is_same_v<Type, std::tuple_element_t<Index, Tuple>>)
        return static_cast<int>(Index);
    else
        return indexOf<Type, Tuple, Index + 1>();
}

/// Calls `visit` with each row of the record's table, in the order of the wire.
template <HasTable Record, typename Visit>
constexpr void forEachField(Visit visit)
{
    std::apply([&](const auto &...rows) { (visit(rows), ...); }, Table<Record>::fields);
}

template <typename Record, typename Visit, std::size_t... Index>
void forEachMember(Visit visit, std::index_sequence<Index...> /*rows*/)
{
    (visit.template operator()<std::get<Index>(Table<Record>::fields).member>(), ...);
}

/// Calls `visit.operator()<Member>()` with each member that has a row: where the member itself is to be known to the
/// compiler.
template <HasTable Record, typename Visit>
void forEachMember(Visit visit)
{
    forEachMember<Record>(visit, std::make_index_sequence<std::tuple_size_v<decltype(Table<Record>::fields)>>());
}
