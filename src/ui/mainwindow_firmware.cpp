#include "controller/devicecontroller.h"
#include "ui/mainwindow.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>

void MainWindow::connectFirmware()
{
    DeviceController *const unit = controller.get();
    connect(this, &MainWindow::updateFirmwareSignal, unit, &DeviceController::updateFirmware);
    connect(unit, &DeviceController::updateComplete, this, &MainWindow::updateComplete);
    connect(unit, &DeviceController::updateFailed, this, &MainWindow::updateFailed);
    connect(unit, &DeviceController::updateProgress, ui.progressBar_loading, &QProgressBar::setValue);

    auto *movie = new QMovie(QStringLiteral(":/images/loader3.gif"), QByteArray(), this);
    movie->setBackgroundColor(Qt::transparent);
    movie->setScaledSize({100, 100});
    ui.label_loading->setMovie(movie);
}

void MainWindow::updateFirmware()
{
    const bool uploading = ui.label_loading->isVisible();
    if (!data || !isConnected() || uploading) return;
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open KORA Firmware File"), QCoreApplication::applicationDirPath(), tr("KORA Firmware (*.bin)"));
    if (path.isEmpty()) return;
    emit updateFirmwareSignal(path);
    showBusy();
}

void MainWindow::showBusy()
{
    ui.label_loading->movie()->start();
    ui.label_loadingText->setText(QStringLiteral("SENDING NEW FIRMWARE TO DEVICE. PLEASE WAIT"));
    ui.progressBar_loading->setValue(0);
    setBusy(true);
    ui.pushButton_minimizeWindow->setFocus();
}

void MainWindow::hideBusy()
{
    ui.label_loading->movie()->stop();
    setBusy(false);
}

void MainWindow::setBusy(bool busy)
{
    ui.label_loading->setVisible(busy);
    ui.label_loadingText->setVisible(busy);
    ui.progressBar_loading->setVisible(busy);
    // The veil keeps the mouse away, this the keyboard.
    ui.pushButton_menu->setDisabled(busy);
    for (QPushButton *const button : qAsConst(pageButtons))
        button->setDisabled(busy);
    for (QWidget *const page : pages())
        page->setDisabled(busy);
}

void MainWindow::updateComplete()
{
    QMessageBox(QMessageBox::Information, QStringLiteral("UPLOAD COMPLETE"),
                QStringLiteral("NOW KORA WILL RESTART AND INSTALL NEW FIRMWARE.\n"
                               "AFTER INSTALATION, PLEASE RESTART THIS PROGRAM"),
                QMessageBox::Ok, this)
        .exec();
    hideBusy();
}

void MainWindow::updateFailed()
{
    QMessageBox(QMessageBox::Critical, QStringLiteral("UPLOAD FAILED"), QStringLiteral("FIRMWARE UPLOAD FAILED"),
                QMessageBox::Ok, this)
        .exec();
    hideBusy();
}
