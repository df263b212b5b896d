#include "ui/shell/mainwindow.h"
#include "ui/shell/unitfiles.h"
#include "ui/tables/banktable.h"

#include <QLabel>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>

void MainWindow::makeUnitFiles(QMenu &backup, QMenu &restore, QMenu &reset)
{
    const auto shownBank = [this] { return bankTables[shownSubTab()]->currentBank(); };
    files = std::make_unique<UnitFiles>(requests, *controller,
                                        UnitFiles::Window{this, shownBank,
                                                          [this](const QString &text) { showTransfer(text); },
                                                          [this] { hideTransfer(); }});
    files->fillMenus(backup, restore, reset);
    files->setEnabled(false);
    connect(ui.pushButton_cancelTransfer, &QPushButton::clicked, this, [this] { files->cancel(); });
    connect(controller.get(), &DeviceController::transferProgress, ui.progressBar_transfer,
            [progress = ui.progressBar_transfer](int done, int total) {
                progress->setMaximum(total);
                progress->setValue(done);
            });
}

std::size_t MainWindow::shownSubTab() const
{
    std::size_t shown = 0;  // also while another page covers it
    while (shown + 1 < SubTabCount && ui.subTabs[shown].table->isHidden())
        ++shown;
    return shown;
}

void MainWindow::showTransfer(const QString &text)
{
    ui.label_transfer->setText(text);
    ui.progressBar_transfer->setMaximum(100);
    ui.progressBar_transfer->setValue(0);
    ui.label_loading->movie()->start();
    setVeiled(true);
    ui.label_transfer->show();
    ui.progressBar_transfer->show();
    ui.pushButton_cancelTransfer->show();
    ui.pushButton_cancelTransfer->setFocus();
}

void MainWindow::hideTransfer()
{
    ui.label_loading->movie()->stop();
    ui.label_transfer->hide();
    ui.progressBar_transfer->hide();
    ui.pushButton_cancelTransfer->hide();
    setVeiled(false);
}
