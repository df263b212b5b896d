#pragma once

#include "controller/metatypes.h"
#include "model/datafromdevice.h"
#include "model/devicemoves.h"
#include "model/midiuse.h"
#include "ui/submit.h"

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QVector>

#include <array>
#include <memory>

class ComboBox;
class ControllerListWindow;
class NameEdit;
class QPushButton;
class QTableWidget;

/// The definitions of the ten external MIDI devices, one row each. Signals name the device 1 to 10.
///
/// An edit sends the change and goes back to the stored value; the new one shows when the unit has taken it. Only the
/// value of the tap controller stays as chosen.
class TabMidiDevices : public QObject
{
    Q_OBJECT

public:
    /// Lays out a table of 10 columns and no rows, which stays its owner's.
    explicit TabMidiDevices(QTableWidget *tableWidget);

    /// From now on edits of the controllers are handed to `submitter`, and not taken while `obstacle` tells of one.
    void setSubmit(Submit submitter, Obstacle obstacle) { edits.setSubmit(std::move(submitter), std::move(obstacle)); }
    /// Brings back what the model holds, where it is known.
    void showStored() { gotMidiDevicesData(); }

signals:
    void changeMidiDeviceNameSignal(const QString &name, int device);
    /// `channel` is 1 to 16 or `none`.
    void changeMidiDeviceChannelSignal(int channel, int device);
    void changeSendCCFirst(bool on, int device);
    void changeTapTempo(MidiDeviceTapTempo mode, int device);
    /// `controller` is 1 to 20, its position in the device's list.
    void changeTapController(int controller, int device);
    /// `value` is 0 to 127, `toggleValue` or `inactiveValue`.
    void changeTapControllerValue(int value, int device);
    void changeNoteNumber(int note, int device);
    void changeNoteType(TapTempoNote type, int device);
    /// 20 names and 20 numbers, 0 to 127 or `none`
    void controllersNamesOrNumberChanged(int device, const QVector<QString> &names, const QVector<int> &numbers);
    /// Controllers stand in another order, and may have been edited besides.
    void controllersMoved(int device, const ControllerEdit &edit, const ControllerOrder &order);
    /// The user asks what can be done with a device.
    void menuAsked(int device, const QPoint &position);
    /// The user asks for the presets that send to a device or to one of its controllers.
    void presetsAsked(const std::set<RecordId> &presets);

public slots:
    /// Only remembers the model: its MIDI devices are asked for elsewhere.
    void loadDataFromDevice(DataFromDevice *dataFromDevice);
    void gotMidiDevicesData();
    /// Counts anew how many presets send to each device; while the table is hidden, when it comes up.
    void countUses();

private:
    friend struct ChoiceColumn;
    /// The columns of combo boxes, in their order
    enum Choice { Channel, TapTempo, TapController, TapControllerValue, NoteNumber, NoteType, ChoiceCount };

    void addRow();
    void addChoiceBoxes(int row);
    void put(int row, int column, QWidget *editor, const QString &name);
    void showDevice(int row, const MidiDevice &device);
    void showSendCCFirst(int row, bool on);
    /// The columns that the mode does not use look it.
    void showTapColumns(int row, MidiDeviceTapTempo mode);
    /// Null without a unit and until the device has been read.
    std::shared_ptr<const MidiDevice> storedDevice(int row) const;

    void deviceNameChanged(int row);
    void sendFirstCCChanged(int row);
    /// Sends the choice made in a box unless it is the stored one; the box goes back to that.
    void choiceChanged(Choice choice, int row, int index);
    // These send what an item stands for.
    void deviceChannelChanged(int index, int device);
    void tapTempoChanged(int index, int device);
    void tapControllerChanged(int index, int device);
    void tapControllerValueChanged(int index, int device);
    void noteNumberChanged(int index, int device);
    void noteTypeChanged(int index, int device);
    void controllersWidgetClicked(int row);
    /// What is known of all presets.
    UnitPart knownPresets() const;
    /// How many presets send there, "12"; "12+" until all of them have been read.
    static QString usesText(const UnitPart &presets, const MidiTarget &target);
    void showUses();
    bool send(int row, const ControllerEdit &edit);

    QTableWidget *table;
    DataFromDevice *data = nullptr;
    const QIcon checkedIcon{QStringLiteral(":/images/checkbox_checked.png")};
    const QIcon uncheckedIcon{QStringLiteral(":/images/checkbox_unchecked.png")};
    // by row
    QVector<NameEdit *> names;
    QVector<QPushButton *> sendCCFirstButtons;
    QVector<QPushButton *> useButtons;
    std::array<QVector<ComboBox *>, ChoiceCount> boxes;

    QPointer<ControllerListWindow> controllerList;  // the last one opened; the window owns it
    LateEdits<ControllerEdit> edits;
    QTimer counting;  ///< runs out when no more presets arrive at once
};
