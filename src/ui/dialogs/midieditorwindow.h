#pragma once

#include "model/midiedit.h"
#include "ui/dialogs/mididevicedialog.h"

class ComboBox;
class QLabel;
class QVBoxLayout;

/// Edits what a preset sends to one MIDI device: program change, control changes, expression pedal. It sends nothing
/// itself.
class MidiEditorWindow : public MidiDeviceDialog
{
    Q_OBJECT

public:
    /// Shows what a preset sends to a MIDI device; `device` counts from 0.
    MidiEditorWindow(const PresetData &preset, const MidiDevice &definition, int device, QWidget *parent);

    /// Says below the title which preset it is: "BANK 3, PRESET 4" and its name.
    void setPlace(const QString &place, const QString &presetName);
    /// What the user has altered.
    MidiEdit edit() const;

private:
    /// The item chosen in a box, if it is another than the one shown first.
    std::optional<int> altered(const ComboBox *box) const;
    QVBoxLayout *makeChoices(const QStringList &controllerNames, const QString &color);
    QVBoxLayout *makeControllers(const QStringList &controllerNames, const QString &color);
    void showValues(const std::vector<ControlChangeData> &controlChanges);
    void showPedal(const PresetExpressionPedal &pedal);
    /// For a pedal that drove nothing so far: a straight line over the whole range.
    void proposePedal();

    std::uint8_t deviceNumber;           // 1 to 10
    QVector<std::uint8_t> positions;     // of the rows' controllers in the device's list, 1 to 20
    QHash<const ComboBox *, int> shown;  // the item that each box showed first
    QVector<ComboBox *> values;
    QLabel *presetPlace = nullptr;
    ComboBox *programChanges = nullptr;
    ComboBox *pedalControllers = nullptr;  // the controllers of the rows, then none
    ComboBox *characteristics = nullptr;
    ComboBox *toeUpValues = nullptr;
    ComboBox *toeDownValues = nullptr;
};
