#include "model/devicemoves.h"

#include "model/controlchanges.h"
#include "model/differences.h"
#include "model/places.h"

#include <algorithm>
#include <stdexcept>

namespace {

using Kind = RecordId::Kind;

/// How presets name a controller of a device.
struct Name
{
    auto operator<=>(const Name &) const = default;  // NOLINT(modernize-use-nullptr): it takes the 0 within for one

    std::uint8_t device;
    std::uint8_t controller;
};

/// What is called so before is called so afterwards.
using Renaming = std::function<Name(const Name &)>;

/// What moves takes the place of what stays.
void rename(std::vector<ControlChangeData> &list, const Renaming &renamed)
{
    const auto nameOf = [](const ControlChangeData &record) {
        return Name{record.midiDeviceNumber, record.controllerNumber};
    };
    std::set<Name> taken;
    std::vector<ControlChangeData> sent = living(list);
    for (const ControlChangeData &record : sent)
        if (const Name name = nameOf(record); renamed(name) != name) taken.insert(renamed(name));
    if (taken.empty()) return;
    std::erase_if(sent, [&](const ControlChangeData &record) {
        const Name name = nameOf(record);
        return renamed(name) == name && taken.contains(name);
    });
    for (ControlChangeData &record : sent) {
        const auto [device, controller] = renamed(nameOf(record));
        record.midiDeviceNumber = device;
        record.controllerNumber = controller;
    }
    list = std::move(sent);
}

void rename(std::array<std::uint8_t, midiDeviceCount> &programs, const Renaming &renamed)
{
    const auto before = programs;
    const auto movedTo = [&](std::size_t slot) {
        return std::size_t{renamed({static_cast<std::uint8_t>(slot + 1), none}).device} - 1;
    };
    for (std::size_t slot = 0; slot < before.size(); ++slot)
        if (movedTo(slot) != slot) programs.at(slot) = none;
    for (std::size_t slot = 0; slot < before.size(); ++slot)
        if (before[slot] != none && movedTo(slot) != slot) programs.at(movedTo(slot)) = before[slot];
}

template <typename Pedal>
void renamePedal(Pedal &pedal, const Renaming &renamed)
{
    const auto [device, controller] = renamed({pedal.midiDeviceNumber, pedal.controllerNumber});
    pedal.midiDeviceNumber = device;
    pedal.controllerNumber = controller;
}

void carryAlong(UnitContent &content, const Renaming &renamed)
{
    for (auto &bank : content.presets)
        for (PresetData &preset : bank) {
            rename(preset.controlChanges, renamed);
            rename(preset.programChanges, renamed);
            renamePedal(preset.expressionPedal, renamed);
        }
    renamePedal(content.expressionPedal, renamed);
}

/// These devices and, if something is carried along, all that may name them.
std::set<RecordId> recordsOf(std::initializer_list<int> devices, bool carriesAlong)
{
    std::set<RecordId> records;
    for (const int number : devices)
        records.insert({Kind::MidiDevice, number});
    if (!carriesAlong) return records;
    for (const RecordId &id : allRecords())
        if (id.kind == Kind::Preset || id.kind == Kind::ExpressionPedal) records.insert(id);
    return records;
}

void requireDevice(int number)
{
    if (!range::device.contains(number)) throw std::out_of_range("MIDI device");
}

MidiDevice &deviceOf(UnitContent &content, int number)
{
    return content.midiDevices.at(static_cast<std::size_t>(number) - 1);
}

/// The position, from 1, at which a controller stands then; what is none stays it.
std::uint8_t positionIn(const ControllerOrder &order, std::uint8_t position)
{
    const auto found = std::ranges::find(order, std::size_t{position} - 1);
    return found == order.end() ? position : static_cast<std::uint8_t>(found - order.begin() + 1);
}

}  // namespace

Arrangement arrange::swapDevices(int one, int other, bool carriesAlong)
{
    requireDevice(one);
    requireDevice(other);
    return {QStringLiteral("SWAP MIDI DEVICE %1 WITH %2").arg(one).arg(other), recordsOf({one, other}, carriesAlong),
            [=](UnitContent &content) {
                std::swap(deviceOf(content, one), deviceOf(content, other));
                if (!carriesAlong) return;
                carryAlong(content, [=](const Name &name) {
                    const int device = name.device == one ? other : name.device == other ? one : name.device;
                    return Name{static_cast<std::uint8_t>(device), name.controller};
                });
            }};
}

Arrangement arrange::pasteDevice(const MidiDevice &definition, int to, std::optional<int> carriedFrom)
{
    requireDevice(to);
    if (carriedFrom) requireDevice(*carriedFrom);
    return {QStringLiteral("PASTE MIDI DEVICE %1").arg(to), recordsOf({to}, carriedFrom.has_value()),
            [=](UnitContent &content) {
                deviceOf(content, to) = definition;
                if (!carriedFrom) return;
                carryAlong(content, [=](const Name &name) {
                    return name.device == *carriedFrom ? Name{static_cast<std::uint8_t>(to), name.controller} : name;
                });
            }};
}

Arrangement arrange::reorderControllers(int device, const ControllerEdit &edit, const ControllerOrder &order,
                                        bool carriesAlong)
{
    requireDevice(device);
    return {QStringLiteral("MOVE CONTROLLERS OF MIDI DEVICE %1").arg(device), recordsOf({device}, carriesAlong),
            [=](UnitContent &content) {
                MidiDevice &altered = deviceOf(content, device);
                altered = edit.appliedTo(std::move(altered));
                const auto before = altered.controllers;
                for (std::size_t place = 0; place < order.size(); ++place)
                    altered.controllers[place] = before.at(order[place]);
                if (!carriesAlong) return;
                altered.tapController = positionIn(order, altered.tapController);
                carryAlong(content, [=](const Name &name) {
                    return name.device == device ? Name{name.device, positionIn(order, name.controller)} : name;
                });
            }};
}

QStringList arrange::collisions(const UnitContent &content, int from, int to)
{
    QStringList found;
    if (from == to) return found;
    for (const RecordId &id : allRecords()) {
        if (id.kind != Kind::Preset) continue;
        const auto &preset = recordOf<PresetData>(content, id);
        const Messages messages = messagesOf(preset.controlChanges);
        for (const auto &message : messages) {
            const auto [device, controller] = message.first;
            if (device == from && messages.contains({static_cast<std::uint8_t>(to), controller}))
                found << places::value(id, {{rowIndexOf<&PresetData::controlChanges>(), to, controller}});
        }
        const auto sends = [&](int device) {
            return preset.programChanges.at(static_cast<std::size_t>(device) - 1) != none;
        };
        if (sends(from) && sends(to))
            found << places::value(id, {{rowIndexOf<&PresetData::programChanges>(), to - 1},
                                        rowOf<&PresetData::programChanges>().name,
                                        nullptr,
                                        true});
    }
    return found;
}

arrange::Impact arrange::impactOf(const Arrangement &arrangement, const UnitContent &content)
{
    UnitContent altered = content;
    arrangement.alter(altered);
    const auto values = writableDifferences(content, altered, arrangement.records);
    std::set<RecordId> presets;
    for (const Difference &value : values)
        if (value.record.kind == Kind::Preset) presets.insert(value.record);
    return {static_cast<int>(presets.size()), static_cast<int>(values.size())};
}
