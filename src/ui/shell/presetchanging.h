#pragma once

#include "model/unitcontent.h"
#include "ui/submit.h"

#include <QObject>

#include <set>

class Arranging;
class DataFromDevice;
class RequestQueue;
class UnitFiles;
class QWidget;

/// One change to all selected presets: reads what is not known of them yet, asks for the change and hands it on.
class PresetChanging : public QObject
{
    Q_OBJECT

public:
    /// What the window does for it.
    struct Window
    {
        QWidget *widget;    ///< the parent of the dialog
        Obstacle obstacle;  ///< what keeps a change from being sent now
    };

    PresetChanging(RequestQueue &queue, Arranging &arranger, UnitFiles &unitFiles, Window owner);

    /// The model that tells what would change; null without one.
    void setModel(DataFromDevice *model) { data = model; }

    /// A selection is a set of records: a preset's, or those of `recordsOfBank` for a whole bank.
    void offer(const std::set<RecordId> &selection);

private:
    /// Asks when everything is known; not any more when another unit is found meanwhile.
    void ask(const std::set<RecordId> &selection);

    RequestQueue &requests;
    Arranging &arranging;
    UnitFiles &files;
    Window window;
    DataFromDevice *data = nullptr;
};
