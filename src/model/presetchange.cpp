#include "model/presetchange.h"

#include "model/controlchanges.h"
#include "model/differences.h"
#include "model/functionrules.h"
#include "model/midiuse.h"

#include <QByteArray>

namespace {

// --- What each change makes of a preset, whatever its function

void alter(PresetData &preset, const FunctionChange &change) { preset.footswitchFunction = change.function; }

void alter(PresetData &preset, const LoopChange &change)
{
    (change.loop == 0 ? preset.bufferLoop : preset.loops.at(static_cast<std::size_t>(change.loop) - 1)) = change.state;
}

void alter(PresetData &preset, const SwitchChange &change)
{
    preset.switches.at(static_cast<std::size_t>(change.number) - 1) = change.state;
}

void alter(PresetData &preset, const ProgramChange &change)
{
    preset.programChanges.at(static_cast<std::size_t>(change.device) - 1) = change.program;
}

void alter(PresetData &preset, const ControlChange &change)
{
    const std::uint8_t held = valueIn(messagesOf(preset.controlChanges), {change.device, change.controller});
    if (held != change.value && held == change.where.value_or(held))
        setMessage(preset.controlChanges, {change.device, change.controller, change.value});
}

void alter(PresetData &preset, const PedalChange &change)
{
    PresetExpressionPedal changed = preset.expressionPedal;
    if (!drivesController(changed)) changed = {none, none, ExpressionPedalCharacteristic::Linear, 0, 127};
    changed.midiDeviceNumber = change.device.value_or(changed.midiDeviceNumber);
    changed.controllerNumber = change.controller.value_or(changed.controllerNumber);
    if (drivesController(changed)) {
        changed.characteristic = change.characteristic.value_or(changed.characteristic);
        changed.toeUp = change.toeUp.value_or(changed.toeUp);
        changed.toeDown = change.toeDown.value_or(changed.toeDown);
        preset.expressionPedal = changed;
    } else if (drivesController(preset.expressionPedal)) {
        preset.expressionPedal.controllerNumber = none;
    }
}

void alter(PresetData &preset, const NameChange &change)
{
    preset.name = QByteArray::fromStdString(preset.name)
                      .replace(QByteArray::fromStdString(change.text), QByteArray::fromStdString(change.replacement))
                      .toStdString();
}

// --- What functions allow

bool isAllowed(FootswitchType, const FunctionChange &) { return true; }
bool isAllowed(FootswitchType, const NameChange &) { return true; }

bool isAllowed(FootswitchType function, const LoopChange &change)
{
    return allows(allowedStates<LoopType>, function, toIndex(change.state));
}

bool isAllowed(FootswitchType function, const SwitchChange &change)
{
    return allows(allowedStates<SwitchType>, function, toIndex(change.state));
}

template <typename MidiChange>
bool isAllowed(FootswitchType function, const MidiChange &)
{
    return sendsMidi(function);
}

// --- For people: what changes, and to what

QString wordsOf(const FunctionChange &change)
{
    return QStringLiteral("FOOTSWITCH FUNCTION TO %1").arg(textOf(change.function, {}));
}

QString wordsOf(const LoopChange &change)
{
    const QString loop = change.loop == 0 ? QStringLiteral("BUFFER") : QStringLiteral("LOOP %1").arg(change.loop);
    return QStringLiteral("%1 TO %2").arg(loop, textOf(change.state, {}));
}

QString wordsOf(const SwitchChange &change)
{
    return QStringLiteral("SWITCH %1 TO %2").arg(QString::number(change.number), textOf(change.state, {}));
}

QString wordsOf(const ProgramChange &change)
{
    return QStringLiteral("PROGRAM CHANGE OF MIDI %1 TO %2")
        .arg(QString::number(change.device), textOf(change.program, range::program));
}

QString wordsOf(const ControlChange &change)
{
    const auto text = [](std::uint8_t value) { return textOf(value, range::controlValue); };
    return QStringLiteral("MIDI %1 CONTROLLER %2%3 TO %4")
        .arg(QString::number(change.device), QString::number(change.controller),
             change.where ? QStringLiteral(" FROM ") + text(*change.where) : QString(), text(change.value));
}

QString wordsOf(const PedalChange &) { return QStringLiteral("EXPRESSION PEDAL"); }

QString wordsOf(const NameChange &change)
{
    return QStringLiteral("\"%1\" TO \"%2\" IN NAMES")
        .arg(QString::fromStdString(change.text), QString::fromStdString(change.replacement));
}

std::set<RecordId> presetsIn(const std::set<RecordId> &selection)
{
    std::set<RecordId> presets;
    for (const RecordId &id : selection)
        if (id.kind == RecordId::Kind::Preset) presets.insert(id);
    return presets;
}

PresetData &presetOf(UnitContent &content, const RecordId &id)
{
    return content.presets.at(static_cast<std::size_t>(id.number)).at(static_cast<std::size_t>(id.preset));
}

}  // namespace

ChangeOutcome makeChange(PresetData &preset, const PresetChange &change)
{
    PresetData changed = preset;
    std::visit([&](const auto &each) { alter(changed, each); }, change);
    if (changed == preset) return ChangeOutcome::Same;
    if (!std::visit([&](const auto &each) { return isAllowed(preset.footswitchFunction, each); }, change))
        return ChangeOutcome::NotAllowed;
    if (changed.controlChanges != preset.controlChanges && changed.controlChanges.size() > maxControlChanges)
        return ChangeOutcome::NoRoom;
    preset = std::move(changed);
    return ChangeOutcome::Made;
}

Arrangement arrange::change(const std::set<RecordId> &selection, const PresetChange &change)
{
    const QString what = std::visit([](const auto &each) { return wordsOf(each); }, change);
    const std::set<RecordId> presets = presetsIn(selection);
    return {QStringLiteral("CHANGE %1 IN %2").arg(what, nameOf(selection)), presets,
            [presets, change](UnitContent &content) {
                for (const RecordId &id : presets)
                    makeChange(presetOf(content, id), change);
            }};
}

arrange::ChangeCount arrange::countOf(const PresetChange &change, const std::set<RecordId> &selection,
                                      const UnitPart &part)
{
    ChangeCount count;
    UnitContent altered = part.content;
    std::set<RecordId> changed;
    for (const RecordId &id : presetsIn(selection)) {
        if (!part.records.contains(id)) continue;
        switch (makeChange(presetOf(altered, id), change)) {
        case ChangeOutcome::Same:
            break;
        case ChangeOutcome::Made:
            changed.insert(id);
            break;
        case ChangeOutcome::NotAllowed:
            ++count.notAllowed;
            break;
        case ChangeOutcome::NoRoom:
            ++count.noRoom;
            break;
        }
    }
    count.presets = static_cast<int>(changed.size());
    count.values = static_cast<int>(writableDifferences(part.content, altered, changed).size());
    return count;
}
