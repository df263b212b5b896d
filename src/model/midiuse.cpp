#include "model/midiuse.h"

#include "model/functionrules.h"

#include <algorithm>

bool sendsTo(const PresetData &preset, const MidiTarget &target)
{
    if (!sendsMidi(preset.footswitchFunction)) return false;
    const auto isMeant = [&](int device, int controller) {
        const bool isAny = target.controller == 0 && range::position.contains(controller);
        return device == target.device && (isAny || controller == target.controller);
    };
    const auto isSent = [&](const ControlChangeData &change) {
        return change.value != inactiveValue && isMeant(change.midiDeviceNumber, change.controllerNumber);
    };
    return std::ranges::any_of(preset.controlChanges, isSent) ||
           isMeant(preset.expressionPedal.midiDeviceNumber, preset.expressionPedal.controllerNumber) ||
           (target.controller == 0 && preset.programChanges.at(static_cast<std::size_t>(target.device) - 1) != none);
}

std::set<RecordId> usesOf(const UnitPart &part, const MidiTarget &target)
{
    std::set<RecordId> presets;
    for (const RecordId &id : part.records)
        if (id.kind == RecordId::Kind::Preset && sendsTo(recordOf<PresetData>(part.content, id), target))
            presets.insert(id);
    return presets;
}

std::vector<std::uint8_t> definedControllers(const MidiDevice &device)
{
    std::vector<std::uint8_t> positions;
    for (std::uint8_t position = 1; const Controller &controller : device.controllers) {
        if (controller.number != none) positions.push_back(position);
        ++position;
    }
    return positions;
}

bool drivesController(const PresetExpressionPedal &pedal)
{
    return !rowOf<&PresetExpressionPedal::midiDeviceNumber>().range.isNone(pedal.midiDeviceNumber) &&
           !rowOf<&PresetExpressionPedal::controllerNumber>().range.isNone(pedal.controllerNumber);
}
