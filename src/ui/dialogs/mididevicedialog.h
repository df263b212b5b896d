#pragma once

#include "model/datafromdevice.h"
#include "ui/dialogs/answerdialog.h"
#include "ui/look.h"

#include <QVector>

#include <string>

class QTableWidget;

/// What the two dialogs on a MIDI device's controllers share: the title, a table of controllers, OK and CANCEL.
class MidiDeviceDialog : public AnswerDialog
{
    Q_OBJECT

protected:
    using AnswerDialog::AnswerDialog;

    /// `label_midiDeviceName`; the index counts from 0.
    QLabel *makeTitle(int deviceIndex, const std::string &deviceName);
    /// `tableWidget_controllersListTable`, empty.
    QTableWidget *makeTable(const QVector<look::Column> &columns, int height);
};
