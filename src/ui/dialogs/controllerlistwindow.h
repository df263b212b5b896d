#pragma once

#include "model/controlleredit.h"
#include "ui/dialogs/mididevicedialog.h"

class ComboBox;
class NameEdit;

/// Edits the 20 named controllers of a MIDI device. It sends nothing itself.
class ControllerListWindow : public MidiDeviceDialog
{
    Q_OBJECT

public:
    /// Shows the controllers of a MIDI device; `deviceIndex` counts from 0.
    ControllerListWindow(const MidiDevice &device, int deviceIndex, QWidget *parent);

    /// What the user has altered.
    ControllerEdit edit() const;

private:
    void addController(const Controller &controller);
    /// Marks the controllers that cannot be meant so.
    void markDoubtful();
    /// Why a controller cannot be meant so; empty when it can.
    QString doubtAbout(int row) const;

    QTableWidget *table;
    QVector<QPushButton *> labels;
    QVector<NameEdit *> nameEdits;
    QVector<ComboBox *> numberBoxes;
    QVector<int> shownNumbers;  // as items of the boxes
};
