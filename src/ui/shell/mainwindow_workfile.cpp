#include "ui/look.h"
#include "ui/namebutton.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/workfile.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>

std::unique_ptr<WorkFile> MainWindow::makeWorkFile(PortLister listUnits, InnerUnitMaker makeUnit)
{
    auto made = std::make_unique<WorkFile>(std::move(listUnits), std::move(makeUnit),
                                           WorkFile::Window{this, [this] { requests.deliver(); },
                                                            [this] {
                                                                showDisconnected();
                                                                requests.search([this] { emit searchForDevice(); });
                                                            }});
    connect(made.get(), &WorkFile::changed, this, [this] {
        firmwareEntry->setDisabled(workFile->isOpen());
        if (isConnected()) showConnected();
    });
    return made;
}

void MainWindow::showConnected()
{
    const auto info = data->deviceInfo.load();
    const bool isTold = info && (!workFile->isOpen() || *info != DeviceInfo());  // a file may leave the identity out
    QString firmware =
        isTold ? QStringLiteral("FIRMWARE %1.%2").arg(info->firmwareMajor).arg(info->firmwareMinor) : QString();
    QString state = QStringLiteral("DEVICE CONNECTED"), toolTip;
    if (workFile->isOpen()) {
        state = QStringLiteral("WORKING ON ") + workFile->name();
        toolTip = plainToolTip(workFile->path());
        if (workFile->isUnsaved()) firmware = QStringLiteral("NOT SAVED");
    }
    QLabel *const status = ui.label_deviceStatus;
    status->setText(status->fontMetrics().elidedText(state, Qt::ElideRight, status->width()));
    status->setToolTip(toolTip);
    status->unsetCursor();
    ui.label_deviceFirmware->setText(firmware);

    const auto showIcon = [this](const QIcon &icon, const QString &name) {
        look::makeIconButton(ui.pushButton_connection, icon, {36, 36}, name);
    };
    if (!workFile->isOpen())
        showIcon(plugGreen, tr("The unit is connected"));
    else if (workFile->isUnsaved())
        showIcon(fileOrange, tr("Not saved: try again"));
    else
        showIcon(fileBlue, tr("A file is worked on"));
}
