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
    const bool isFile = workFile->isOpen();
    QString firmware =
        info ? QStringLiteral("FIRMWARE %1.%2").arg(info->firmwareMajor).arg(info->firmwareMinor) : QString();
    if (isFile && info && *info == DeviceInfo()) firmware.clear();  // the file does not tell it
    QLabel *const status = ui.label_deviceStatus;
    const QString text = isFile ? QStringLiteral("WORKING ON ") + workFile->name() : QStringLiteral("DEVICE CONNECTED");
    status->setText(status->fontMetrics().elidedText(text, Qt::ElideMiddle, status->width()));
    status->setToolTip(isFile ? plainToolTip(workFile->path()) : QString());
    status->unsetCursor();
    ui.label_deviceFirmware->setText(workFile->isUnsaved() ? QStringLiteral("NOT SAVED") : firmware);
    look::makeIconButton(ui.pushButton_connection, isFile ? fileBlue : plugGreen, {36, 36},
                         workFile->isUnsaved() ? tr("Not saved: save now")
                         : isFile              ? tr("A file is worked on")
                                               : tr("The unit is connected"));
}
