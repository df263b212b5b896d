#pragma once

#include "controller/mydevices.h"
#include "model/datafromdevice.h"
#include "model/devicemoves.h"

#include <QMessageBox>
#include <QObject>

#include <functional>
#include <optional>

class Arranging;
class UnitFiles;
class QPoint;
class QWidget;

/// What the user does with whole MIDI devices: copies, pastes and swaps them, moves their controllers, keeps their
/// definitions. Before anything is sent it reads what is not known yet, tells how much would be altered, asks whether
/// what presets send is carried along, and tells which messages would fall on the same place.
class DeviceArranging : public QObject
{
    Q_OBJECT

public:
    /// What the window does for it.
    struct Window
    {
        QWidget *widget;                  ///< the parent of dialogs
        std::function<bool()> canChange;  ///< whether the user may change anything now
    };

    DeviceArranging(Arranging &arranger, UnitFiles &unitFiles, Window owner, MyDevices kept = MyDevices());

    /// The model that tells what is copied; null without one.
    void setModel(DataFromDevice *model) { data = model; }

    /// The menu of one device, 1 to 10.
    void showMenu(int device, const QPoint &position);
    void reorderControllers(int device, const ControllerEdit &edit, const ControllerOrder &order);

private:
    /// Something that may be made in two ways.
    struct Offer
    {
        int device;  ///< the one that is altered, 1 to 10
        std::function<Arrangement(bool carriesAlong)> arrangement;
        std::optional<int> carriedFrom;  ///< whose messages may fall on those of `device`
        bool canCarry = true;
    };

    /// The device that was copied here, while the clipboard carries it and it stands there as it was: a device that was
    /// moved meanwhile has taken along what presets send to it.
    std::optional<int> copiedDevice() const;
    std::shared_ptr<const MidiDevice> stored(int device) const;
    void paste(int device);
    void swap(int device);
    void save(int device);
    void take(int device);

    void offer(const Offer &offer);
    /// Asks when everything is known.
    void ask(const Offer &offer);
    bool goesOnWith(const QStringList &collisions);
    QMessageBox::StandardButton asks(const QString &title, const QString &text, QMessageBox::StandardButtons buttons,
                                     QMessageBox::StandardButton usual);
    void tell(const QString &title, const QString &text);

    Arranging &arranging;
    UnitFiles &files;
    Window window;
    MyDevices myDevices;
    DataFromDevice *data = nullptr;
};
