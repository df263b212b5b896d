#include "ui/dialogs/mididevicedialog.h"

#include "ui/namebutton.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int rowHeight = 30;       // pixels
constexpr int scrollBarWidth = 12;  // pixels
constexpr QSize answerSize(120, 32);

}  // namespace

void MidiDeviceDialog::on_pushButton_ok_clicked()
{
    const QString why = obstacle();
    if (why.isEmpty())
        accept();
    else
        tell(QStringLiteral("Error"), why);
}

void MidiDeviceDialog::on_pushButton_cancel_clicked() { reject(); }

void MidiDeviceDialog::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !qobject_cast<QPushButton *>(focusWidget()))
        focusNextChild();
    else
        FramelessDialog::keyPressEvent(event);
}

QLabel *MidiDeviceDialog::makeTitle(int deviceIndex, const std::string &deviceName)
{
    const QString name = QString::fromStdString(deviceName);
    QLabel *const title = makeLabel(QStringLiteral("label_midiDeviceName"),
                                    QStringLiteral("MIDI %1 : %2").arg(QString::number(deviceIndex + 1), name),
                                    DataFromDevice::fontDeviceStatus);
    title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // a long name does not widen the dialog
    title->setToolTip(plainToolTip(name));
    return title;
}

QTableWidget *MidiDeviceDialog::makeTable(const QVector<look::Column> &columns, int height)
{
    auto *table = new QTableWidget(0, columns.size(), this);
    table->setObjectName(QStringLiteral("tableWidget_controllersListTable"));
    look::prepareTable(table, columns, rowHeight);
    int width = scrollBarWidth;
    for (const look::Column &column : columns)
        width += column.width;
    table->setFixedSize(width, height);
    return table;
}

QHBoxLayout *MidiDeviceDialog::makeAnswers()
{
    QPushButton *const ok = makeButton(QStringLiteral("pushButton_ok"), QStringLiteral("OK"), look::acceptColor);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &MidiDeviceDialog::on_pushButton_ok_clicked);
    QPushButton *const cancel =
        makeButton(QStringLiteral("pushButton_cancel"), QStringLiteral("CANCEL"), look::rejectColor);
    connect(cancel, &QPushButton::clicked, this, &MidiDeviceDialog::on_pushButton_cancel_clicked);

    ok->setFixedSize(answerSize);
    cancel->setFixedSize(answerSize);
    auto *row = new QHBoxLayout;
    row->setSpacing(12);
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}
