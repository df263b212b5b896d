#include "ui/dialogs/installdriverswindow.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr QSize windowSize(392, 145);
constexpr int commandHeight = 88;  // pixels more once the command is shown

}  // namespace

InstallDriversWindow::InstallDriversWindow(QWidget *parent)
    : FramelessDialog(QStringLiteral("InstallDriversWindow"), parent)
{
    setFixedSize(windowSize);

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

    makeCommand();
    makeCloseButton();
}

void InstallDriversWindow::makeCommand()
{
    QLabel *const explanation = makeLabel(
        QStringLiteral("label_access"), tr("This command gives your account access to the port. Log in anew after it:"),
        DataFromDevice::fontTableContent);
    explanation->setGeometry(20, 144, 352, 20);
    QLabel *const command = makeLabel(QStringLiteral("label_command"), QStringLiteral("sudo adduser $USER dialout"),
                                      DataFromDevice::fontSettingsLabel);
    command->setTextInteractionFlags(Qt::TextSelectableByMouse);
    command->setGeometry(20, 176, 250, 32);
    QPushButton *const copy =
        makeButton(QStringLiteral("pushButton_copyCommand"), QStringLiteral("COPY"), look::selectionColor);
    copy->setGeometry(282, 176, 90, 32);
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this, [command] { QGuiApplication::clipboard()->setText(command->text()); });
    commandParts = {explanation, command, copy};
    for (QWidget *const part : commandParts)
        part->hide();
}

void InstallDriversWindow::on_pushButton_installDrivers_clicked()
{
    setFixedSize(windowSize + QSize(0, commandHeight));
    for (QWidget *const part : commandParts)
        part->show();
}
