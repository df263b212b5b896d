#pragma once

#include "model/datafromdevice.h"
#include "ui/dialogs/framelessdialog.h"
#include "ui/look.h"
#include "ui/submit.h"

#include <QVector>

#include <string>

class QHBoxLayout;
class QTableWidget;

/// What the two dialogs on a MIDI device's controllers share: the title, a table of controllers, OK and CANCEL. The
/// answer is that of exec(); Escape stands for CANCEL. Enter in an editor goes on to the next one: only on OK it is OK.
class MidiDeviceDialog : public FramelessDialog
{
    Q_OBJECT

public:
    /// Asked on OK: while it tells of an obstacle, the user reads that and the dialog stays open.
    void setObstacle(Obstacle test) { obstacle = std::move(test); }

public slots:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();

protected:
    using FramelessDialog::FramelessDialog;

    void keyPressEvent(QKeyEvent *event) override;

    /// `label_midiDeviceName`; the index counts from 0.
    QLabel *makeTitle(int deviceIndex, const std::string &deviceName);
    /// `tableWidget_controllersListTable`, empty.
    QTableWidget *makeTable(const QVector<look::Column> &columns, int height);
    /// `pushButton_ok` and `pushButton_cancel`
    QHBoxLayout *makeAnswers();

private:
    Obstacle obstacle = [] { return QString(); };
};
