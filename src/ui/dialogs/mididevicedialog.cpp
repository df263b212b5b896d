#include "ui/dialogs/mididevicedialog.h"

#include "ui/namebutton.h"

#include <QLabel>
#include <QTableWidget>

namespace {

constexpr int rowHeight = 30;       // pixels
constexpr int scrollBarWidth = 12;  // pixels

}  // namespace

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
    auto *table = new QTableWidget(0, static_cast<int>(columns.size()), this);
    table->setObjectName(QStringLiteral("tableWidget_controllersListTable"));
    look::prepareTable(table, columns, rowHeight);
    int width = scrollBarWidth;
    for (const look::Column &column : columns)
        width += column.width;
    table->setFixedSize(width, height);
    return table;
}
