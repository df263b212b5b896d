#include "ui/shell/arranging.h"
#include "ui/shell/devicearranging.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/presetchanging.h"
#include "ui/shell/unitfiles.h"
#include "ui/tables/banktable.h"

#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QUrl>

void MainWindow::makeUnitFiles(QMenu &backup, QMenu &restore, QMenu &reset)
{
    const auto shownBank = [this] { return bankTables[shownSubTab()]->currentBank(); };
    files = std::make_unique<UnitFiles>(requests, *controller,
                                        UnitFiles::Window{this, shownBank, [this] { return unitName(); },
                                                          [this](const QString &text) { showTransfer(text); },
                                                          [this] { hideTransfer(); }});
    files->fillMenus(backup, restore, reset);
    files->setEnabled(false);
    arranging =
        std::make_unique<Arranging>(requests, *controller,
                                    Arranging::Window{this, [this](const QString &text) { showTransfer(text); },
                                                      [this] { hideTransfer(); }, [this] { return canChange(); }});
    connect(this, &MainWindow::connected, arranging.get(), &Arranging::setModel);
    deviceArranging = std::make_unique<DeviceArranging>(*arranging, *files,
                                                        DeviceArranging::Window{this, [this] { return canChange(); }});
    connect(this, &MainWindow::connected, deviceArranging.get(), &DeviceArranging::setModel);
    presetChanging = std::make_unique<PresetChanging>(requests, *arranging, *files,
                                                      PresetChanging::Window{this, [this] { return obstacle(); }});
    connect(this, &MainWindow::connected, presetChanging.get(), &PresetChanging::setModel);
    connect(this, &MainWindow::connected, files.get(), &UnitFiles::setModel);
    connect(ui.pushButton_cancelTransfer, &QPushButton::clicked, this, [this] { files->cancel(); });
    connect(controller.get(), &DeviceController::transferProgress, ui.progressBar_transfer,
            [progress = ui.progressBar_transfer](int done, int total) {
                progress->setMaximum(total);
                progress->setValue(done);
            });
}

QString MainWindow::unitName() const
{
    if (workFile->isOpen()) return workFile->name();
    const auto info = data ? data->deviceInfo.load() : nullptr;
    return info ? QString::fromStdString(info->firstText + ' ' + info->secondText).simplified() : QString();
}

bool MainWindow::takesFile(QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove && event->type() != QEvent::Drop)
        return false;
    auto *const drop = static_cast<QDropEvent *>(event);
    const QList<QUrl> urls = drop->mimeData()->urls();
    const QString path = urls.size() == 1 ? urls.front().toLocalFile() : QString();
    if (!path.endsWith(QLatin1String(".kora"), Qt::CaseInsensitive) || !canChange()) return false;
    drop->acceptProposedAction();
    // The dialogs that follow would hold the drag up.
    if (event->type() == QEvent::Drop) QTimer::singleShot(0, this, [this, path] { files->restoreFrom(path); });
    return true;
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
