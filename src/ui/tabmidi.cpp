#include "ui/tabmidi.h"

#include "ui/controlchangelist.h"
#include "ui/midieditorwindow.h"
#include "ui/namebutton.h"

#include <QTableWidget>

#include <algorithm>

namespace {

constexpr int firstDeviceColumn = 4;

QVector<look::Column> columns()
{
    QVector<look::Column> all{{"B", 35}, {"P", 35}, {"BANK NAME", 110}, {"PRESET NAME", 110}};
    for (int device = 0; device < midiDeviceCount; ++device)
        all.append({QStringLiteral("MIDI %1").arg(device + 1), 90});
    return all;
}

}  // namespace

TabMidi::TabMidi(QTableWidget *tableWidget)
    : BankTable(tableWidget, columns(), 42, presetCount, 0), deviceButtons(midiDeviceCount)
{
    addNumbers(1, 0);
    addBankNames(2);
    addPresetNames(3);
    for (int device = 0; device < midiDeviceCount; ++device)
        for (int preset = 0; preset < presetCount; ++preset) {
            auto *button = new NameButton(look::functionColor(FootswitchType::Preset));
            button->setAccessibleName(tr("MIDI %1 of preset %2").arg(device + 1).arg(preset));
            connect(button, &NameButton::clicked, this, &TabMidi::deviceButtonClicked);
            place(preset, firstDeviceColumn + device, button);
            deviceButtons[device] << button;
        }
    look::orderTabs(table);
}

void TabMidi::loadDataFromDevice(DataFromDevice *dataFromDevice)
{
    BankTable::loadDataFromDevice(dataFromDevice);
    emit getMidiDevicesData();
}

void TabMidi::gotMidiDevicesData()
{
    if (!data) return;
    for (int device = 0; device < midiDeviceCount; ++device)
        if (const auto record = data->midiDevices[static_cast<std::size_t>(device)].load()) {
            const QString name = QString::fromStdString(record->name);
            for (NameButton *const button : qAsConst(deviceButtons[device]))
                button->setName(name);
        }
}

void TabMidi::changeButtonColors()
{
    for (int preset = 0; preset < presetCount; ++preset) {
        const auto record = presetRecord(preset);
        const QString color = record ? look::functionColor(record->footswitchFunction) : QString();
        if (color.isEmpty()) continue;
        for (const auto &buttons : qAsConst(deviceButtons))
            look::setBackgroundLine(buttons[preset], QStringLiteral("background-color: ") + color);
    }
}

std::shared_ptr<const PresetData> TabMidi::editableRecord(int bank, int preset) const
{
    if (!data) return nullptr;
    auto record = data->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset)).load();
    const bool editable = record && (record->footswitchFunction == FootswitchType::Preset ||
                                     record->footswitchFunction == FootswitchType::MidiModifier);
    return editable ? record : nullptr;
}

void TabMidi::deviceButtonClicked()
{
    for (int device = 0; device < midiDeviceCount; ++device) {
        const auto &buttons = deviceButtons[device];
        const auto button = std::find(buttons.begin(), buttons.end(), sender());
        if (button != buttons.end()) {
            edit(currentBank(), static_cast<int>(button - buttons.begin()), device);
            return;
        }
    }
}

void TabMidi::edit(int bank, int preset, int device)
{
    const auto slot = static_cast<std::size_t>(device);
    // Without its definition a device's messages cannot be shown, and what is not shown must not be replaced.
    if (!editableRecord(bank, preset) || !data->midiDevices.at(slot).load()) return;
    if (editor) editor->deleteLater();
    editor = new MidiEditorWindow(data, bank, preset, device, table->window());
    if (editor->exec() != QDialog::Accepted) return;

    // Meanwhile the unit may have changed the preset or another unit may have come.
    const auto stored = editableRecord(bank, preset);
    if (!stored) return;
    const auto program = editor->programChange();
    if (program && *program != stored->programChanges.at(slot))
        emit changeProgramChangeNumber(bank, preset, device, *program);
    emit changeControlChangeData(
        bank, preset, newControlChanges(stored->controlChanges, device + 1, editor->controllerChoices(), preset));
    if (const auto pedal = editor->changedPedal(stored->expressionPedal))
        emit changePresetExpressionPedal(bank, preset, *pedal);
}
