#pragma once

#include "model/differences.h"

#include <QStringList>

#include <memory>
#include <variant>

template <typename Record>
using Shared = std::shared_ptr<const Record>;
/// A record that a user may change, of any type; never null.
using AnyRecord = std::variant<Shared<Settings>, Shared<MidiInData>, Shared<ExpressionPedalData>, Shared<SwitchOutData>,
                               Shared<MidiDevice>, Shared<BankData>, Shared<PresetData>>;

/// The kind of a record of this type.
template <typename Record>
inline constexpr RecordId::Kind kindOf =
    static_cast<RecordId::Kind>(indexOf<Record, std::tuple<DeviceInfo, Settings, MidiInData, ExpressionPedalData,
                                                           SwitchOutData, MidiDevice, BankData, PresetData>>());

/// One record of the unit before and after a change, as it is told between threads and kept in the history. Records
/// are shared, never altered.
struct RecordChange
{
    struct Versions
    {
        AnyRecord before;
        AnyRecord after;
    };

    RecordId id;
    Versions replaced;        ///< if the unit replaces its lists of control changes by those that are written
    Versions merged;          ///< if it merges them
    bool isConfirmed = true;  ///< false when the unit's answer was lost: it may still hold what was before
};

/// Calls `visit` with two records of the same type.
template <typename Visit>
void visitBoth(const AnyRecord &one, const AnyRecord &other, const Visit &visit)
{
    std::visit([&](const auto &first) { visit(*first, *std::get<std::decay_t<decltype(first)>>(other)); }, one);
}

/// Makes a record hold what was changed from `before` to `after`, where it holds what was before; adds the places of
/// values that it holds otherwise to `stayed`. A list of control changes that sends the same then becomes the same.
template <typename Record>
void takeOver(const RecordId &id, Record &record, const Record &before, const Record &after, QStringList &stayed)
{
    const auto take = [&](const ValuePlace &place, const auto &row, auto &value, const auto &from, const auto &to) {
        if (row.readOnly || from == to || value == to) return;
        if (isSame(value, from, row.range))
            value = to;
        else if (!isSame(value, to, row.range))
            stayed << places::value(id, place);
    };
    forEachValue(take, record, before, after);
    if constexpr (std::is_same_v<Record, PresetData>)
        if (living(before.controlChanges) != living(after.controlChanges) &&
            messagesOf(record.controlChanges) == messagesOf(after.controlChanges))
            record.controlChanges = living(after.controlChanges);
}

/// Puts one change of a record behind another, whose outcome it may not know if the answer was lost.
void append(RecordChange &whole, const RecordChange &next);
/// What the change altered: only what may be written.
std::vector<Difference> writableDifferences(const RecordChange &change);
/// The way back.
RecordChange reversed(const RecordChange &change);
