#pragma once

#include "ui/mididevicedialog.h"

class QComboBox;
class QLineEdit;

/// Edits the 20 named controllers of a MIDI device. It sends nothing itself.
class ControllerListWindow : public MidiDeviceDialog
{
    Q_OBJECT

public:
    /// Shows what `model` holds of the device now (`deviceIndex` counts from 0) and does not use `model` afterwards.
    ControllerListWindow(DataFromDevice *model, int deviceIndex, QWidget *parent);

    /// The 20 names as edited.
    QVector<QString> names() const;
    /// The 20 MIDI controller numbers as edited: 0 to 127, or `none`.
    QVector<int> numbers() const;

protected:
    /// In the table Enter moves on to the next editor; only below it Enter closes the dialog.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addController(const Controller &controller);

    QTableWidget *table;
    QVector<QLineEdit *> nameEdits;
    QVector<QComboBox *> numberBoxes;
};
