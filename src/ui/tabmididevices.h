#pragma once

#include "controller/metatypes.h"
#include "model/datafromdevice.h"

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

#include <array>
#include <memory>
#include <optional>

class ControllerListWindow;
class QComboBox;
class QLineEdit;
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
    /// Lays out a table of 9 columns and no rows, which stays its owner's.
    explicit TabMidiDevices(QTableWidget *tableWidget);

    void show();
    void hide();
    bool isVisible() const;

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

public slots:
    /// Only remembers the model: its MIDI devices are asked for elsewhere.
    void loadDataFromDevice(DataFromDevice *dataFromDevice);
    void gotMidiDevicesData();
    void deviceNameChanged();
    void deviceChannelChanged(int index);
    void sendFirstCCChanged();
    void tapTempoChanged(int index);
    void tapControllerChanged(int currentIndex);
    void tapControllerValueChanged(int index);
    void noteNumberChanged(int index);
    void noteTypeChanged(int index);
    void controllersWidgetClicked();

private:
    /// The columns of combo boxes, in their order
    enum Choice { Channel, TapTempo, TapController, TapControllerValue, NoteNumber, NoteType, ChoiceCount };

    void addRow();
    void showDevice(int row, const MidiDevice &device);
    void showSendCCFirst(int row, bool on);
    /// Null without a unit and until the device has been read.
    std::shared_ptr<const MidiDevice> storedDevice(int row) const;
    /// The number of the device for which the choice made in the sender is to be sent; nothing when it is the stored
    /// one. The box goes back to the stored choice.
    std::optional<int> takeChoice(Choice choice, int index);

    QTableWidget *table;
    DataFromDevice *data = nullptr;
    const QIcon checkedIcon{QStringLiteral(":/images/checkbox_checked.png")};
    const QIcon uncheckedIcon{QStringLiteral(":/images/checkbox_unchecked.png")};
    // by row
    QVector<QLineEdit *> names;
    QVector<QPushButton *> sendCCFirstButtons;
    QVector<QPushButton *> controllersButtons;
    std::array<QVector<QComboBox *>, ChoiceCount> boxes;

    QPointer<ControllerListWindow> controllerList;  // the last one opened; the window owns it
};
