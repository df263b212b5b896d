#include "ui/dialogs/installdriverswindow.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QLabel>
#include <QPushButton>

InstallDriversWindow::InstallDriversWindow(QWidget *parent)
    : FramelessDialog(QStringLiteral("InstallDriversWindow"), parent)
{
    setFixedSize(392, 145);

    makeLabel(QStringLiteral("label_cantFindDevice"), QStringLiteral("CAN'T FIND DEVICE?"),
              DataFromDevice::fontSettingsLabel)
        ->setGeometry(20, 14, 300, 24);

    QLabel *const hint = makeLabel(QStringLiteral("label_hint"),
                                   tr("No driver is needed here, the system has it. Check the USB cable, and that your "
                                      "account may use serial ports (on Linux often the group \"dialout\")."),
                                   DataFromDevice::fontTableContent);
    hint->setWordWrap(true);
    hint->setGeometry(20, 42, 352, 48);

    QPushButton *const install = makeButton(QStringLiteral("pushButton_installDrivers"),
                                            QStringLiteral("INSTALL DRIVERS"), look::selectionColor);
    install->setGeometry(116, 98, 160, 32);
    install->setAutoDefault(false);
    connect(install, &QPushButton::clicked, this, &InstallDriversWindow::on_pushButton_installDrivers_clicked);

    makeCloseButton();
}

void InstallDriversWindow::on_pushButton_installDrivers_clicked() {}
