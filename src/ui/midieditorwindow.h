#pragma once

#include "ui/controlchangelist.h"
#include "ui/mididevicedialog.h"

#include <optional>

class QComboBox;
class QVBoxLayout;

/// Edits what a preset sends to one MIDI device: program change, control changes, expression pedal. It sends nothing
/// itself.
class MidiEditorWindow : public MidiDeviceDialog
{
    Q_OBJECT

public:
    /// Shows what `model` holds now (all indices count from 0) and does not use `model` afterwards.
    MidiEditorWindow(DataFromDevice *model, int bank, int preset, int device, QWidget *parent);

    /// The program change chosen, 1 to 128 or `none`; nothing when the stored one has no item and none was chosen.
    std::optional<std::uint8_t> programChange() const;
    /// The value chosen for each defined controller of the device.
    QVector<ControllerChoice> controllerChoices() const;
    /// The pedal assignment that the choices make of the stored one; nothing when it stays with another device or the
    /// device has no controllers.
    std::optional<PresetExpressionPedal> changedPedal(const PresetExpressionPedal &stored) const;

private:
    QVBoxLayout *makeChoices(const QStringList &controllerNames, const QString &color);
    QVBoxLayout *makeControllers(const QStringList &controllerNames, const QString &color);
    void showValues(const std::vector<ControlChangeData> &controlChanges);
    void showPedal(const PresetExpressionPedal &pedal);

    std::uint8_t deviceNumber;        // 1 to 10
    QVector<std::uint8_t> positions;  // of the rows' controllers in the device's list, 1 to 20
    QVector<QComboBox *> values;
    QComboBox *programChanges = nullptr;
    QComboBox *pedalControllers = nullptr;  // the controllers of the rows, then none
    QComboBox *characteristics = nullptr;
    QComboBox *toeUpValues = nullptr;
    QComboBox *toeDownValues = nullptr;
};
