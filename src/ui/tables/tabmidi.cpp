#include "ui/tables/tabmidi.h"

#include "model/functionrules.h"
#include "model/places.h"
#include "ui/dialogs/midieditorwindow.h"
#include "ui/namebutton.h"
#include "ui/tables/midisummary.h"

#include <QTableWidget>

#include <utility>

namespace {

constexpr int firstDeviceColumn = 4;

QVector<look::Column> withDevices(QVector<look::Column> columns)
{
    for (int device = 0; device < midiDeviceCount; ++device)
        columns.append({QStringLiteral("MIDI %1").arg(device + 1), 90});
    return columns;
}

}  // namespace

TabMidi::TabMidi(QTableWidget *tableWidget)
    : BankTable(tableWidget, withDevices(presetColumns(110)), 42, presetCount, 0), deviceButtons(midiDeviceCount)
{
    addPresetColumns();
    for (int device = 0; device < midiDeviceCount; ++device)
        for (int preset = 0; preset < presetCount; ++preset) {
            auto *button = new NameButton(table->viewport(), look::functionColor(FootswitchType::Preset));
            button->setAccessibleName(tr("MIDI %1 of preset %2").arg(device + 1).arg(preset));
            connect(button, &NameButton::clicked, this,
                    [this, preset, device] { deviceButtonClicked(preset, device); });
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
    if (!shown.data()) return;
    for (int device = 0; device < midiDeviceCount; ++device)
        if (const auto record = shown.data()->midiDevices[static_cast<std::size_t>(device)].load()) {
            const QString name = QString::fromStdString(record->name);
            for (NameButton *const button : std::as_const(deviceButtons[device]))
                button->setName(name);
        }
    toldDevices = {};
    refreshButtons();
}

void TabMidi::refreshButtons()
{
    if (!shown.data()) return;
    bool areSameDevices = true;
    for (std::size_t device = 0; device < toldDevices.size(); ++device) {
        auto definition = shown.data()->midiDevices[device].load();
        areSameDevices = areSameDevices && definition == toldDevices[device];
        toldDevices[device] = std::move(definition);
    }
    for (int preset = 0; preset < presetCount; ++preset) {
        auto &told = toldPresets[static_cast<std::size_t>(preset)];
        const auto record = shown.preset(preset);
        const bool isTold = areSameDevices && record && told && *record == *told;
        told = record;
        const QString color = record ? look::functionColor(record->footswitchFunction) : QString();
        if (isTold || color.isEmpty()) continue;
        const QString line = QStringLiteral("background-color: ") + color;
        for (int device = 0; device < midiDeviceCount; ++device) {
            NameButton *const button = deviceButtons[device][preset];
            look::setBackgroundLine(button, line);
            refreshButton(button, *record, device);
        }
    }
}

void TabMidi::refreshButton(NameButton *button, const PresetData &preset, int device)
{
    const bool sends = sendsMidi(preset.footswitchFunction);
    const auto &definition = toldDevices[static_cast<std::size_t>(device)];
    const QString summary = sends && definition ? midiSummary(preset, device + 1, *definition) : QString();
    const QString why = preset.footswitchFunction == FootswitchType::LoopModifier
                            ? tr("A loop modifier sends no MIDI")
                            : tr("A switch modifier sends no MIDI");
    QStringList lines{button->text(), sends ? summary : why};
    lines.removeAll(QString());
    button->setEnabled(sends);
    button->setMarked(!summary.isEmpty());
    button->setToolTip(plainToolTip(lines.join(QStringLiteral(": "))));
    button->setAccessibleDescription(sends ? summary : why);
}

std::shared_ptr<const PresetData> TabMidi::editableRecord(int bank, int preset) const
{
    if (!shown.data()) return nullptr;
    const auto stored =
        shown.data()->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset)).load();
    if (!stored || !sendsMidi(stored->footswitchFunction)) return nullptr;
    return std::make_shared<PresetData>(edits.expected({RecordId::Kind::Preset, bank, preset}, *stored));
}

void TabMidi::deviceButtonClicked(int preset, int device)
{
    const int bank = currentBank();
    const auto record = editableRecord(bank, preset);
    const auto definition =
        shown.data() ? shown.data()->midiDevices.at(static_cast<std::size_t>(device)).load() : nullptr;
    // Without its definition a device's messages cannot be shown, and what is not shown must not be replaced.
    if (!record || !definition) return;
    if (editor) editor->deleteLater();
    editor = new MidiEditorWindow(*record, *definition, device, table->window());
    editor->setPlace(places::preset(bank, preset), QString::fromStdString(record->name));
    editor->setObstacle([this, bank, preset] {
        QString outer = edits.obstacle();
        if (!outer.isEmpty() || editableRecord(bank, preset)) return outer;
        return tr("The unit does not hold this preset any more as it was when the editor was opened.");
    });
    if (editor->exec() != QDialog::Accepted) return;
    const MidiEdit edit = editor->edit();
    edits.submit(places::midiMessages(bank, preset, edit.device), {RecordId::Kind::Preset, bank, preset}, edit,
                 [this, bank, preset, edit] { return send(bank, preset, edit); });
}

bool TabMidi::send(int bank, int preset, const MidiEdit &edit)
{
    const auto stored =
        shown.data()->presetData.at(static_cast<std::size_t>(bank)).at(static_cast<std::size_t>(preset)).load();
    if (!stored) return false;
    if (const auto program = edit.programFor(*stored))
        emit changeProgramChangeNumber(bank, preset, edit.device - 1, *program);
    const auto list = edit.controlChangesFor(*stored);
    emit changeControlChangeData(bank, preset, QVector<ControlChangeData>(list.begin(), list.end()));
    if (const auto pedal = edit.pedalFor(*stored)) emit changePresetExpressionPedal(bank, preset, *pedal);
    return true;
}
