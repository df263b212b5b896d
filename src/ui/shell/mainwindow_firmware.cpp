#include "ui/message.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/unitfiles.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>

void MainWindow::connectFirmware()
{
    DeviceController *const unit = controller.get();
    connect(this, &MainWindow::updateFirmwareSignal, this, [this](const QString &path) {
        requests.exclusive(requests.onWorker(&DeviceController::updateFirmware, path));
    });
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
    if (!data || !isConnected() || isUploading || workFile->isOpen()) return;
    const DataFromDevice *const chosenFor = data;
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Open KORA Firmware File"), QCoreApplication::applicationDirPath(), tr("KORA Firmware (*.bin)"));
    if (path.isEmpty() || !confirmsEmptyImage(path)) return;
    // Meanwhile the unit may have gone and another one come.
    if (!isConnected() || data != chosenFor) {
        message::show(this, QStringLiteral("Error"),
                      tr("The unit that the file was chosen for is not connected any more. Nothing was sent."));
        return;
    }
    files->protect([this, path] {
        emit updateFirmwareSignal(path);
        showBusy();
    });
}

bool MainWindow::confirmsEmptyImage(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > 0) return true;
    return message::ask(this, QStringLiteral("FIRMWARE UPGRADE"),
                        tr("The file is empty: the unit would only be restarted. Go on?")) == QMessageBox::Yes;
}

void MainWindow::showBusy()
{
    ui.label_loading->movie()->start();
    ui.label_loadingText->setText(QStringLiteral("SENDING NEW FIRMWARE TO DEVICE. PLEASE WAIT"));
    ui.progressBar_loading->setValue(0);
    isUploading = true;
    setVeiled(true);
    ui.label_loadingText->show();
    ui.progressBar_loading->show();
    ui.pushButton_minimizeWindow->setFocus();
}

void MainWindow::hideBusy()
{
    isUploading = false;
    ui.label_loading->movie()->stop();
    ui.label_loadingText->hide();
    ui.progressBar_loading->hide();
    setVeiled(false);
}

void MainWindow::setVeiled(bool veiled)
{
    isVeiled = veiled;
    showHistory();
    if (veiled) focusBeforeVeil = focusWidget();
    ui.label_loading->setVisible(veiled);
    ui.pushButton_menu->setDisabled(veiled);
    for (const Page &page : ui.pages) {
        page.button->setDisabled(veiled);
        page.widget->setDisabled(veiled);
    }
    if (!veiled && focusBeforeVeil) focusBeforeVeil->setFocus();
}

void MainWindow::updateComplete()
{
    if (isClosing) return;
    message::tell(this, QStringLiteral("UPLOAD COMPLETE"),
                  QStringLiteral("NOW KORA WILL RESTART AND INSTALL NEW FIRMWARE.\n"
                                 "AFTER INSTALATION, PLEASE RESTART THIS PROGRAM"),
                  QMessageBox::Information);
    hideBusy();
}

void MainWindow::updateFailed()
{
    if (isClosing) return;
    message::tell(this, QStringLiteral("UPLOAD FAILED"), QStringLiteral("FIRMWARE UPLOAD FAILED"));
    hideBusy();
}
