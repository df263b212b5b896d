#pragma once

#include "model/midiedit.h"
#include "ui/submit.h"
#include "ui/tables/banktable.h"

#include <QPointer>

class MidiEditorWindow;
class NameButton;

/// What each preset of a bank sends to each MIDI device: one button per device opens the editor.
class TabMidi : public BankTable
{
    Q_OBJECT

public:
    /// Lays out a table of 14 columns and one row, which stays its owner's.
    explicit TabMidi(QTableWidget *tableWidget);

    /// From now on edits are handed to `submitter`, and not taken while `obstacle` tells of one.
    void setSubmit(Submit submitter, Obstacle obstacle) { edits.setSubmit(std::move(submitter), std::move(obstacle)); }

signals:
    void getMidiDevicesData();
    void getExpressionPedalData();
    /// `device` counts from 0; `program` is 1 to 128 or `none`.
    void changeProgramChangeNumber(int bank, int preset, int device, int program);
    /// The preset's whole new list.
    void changeControlChangeData(int bank, int preset, const QVector<ControlChangeData> &list);
    void changePresetExpressionPedal(int bank, int preset, const PresetExpressionPedal &pedal);

public slots:
    /// Asks for the MIDI devices, for this tab and for the table of MIDI devices.
    void loadDataFromDevice(DataFromDevice *dataFromDevice) override;
    void gotMidiDevicesData();

private:
    void refreshEditors() override { refreshButtons(); }
    void clearEditors(int) override {}
    void refreshButtons();
    void refreshButton(NameButton *button, const PresetData &preset, int device);
    /// A preset whose messages may be edited, as it is once the edits have been taken that wait; null when it is a loop
    /// or switch modifier or has not been read.
    std::shared_ptr<const PresetData> editableRecord(int bank, int preset) const;
    /// Opens the editor for a preset that takes MIDI messages, and sends what was changed if it ends with OK.
    void deviceButtonClicked(int preset, int device);
    bool send(int bank, int preset, const MidiEdit &edit);

    QVector<QVector<NameButton *>> deviceButtons;  // by device, then preset
    QPointer<MidiEditorWindow> editor;             // the last one opened; the window owns it
    // What the buttons tell of: what is told already is not worked out again.
    std::array<std::shared_ptr<const PresetData>, presetCount> toldPresets;
    std::array<std::shared_ptr<const MidiDevice>, midiDeviceCount> toldDevices;
    LateEdits<MidiEdit> edits;
};
