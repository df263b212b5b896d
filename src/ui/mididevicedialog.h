#pragma once

#include "model/datafromdevice.h"
#include "ui/framelessdialog.h"
#include "ui/look.h"

#include <QVector>

#include <string>

class QHBoxLayout;
class QTableWidget;

/// What the two dialogs on a MIDI device's controllers share: the title, a table of controllers, OK and CANCEL. The
/// answer is that of exec(); Enter stands for OK, Escape for CANCEL.
class MidiDeviceDialog : public FramelessDialog
{
    Q_OBJECT

public slots:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();

protected:
    using FramelessDialog::FramelessDialog;

    /// A copy of what the model holds now; a record that has not been read is one of defaults.
    template <typename Record>
    static Record copyOf(const Snapshot<Record> &slot)
    {
        const auto record = slot.load();
        return record ? *record : Record();
    }

    /// `label_midiDeviceName`; the index counts from 0.
    QLabel *makeTitle(int deviceIndex, const std::string &deviceName);
    /// `tableWidget_controllersListTable`, empty.
    QTableWidget *makeTable(const QVector<look::Column> &columns, int height);
    /// `pushButton_ok` and `pushButton_cancel`
    QHBoxLayout *makeAnswers();
};
