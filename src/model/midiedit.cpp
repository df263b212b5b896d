#include "model/midiedit.h"

#include "model/controlchanges.h"

#include <algorithm>

namespace {

using Values = std::map<std::uint8_t, std::uint8_t>;  // by controller

/// What the preset sends to the device once the edit is made.
Values valuesAfter(const MidiEdit &edit, const PresetData &stored)
{
    Values values;
    for (const ControlChangeData &record : stored.controlChanges)
        if (record.midiDeviceNumber == edit.device && record.value != inactiveValue)
            values[record.controllerNumber] = record.value;
    for (const auto &[controller, value] : edit.values)
        values[controller] = value;
    return values;
}

}  // namespace

std::optional<std::uint8_t> MidiEdit::programFor(const PresetData &stored) const
{
    return program == stored.programChanges.at(device - 1U) ? std::nullopt : program;
}

std::vector<ControlChangeData> MidiEdit::controlChangesFor(const PresetData &stored) const
{
    const Values wanted = valuesAfter(*this, stored);
    std::vector<ControlChangeData> dropped;
    std::vector<ControlChangeData> others;
    std::vector<ControlChangeData> chosen;
    const auto valueOf = [&](std::uint8_t controller) {
        const auto found = wanted.find(controller);
        return found == wanted.end() ? inactiveValue : found->second;
    };
    const auto isDefined = [&](std::uint8_t controller) {
        return std::find(controllers.begin(), controllers.end(), controller) != controllers.end();
    };
    for (const ControlChangeData &record : stored.controlChanges) {
        const std::uint8_t controller = record.controllerNumber;
        if (record.midiDeviceNumber != device) {
            if (!isFiller(record)) others.push_back(record);
        } else if (isDefined(controller) && valueOf(controller) == inactiveValue) {
            dropped.emplace_back(device, controller, inactiveValue);
        }
    }
    for (const std::uint8_t controller : controllers)
        if (valueOf(controller) != inactiveValue) chosen.emplace_back(device, controller, valueOf(controller));

    // What only drops a message of another device once more gives way to a value.
    if (dropped.size() + others.size() + chosen.size() > maxControlChanges)
        std::erase_if(others, [](const ControlChangeData &record) { return record.value == inactiveValue; });

    std::vector<ControlChangeData> list = std::move(dropped);
    list.insert(list.end(), others.begin(), others.end());
    list.insert(list.end(), chosen.begin(), chosen.end());
    if (list.size() > maxControlChanges) list.resize(maxControlChanges);
    fillUp(list);
    return list;
}

std::optional<PresetExpressionPedal> MidiEdit::pedalFor(const PresetData &stored) const
{
    if (controllers.empty()) return std::nullopt;
    PresetExpressionPedal changed = stored.expressionPedal;
    if (changed.midiDeviceNumber != device) {
        if (pedal.controller.value_or(none) == none) return std::nullopt;
        changed.midiDeviceNumber = device;
    }
    changed.controllerNumber = pedal.controller.value_or(changed.controllerNumber);
    changed.characteristic = pedal.characteristic.value_or(changed.characteristic);
    changed.toeUp = pedal.toeUp.value_or(changed.toeUp);
    changed.toeDown = pedal.toeDown.value_or(changed.toeDown);
    return changed;
}

PresetData MidiEdit::appliedTo(PresetData preset) const
{
    const auto newProgram = programFor(preset);
    const auto newPedal = pedalFor(preset);
    preset.controlChanges = controlChangesFor(preset);
    if (newProgram) preset.programChanges.at(device - 1U) = *newProgram;
    if (newPedal) preset.expressionPedal = *newPedal;
    return preset;
}
