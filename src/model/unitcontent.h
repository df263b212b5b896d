#pragma once

#include "model/records.h"

#include <array>
#include <compare>
#include <set>
#include <type_traits>
#include <utility>
#include <vector>

/// Everything that a musician may set on a unit, and what it tells of itself: all that it holds but the firmware image.
struct UnitContent
{
    bool operator==(const UnitContent &) const = default;

    DeviceInfo deviceInfo;
    std::array<BankData, bankCount> banks;                               ///< by bank index
    std::array<std::array<PresetData, presetCount>, bankCount> presets;  ///< by bank, then preset index
    std::array<MidiDevice, midiDeviceCount> midiDevices;                 ///< slot = device number - 1
    MidiInData midiIn;
    ExpressionPedalData expressionPedal;
    SwitchOutData switchOuts;
    Settings settings;
};

/// Names one record of a unit. The order of the kinds is the order in which a unit is read and written.
struct RecordId
{
    enum class Kind { DeviceInfo, Settings, MidiIn, ExpressionPedal, SwitchOuts, MidiDevice, Bank, Preset };

    auto operator<=>(const RecordId &) const = default;  // NOLINT(modernize-use-nullptr): it takes the 0 within for one

    Kind kind = Kind::DeviceInfo;
    int number = 0;  ///< of a MIDI device, 1 to 10; of a bank, or of a preset's bank, 0 to 99; else 0
    int preset = 0;  ///< 0 to 9; else 0
};

/// Calls `visit` with the record that `id` names in a content (const or not). A number out of range throws
/// `std::out_of_range`.
template <typename Content, typename Visit>
decltype(auto) visitRecord(Content &content, const RecordId &id, Visit visit)
{
    const auto number = static_cast<std::size_t>(id.number);
    switch (id.kind) {
    case RecordId::Kind::DeviceInfo:
        return visit(content.deviceInfo);
    case RecordId::Kind::Settings:
        return visit(content.settings);
    case RecordId::Kind::MidiIn:
        return visit(content.midiIn);
    case RecordId::Kind::ExpressionPedal:
        return visit(content.expressionPedal);
    case RecordId::Kind::SwitchOuts:
        return visit(content.switchOuts);
    case RecordId::Kind::MidiDevice:
        return visit(content.midiDevices.at(number - 1));
    case RecordId::Kind::Bank:
        return visit(content.banks.at(number));
    case RecordId::Kind::Preset:
        break;
    }
    return visit(content.presets.at(number).at(static_cast<std::size_t>(id.preset)));
}

/// The record that `id` names, for whoever knows its type.
template <typename Record, typename Content>
auto &recordOf(Content &content, const RecordId &id)
{
    using Result = std::conditional_t<std::is_const_v<Content>, const Record, Record>;
    return *visitRecord(content, id, []<typename Found>(Found &found) -> Result * {
        if constexpr (std::is_same_v<std::remove_const_t<Found>, Record>)
            return &found;
        else
            return nullptr;
    });
}

/// Calls `visit` with the record that `id` names in both of two contents.
template <typename Content, typename Visit>
void visitRecords(Content &content, const UnitContent &other, const RecordId &id, const Visit &visit)
{
    visitRecord(content, id, [&]<typename Record>(Record &record) {
        visitRecord(other, id, [&](const auto &same) {
            if constexpr (std::is_same_v<const Record &, decltype(same)>) visit(record, same);
        });
    });
}

/// A bank and its ten presets.
std::set<RecordId> recordsOfBank(int bank);
std::set<RecordId> recordsOfBanks(const std::set<int> &banks);
std::set<RecordId> allMidiDevices();
/// All 1,115 records of a unit, its identity among them.
const std::set<RecordId> &allRecords();

/// What a unit holds once it is cleared: no names, plain presets that switch everything off, MIDI devices without
/// controllers, the first choice of each global setting, the pedal from 0 to 127. What is set on the unit stays
/// default.
UnitContent emptyContent();

/// Some of a unit's records: what a file tells, what has been read.
struct UnitPart
{
    bool operator==(const UnitPart &) const = default;

    UnitContent content;         ///< defaults where nothing is known
    std::set<RecordId> records;  ///< which of them are known
};
